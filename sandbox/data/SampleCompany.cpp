#include "sandbox/data/SampleCompany.h"

#include "sandbox/data/SampleItems.h"
#include "sandbox/data/SampleRequests.h"

namespace sandbox {

namespace {

constexpr std::uint64_t kSeed = 20260331;

struct Shop {
    const char* name;
    const char* kind; ///< what futurevarchar holds
    const char* address;
    int city;
    const char* telephone;
};

// Telephone numbers are of the range that is kept free for stories.
constexpr Shop kShops[kSampleShops] = {
    {"Brackenway High Street", "G1", "14 High Street", 1, "01632 960114"},
    {"Brackenway Station Road", "G2", "3 Station Road", 1, "01632 960203"},
    {"Brackenway Riverside", "G3", "Riverside Parade 7", 2, "01632 960307"},
    {"Brackenway Market Square", "G4", "22 Market Square", 3, "01632 960422"},
    {"Brackenway Harbour", "G5", "1 Quay Street", 4, "01632 960501"},
    {"Brackenway Trade Counter", "B1", "Unit 9, Mill Lane", 2, "01632 960609"},
    {"Brackenway Old Mill", "G7", "Old Mill Yard", 3, "01632 960700"},
    {"Brackenway Garden Centre", "G8", "Orchard Way", 4, "01632 960818"},
};

constexpr const char* kCities[] = {"Ashcombe Vale", "Netherfold", "Wick St Bride", "Brindle Haven"};

void writeCompany(const Rows::Execute& execute) {
    Rows company(execute, "acompanymaster", "CompanyID,name,Address1,Address2,Address3,telephoneno");
    company.add({kSampleCompanyId, "Brackenway Stores Limited", "Brackenway House", "14 High Street", "Ashcombe Vale",
                 "01632 960100"});
    company.flush();

    Rows countries(execute, "acountrymaster", "countryid,CountryName");
    countries.add({1, "United Kingdom"});
    countries.add({2, "Ireland"});
    countries.flush();

    Rows cities(execute, "acity", "cityid,CityName,countryid");
    for (int i = 0; i < static_cast<int>(std::size(kCities)); ++i) cities.add({i + 1, kCities[i], 1});
    cities.flush();

    Rows currencies(execute, "acurrencymaster", "currencyid,currencyname,symbol");
    currencies.add({1, "Pound", "\xC2\xA3"});
    currencies.add({2, "Euro", "\xE2\x82\xAC"});
    currencies.flush();

    Rows departments(execute, "aDepartmentMaster", "departmentID,CompanyID,departmentname,DepCurrencyID");
    departments.add({1, kSampleCompanyId, "Retail", 1});
    departments.add({2, kSampleCompanyId, "Trade", 1});
    departments.flush();
}

void writeShops(const Rows::Execute& execute) {
    Rows shops(
        execute, "aShops",
        "shopid,shopname,ActiveShop,futurevarchar,address,cityid,countryid,telephoneno,faxno,departmentid,CompanyID,"
        "PreserveItemDetails,revisedcostpricepercent");
    Rows shopCategories(execute, "ashopitemcategory", "shopid,itemcategoryid");
    Rows settings(execute, "LOsSettings", "ShopID,sNoofBackDays,defaultfetch");
    Rows closings(execute, "losShopDayClose", "shopid,closedate");
    Rows messages(execute, "ashopprintmessages", "messageid,shopid,transtype,message,allignment");
    for (int id = 1; id <= kSampleShops; ++id) {
        const Shop& shop = kShops[id - 1];
        std::string fax = shop.telephone;
        fax.back() = fax.back() == '9' ? '0' : static_cast<char>(fax.back() + 1);
        shops.add({id, shop.name, id == kClosedShop ? 0 : 1, shop.kind, shop.address, shop.city, 1, shop.telephone, fax,
                   id == kTradeShop ? 2 : 1, kSampleCompanyId, 0, Literal::plain(id % 2 == 0 ? "2.500" : "0.000")});
        for (const int category : categoriesOfShop(id)) shopCategories.add({id, category});
        settings.add({id, 60, "ItemDescription"});
        for (const char* closed : {"20251031", "20251130", "20251231"}) closings.add({id, closed});
        messages.add({1, id, "POSPO", "Please pack heavy goods at the bottom.", "L"});
        messages.add({2, id, "POSPO", "Thank you from all at Brackenway", "M"});
        messages.add({3, id, "POSPO", "Received by: ____________________", "R"});
    }
    for (Rows* rows : {&shops, &shopCategories, &settings, &closings, &messages}) rows->flush();
}

void writeUsersAndNumbers(const Rows::Execute& execute) {
    Rows users(execute, "loUsers", "Userid,shopid,UserName");
    for (int user = kFullRightsUser; user <= kUserWithoutRights; ++user)
        for (int shop = 1; shop <= kSampleShops; ++shop) users.add({user, shop, userName(user)});
    users.flush();

    Rows rights(execute, "louserrights", "userid,interfaceid,companyid,FunctionRights");
    for (const int screen : {kGoodsRequest, kInterDivisionRequest}) {
        rights.add({kFullRightsUser, screen, kSampleCompanyId, "NEDP"});
        rights.add({kNoDeleteUser, screen, kSampleCompanyId, "NEP"});
        rights.add({kAdministrator, screen, kSampleCompanyId, "ADMIN"});
    }
    rights.flush();

    Rows years(execute, "aFinancialYear", "FinancialId,FinancialYear,StartDate,EndDate,CurFinancialYear");
    years.add({1, "2024-2025", "20240401", "20250331", 0});
    years.add({2, "2025-2026", "20250401", "20260331", 1});
    years.flush();

    Rows prefixes(execute, "aPrefix", "InterfaceID,FinancialId,shopid,Prefix");
    for (int shop = 1; shop <= kSampleShops; ++shop) {
        prefixes.add({kGoodsRequest, 1, shop, "GR24/"});
        prefixes.add({kGoodsRequest, 2, shop, "GR/"});
        prefixes.add({kInterDivisionRequest, 1, shop, "IS24/"});
        prefixes.add({kInterDivisionRequest, 2, shop, "IS/"});
    }
    prefixes.flush();
}

void writeSettings(const Rows::Execute& execute) {
    Rows package(execute, "aPAckageSettings", "IntegerQuantity,alias,AllowItemCodeDuplication");
    package.add({0, 0, 0});
    package.flush();
    Rows other(execute, "miscsettings", "AllowItemCodeDuplication");
    other.add({0});
    other.flush();
    Rows alias(execute, "aalias", "aliasid,Alias");
    alias.add({1, "Outlet"});
    alias.flush();

    Rows tables(execute, "atables", "tableid,tablename");
    tables.add({1, "mesRequesttoShopHeader,ashops"});
    tables.flush();
    static constexpr const char* kColumns[][2] = {
        {"sRHrequestID", "Request Id"},
        {"sRHrequestno", "Request No"},
        {"sRHrequestdate", "Request Date"},
        {"Shopname", "Shop Name"},
        {"Cancelled", "Cancelled"},
        {"sRHremarks", "Remarks"},
        {"srhUsed", "Used"},
        {"Confirmed", "Confirmed"},
        {"shopid", "Shop Id"},
    };
    Rows columns(execute, "atablecolumns", "tableid,columnno,columnname,ColumnHeader");
    for (int i = 0; i < static_cast<int>(std::size(kColumns)); ++i)
        columns.add({1, i + 1, kColumns[i][0], kColumns[i][1]});
    columns.flush();

    // The editor's list: numbers to the right, no item ids.
    Rows layouts(execute, "alistviewheader", "lvwid,lvwtransname,lvwname,lvwmodulename");
    layouts.add({1, "frmRequest", "lvwrequest", "Shoptoshoptransfer"});
    layouts.flush();
    Rows layoutColumns(execute, "alistviewdetails", "lvwdid,lvwcolid,lvwdcolwidth,lvwdcolalign");
    layoutColumns.add({1, 4, 1600, 1});
    layoutColumns.add({1, 5, 1100, 1});
    layoutColumns.add({1, 6, 0, 0});
    layoutColumns.flush();
}

void writeCategories(const Rows::Execute& execute) {
    Rows rows(execute, "aitemcategory", "itemcategoryid,itemcategoryname");
    int id = 0;
    for (const Category& category : categories()) rows.add({++id, category.name});
    rows.flush();
}

} // namespace

char ean13CheckDigit(const std::string& digits) {
    int sum = 0;
    for (std::size_t i = 0; i < 12; ++i) sum += (digits[i] - '0') * (i % 2 == 0 ? 1 : 3);
    return static_cast<char>('0' + (10 - sum % 10) % 10);
}

std::string sampleBarcode(int itemId, int packingTypeId) {
    // 29 is of the prefixes for codes that a chain gives out itself.
    const auto filled = [](int number, std::size_t width) {
        const std::string text = std::to_string(number);
        return std::string(width - text.size(), '0') + text;
    };
    std::string code = "29" + filled(packingTypeId, 2) + filled(itemId, 8);
    code += ean13CheckDigit(code);
    return code;
}

void writeSampleCompany(const std::function<void(const std::string& statement)>& execute) {
    Random random(kSeed);
    const std::vector<SampleItem> items = makeSampleItems(random);
    writeCompany(execute);
    writeShops(execute);
    writeCategories(execute);
    writeUsersAndNumbers(execute);
    writeSettings(execute);
    writeUnitsAndPackings(execute);
    writeItems(execute, items, random);
    writeShopItems(execute, items, random);
    writeRequests(execute, items, random);
}

} // namespace sandbox
