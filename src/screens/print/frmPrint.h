// The print dialog: to the screen, to the printer, or through the report engine.
#pragma once

#include "common/ModuleForm.h"
#include "forms/Buttons.h"

namespace goodsreq {

class frmPrint : public ModuleForm {
public:
    explicit frmPrint(Module& module);

    forms::Frame fraPrint{*this, "fraPrint"};
    forms::OptionButton optScreen{*this, "optScreen"};
    forms::OptionButton optPrint{*this, "optPrint"};
    forms::OptionButton OptWindowsPrint{*this, "OptWindowsPrint"};
    forms::PictureBox Picture1{*this, "Picture1"};
    forms::CommandButton cmdOK{*this, "cmdOK"};
    forms::CommandButton cmdCancel{*this, "cmdCancel"};

    /// What the register's Print button does: chooses the destination by the print settings and shows the dialog for
    /// the register's current request. Errors 13 and 6 where `printtoscreen` is missing or no number.
    void offer();

private:
    void design() override;
    void onLoad() override;
    void onUnload() override;

    void accept();
    void printSlip();
    void showSlipFile(const std::string& windows);
    /// Previews the request as a report, until the dialog is closed.
    void WIndowsPrint();

    bool toScreen_ = false;      ///< the choice made before the dialog is loaded
    bool offersReports_ = false; ///< the settings switch "Windows Print" on
    automation::ObjectPtr engine_;
    automation::ObjectPtr report_;
};

} // namespace goodsreq
