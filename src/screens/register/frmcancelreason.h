// Asks for the reason of a deletion.
#pragma once

#include "common/ModuleForm.h"
#include "forms/Buttons.h"
#include "forms/TextBox.h"

namespace goodsreq {

class frmcancelreason : public ModuleForm {
public:
    explicit frmcancelreason(Module& module);

    forms::TextBox txtcanreason{*this, "txtcanreason"};
    forms::CommandButton cmdOk{*this, "cmdOk"};

private:
    void design() override;
    void onLoad() override;
    void onActivate() override;
    void onQueryUnload(bool& cancel, forms::CloseReason reason) override;

    bool hasReason() const;
    void accept();
};

} // namespace goodsreq
