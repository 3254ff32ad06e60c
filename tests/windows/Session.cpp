#include "tests/windows/Session.h"

#include "basic/Calendar.h"
#include "basic/Conversion.h"
#include "com/ObjectFactory.h"
#include "common/Recordset.h"
#include "sandbox/host/HostSession.h"
#include "tests/support/Scratch.h"

#include <gtest/gtest.h>

#include <objbase.h>

namespace support {

std::string sampleCompany(const std::string& name) {
    const std::string path = scratch(name);
    std::filesystem::remove(path);
    sandbox::makeSampleCompany(path);
    return path;
}

automation::ObjectPtr openConnection(const std::string& companyFile) {
    EXPECT_TRUE(SUCCEEDED(CoInitialize(nullptr)));
    const automation::ObjectPtr connection = com::comObjectFactory()("ADODB.Connection");
    connection->call("Open", "Data Source=" + companyFile);
    return connection;
}

automation::ObjectPtr makeModule(const automation::ObjectPtr& connection, std::int16_t user, std::int32_t interfaceId) {
    const automation::ObjectPtr module = com::comObjectFactory()("goodsreq.clsGRtoShop");
    module->putRef("adocon", connection);
    module->put("strProjectKey", "KOVA/XB/TRAM/842");
    module->put("strMsgboxCaption", "Retail");
    for (const char* field : {"intCompanyID", "intShopid"}) module->put(field, std::int16_t{1});
    module->put("intUserID", user);
    module->put("interfaceid", interfaceId);
    module->put("dtProcessDate", basic::dateOf(2026, 3, 31));
    return module;
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

void beginsRequest(RealUser& user) {
    user.sendsAlt('n', "active frmRequest");
    user.sendsKey(VK_DOWN);
    user.sendsText("\r", "focus frmRequest.txtRemarks");
    user.sendsText("\r", "focus frmRequest.lvwrequest");
}

void beginsLines(RealUser& user) { user.sendsText("\n", "active frmRequestDetail"); }

void entersLine(RealUser& user, const std::string& barcode) {
    user.sendsText(barcode + "\r", "focus frmRequestDetail.txtQuantity");
    user.sendsText("2");
    user.sendsAlt('o', "focus frmRequestDetail.txtBarcode");
}

void closesRegister(RealUser& user) { user.sendsAlt('c', "unloaded frmMaster"); }

} // namespace support
