// The small company that the random clerks work on, and what it holds at a moment.
#pragma once

#include "sandbox/database/Company.h"
#include "tests/support/Shop.h"

#include <compare>
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

/// A quantity or price in thousandths; -1 for a text that is none.
std::int64_t thousandths(const std::string& text);

using Row = std::vector<std::string>;
/// Request by shop and id: ids repeat between shops.
using Key = std::pair<int, int>;
/// What the header's columns hold, by the words that snapshot() has for them.
using Header = std::map<std::string, std::string>;

struct StoredLine {
    int item = 0;
    int toShop = 0;
    std::int64_t good = 0, bad = 0, price = 0;
    auto operator<=>(const StoredLine&) const = default;
};
struct Snapshot {
    std::map<Key, Header> headers;
    std::map<Key, std::vector<StoredLine>> lines; ///< by item
    std::vector<Row> audit; ///< company, shop, user, screen, document id and number, action, minute of the command
};
/// Why nobody may change it any more; "" where one may.
std::string finality(const Header& header);

struct Item {
    std::string code, description, unit;
    std::map<std::string, double> packs; ///< capacity by the packing's id
};

/// One above the shop's highest number with the prefix.
std::string nextNumber(const Snapshot& stored, int shop, const std::string& prefix);

/// What does not change while the clerks work.
struct Masters {
    std::map<int, Item> items;
    std::map<Key, std::string> users;      ///< names by shop and id
    std::map<std::string, int> itemOfCode; ///< barcodes and item codes
    std::set<std::string> doubtful;        ///< codes of those that are not active, or of another kind
    std::map<std::pair<int, std::string>, int> itemOfShortcut; ///< by shop
};

/// One company's file with a connection beside those of the tills.
class Company {
public:
    explicit Company(const std::string& script = "");

    const support::CompanyFile& file() const { return file_; }
    const Masters& masters() const;
    Snapshot snapshot();
    /// Committed at once, on the connection of nobody's till.
    void change(const std::string& script) { sandbox::runScript(*connection_, script); }
    /// The rows of all tables that the clerks must leave alone, as one text.
    std::string rest();
    /// The price of an item for a shop as a screen asks for it; "0" where there is none.
    std::string price(int item, int shop, int screen);
    /// Whether the user has the right to a command, by its letter.
    bool may(int user, int screen, char right);
    std::string prefix(int shop, int screen);

private:
    /// What the query answers first; `otherwise` where it answers nothing.
    std::string value(const std::string& query, const std::string& otherwise = "");

    support::CompanyFile file_;
    std::shared_ptr<sandbox::Connection> connection_;
};

} // namespace endurance::clerk
