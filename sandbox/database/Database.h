// A company's database as one session sees it: statements in the server's dialect in, typed rows out.
#pragma once

#include "automation/RunTimeError.h"
#include "automation/Value.h"
#include "sandbox/database/StatementShape.h"
#include "sandbox/database/Trace.h"
#include "sandbox/database/Translator.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

struct sqlite3;
struct sqlite3_stmt;

namespace sandbox {

/// Sets a connection to a company's file as all of them are: waiting for locks, and with room for the pages of a large
/// shop's tables, so that reading them in another order than they lie in does not read each page again and again.
void configure(sqlite3* connection);

/// What a statement gave; a query's rows are read whole.
struct Outcome {
    bool isQuery = false;
    std::shared_ptr<const std::vector<OutputColumn>> columns; ///< never null for a query
    std::vector<std::vector<automation::Value>> rows;
    std::string baseTable; ///< see Translation
    long long affected = 0;
};

/// Other sessions' changes are seen once they are committed (read committed). A transaction takes the file's write lock
/// at its first write; a session that waits longer than two seconds for it gets an error.
class Database {
public:
    /// Makes a new database; ":memory:" for one that lives as long as this object.
    /// Errors: -2147467259 when the file exists or cannot be made, -2147217900 for a wrong schema.
    static std::unique_ptr<Database> create(const std::string& path, std::string_view schemaText);
    /// Error -2147467259 when there is no such database.
    static std::unique_ptr<Database> open(const std::string& path);
    ~Database();
    Database(const Database&) = delete;
    Database& operator=(const Database&) = delete;

    Outcome execute(std::string_view statement);
    /// As `execute`, for the session's own needs: neither traced nor made to fail.
    Outcome executeSilently(std::string_view statement);

    /// Errors: -2147168237 inside a transaction, -2147168242 outside of one.
    void begin();
    void commit();
    void rollback();
    bool inTransaction() const { return inTransaction_; }

    /// Runs `work` so that it happens whole or not at all, inside a transaction that is already open or one of its own.
    void atomically(const std::function<void()>& work);

    /// The server's own number for what went wrong last: 1205 chosen as a deadlock's victim, 1222 a lock that was
    /// waited for too long, 2627 a key that is taken; 0 for nothing, and for what has none here.
    int nativeError() const { return nativeError_; }
    /// The server chose this session as the victim of a deadlock: its transaction is gone. Raises that error. For
    /// tests.
    [[noreturn]] void loseDeadlock();

    const Schema& schema() const { return schema_; }

    void trace(TraceSink sink) { trace_ = std::move(sink); }
    /// Makes statements fail that the predicate accepts, before they do anything. For tests.
    void failOn(std::function<bool(std::string_view)> predicate) { failOn_ = std::move(predicate); }
    /// The connection is dead from here on: what was not committed is gone and every call fails. For tests.
    void kill();

private:
    struct Prepared;
    struct Read {
        std::string text;
        Prepared* prepared = nullptr; ///< null while nothing has been read
        std::vector<Cell> values;     ///< converted to their columns' types
    };
    struct CloseStatement {
        void operator()(sqlite3_stmt* statement) const;
    };

    Database() = default;
    void openFile(const std::string& path, int flags);
    void load(std::string_view schemaText);
    void send(std::string_view statement);
    Outcome translateAndRun(std::string_view text);
    void read(std::string_view statement);
    Prepared& prepare(std::string_view statement, const StatementShape& shape);
    std::unique_ptr<Prepared> translate(std::string_view statement, const StatementShape& shape);
    void takeWriteLock();
    void runPlain(const char* sql);
    [[noreturn]] void raise(int code);
    [[noreturn]] void raiseConstraint(int code, const std::string& message);

    sqlite3* connection_ = nullptr;
    std::optional<automation::RunTimeError> raised_; ///< by a function of ours inside SQLite
    Schema schema_;
    std::unordered_map<std::string, std::vector<std::unique_ptr<Prepared>>> prepared_; ///< by shape
    std::size_t preparedCount_ = 0;
    Read read_; ///< the statement that came last
    int nativeError_ = 0;
    bool inTransaction_ = false;
    bool dead_ = false;
    TraceSink trace_;
    std::function<bool(std::string_view)> failOn_;
};

} // namespace sandbox
