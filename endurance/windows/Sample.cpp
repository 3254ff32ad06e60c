#include "endurance/windows/Sample.h"

#include "basic/Conversion.h"
#include "common/Recordset.h"
#include "sandbox/host/HostSession.h"

#include <filesystem>

namespace endurance {

std::string sampleCompany(const std::string& path) {
    std::filesystem::remove(path);
    sandbox::makeSampleCompany(path);
    return path;
}

std::vector<std::string> requestableBarcodes(automation::Object& connection) {
    const auto of = [](const char* what, const char* table, int shop) {
        return std::string(" and a.") + what + " in (select " + what + " from " + table +
               " where shopid = " + std::to_string(shop) + ")";
    };
    std::string query =
        "select a.itemid, min(p.packingbarcode) from aitem a, aitempackingdetail p where a.itemid = p.itemid"
        " and a.active = 1 and p.active = 1 and a.itemtype <> 'B'";
    for (const int shop : {1, kFirstOffered})
        query += of("itemid", "ashopitemdetail", shop) + of("itemcategoryid", "ashopitemcategory", shop);
    goodsreq::Recordset records(connection.call("Execute", query + " group by a.itemid order by a.itemid").objectPtr());
    std::vector<std::string> barcodes;
    for (; !records.eof(); records.moveNext()) barcodes.push_back(basic::concatText(records.value(1)));
    return barcodes;
}

bool beginsRequest(support::Clerk& clerk) {
    clerk.pressesAlt('n');
    if (!clerk.awaits("active frmRequest")) return false;
    clerk.presses(VK_DOWN);
    clerk.types('\r');
    if (!clerk.awaits("focus frmRequest.txtRemarks")) return false;
    clerk.types('\r');
    if (!clerk.awaits("focus frmRequest.lvwrequest")) return false;
    clerk.types('\n');
    return clerk.awaits("active frmRequestDetail");
}

bool entersLine(support::Clerk& clerk, const std::string& barcode) {
    for (const char c : barcode + "\r") clerk.types(c);
    if (!clerk.awaits("focus frmRequestDetail.txtQuantity")) return false;
    clerk.types('2');
    clerk.pressesAlt('o');
    return clerk.awaits("focus frmRequestDetail.txtBarcode");
}

} // namespace endurance
