#include "sandbox/database/Database.h"

#include "sandbox/database/Errors.h"
#include "sandbox/database/Parser.h"
#include "sandbox/database/SchemaReader.h"
#include "sandbox/database/SqlFunctions.h"
#include "sandbox/database/SqliteCell.h"

#include <algorithm>
#include <filesystem>
#include <sqlite3.h>

namespace sandbox {
namespace {

constexpr int kBusyMilliseconds = 2000;
constexpr std::size_t kMostPrepared = 200;
/// Longer ones are scripts' lists of rows, which never come again.
constexpr std::size_t kMostParameters = 100;

automation::Value columnValue(sqlite3_stmt* statement, int i, const SqlType& type) {
    switch (sqlite3_column_type(statement, i)) {
    case SQLITE_NULL: return automation::Null{};
    case SQLITE_INTEGER: return valueOf(std::int64_t(sqlite3_column_int64(statement, i)), type);
    case SQLITE_FLOAT: return valueOf(sqlite3_column_double(statement, i), type);
    default: break;
    }
    const auto* bytes = reinterpret_cast<const char*>(sqlite3_column_text(statement, i));
    if (!bytes) throw std::bad_alloc();
    std::string text(bytes, static_cast<std::size_t>(sqlite3_column_bytes(statement, i)));
    if (type.kind == Kind::decimal) return automation::Decimal{std::move(text)};
    return automation::Value(std::move(text));
}

std::filesystem::path filePath(const std::string& path) {
    return std::filesystem::path(std::u8string(path.begin(), path.end()));
}

} // namespace

void configure(sqlite3* connection) {
    sqlite3_extended_result_codes(connection, 1);
    sqlite3_busy_timeout(connection, kBusyMilliseconds);
    sqlite3_exec(connection, "PRAGMA cache_size = -65536", nullptr, nullptr, nullptr); // KiB
}

struct Database::Prepared {
    bool isQuery = false;
    std::shared_ptr<const std::vector<OutputColumn>> columns;
    std::string baseTable;
    std::unique_ptr<sqlite3_stmt, CloseStatement> statement;
    bool writes = false;
    std::vector<int> parameters;                       ///< numbers of the values that are bound
    std::vector<StoredParameter> stored;               ///< those of them that are converted to their columns' types
    std::vector<std::pair<std::size_t, Cell>> written; ///< values that stand in the text, with their places

