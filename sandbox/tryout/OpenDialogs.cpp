#include "sandbox/tryout/OpenDialogs.h"

#include "screens/fetch/FrmFetch.h"
#include "screens/lines/frmRequestDetail.h"
#include "screens/lines/frmscanBc.h"

namespace sandbox {

void openOverLineEntry(goodsreq::Module& module, std::string_view dialog) {
    forms::Form* opened = nullptr;
    if (dialog == "scan") opened = &module.scanBarcode();
    if (dialog == "fetch") opened = &module.fetchItem();
    if (!opened) return;
    goodsreq::frmRequestDetail& lineEntry = module.requestDetail();
    lineEntry.onKeyDown = [&lineEntry, opened, ownKeys = lineEntry.onKeyDown](std::int16_t& keyCode,
                                                                              std::int16_t shift) {
        if (keyCode != forms::kKeyF11) return ownKeys(keyCode, shift);
        keyCode = 0;
        // The item of a stored line stays what it is.
        if (lineEntry.cmdbarcode.enabled()) opened->showAfresh(&lineEntry);
    };
}

} // namespace sandbox
