// ADODB.Connection over the sandbox's database.
#pragma once

#include "automation/Members.h"
#include "automation/Object.h"
#include "sandbox/database/Database.h"

#include <memory>
#include <string>

namespace sandbox {

class Connection : public automation::WithMembers<Connection>, public std::enable_shared_from_this<Connection> {
public:
    Connection() = default;
    explicit Connection(std::unique_ptr<Database> database) : database_(std::move(database)) {}

    static const automation::Members<Connection>& members();
    std::string className() const override { return "Connection"; }

    /// What this process opened last, for those that reach the company by another road; empty before.
    static const std::string& lastOpened();

    bool isOpen() const { return database_ != nullptr; }
    /// Error 3704 when closed.
    Database& database();
    /// For sending a statement. Errors: 3704 when closed, -2147467259 while a forward-only result is still being read
    /// inside a transaction. Outside of one the provider opens another connection for it, which costs a log-on.
    Database& idleDatabase();
    /// A forward-only result has rows that were not read yet (1), or no longer (-1).
    void occupy(int change) { beingRead_ += change; }
    /// How many statements needed another connection so far.
    int moreConnections() const { return moreConnections_; }

    /// The text is a file's path, or "name=value" pairs with ";" between them, of which "Data Source" is the path and
    /// "Trace", where it is given, a file for the statements.
    /// Errors: 3705 when open, -2147467259 when there is no such database.
    void open(const std::string& connectionString);
    /// Errors: 3704 when closed, 3246 inside a transaction.
    void close();

    // These hold for what is open now and for what is opened later.
    void trace(TraceSink sink);
    void traceTo(const std::string& path) { trace(traceFileSink(path)); }
    void failOn(std::function<bool(std::string_view)> predicate);
    void kill() { database().kill(); }

private:
    automation::Value execute(automation::Arguments arguments);

    std::unique_ptr<Database> database_;
    std::string connectionString_;
    int beingRead_ = 0;
    int moreConnections_ = 0;
    TraceSink trace_;
    std::function<bool(std::string_view)> failOn_;
};

} // namespace sandbox
