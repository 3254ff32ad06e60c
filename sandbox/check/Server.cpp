#include "automation/RunTimeError.h"
#include "basic/Conversion.h"
#include "basic/Text.h"
#include "com/ObjectFactory.h"
#include "common/Connection.h"
#include "sandbox/check/Check.h"

#include <fstream>
#include <functional>
#include <optional>
#include <set>

namespace check {
namespace {

using automation::ObjectPtr;
using automation::RunTimeError;
using automation::Value;
using goodsreq::Cursor;
using goodsreq::Lock;
using goodsreq::Recordset;

constexpr const char* kHeaders = "mesRequesttoShopHeader";

Recordset open(const ObjectPtr& connection, const std::string& query, Cursor cursor, Lock lock) {
    Recordset records(com::comObjectFactory()("ADODB.Recordset"));
    records.object()->call("Open", query, connection, std::int32_t(cursor), std::int32_t(lock));
    return records;
}

/// A property of a provider's object as text; "?" where it has none.
std::string property(const ObjectPtr& object, const char* name) {
    try {
        return basic::concatText(object->get(name));
    } catch (const RunTimeError&) {
        return "?";
    }
}

std::string columnsOf(const Recordset& records) {
    std::string text;
    const ObjectPtr fields = records.object()->get("Fields").objectPtr();
    const long count = basic::cLng(fields->get("Count"));
    for (std::int32_t i = 0; i < count; ++i) {
        const ObjectPtr field = fields->call("Item", i).objectPtr();
        text += (i ? ", " : "") + property(field, "Name") + " " + property(field, "Type") + "/" +
                property(field, "DefinedSize");
    }
    return text;
}

std::string nativeError(const ObjectPtr& connection) {
    try {
        const ObjectPtr errors = connection->get("Errors").objectPtr();
        return property(errors->call("Item", std::int32_t{0}).objectPtr(), "NativeError");
    } catch (const RunTimeError&) {
        return "none";
    }
}

/// What the provider answers to `act`: nothing where it does it.
std::optional<RunTimeError> refusal(const std::function<void()>& act) {
    try {
        act();
        return std::nullopt;
    } catch (const RunTimeError& error) {
        return error;
    }
}

std::string numbersOf(const RunTimeError& error, const ObjectPtr& connection) {
    return "error " + std::to_string(error.number()) + ", native error " + nativeError(connection);
}

/// The selects among the statements, one of each kind.
std::vector<std::string> selectsOf(const std::filesystem::path& file) {
    std::vector<std::string> selects;
    std::set<std::string> kinds;
    std::ifstream lines(file);
    for (std::string line; std::getline(lines, line);) {
        line = basic::trim(line);
        if (line.ends_with('\r')) line.pop_back();
        std::string kind = basic::lcase(line);
        std::erase_if(kind, [](char c) { return c >= '0' && c <= '9'; });
        if (kind.starts_with("select ") && kinds.insert(kind).second) selects.push_back(line);
    }
    return selects;
}

void runSelects(Report& report, const ObjectPtr& connection, const std::vector<std::string>& selects) {
    for (const std::string& select : selects) {
        std::string columns;
        const auto refused =
            refusal([&] { columns = columnsOf(open(connection, select, Cursor::forwardOnly, Lock::readOnly)); });
        if (refused)
            report.failed(select, numbersOf(*refused, connection) + ": " + refused->description());
        else
            report.passed(select + "\n    " + columns);
    }
}

void tellHabits(Report& report, const ObjectPtr& connection) {
    const std::string rows = std::string("select srhrequestid, srhrequestno from ") + kHeaders;
    std::string count;
    if (refusal([&] { count = std::to_string(open(connection, rows, Cursor::keyset, Lock::readOnly).recordCount()); }))
        count = "refused";
    report.fact("Rows that a keyset counts", count);

    std::string answer = "accepted";
    {
        const Recordset reading = open(connection, rows, Cursor::forwardOnly, Lock::readOnly);
        if (const auto refused = refusal([&] { connection->call("BeginTrans"); }))
            answer = numbersOf(*refused, connection) + ": " + refused->description();
    }
    refusal([&] { connection->call("RollbackTrans"); });
    report.fact("A transaction begun while a result is read", answer);

    const auto refused =
        refusal([&] { connection->call("Execute", "select no_such_column from " + std::string(kHeaders)); });
    report.fact("An unknown column",
                refused ? numbersOf(*refused, connection) + ": " + refused->description() : "accepted");
}

/// A request of the database once more under another number, in the current transaction.
void addCopy(const ObjectPtr& connection, long id, long newId) {
    Recordset records =
        open(connection, std::string("select * from ") + kHeaders + " where srhrequestid=" + std::to_string(id),
             Cursor::keyset, Lock::optimistic);
    const ObjectPtr fields = records.object()->get("Fields").objectPtr();
    std::vector<Value> row;
    for (std::int32_t i = 0; i < basic::cLng(fields->get("Count")); ++i) row.push_back(records.value(i));
    records.addNew();
    for (std::size_t i = 0; i < row.size(); ++i)
        if (!row[i].isNull()) fields->call("Item", std::int32_t(i)).objectPtr()->put("Value", row[i]);
    records.set("srhrequestid", std::int32_t(newId));
    records.set("srhrequestno", "CHECK");
    if (const auto refused = refusal([&] { records.update(); })) {
        refusal([&] { records.object()->call("CancelUpdate"); });
        throw *refused;
    }
}

void writeAndTakeBack(Report& report, const ObjectPtr& connection) {
    const auto number = [&](const std::string& query) {
        const Value value = open(connection, query, Cursor::forwardOnly, Lock::readOnly).value(0);
        return value.isNull() ? 0 : basic::cLng(value);
    };
    const long id = number(std::string("select max(srhrequestid) from ") + kHeaders);
    if (!id) return report.line("skipped writing: there is no request to copy");
    connection->call("BeginTrans");
    const auto first = refusal([&] { addCopy(connection, id, id + 1); });
    const auto second = refusal([&] { addCopy(connection, id, id + 1); });
    if (first)
        report.failed("a request is added", numbersOf(*first, connection) + ": " + first->description());
    else if (!second)
        report.failed("a second one of its number is refused", "it was taken");
    else
        report.passed("a request is added, a second one of its number refused: " + numbersOf(*second, connection));
    const auto stays = refusal([&] { connection->call("RollbackTrans"); });
    if (stays ||
        number(std::string("select count(*) from ") + kHeaders + " where srhrequestid=" + std::to_string(id + 1)))
        report.failed("nothing of it stands", "request " + std::to_string(id + 1) + " is there after the rollback");
    else
        report.passed("nothing of it stands");
}

} // namespace

void reportServer(Report& report, const std::string& text, const std::filesystem::path& statements, bool write) {
    try {
        const ObjectPtr connection = com::comObjectFactory()("ADODB.Connection");
        connection->call("Open", text);
        report.passed("the connection opens");
        report.fact("Provider", property(connection, "Provider"));
        runSelects(report, connection, selectsOf(statements));
        tellHabits(report, connection);
        if (write) writeAndTakeBack(report, connection);
        connection->call("Close");
    } catch (const RunTimeError& error) {
        report.failed("the machine's ADO", std::to_string(error.number()) + ": " + error.description());
    }
}

} // namespace check
