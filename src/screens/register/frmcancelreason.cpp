#include "screens/register/frmcancelreason.h"

#include "basic/Text.h"

namespace goodsreq {
namespace {

constexpr int kWidth = 6480;
constexpr int kHeight = 915;

} // namespace

frmcancelreason::frmcancelreason(Module& module) : ModuleForm(module, "frmcancelreason") {
    txtcanreason.onGotFocus = selectsItsText();
    txtcanreason.onChange = [this] { trap("txtcanreason_KeyUp", [this] { cmdOk.setEnabled(hasReason()); }); };
    txtcanreason.onKeyPress = enterMovesOn();
    cmdOk.onClick = [this] { trap("cmdOk_Click ", [this] { accept(); }); };
}

void frmcancelreason::design() {
    setSize(kWidth, kHeight);
    txtcanreason.place({150, 285, 4950, 345});
    txtcanreason.setReadAs("Reason for deletion");
    cmdOk.place({5230, 270, 1100, 375});
    cmdOk.setText("&Ok");
    cmdOk.setEnabled(false);
}

void frmcancelreason::onLoad() {
    trap("Form_Load ", [this] { session().formColour.Applyformcolor(*this); });
}

void frmcancelreason::onActivate() {
    session().cancelReason.clear();
    setSize(kWidth, kHeight);
    setCaption("Reason for deletion");
}

bool frmcancelreason::hasReason() const { return !basic::trim(txtcanreason.text()).empty(); }

void frmcancelreason::accept() {
    if (!hasReason()) {
        module().inform("Enter reason for deletion");
        txtcanreason.setFocus();
        return;
    }
    session().cancelReason = txtcanreason.text();
    cmdOk.setEnabled(false);
    unload();
}

void frmcancelreason::onQueryUnload(bool& cancel, forms::CloseReason reason) {
    if (reason != forms::CloseReason::frame || !cmdOk.enabled()) return;
    const bool mayClose = hasReason();
    trap("Form_QueryUnload", [this] { accept(); });
    cancel = !mayClose;
}

} // namespace goodsreq
