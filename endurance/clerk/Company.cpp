#include "endurance/clerk/Company.h"

#include "automation/RunTimeError.h"
#include "basic/Conversion.h"
#include "basic/Format.h"
#include "basic/Text.h"
#include "common/basGRtoShop.h"
#include "sandbox/data/SchemaText.h"

#include <algorithm>
#include <cmath>
#include <regex>

namespace endurance::clerk {
namespace {

/// Made once for each program, gone with it.
const std::string& original() {
    struct Made {
        support::TestFolder folder;
        std::string path = folder.file("clerk.db");
        Made() {
            sandbox::runScript(*sandbox::createCompany(path, sandbox::schemaText()),
                               sandbox::readTextFile(PROJECT_DIR "/endurance/clerk/company.sql"));
        }
    };
    static const Made made;
    return made.path;
}

/// Tables, with their text columns and how long those may be.
std::map<std::string, std::vector<std::pair<std::string, int>>> tables() {
    static const std::regex place("create table (\\w+)|\n    (\\w+) n?varchar\\((\\d+)\\)");
    const std::string schema(sandbox::schemaText());
    std::map<std::string, std::vector<std::pair<std::string, int>>> all;
    std::string table;
    for (std::sregex_iterator found(schema.begin(), schema.end(), place), end; found != end; ++found)
        if ((*found)[1].matched)
            all[table = (*found)[1]];
        else
            all[table].emplace_back((*found)[2], std::stoi((*found)[3]));
    return all;
}

std::string textOf(const automation::Value& value) {
    if (const auto* flag = value.as<bool>()) return *flag ? "1" : "0";
    if (const auto* date = value.as<automation::Date>()) return minutes(*date);
    return basic::concatText(value);
}

constexpr const char* kHeaderColumns[] = {"srhrequestno",  "srhrequestdate", "srhtoShopid",      "SRHremarks",
                                          "srhrecaddUser", "srhrecmoduser",  "srhTransfinished", "srhNoofDetails",
                                          "srhtype",       "srhused",        "SRHcancelled",     "srhcancelledRemarks",
                                          "updatetime"};

} // namespace

const std::vector<std::string>& hostileTexts() {
    // clang-format off
    static const std::vector<std::string> texts = {
        "O'Brien's", "''", "a\xCA\xBC' or 1=1 --\xEF\xBC\x87", "'; delete mesRequesttoShopDetail; --", "1' or '1'='1",
        "1; delete aitem", "/* -- */ --", "1 /*", "\"aitem\" [aitem] `aitem`", "%_[a-z]^", std::string("1\0' --", 6),
        "\x01\x02\x1B\x7F", "\xD0\x96\xE4\xB8\xAD\xF0\x9F\x98\x80", "\xC3\x28\xFF", "|%s%n|",
        std::string(8000, 'x'), std::string(8000, '\''), std::string(8000, '9')};
    // clang-format on
    return texts;
}

std::string hostileScript(unsigned number) {
    std::vector<std::string> scripts;
    for (const auto& [table, columns] : tables())
        for (const auto& [column, length] : columns)
            for (const std::string& text : hostileTexts())
                scripts.push_back("update " + table + " set " + column + " = " +
                                  goodsreq::quoted(basic::left(text, length)));
    return scripts[number % scripts.size()];
}

std::int64_t thousandths(const std::string& text) {
    if (text.empty() || text == "." || text.size() > 12 || text.find_first_not_of("0123456789.") != std::string::npos)
        return -1;
    if (std::count(text.begin(), text.end(), '.') > 1) return -1;
    const double exactly = std::atof(text.c_str()) * 1000;
    return std::fabs(exactly - std::round(exactly)) > 0.001 ? -1 : std::llround(exactly);
}

Row storedLine(const std::string& item, const std::string& toShop, const std::string& good, const std::string& bad,
               const std::string& price) {
    Row line{item, toShop};
    for (const std::string& number : {good, bad, price}) line.push_back(std::to_string(thousandths(number)));
    return line;
}

std::string minutes(automation::Date date) { return std::to_string(std::lround(date.days * 1440)); }

std::string finality(const Request& request) {
    for (const char* flag : {"srhTransfinished", "srhused", "SRHcancelled"})
        if (request.header.at(flag) == "1") return flag;
    return {};
}

const Request& Snapshot::at(const Key& key) const {
    static const Request none;
    const auto found = requests.find(key);
    return found == requests.end() ? none : found->second;
}

int Snapshot::highestId(int shop) const {
    const auto next = requests.lower_bound({shop + 1, 0});
    return next == requests.begin() || std::prev(next)->first.first != shop ? 0 : std::prev(next)->first.second;
}

std::string nextNumber(const Snapshot& stored, int shop, const std::string& prefix) {
    long highest = 0;
    for (const auto& [key, request] : stored.requests) {
        const std::string& number = request.header.at("srhrequestno");
        if (key.first != shop || !number.starts_with(prefix)) continue;
        const std::string rest = number.substr(prefix.size());
        if (!rest.empty() && rest.find_first_not_of("0123456789") == std::string::npos)
            highest = std::max(highest, std::stol(rest));
    }
    return prefix + std::to_string(highest + 1);
}

Company::Company(const std::string& script)
    : file_(support::CompanyFile::copyOf(original())), connection_(sandbox::openConnection(file_.path())) {
    if (script.empty()) return;
    try {
        connection_->call("Execute", script);
    } catch (const automation::RunTimeError&) {
        // A key of that table, or a text that the server does not store.
    }
}

std::vector<Row> Company::rows(const std::string& query) const {
    std::vector<Row> all;
    const sandbox::Outcome outcome = connection_->database().executeSilently(query);
    for (const auto& values : outcome.rows)
        std::transform(values.begin(), values.end(), std::back_inserter(all.emplace_back()), textOf);
    return all;
}

Row Company::row(std::string query, const std::vector<int>& numbers) const {
    for (const int number : numbers) query.replace(query.find('?'), 1, std::to_string(number));
    const std::vector<Row> found = rows(query);
    return found.empty() ? Row() : found[0];
}

std::string Company::value(const std::string& query, const std::vector<int>& numbers) const {
    const Row found = row(query, numbers);
    return found.empty() ? "" : found[0];
}

std::vector<Row> Company::codes() const {
    std::vector<Row> all = rows("select packingbarcode,itemid from aitempackingdetail");
    for (Row& row : rows("select itemcode,itemid from aitem")) all.push_back(std::move(row));
    return all;
}

Row Company::item(const std::string& id) const {
    return row("select itemcode,ItemDescription,UnitCode from aitem,aUnit where UnitId=UnitsId and itemid=?",
               {std::atoi(id.c_str())});
}

bool Company::isActive(const std::string& barcode) const {
    return !value("select a.itemid from aitempackingdetail d,aitem a where a.itemid=d.itemid and d.Active=1 and"
                  " a.Active=1 and a.itemtype<>'B' and d.packingbarcode=" +
                      goodsreq::quoted(barcode),
                  {})
                .empty();
}

std::string Company::packSize(const std::string& item, const std::string& pack) const {
    return value("select c.quantity from aitempackingdetail d,aitem a,apackingtypecapacitydetail c where d.active=1"
                 " and a.itemid=d.itemid and c.packingtypeid=d.packingtypeid and c.unitsid=a.UnitsId and d.itemid=? and"
                 " d.packingtypeid=?",
                 {std::atoi(item.c_str()), std::atoi(pack.c_str())});
}

Snapshot Company::snapshot() const {
    std::string columns;
    for (const char* column : kHeaderColumns) columns += std::string(",") + column;
    const auto keyOf = [](const Row& r) { return Key{std::stoi(r[0]), std::stoi(r[1])}; };
    Snapshot now;
    for (const Row& r : rows("select srhshopid,srhrequestid" + columns + " from mesRequesttoShopHeader"))
        for (std::size_t i = 0; i < std::size(kHeaderColumns); ++i)
            now.requests[keyOf(r)].header[kHeaderColumns[i]] = r[i + 2];
    for (const Row& r : rows("select srdshopid,srdrequestid,srditemid,srdtoshopid,srdgoodqty,srdbadQty,srdSellingprice"
                             " from mesRequesttoShopDetail order by srditemid"))
        now.requests[keyOf(r)].lines.push_back(storedLine(r[2], r[3], r[4], r[5], r[6]));
    now.audit = rows("select CompanyID,ShopID,UserID,InterfaceID,DocumentID,DocumentNo,ActionType,LoggedTime"
                     " from loUserAuditing order by AuditID");
    return now;
}

std::string Company::rest() const {
    static const std::set<std::string> changing = {"mesRequesttoShopHeader", "mesRequesttoShopDetail", "loUserAuditing",
                                                   "aPAckageSettings", "miscsettings"};
    std::string all;
    for (const auto& [table, columns] : tables()) {
        if (changing.contains(table)) continue;
        all += table;
        for (const Row& row : rows("select * from " + table))
            for (const std::string& cell : row) all += "|" + cell;
    }
    return all;
}

std::string Company::price(const std::string& item, int shop, int screen) const {
    // The shop's own price before head office's; the retail packing is always the single one.
    const std::string query = std::string("select ") + (screen == 1611 ? "WholesalePrice" : "SellingPrice") +
                              " from losShopItemShipmentDetail where PackingTypeId=51 and ItemId=" + item + " and ";
    const std::string own = value(query + "ShopId=?", {shop});
    return basic::format(own.empty() ? value(query + "ShopId is null", {}) : own, "0.00");
}

bool Company::may(int user, int screen, char right) const {
    const std::string rights = basic::trim(basic::ucase(value(
        "select FunctionRights from louserrights where companyid=7 and userid=? and interfaceid=?", {user, screen})));
    return rights.empty() || (rights != "ADMIN" && rights.find(right) != std::string::npos); // no row: every right
}

std::string Company::prefix(int shop, int screen) const {
    return value("select Prefix from aPrefix where FinancialId=72 and shopid=? and InterfaceID=?", {shop, screen});
}

} // namespace endurance::clerk
