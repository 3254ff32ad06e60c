// The whole module on the sandbox: one user at one screen of the sample company.
#pragma once

#include "component/Component.h"
#include "sandbox/database/Company.h"
#include "tests/support/PortableSystem.h"
#include "tests/support/ScriptedDesktop.h"
#include "tests/support/User.h"

#include <memory>
#include <string>
#include <vector>

namespace support {

using Rows = std::vector<std::vector<std::string>>;

/// A company's file of its own, made as a copy of the sample company and removed at the end.
class CompanyFile {
public:
    CompanyFile();
    CompanyFile(const CompanyFile&) = delete;
    CompanyFile& operator=(const CompanyFile&) = delete;
    ~CompanyFile();
    const std::string& path() const { return path_; }

    /// What the database holds, read on a connection of its own, so that only committed rows are seen. Null reads as
    /// "".
    Rows rows(const std::string& query) const;
    std::string value(const std::string& query) const;
    /// Changes the company before or between the user's acts; statements parted by ";".
    void change(const std::string& script) const;

private:
    std::string path_;
};

/// Where a user sits: which menu entry opened the module, who it is, and in which shop.
struct Seat {
    std::int32_t screenId = goodsreq::kGoodsRequestToShop;
    std::int16_t userId = 1;
    std::int16_t shopId = 1;
};

class Shop {
    std::vector<std::string> statements_; ///< first, as closing the open forms at the end sends more

public:
    explicit Shop(const CompanyFile& company, Seat seat = {});
    /// Fails the test where a statement was sent while a forward-only result was still being read: on a real server that
    /// is another log-on, and an error inside a transaction.
    ~Shop();

    /// Shows the register, as the host does.
    void opens();
    /// Of all statements that the database was sent since the module opened, those that begin so.
    std::vector<std::string> statements(std::string_view beginning = {}) const;
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

};

/// An item that a shop may request from another, and the ways to name it.
struct SampleItem {
    std::string id, code, description, barcode, shortcut, unit;
};

/// Items that both shops carry, active, with a packing barcode and a shortcut number; by item id.
std::vector<SampleItem> requestableItems(const CompanyFile& company, int shop, int otherShop, int count);

} // namespace support
