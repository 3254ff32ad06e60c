#include "endurance/clerk/Company.h"

#include "basic/Conversion.h"
#include "basic/Format.h"
#include "basic/Text.h"
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
    if (!script.empty()) connection_->call("Execute", script);
}

std::vector<Row> Company::rows(const std::string& query) const {
    std::vector<Row> all;
    const sandbox::Outcome outcome = connection_->database().executeSilently(query);
    for (const auto& values : outcome.rows)
        std::transform(values.begin(), values.end(), std::back_inserter(all.emplace_back()), textOf);
    return all;
}

std::string Company::value(std::string query, const std::vector<int>& numbers) const {
    for (const int number : numbers) query.replace(query.find('?'), 1, std::to_string(number));
    const std::vector<Row> found = rows(query);
    return found.empty() ? "" : found[0][0];
}

const Masters& Company::masters() const {
    static const Masters read = [this] {
        Masters m;
        for (const Row& r : rows("select a.itemid,a.itemcode,a.ItemDescription,u.UnitCode from aitem a,aUnit u"
                                 " where u.UnitId=a.UnitsId")) {
            m.items[r[0]] = {r[1], r[2], r[3], {}};
            m.itemOfCode[r[1]] = r[0];
        }
        for (const Row& r : rows("select packingbarcode,itemid from aitempackingdetail")) m.itemOfCode[r[0]] = r[1];
        for (const Row& r : rows("select d.packingbarcode from aitempackingdetail d,aitem a where a.itemid=d.itemid and"
                                 " (d.Active=0 or a.Active=0 or a.itemtype='B')"))
            m.doubtful.insert(r[0]);
        for (const Row& r : rows("select d.itemid,d.packingtypeid,c.quantity from aitempackingdetail d,aitem a,"
                                 "apackingtypecapacitydetail c where d.active=1 and a.itemid=d.itemid and"
                                 " c.packingtypeid=d.packingtypeid and c.unitsid=a.UnitsId"))
            m.items[r[0]].packs[r[1]] = std::atof(r[2].c_str());
        return m;
    }();
    return read;
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
    static const std::regex table("create table (\\w+)");
    static const std::set<std::string> changing = {"mesRequesttoShopHeader", "mesRequesttoShopDetail", "loUserAuditing",
                                                   "aPAckageSettings", "miscsettings"};
    const std::string schema(sandbox::schemaText());
    std::string all;
    for (std::sregex_iterator found(schema.begin(), schema.end(), table), end; found != end; ++found) {
        if (changing.contains((*found)[1])) continue;
        all += (*found)[1];
        for (const Row& row : rows("select * from " + (*found)[1].str()))
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
