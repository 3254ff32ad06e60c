// A form with one control of each kind, and handlers that a test puts in place.
#pragma once

#include "forms/UserInput.h"

#include <functional>

class SampleForm : public forms::Form {
public:
    explicit SampleForm(forms::Desktop& desktop, std::string name = "frmSample") : Form(desktop, std::move(name)) {
        cmdCancel.onClick = [this] { unload(); };
    }

    forms::Label lblName{*this, "lblName"};
    forms::TextBox txtName{*this, "txtName"};
    forms::ComboBox cboShop{*this, "cboShop"};
    forms::ComboBox cboFree{*this, "cboFree", forms::ComboBox::Style::editable};
    forms::OptionButton optUp{*this, "optUp", 1};
    forms::OptionButton optDown{*this, "optDown", 1};
    forms::CheckBox chkDone{*this, "chkDone"};
    forms::ListView lvwLines{*this, "lvwLines"};
    forms::Grid flexRows{*this, "flexRows"};
    forms::CommandButton cmdOk{*this, "cmdOk"};
    forms::CommandButton cmdCancel{*this, "cmdCancel"};

    std::function<void()> designs = [] {}, load = designs, activated = designs, unloaded = designs;
    std::function<void(bool& cancel, forms::CloseReason)> queryUnload = [](bool&, forms::CloseReason) {};
    int loads = 0, activations = 0;

protected:
    void design() override {
        setCaption("Sample");
        setSize(8000, 6000);
        lblName.setText("&Name");
        txtName.place({120, 120, 2000, 315}, {true, true, true, false});
        txtName.setText("as designed");
        optUp.setText("&Up");
        optUp.setValue(true);
        optDown.setText("&Down");
        chkDone.setText("Fish && &Chips");
        lvwLines.setColumns({{"No.", 600, forms::ColumnAlignment::right}, {"Item", 2400}});
        cmdOk.setText("&OK");
        cmdOk.place({120, 5000, 1000, 375}, {true, false, false, true});
        cmdCancel.setText("&Close");
        cmdCancel.setCancel(true);
        designs();
    }
    void onLoad() override {
        ++loads;
        load();
    }
    void onActivate() override {
        ++activations;
        activated();
    }
    void onQueryUnload(bool& cancel, forms::CloseReason reason) override { queryUnload(cancel, reason); }
    void onUnload() override { unloaded(); }
};