    bool serves(const std::vector<Cell>& values) const {
        return std::all_of(written.begin(), written.end(),
                           [&](const auto& one) { return values[one.first] == one.second; });
    }
};

void Database::CloseStatement::operator()(sqlite3_stmt* statement) const { sqlite3_finalize(statement); }

std::unique_ptr<Database> Database::create(const std::string& path, std::string_view schemaText) {
    if (path != ":memory:" && std::filesystem::exists(filePath(path)))
        fail(kServerFailure, "The database '" + path + "' already exists.");
    const SchemaText schema = readSchema(schemaText);
    std::unique_ptr<Database> database(new Database);
    database->openFile(path, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE);
    database->runPlain("BEGIN IMMEDIATE");
    for (const std::string& sql : schema.creation) database->runPlain(sql.c_str());
    database->runPlain("CREATE TABLE sandbox_schema (text TEXT NOT NULL)");
    database->runPlain(("INSERT INTO sandbox_schema VALUES (" + quotedText(schemaText) + ")").c_str());
    database->runPlain("COMMIT");
    database->schema_ = schema.schema;
    return database;
}

std::unique_ptr<Database> Database::open(const std::string& path) {
    std::unique_ptr<Database> database(new Database);
    database->openFile(path, SQLITE_OPEN_READWRITE);
    sqlite3_stmt* raw = nullptr;
    const int code = sqlite3_prepare_v2(database->connection_, "SELECT text FROM sandbox_schema", -1, &raw, nullptr);
    const std::unique_ptr<sqlite3_stmt, CloseStatement> statement(raw);
    if (code != SQLITE_OK || sqlite3_step(raw) != SQLITE_ROW)
        fail(kServerFailure, "'" + path + "' is no company's database.");
    database->load(std::get<std::string>(cellFrom(sqlite3_column_value(raw, 0))));
    return database;
}

Database::~Database() {
    prepared_.clear();
    sqlite3_close_v2(connection_);
}

void Database::openFile(const std::string& path, int flags) {
    if (sqlite3_open_v2(path.c_str(), &connection_, flags, nullptr) != SQLITE_OK)
        fail(kServerFailure, "Cannot open database '" + path + "'.");
    configure(connection_);
    sqlite3_limit(connection_, SQLITE_LIMIT_EXPR_DEPTH, 2000);
    registerFunctions(connection_, raised_);
}

void Database::load(std::string_view schemaText) { schema_ = readSchema(schemaText).schema; }

void Database::send(std::string_view statement) {
    nativeError_ = 0;
    if (dead_) fail(kServerFailure);
    if (trace_) trace_(statement);
    if (failOn_ && failOn_(statement)) fail(kServerFailure, "The server refused the statement.");
}

std::unique_ptr<Database::Prepared> Database::translate(std::string_view statement, const StatementShape& shape) {
    const bool binds = shape.values.size() <= kMostParameters;
    Translation translation =
        Translator(schema_).translate(binds ? parseWithParameters(statement) : parseStatement(statement));
    auto prepared = std::make_unique<Prepared>();
    const std::string& sql = translation.sql;
    sqlite3_stmt* raw = nullptr;
    const int code = sqlite3_prepare_v2(connection_, sql.data(), static_cast<int>(sql.size()), &raw, nullptr);
    prepared->statement.reset(raw);
    if (code != SQLITE_OK) raise(code);
    prepared->isQuery = translation.isQuery;
    prepared->columns = std::make_shared<const std::vector<OutputColumn>>(std::move(translation.columns));
    prepared->baseTable = std::move(translation.baseTable);
    prepared->stored = std::move(translation.stored);
    prepared->writes = !sqlite3_stmt_readonly(raw);
    for (std::size_t i = 0; i < shape.values.size(); ++i) {
        const int number = static_cast<int>(i) + 1;
        if (sqlite3_bind_parameter_name(raw, number))
            prepared->parameters.push_back(number);
        else
            prepared->written.emplace_back(i, shape.values[i]);
    }
    return prepared;
}

Database::Prepared& Database::prepare(std::string_view statement, const StatementShape& shape) {
    if (const auto found = prepared_.find(shape.key); found != prepared_.end())
        for (const auto& prepared : found->second)
            if (prepared->serves(shape.values)) return *prepared;
    auto prepared = translate(statement, shape);
    if (preparedCount_ >= kMostPrepared) {
        prepared_.clear();
        preparedCount_ = 0;
    }
    ++preparedCount_;
    return *prepared_[shape.key].emplace_back(std::move(prepared));
}

/// Look-ups in a loop often repeat the statement before them: then it is not read again.
void Database::read(std::string_view statement) {
    if (read_.prepared && read_.text == statement) return;
    read_.prepared = nullptr;
    StatementShape shape = shapeOf(statement);
    Prepared& prepared = prepare(statement, shape);
    for (const StoredParameter& one : prepared.stored) {
        Cell& value = shape.values[static_cast<std::size_t>(one.number) - 1];
        value = storeCell(value, one.from, one.to);
    }
    read_.text = statement;
    read_.values = std::move(shape.values);
    read_.prepared = &prepared;
}

Outcome Database::execute(std::string_view statement) {
    send(statement);
    return translateAndRun(statement);
}

Outcome Database::executeSilently(std::string_view statement) {
    if (dead_) fail(kServerFailure);
    return translateAndRun(statement);
}

Outcome Database::translateAndRun(std::string_view text) {
    read(text);
    const Prepared& prepared = *read_.prepared;
    sqlite3_stmt* statement = prepared.statement.get();
    // SQLite reads the values where they stand.
    for (int number : prepared.parameters)
        bindCell(statement, number, read_.values[static_cast<std::size_t>(number) - 1]);
    if (prepared.writes && inTransaction_) takeWriteLock();
    // Each call for a column takes the connection's lock; taking it again costs far less than taking it.
    struct Run {
        explicit Run(sqlite3_stmt* statement)
            : statement(statement), lock(sqlite3_db_mutex(sqlite3_db_handle(statement))) {
            sqlite3_mutex_enter(lock);
        }
        Run(const Run&) = delete;
        Run& operator=(const Run&) = delete;
        ~Run() {
            sqlite3_reset(statement);
            sqlite3_mutex_leave(lock);
        }
        sqlite3_stmt* statement;
        sqlite3_mutex* lock;
    } const run(statement);
    raised_.reset();
    Outcome outcome;
    outcome.isQuery = prepared.isQuery;
    outcome.columns = prepared.columns;
    outcome.baseTable = prepared.baseTable;
    const std::vector<OutputColumn>& columns = *prepared.columns;
    int code;
    while ((code = sqlite3_step(statement)) == SQLITE_ROW) {
        std::vector<automation::Value>& row = outcome.rows.emplace_back();
        row.reserve(columns.size());
        for (std::size_t i = 0; i < columns.size(); ++i)
            row.push_back(columnValue(statement, static_cast<int>(i), columns[i].type));
    }
    if (code != SQLITE_DONE) raise(code);
    if (prepared.writes) outcome.affected = sqlite3_changes64(connection_);
    return outcome;
}

void Database::begin() {
    send("BEGIN TRANSACTION");
    if (inTransaction_) fail(kTransactionInTransaction);
    inTransaction_ = true;
}

void Database::commit() {
    send("COMMIT TRANSACTION");
    if (!inTransaction_) fail(kNoTransaction);
    if (!sqlite3_get_autocommit(connection_)) runPlain("COMMIT");
    inTransaction_ = false;
}

void Database::rollback() {
    send("ROLLBACK TRANSACTION");
    if (!inTransaction_) fail(kNoTransaction);
    inTransaction_ = false;
    if (!sqlite3_get_autocommit(connection_)) runPlain("ROLLBACK");
}

/// Reading alone begins nothing in SQLite, so that each read sees what was committed last and holds no lock.
void Database::takeWriteLock() {
    if (sqlite3_get_autocommit(connection_)) runPlain("BEGIN IMMEDIATE");
}

void Database::atomically(const std::function<void()>& work) {
    if (dead_) fail(kServerFailure);
    const bool own = sqlite3_get_autocommit(connection_) && !inTransaction_;
    takeWriteLock();
    if (!own) return work();
    try {
        work();
        runPlain("COMMIT");
    } catch (...) {
        if (!sqlite3_get_autocommit(connection_)) sqlite3_exec(connection_, "ROLLBACK", nullptr, nullptr, nullptr);
        throw;
    }
}

void Database::kill() {
    if (!sqlite3_get_autocommit(connection_)) sqlite3_exec(connection_, "ROLLBACK", nullptr, nullptr, nullptr);
    inTransaction_ = false;
    dead_ = true;
}

void Database::loseDeadlock() {
    if (!sqlite3_get_autocommit(connection_)) runPlain("ROLLBACK");
    inTransaction_ = false;
    nativeError_ = 1205;
    fail(kServerFailure, "Your transaction was deadlocked with another process and has been chosen as the victim.");
}

void Database::runPlain(const char* sql) {
    raised_.reset();
    const int code = sqlite3_exec(connection_, sql, nullptr, nullptr, nullptr);
    if (code != SQLITE_OK) raise(code);
}

void Database::raise(int code) {
    if (raised_) {
        const automation::RunTimeError error = *raised_;
        raised_.reset();
        throw error;
    }
    const std::string message = sqlite3_errmsg(connection_);
    switch (code & 0xFF) {
    case SQLITE_CONSTRAINT: nativeError_ = 2627; raiseConstraint(code, message);
    case SQLITE_BUSY:
    case SQLITE_LOCKED: nativeError_ = 1222; fail(kServerFailure, "Lock request time out period exceeded.");
    case SQLITE_ERROR:
        if (message == "integer overflow")
            fail(kDataOverflow, "Arithmetic overflow error converting expression to data type int.");
        fail(kSyntaxError, message);
    default: fail(kServerFailure, message);
    }
}

/// SQLite names the columns; the server names the constraint.
void Database::raiseConstraint(int code, const std::string& message) {
    const std::size_t colon = message.find(": ");
    const std::string columns = colon == std::string::npos ? "" : message.substr(colon + 2);
    const std::string tableName = columns.substr(0, columns.find('.'));
    if (code == SQLITE_CONSTRAINT_NOTNULL)
        fail(kConstraintViolated, "Cannot insert the value NULL into column '" + columns.substr(tableName.size() + 1) +
                                      "', table '" + tableName + "'; column does not allow nulls.");
    auto duplicate = [](const Table& table, const std::string& name, bool primary) {
        fail(kConstraintViolated, std::string("Violation of ") + (primary ? "PRIMARY" : "UNIQUE") +
                                      " KEY constraint '" + name + "'. Cannot insert duplicate key in object '" +
                                      table.name + "'.");
    };
    const std::string indexed = "index '";
    if (columns.rfind(indexed, 0) == 0) {
        const std::string name = columns.substr(indexed.size(), columns.size() - indexed.size() - 1);
        if (const Table* table = schema_.tableWithKey(name)) duplicate(*table, name, false);
    }
    if (const Table* table = schema_.table(tableName)) {
        for (const Key& key : table->keys) {
            std::string named;
            for (const std::string& column : key.columns)
                named += (named.empty() ? "" : ", ") + table->name + "." + table->column(column)->name;
            if (automation::sameName(named, columns)) duplicate(*table, key.name, key.primary);
        }
    }
    fail(kConstraintViolated, "Cannot insert duplicate key row: " + message + ".");
}

} // namespace sandbox
