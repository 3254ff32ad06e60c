// The whole module on the sandbox: one user at one screen of the sample company.
#pragma once

#include "component/Component.h"
#include "sandbox/database/Company.h"
#include "sandbox/tryout/OpenDialogs.h"
#include "tests/support/PortableSystem.h"
#include "tests/support/Scratch.h"
#include "tests/support/ScriptedDesktop.h"
#include "tests/support/User.h"

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace support {

/// A company's file of its own, made as a copy of the sample company and removed at the end.
class CompanyFile {
public:
    CompanyFile();
    /// The sample company in another schema, which takes a second.
    explicit CompanyFile(std::string_view schema);
    static CompanyFile copyOf(const std::string& path) { return CompanyFile(Original{path}); }
    const std::string& path() const { return path_; }

    /// What the database holds, read on a connection of its own, so that only committed rows are seen. Null reads as
    /// "".
    Rows rows(const std::string& query) const;
    std::string value(const std::string& query) const;
    /// Changes the company before or between the user's acts; statements parted by ";".
    void change(const std::string& script) const;

private:
    struct Original {
        const std::string& path;
    };
    explicit CompanyFile(Original original);

    TestFolder folder_;
    std::string path_;
};

/// Where a user sits: which menu entry opened the module, who it is, and in which shop.
struct Seat {
    std::int32_t screenId = 1507;
    std::int16_t userId = 1;
    std::int16_t shopId = 1;
};

class Till {
    // First, as closing the open forms at the end sends more.
    std::vector<std::string> statements_, calls_;
    std::string broken_;
    std::map<std::string, std::weak_ptr<automation::Object>> made_;
    automation::ObjectFactory inner_;

public:
    /// What stands between the module and the suite's components in place of the watch that this class keeps on them.
    using Between = std::function<automation::ObjectFactory(automation::ObjectFactory)>;

    explicit Till(const CompanyFile& company, Seat seat = {}, const Between& between = nullptr);
    /// Fails the test where a statement was sent while a forward-only result was still being read: on a real server
    /// that is another log-on, and an error inside a transaction.
    ~Till();

    /// Shows the register, as the host does.
    void opens();
    /// Of all statements that the database was sent since the module opened, those that begin so.
    std::vector<std::string> statements(std::string_view beginning = {}) const;
    /// What the suite's components were told, as "clsUserAuditing.LoggedTime(31/03/2026 10:30:00)"; of all, those that
    /// begin so.
    std::vector<std::string> calls(std::string_view beginning = {}) const;
    /// Fails from now on: a statement that holds the text, a component or a member ("Class.Member") that is named so.
    /// "" mends.
    void breaks(const std::string& what);
    /// Whether the module still holds what it got last by this ProgID or member ("Class.Member").
    bool holds(const std::string& name) const { return made_.contains(name) && !made_.at(name).expired(); }
    /// The boxes that the error component showed, oldest first.
    std::vector<std::string> errors() const;
    /// Picks the supplying shop in the editor by its id.
    void picksShop(int shopId);

    ScriptedDesktop desktop;
    PortableSystem system;
    std::vector<std::string> reportCalls; ///< what the report engine was told, as "Member(argument|argument)"
    std::shared_ptr<sandbox::Connection> connection;
    goodsreq::Module module;
    goodsreq::Component component;
    User user;

private:
    class Watched;
    automation::ObjectPtr make(std::string_view progId);
};

/// An item that a shop may request from another, and the ways to name it.
struct SampleItem {
    std::string id, code, description, barcode, shortcut, unit;
};

/// Items that both shops carry, active, with a packing barcode and a shortcut number; by item id.
std::vector<SampleItem> requestableItems(const CompanyFile& company, int shop, int otherShop, int count);

} // namespace support
