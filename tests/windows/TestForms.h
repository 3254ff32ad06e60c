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
    std::function<void()> describe;
    bool works = false;

protected:
    void design() override {
        setSize(7200, 4800);
        if (describe) describe();
    }
};

class CounterForm : public PlainForm {
public:
    explicit CounterForm(forms::Desktop& desktop) : PlainForm(desktop, "frmCounter") {
        describe = [this] {
            txtBarcode.place({120, 120, 3000, 330});
            txtQuantity.place({120, 600, 3000, 330});
            cmdOk.place({120, 1100, 1200, 390});
            cmdOk.setText("&OK");
        };
    }
    forms::TextBox txtBarcode{*this, "txtBarcode"};
    forms::TextBox txtQuantity{*this, "txtQuantity"};
    forms::CommandButton cmdOk{*this, "cmdOk"};
};

/// Puts another function in the place of one that this program calls, and answers what stood there.
template <class Function> Function exchange(Function& entry, Function with) {
    DWORD protection = 0;
    VirtualProtect(&entry, sizeof entry, PAGE_READWRITE, &protection);
    std::swap(entry, with);
    VirtualProtect(&entry, sizeof entry, protection, &protection);
    return with;
}

/// A grid of four columns, the first of them hidden, and a button.
class RowsForm : public PlainForm {
public:
    explicit RowsForm(forms::Desktop& desktop) : PlainForm(desktop, "frmRows") {
        describe = [this] {
            grid.place({120, 120, 6960, 4000});
            grid.setRows(1);
            grid.setFixedRows(1);
            grid.setFixedCols(0);
            grid.setCols(4);
            grid.setColWidth(0, 0);
            cmdRefresh.place({120, 4200, 1200, 390});
        };
    }
    forms::Grid grid{*this, "flexRows"};
    forms::CommandButton cmdRefresh{*this, "cmdRefresh"};
};

/// A person before real windows.
struct OnRealWindows {
    void sits(forms::Form& shown, const std::function<void(RealUser&)>& script) {
        RealUser::sits(
            *desktop, [&] { shown.showModal(nullptr); },
            [&](RealUser& user) {
                user.seesForm(shown.name());
                script(user);
            });
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
