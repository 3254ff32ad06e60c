// Forms for tests that work at real windows, and how a test shows them.
#pragma once

#include "forms/Buttons.h"
#include "forms/Form.h"
#include "forms/Grid.h"
#include "forms/TextBox.h"
#include "tests/windows/RealUser.h"
#include "win32/Win32Desktop.h"

namespace support {

/// A form that a test describes by hand.
class PlainForm : public forms::Form {
public:
    PlainForm(forms::Desktop& desktop, std::string name) : Form(desktop, std::move(name)) {}
    bool holdsWork() override { return works; }
    /// `more` belongs to its design too.
    void adds(std::function<void()> more) { design_.push_back(std::move(more)); }
    bool works = false;

protected:
    void design() override {
        setSize(7200, 4800);
        for (const auto& each : design_) each();
    }

private:
    std::vector<std::function<void()>> design_;
};

class CounterForm : public PlainForm {
public:
    explicit CounterForm(forms::Desktop& desktop) : PlainForm(desktop, "frmCounter") {
        adds([this] {
            txtBarcode.place({120, 120, 3000, 330});
            txtQuantity.place({120, 600, 3000, 330});
            cmdOk.place({120, 1100, 1200, 390});
            cmdOk.setText("&OK");
        });
    }
    forms::TextBox txtBarcode{*this, "txtBarcode"};
    forms::TextBox txtQuantity{*this, "txtQuantity"};
    forms::CommandButton cmdOk{*this, "cmdOk"};
};

/// A grid of four columns, the first of them hidden, and a button.
class RowsForm : public PlainForm {
public:
    explicit RowsForm(forms::Desktop& desktop) : PlainForm(desktop, "frmRows") {
        adds([this] {
            grid.place({120, 120, 6960, 4000});
            grid.setRows(1);
            grid.setFixedRows(1);
            grid.setFixedCols(0);
            grid.setCols(4);
            grid.setColWidth(0, 0);
            cmdRefresh.place({120, 4200, 1200, 390});
        });
    }
    /// Has them stand in the grid once it is shown.
    void fills(std::vector<std::vector<std::string>> texts) {
        adds([this, texts = std::move(texts)] { grid.setDataRows(texts); });
    }
    forms::Grid grid{*this, "flexRows"};
    forms::CommandButton cmdRefresh{*this, "cmdRefresh"};
};

/// What a window answers; the message's last parameter is a number or an address.
template <class Last = LPARAM> LRESULT ask(HWND window, UINT message, WPARAM wParam = 0, Last last = {}) {
    if constexpr (std::is_pointer_v<Last>)
        return SendMessageW(window, message, wParam, reinterpret_cast<LPARAM>(last));
    else
        return SendMessageW(window, message, wParam, last);
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
    const std::shared_ptr<CounterForm> form = std::make_shared<CounterForm>(*desktop);
    const std::shared_ptr<RowsForm> rows = std::make_shared<RowsForm>(*desktop);
};

} // namespace support
