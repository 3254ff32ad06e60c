// Forms for tests that work at real windows, and how a test shows them.
#pragma once

#include "forms/Buttons.h"
#include "forms/Form.h"
#include "forms/Grid.h"
#include "forms/TextBox.h"
#include "tests/windows/RealUser.h"
#include "win32/Win32Desktop.h"

#include <bit>

namespace support {

/// Two boxes and a button; before them a grid of four columns, the first of them hidden, or none that is seen.
class TillForm : public forms::Form {
public:
    TillForm(forms::Desktop& desktop, std::string name, bool hasRows)
        : Form(desktop, std::move(name)), hasRows_(hasRows) {}
    bool holdsWork() override { return works; }
    /// `more` belongs to its design too.
    void adds(std::function<void()> more) { more_.push_back(std::move(more)); }
    void fills(std::vector<std::vector<std::string>> texts) {
        adds([this, texts = std::move(texts)] { grid.setDataRows(texts); });
    }

    bool works = false;
    forms::Grid grid{*this, "flexRows"};
    forms::TextBox txtBarcode{*this, "txtBarcode"};
    forms::TextBox txtQuantity{*this, "txtQuantity"};
    forms::CommandButton cmdOk{*this, "cmdOk"};

protected:
    void design() override {
        setSize(7200, 4800);
        grid.place({120, 120, 4000, 4000});
        grid.setRows(1);
        grid.setFixedRows(1);
        grid.setFixedCols(0);
        grid.setCols(4);
        grid.setColWidth(0, 0);
        grid.setVisible(hasRows_);
        txtBarcode.place({4200, 120, 2880, 330});
        txtQuantity.place({4200, 600, 2880, 330});
        cmdOk.place({4200, 1100, 1200, 390});
        cmdOk.setText("&OK");
        for (const auto& each : more_) each();
    }

private:
    const bool hasRows_;
    std::vector<std::function<void()>> more_;
};

/// What a window answers; the message's last parameter is a number of that size or an address.
template <class Last = LPARAM> LRESULT ask(HWND window, UINT message, WPARAM wParam = 0, Last last = {}) {
    return SendMessageW(window, message, wParam, std::bit_cast<LPARAM>(last));
}
template <class Last = LPARAM>
LRESULT ask(const forms::Control& control, UINT message, WPARAM wParam = 0, Last last = {}) {
    return ask(windowOf(control), message, wParam, last);
}

/// A person before real windows.
struct OnRealWindows {
    void sits(forms::Form& shown, const std::function<void(RealUser&)>& script) {
        const auto acts = [&](RealUser& user) {
            user.seesForm(shown.name());
            script(user);
        };
        RealUser::sits([&] { shown.showModal(nullptr); }, acts, desktop.get());
    }
    void sits(const std::function<void(RealUser&)>& script) { sits(*form, script); }
    /// Runs `body` on the form's thread, once it is there.
    void looks(forms::Form& shown, const std::function<void()>& body) {
        sits(shown, [&](RealUser& user) { user.look(body); });
    }

    const std::unique_ptr<forms::Desktop> desktop = win32::makeDesktop();
    const std::shared_ptr<TillForm> form = std::make_shared<TillForm>(*desktop, "frmCounter", false);
    const std::shared_ptr<TillForm> rows = std::make_shared<TillForm>(*desktop, "frmRows", true);
};

} // namespace support
