// Forms for tests that work at real windows.
#pragma once

#include "forms/Buttons.h"
#include "forms/Form.h"
#include "forms/TextBox.h"

#include <functional>
#include <string>

namespace support {

/// A form that a test describes by hand.
class PlainForm : public forms::Form {
public:
    PlainForm(forms::Desktop& desktop, std::string name) : Form(desktop, std::move(name)) {}
    std::function<void()> describe;

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

} // namespace support
