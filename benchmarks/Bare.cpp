#include "benchmarks/Bare.h"

#include "sandbox/database/SqlFunctions.h"
#include "sandbox/database/SqliteCell.h"
#include "sandbox/database/StatementShape.h"

#include <stdexcept>

namespace bench {
namespace {

/// Transactions have no text of their own in what the connection traces.
const char* plainText(std::string_view statement) {
    if (statement == "BEGIN TRANSACTION") return "BEGIN IMMEDIATE";
    if (statement == "COMMIT TRANSACTION") return "COMMIT";
    return nullptr;
}

} // namespace

Bare::Bare(const std::string& path) : company_(sandbox::Database::open(path)) {
    if (sqlite3_open_v2(path.c_str(), &connection_, SQLITE_OPEN_READWRITE, nullptr) != SQLITE_OK) fail();
    sandbox::configure(connection_);
    sandbox::registerFunctions(connection_, raised_);
}

Bare::~Bare() {
    compiled_.clear();
    sqlite3_close_v2(connection_);
}

void Bare::Finalize::operator()(sqlite3_stmt* statement) const { sqlite3_finalize(statement); }

void Bare::fail() const { throw std::runtime_error(std::string("SQLite: ") + sqlite3_errmsg(connection_)); }

void Bare::run(const std::string& sql) {
    if (sqlite3_exec(connection_, sql.c_str(), nullptr, nullptr, nullptr) != SQLITE_OK) fail();
}

sqlite3_stmt* Bare::compiled(const std::string& sql) {
    auto& statement = compiled_[sql];
    if (!statement) {
        sqlite3_stmt* raw = nullptr;
        if (sqlite3_prepare_v2(connection_, sql.c_str(), -1, &raw, nullptr) != SQLITE_OK) fail();
        statement.reset(raw);
    }
    return statement.get();
}

std::vector<Bare::Step> Bare::prepare(const std::vector<std::string>& statements) {
    std::vector<Step> steps;
    for (const std::string& statement : statements) {
        Step& step = steps.emplace_back();
        if (const char* text = plainText(statement)) {
            step.statement = compiled(text);
            continue;
        }
        sandbox::StatementShape shape = sandbox::shapeOf(statement);
        const sandbox::Translation translation =
            sandbox::Translator(company_->schema()).translate(sandbox::parseWithParameters(statement));
        step.statement = compiled(translation.sql);
        for (const sandbox::StoredParameter& one : translation.stored) {
            sandbox::Cell& value = shape.values[static_cast<std::size_t>(one.number) - 1];
            value = sandbox::storeCell(value, one.from, one.to);
        }
        for (std::size_t i = 0; i < shape.values.size(); ++i) {
            const int number = static_cast<int>(i) + 1;
            if (sqlite3_bind_parameter_name(step.statement, number))
                step.values.emplace_back(number, std::move(shape.values[i]));
        }
    }
    return steps;
}

std::size_t Bare::run(const std::vector<Step>& steps) {
    std::size_t bytes = 0;
    for (const Step& step : steps) {
        for (const auto& [number, value] : step.values) sandbox::bindCell(step.statement, number, value);
        const int columns = sqlite3_column_count(step.statement);
        int code;
        while ((code = sqlite3_step(step.statement)) == SQLITE_ROW)
            for (int i = 0; i < columns; ++i)
                if (sqlite3_column_text(step.statement, i))
                    bytes += static_cast<std::size_t>(sqlite3_column_bytes(step.statement, i));
        sqlite3_reset(step.statement);
        if (code != SQLITE_DONE) fail();
    }
    return bytes;
}

} // namespace bench
