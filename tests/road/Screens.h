// The ways to each screen.
#pragma once

#include "screens/register/frmMaster.h"
#include "tests/support/Shop.h"

namespace road {

inline void openRegister(support::Shop& shop) { shop.opens(); }
inline void openEditor(support::Shop& shop) {
    shop.opens();
    shop.user.clicks("cmdnew");
}
inline void openLineEntry(support::Shop& shop) {
    openEditor(shop);
    shop.picksShop(2);
    shop.user.focuses("lvwrequest").types("\n");
}
inline void openOverLines(support::Shop& shop, const char* dialog) {
    sandbox::openOverLineEntry(shop.module, dialog);
    openLineEntry(shop);
    shop.user.presses(forms::kKeyF11);
}
inline void openScan(support::Shop& shop) { openOverLines(shop, "scan"); }
inline void openFetch(support::Shop& shop) { openOverLines(shop, "fetch"); }
inline void openPrint(support::Shop& shop) {
    shop.opens();
    shop.user.selectsRow("flexMaster", 1).clicks("cmdPrev");
}
/// On a request that may be deleted.
inline void openDeletable(support::Shop& shop) {
    shop.opens();
    const auto rows = shop.user.rows("flexMaster");
    for (std::size_t row = 0; row < rows.size(); ++row) {
        shop.user.selectsRow("flexMaster", static_cast<int>(row) + 1);
        if (shop.user.enabled("CmdDelete") && rows[row][goodsreq::kColUsed] != "True" &&
            rows[row][goodsreq::kColConfirmed] == "No")
            break;
    }
}
inline void openReason(support::Shop& shop) {
    openDeletable(shop);
    shop.user.clicks("CmdDelete").answers(forms::Answer::yes);
}

} // namespace road
