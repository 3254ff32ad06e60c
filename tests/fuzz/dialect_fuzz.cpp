// Fuzzes the sandbox's database: scripts in the server's dialect, run on a small company whose rows are then read and
// edited.
#include "sandbox/database/SchemaReader.h"
#include "sandbox/database/Script.h"
#include "sandbox/database/Tokenizer.h"
#include "tests/database/SmallCompany.h"

#include <cctype>
#include <cstdio>
#include <cstdlib>

namespace {

using database_test::Value;

/// Joins of more tables than this take long without any fault: each has up to four rows.
constexpr int kMostTables = 5;
/// Rows whose fields are read and written, of each query.
constexpr int kRowsEdited = 3;

sandbox::Connection& company() {
    static const auto& connection = *new database_test::ConnectionPtr(database_test::smallCompany());
    return *connection;
}

[[noreturn]] void finding(const char* what, const std::string& text) {
    std::fprintf(stderr, "%s: %s\n", what, text.c_str());
    std::abort();
}

/// What is wrong with a statement is said in the server's words, which begin with a capital letter. The database below
/// says it otherwise: it must not be asked to run what is wrong.
void checkWords(const automation::RunTimeError& error) {
    const std::string text = error.description();
    bool foreign = text.empty() || std::islower(static_cast<unsigned char>(text.front()));
    for (const char* beginning : {"ORDER BY", "GROUP BY", "HAVING", "SELECTs", "LIMIT", "RIGHT", "ON clause", "1st"})
        foreign = foreign || text.starts_with(beginning);
    if (foreign) finding("not the server's words", text);
}

template <class Work> bool attempt(Work work) {
    try {
        work();
        return true;
    } catch (const automation::RunTimeError& error) {
        checkWords(error);
        return false;
    }
}

/// Whether the statement can be read in little time, or is refused at once.
bool isSmall(std::string_view statement) {
    int tables = 0;
    return !attempt([&] {
        for (const sandbox::Token& token : sandbox::tokenize(statement))
            if (company().database().schema().table(token.text)) ++tables;
    }) || tables <= kMostTables;
}

/// Reads the rows in each of the ways there are, and writes to the first of them.
void readAndEdit(std::string_view statement) {
    const auto records = std::make_shared<sandbox::Recordset>();
    const auto connection = company().shared_from_this();
    if (!attempt([&] { records->call("Open", statement, connection, 1, 3); })) return;
    if (!records->isOpen()) return;
    const auto fields = static_cast<std::int32_t>(records->columns().size());
    for (int row = 0; row < kRowsEdited && !records->atEnd(); ++row) {
        for (std::int32_t i = 0; i < fields; ++i) {
            const automation::ObjectPtr field = records->call("Fields", i).objectPtr();
            for (const char* member : {"DefinedSize", "Value"}) attempt([&] { field->get(member); });
            const Value values[] = {field->get("Value"), automation::Null(), "1", std::int32_t(row), statement};
            attempt([&] { field->put("Value", values[(i + row) % std::size(values)]); });
        }
        if (!attempt([&] { records->call("Update"); })) return;
        if (!attempt([&] { records->call("MoveNext"); })) break;
    }
    attempt([&] { records->call("GetString", 2, -1, "\t", "\r", ""); });
    attempt([&] {
        records->call("AddNew");
        if (fields > 0) records->call("Fields", std::int32_t(0)).object().put("Value", "9");
        records->call("Update");
    });
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text(reinterpret_cast<const char*>(data), size);
    attempt([&] { sandbox::readSchema(text); });
    std::vector<std::string_view> statements;
    attempt([&] { statements = sandbox::splitScript(text); });
    statements.push_back(text);
    company().call("BeginTrans");
    for (const std::string_view statement : statements) {
        if (!isSmall(statement)) continue;
        attempt([&] { company().call("Execute", statement); });
        readAndEdit(statement);
    }
    company().call("RollbackTrans");
    return 0;
}
