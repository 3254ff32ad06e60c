// The limit that the module is held against: SQLite's C interface on the company's file, with everything prepared.
#pragma once

#include "sandbox/database/Cell.h"
#include "sandbox/database/Database.h"

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

struct sqlite3;
struct sqlite3_stmt;

namespace bench {

class Bare {
public:
    explicit Bare(const std::string& path);
    Bare(const Bare&) = delete;
    Bare& operator=(const Bare&) = delete;
    ~Bare();

    /// Runs text in SQLite's own dialect.
    void run(const std::string& sql);

    /// A statement of the server's dialect as SQLite takes it: compiled, with the values to bind at hand. Statements
    /// that differ only in their values share what is compiled.
    struct Step {
        sqlite3_stmt* statement = nullptr;
        std::vector<std::pair<int, sandbox::Cell>> values;
    };
    std::vector<Step> prepare(const std::vector<std::string>& statements);
    /// Binds, steps through all rows and fetches each column as text; nothing is kept. Returns the bytes of the text.
    std::size_t run(const std::vector<Step>& steps);

private:
    struct Finalize {
        void operator()(sqlite3_stmt* statement) const;
    };
    sqlite3_stmt* compiled(const std::string& sql);
    [[noreturn]] void fail() const;

    sqlite3* connection_ = nullptr;
    std::optional<automation::RunTimeError> raised_;
    std::unique_ptr<sandbox::Database> company_; ///< for its schema
    std::map<std::string, std::unique_ptr<sqlite3_stmt, Finalize>> compiled_;
};

} // namespace bench
