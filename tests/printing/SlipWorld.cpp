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

std::string number(int n) { return std::to_string(n); }

std::string item(int id, const std::string& code, const std::string& description, int unit, const std::string& rate) {
    return "insert into aitem (itemid, itemcode, ItemDescription, UnitsId, itemcategoryid, itemrate, PriceFixedAtHq) values (" +
           number(id) + ", '" + code + "', N'" + description + "', " + number(unit) + ", 1, " + rate + ", 0);";
}

std::string packing(int itemId, int type, bool retail) {
    return "insert into aitempackingdetail (itemid, packingtypeid, RetailPacking) values (" + number(itemId) + ", " +
           number(type) + ", " + (retail ? "1" : "0") + ");";
}

std::string price(int itemId, const std::string& shop, const std::string& amount) {
    return "insert into losShopItemShipmentDetail (ItemId, PackingTypeId, ShopId, SellingPrice) values (" +
           number(itemId) + ", 1, " + shop + ", " + amount + ");";
}

std::string header(int id, const std::string& remarks) {
    return "insert into mesRequesttoShopHeader (srhrequestid, srhshopid, srhrequestno, srhrequestdate, srhtoShopid, "
           "srhtype, SRHremarks) values (" +
           number(id) + ", 1, 'RQ/26/" + number(1000 + id) + "', '20260330', 2, 'r', N'" + remarks + "');";
}

std::string line(int request, int itemId, const std::string& quantity) {
    return "insert into mesRequesttoShopDetail (srdrequestid, srdshopid, srditemid, srdtoshopid, srdgoodqty) values (" +
           number(request) + ", 1, " + number(itemId) + ", 2, " + quantity + ");";
}

} // namespace

std::string SlipWorld::companyScript() {
    std::string s =
        // What the register asks for; its nine columns have no other names here.
        "insert into aPAckageSettings (IntegerQuantity, alias, AllowItemCodeDuplication) values (0, 0, 0);"
        "insert into LOsSettings (ShopID, sNoofBackDays) values (1, 60);"
        "insert into acompanymaster values (1, 'Harbour Retail Limited', '12 Quay Street', 'Second Floor', 'Portmouth PM1 4QS', '');"
        "insert into acountrymaster values (44, 'England'); insert into acity values (9, 'Portmouth', 44);"
        "insert into aShops (shopid, shopname, address, cityid, countryid, telephoneno, faxno, departmentid, CompanyID, "
        "revisedcostpricepercent) values (1, N'Quay Street', N'3 Quay Street', 9, 44, '01555 200100', '01555 200101', 1, 1, 10);"
        "insert into aShops (shopid, shopname, cityid, countryid, departmentid, CompanyID) values (2, N'Market Hall', 9, 44, 1, 1);"
        "insert into loUsers values (5, 1, N'Ann Porter');"
        "insert into aUnit values (1, 'PCS', 'Piece'); insert into aUnit values (2, 'KG', 'Kilogram');"
        "insert into aUnit values (3, 'CARTONS-24', 'Carton of 24');"
        "insert into ashopprintmessages values (1, 1, 'POSPO', N'Goods travel at the risk of the sender.', 'L');"
        "insert into ashopprintmessages values (2, 1, 'POSPO', N'Received by: ..............', 'R');"
        "insert into ashopprintmessages values (3, 1, 'POSPO', N'Thank you', 'M');"
        "insert into ashopprintmessages values (4, 1, 'SALES', N'Not for requests', 'L');"
        "insert into ashopprintmessages values (5, 2, 'POSPO', N'Another shop', 'L');";
    for (int i = 1; i <= 25; ++i) {
        const std::string two = (i < 10 ? "0" : "") + number(i);
        // The descriptions run against the ids, so that the two orders differ.
        s += item(100 + i, "AB" + two, std::string(1, static_cast<char>('Z' - i)) + " tin of paint " + two, i % 2 + 1,
                  number(i) + ".25");
        s += packing(100 + i, 1, true) + price(100 + i, "1", number(2 * i) + ".495");
    }
    s += item(201, "MIX", "Assorted nails", 1, "0.5") + packing(201, 1, true) + packing(201, 2, false) +
         packing(201, 3, false);
    s += item(301, "A-VERY-LONG-ITEM-CODE-INDEED",
              "Outdoor masonry paint, smooth finish, ten litres, brilliant white, low odour", 3, "123456.78");
    s += packing(301, 1, true) + price(301, "1", "999999.99");
    s += "insert into aitem (itemid, itemcode, ItemDescription, printdescription, UnitsId, itemcategoryid, itemrate, "
         "PriceFixedAtHq) values (401, 'FR1', N'not printed', N'Crème brûlée 5€ Жук 😀 end', 1, 1, 2, 1);";
    s += packing(401, 1, true) + price(401, "null", "7.5") + price(401, "1", "1");
    s += "update aitem set PriceFixedAtHq = null where itemid = 101;"; // is no flag set
    s += header(kThreeLines, "For the weekend") + line(1, 103, "2") + line(1, 101, "10.5") + line(1, 102, "0.125");
    s += header(kTwentyFiveLines, "");
    for (int i = 1; i <= 25; ++i) s += line(2, 100 + i, number(i));
    s += header(kNoLines, "nothing yet");
    s += header(kSeveralPackings, "") + line(4, 101, "1") + line(4, 201, "4");
    s += header(kLongTexts, "first line\r\nsecond line") + line(5, 101, "1") + line(5, 301, "123456789012.345");
    s += header(kForeignLetters, "Überführung – Łódź") + line(6, 401, "3");
    s += header(kTenLines, "");
    for (int i = 1; i <= 10; ++i) s += line(7, 100 + i, number(i));
    s += header(kOneLine, "") + line(8, 101, "1");
    return s;
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

std::string SlipWorld::settingsText(const Settings& changes, const std::string& lineEnd) {
    Settings settings = plainSettings();
    for (const auto& [key, value] : changes) settings[key] = value;
    std::string text;
    for (const auto& [key, value] : settings)
        if (value != "-") text += key + " :=" + value + lineEnd;
    return text;
}

void SlipWorld::setSettings(const std::string& content) { system.files[kSettingsFile] = content; }

std::string SlipWorld::settings() const { return system.files.at(kSettingsFile); }

std::string SlipWorld::portFile() { return support::scratch("SLIP.TXT"); }

std::string SlipWorld::print(int request) {
    goodsreq::SlipPrinter(module, goodsreq::SlipPrinter::Target::port).PrintBill(request);
    return system.real ? system.real->readFile(portFile()) : system.files.at(kPort);
}

} // namespace printing
