#include "tests/printing/SlipWorld.h"

#include "basic/Calendar.h"
#include "sandbox/data/SchemaText.h"
#include "sandbox/suite/StandIns.h"
#include "slip/SlipPrinter.h"
#include "tests/support/Scratch.h"

namespace printing {
namespace {

constexpr const char* kFolder = "C:\\Retail";
constexpr const char* kSettingsFile = "C:\\Retail\\ShopSetting.txt";
constexpr const char* kPort = "LPT1";

const Settings& plainSettings() {
    // clang-format off
    static const Settings settings{
        {"port", "lpt1 "}, {"internalprintnoofrecords", "30"}, {"pagewidth", "80"}, {"SlNo", "6"}, {"Qty", "10"},
        {"Unit", "6"}, {"Rate", "9"}, {"Amount", "11"}, {"ExtraLine", "0"}, {"EndPage", "0"}, {"Seperator", "0"},
        {"showcostintrans", "0"}, {"showspintransrep", "0"}, {"showitemcodeinprint", "0"}, {"printinsavedorder", "1"},
        {"printheadertopline", "1"}, {"printheaderbottomline", "1"}, {"printdetailbottomline", "1"},
        {"spaceinlinecode", "0"}, {"printfooterineachpage", "0"}, {"showtotalqty", "0"}, {"headerleftmargin", "0"},
        {"linetoskipfirst", "0"}, {"totalheadcount", "0"}, {"linesafteraddress", "0"}, {"linesafterheader", "0"},
        {"printtransnameabove", "1"}, {"PrintCompanyName", "1"}, {"printadd1", "1"}, {"printadd2", "0"},
        {"printadd3", "1"}, {"printtoscreen", "1"}, {"windowsprint", "0"}};
    // clang-format on
    return settings;
}

/// Shop 1 asks shop 2. The register finds what it asks for; its nine columns have no other names here.
constexpr const char* kRows = R"(
insert into aPAckageSettings values (0, 0, 0); insert into LOsSettings (ShopID, sNoofBackDays) values (1, 60);
insert into acompanymaster values (1, 'Harbour Retail Limited', '12 Quay Street', 'Second Floor', 'Portmouth PM1 4QS', '');
insert into acountrymaster values (44, 'England'); insert into acity values (9, 'Portmouth', 44);
insert into aShops (shopid, shopname, address, cityid, countryid, telephoneno, faxno, departmentid, CompanyID,
  revisedcostpricepercent) values
  (1, 'Quay Street', '3 Quay Street', 9, 44, '01555 200100', '01555 200101', 1, 1, 10),
  (2, 'Market Hall', null, 9, 44, null, null, 1, 1, 0);
insert into loUsers values (5, 1, 'Ann Porter');
insert into aUnit values (1, 'PCS', 'Piece'), (2, 'KG', 'Kilogram'), (3, 'CARTONS-24', 'Carton of 24');
insert into ashopprintmessages values (1, 1, 'POSPO', 'Goods travel at the risk of the sender.', 'L'),
  (2, 1, 'POSPO', 'Received by: ..............', 'R'), (3, 1, 'POSPO', 'Thank you', 'M'),
  (4, 1, 'SALES', 'Not for requests', 'L'), (5, 2, 'POSPO', 'Another shop', 'L');
insert into aitem (itemid, itemcode, ItemDescription, printdescription, UnitsId, itemcategoryid, itemrate, PriceFixedAtHq) values
  (201, 'MIX', 'Assorted nails', null, 1, 1, 0.5, 0),
  (301, 'A-VERY-LONG-ITEM-CODE-INDEED',
   'Outdoor masonry paint, smooth finish, ten litres, brilliant white, low odour', null, 3, 1, 123456.78, 0),
  (401, 'FR1', 'not printed', N'Crème brûlée 5€ Жук 😀 end', 1, 1, 2, 1);
insert into aitempackingdetail (itemid, packingtypeid, RetailPacking) values (201, 1, 1), (201, 2, 0), (201, 3, 0),
  (301, 1, 1), (401, 1, 1);
insert into losShopItemShipmentDetail (ItemId, PackingTypeId, ShopId, SellingPrice) values (301, 1, 1, 999999.99),
  (401, 1, null, 7.5), (401, 1, 1, 1);
insert into mesRequesttoShopDetail values (1, 1, 103, 2, 2, 0, 0), (1, 1, 101, 2, 10.5, 0, 0), (1, 1, 102, 2, 0.125, 0, 0),
  (4, 1, 101, 2, 1, 0, 0), (4, 1, 201, 2, 4, 0, 0), (5, 1, 101, 2, 1, 0, 0), (5, 1, 301, 2, 123456789012.345, 0, 0),
  (6, 1, 401, 2, 3, 0, 0), (8, 1, 101, 2, 1, 0, 0);
)";

} // namespace

