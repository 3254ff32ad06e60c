// The small company that the random clerks work on, and what it holds at a moment.
#pragma once

#include "sandbox/database/Company.h"
#include "tests/support/Till.h"

#include <cstdint>
#include <map>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace endurance::clerk {

inline constexpr int kCompanyId = 7;
inline constexpr int kUsers[] = {21, 22, 23, 24, 25}; ///< NEPD, NE, P, ADMIN, no row
inline constexpr int kShops[] = {3, 5, 6};
inline constexpr int kScreens[] = {1507, 1611, 1700};

using Row = std::vector<std::string>;
/// Request by shop and id: ids repeat between shops.
using Key = std::pair<int, int>;

struct Request {
    std::map<std::string, std::string> header; ///< by column; empty where there is no such request
    std::vector<Row> lines;                    ///< each as storedLine() has it, in its order
    bool operator==(const Request&) const = default;
};
struct Snapshot {
    std::map<Key, Request> requests;
    std::vector<Row> audit; ///< company, shop, user, screen, document id and number, action, minute of the command

    const Request& at(const Key& key) const;
    int highestId(int shop) const;
};

/// A quantity or price in thousandths; -1 for a text that is none.
std::int64_t thousandths(const std::string& text);
Row storedLine(const std::string& item, const std::string& toShop, const std::string& good, const std::string& bad,
               const std::string& price);
/// A day or a moment as snapshots have it: the minutes since the first day.
std::string minutes(automation::Date date);
/// Why nobody may change the request any more; "" where one may.
std::string finality(const Request& request);
/// One above the shop's highest number with the prefix.
std::string nextNumber(const Snapshot& stored, int shop, const std::string& prefix);

/// Texts that mean something to a database or to a program.
const std::vector<std::string>& hostileTexts();
/// What puts one of them into one of the text columns, in all rows; the numbers go through all pairs.
std::string hostileScript(unsigned number);

/// One company's file with a connection beside those of the tills.
class Company {
public:
    /// A script that the server refuses changes nothing.
    explicit Company(const std::string& script = "");

    const support::CompanyFile& file() const { return file_; }
    /// Barcodes and item codes, each with its item's id.
    std::vector<Row> codes() const;
    /// Code, description and unit of an item; empty where there is none.
    Row item(const std::string& id) const;
    /// Whether the barcode names an item that is active and of the right kind.
    bool isActive(const std::string& barcode) const;
    /// How much of the item one of its packs holds; "" for one that it does not have.
    std::string packSize(const std::string& item, const std::string& pack) const;
    Snapshot snapshot() const;
    /// Committed at once, on the connection of nobody's till.
    void change(const std::string& script) { sandbox::runScript(*connection_, script); }
    /// The rows of all tables that the clerks must leave alone, as one text.
    std::string rest() const;
    /// What the query answers first, with the numbers in the places of its "?"; "" where it answers nothing.
    std::string value(const std::string& query, const std::vector<int>& numbers) const;
    /// The price of an item for a shop as a screen asks for it; "" where there is none.
    std::string price(const std::string& item, int shop, int screen) const;
    /// Whether the user has the right to a command, by its letter.
    bool may(int user, int screen, char right) const;
    std::string prefix(int shop, int screen) const;
    std::string userName(int user, int shop) const {
        return value("select UserName from loUsers where Userid=? and shopid=?", {user, shop});
    }

private:
    /// What the query answers, as texts: a flag is "0" or "1", a date its minutes.
    std::vector<Row> rows(const std::string& query) const;
    Row row(std::string query, const std::vector<int>& numbers) const;

    support::CompanyFile file_;
    std::shared_ptr<sandbox::Connection> connection_;
};

} // namespace endurance::clerk
