// The ways to each screen.
#pragma once

#include "screens/register/frmMaster.h"
#include "tests/support/Till.h"

namespace road {

inline void openRegister(support::Till& till) { till.opens(); }
inline void openEditor(support::Till& till) {
    till.opens();
    till.user.clicks("cmdnew");
}
inline void openLineEntry(support::Till& till) {
    openEditor(till);
    till.picksShop(2);
    till.user.focuses("lvwrequest").types("\n");
}
/// From line entry to a dialog that no screen opens.
inline void goOver(support::Till& till, const char* dialog) {
    sandbox::openOverLineEntry(till.module, dialog);
    till.user.presses(forms::kKeyF11);
}
inline void openScan(support::Till& till) {
    openLineEntry(till);
    goOver(till, "scan");
}
inline void openFetch(support::Till& till) {
    openLineEntry(till);
    goOver(till, "fetch");
}
inline void openPrint(support::Till& till) {
    till.opens();
    till.user.selectsRow("flexMaster", 1).clicks("cmdPrev");
}
/// On a request that may be deleted.
inline void openDeletable(support::Till& till) {
    till.opens();
    const auto rows = till.user.rows("flexMaster");
    for (std::size_t row = 0; row < rows.size(); ++row) {
        till.user.selectsRow("flexMaster", static_cast<int>(row) + 1);
        if (till.user.enabled("CmdDelete") && rows[row][goodsreq::kColUsed] != "True" &&
            rows[row][goodsreq::kColConfirmed] == "No")
            break;
    }
}
inline void openReason(support::Till& till) {
    openDeletable(till);
    till.user.clicks("CmdDelete").answers(forms::Answer::yes);
}

} // namespace road