std::string SlipWorld::companyScript() {
    std::string script = kRows;
    const auto insert = [&](const std::string& row) { script += "insert into " + row + ");"; };
    const char* const remarks[] = {
        "For the weekend", "", "nothing yet", "", "first line\r\nsecond line", "Überführung – Łódź", "", ""};
    for (int id = kThreeLines; id <= kOneLine; ++id)
        insert("mesRequesttoShopHeader (srhrequestid, srhshopid, srhrequestno, srhrequestdate, srhtoShopid, srhtype, "
               "SRHremarks) values (" +
               std::to_string(id) + ", 1, 'RQ/26/" + std::to_string(1000 + id) + "', '20260330', 2, 'r', N'" +
               remarks[id - 1] + "'");
    for (int i = 1; i <= 25; ++i) {
        const std::string id = std::to_string(100 + i), count = std::to_string(i), two = (i < 10 ? "0" : "") + count;
        // The descriptions run against the ids, so that the two orders differ.
        insert("aitem (itemid, itemcode, ItemDescription, UnitsId, itemcategoryid, itemrate) values (" + id + ", 'AB" +
               two + "', '" + static_cast<char>('Z' - i) + " tin of paint " + two + "', " + std::to_string(i % 2 + 1) +
               ", 1, " + count + ".25");
        insert("aitempackingdetail (itemid, packingtypeid, RetailPacking) values (" + id + ", 1, 1");
        insert("losShopItemShipmentDetail (ItemId, PackingTypeId, ShopId, SellingPrice) values (" + id + ", 1, 1, " +
               std::to_string(2 * i) + ".495");
        for (const Request request : {kTwentyFiveLines, kTenLines})
            if (request == kTwentyFiveLines || i <= 10)
                insert("mesRequesttoShopDetail values (" + std::to_string(request) + ", 1, " + id + ", 2, " + count +
                       ", 0, 0");
    }
    script += "update aitem set PriceFixedAtHq = null where itemid = 101;"; // is no flag set
    return script;
}

SlipWorld::SlipWorld(const Settings& changes)
    : connection(sandbox::createCompany(":memory:", sandbox::schemaText())),
      module(desktop, system, sandbox::standInFactory({&desktop, ""}), {}, kFolder) {
    sandbox::runScript(*connection, companyScript());
    connection->trace([this](std::string_view statement) { statements.emplace_back(statement); });
    desktop.time = basic::dateOf(2026, 3, 31, 9, 5, 7);
    module.session.connection = connection;
    module.session.companyId = 1;
    module.session.userId = 5;
    module.session.shopId = 1;
    module.session.screenId = 1507;
    module.session.messageBoxCaption = "Retail";
    Settings settings = changes;
    if (makeMachine) system.real = makeMachine();
    if (makeMachine) settings["port"] = portFile();
    setSettings(settingsText(settings));
}

std::string SlipWorld::settingsText(const Settings& changes) {
    Settings settings = plainSettings();
    for (const auto& [key, value] : changes) settings[key] = value;
    std::string text;
    for (const auto& [key, value] : settings)
        if (value != "-") text += key + " :=" + value + "\r\n";
    return text;
}

void SlipWorld::setSettings(const std::string& content) { system.files[kSettingsFile] = content; }

std::string SlipWorld::portFile() { return support::scratch("SLIP.TXT"); }

std::string SlipWorld::print(int request) {
    goodsreq::SlipPrinter(module, goodsreq::SlipPrinter::Target::port).PrintBill(request);
    return system.real ? system.real->readFile(portFile()) : system.files.at(kPort);
}

} // namespace printing
