#include "sandbox/suite/Query.h"

#include "automation/Ascii.h"
#include "automation/Members.h"
#include "basic/Conversion.h"
#include "basic/Format.h"
#include "basic/Numbers.h"
#include "basic/Text.h"

namespace sandbox {

using automation::lower;
using automation::ObjectPtr;
using automation::Value;

namespace {

automation::Object& held(const ObjectPtr& connection) {
    if (!connection) automation::raise(automation::kObjectNotSet);
    return *connection;
}

bool isWordCharacter(char c) { return automation::isLetter(c) || automation::isDigit(c) || c == '_'; }

/// Where the word, in small letters, stands in the statement outside quoted text and brackets; npos where it does not.
std::size_t findWord(std::string_view statement, std::string_view word) {
    bool inText = false;
    int depth = 0;
    for (std::size_t i = 0; i < statement.size(); ++i) {
        const char c = statement[i];
        if (c == '\'') inText = !inText;
        if (inText) continue;
        if (c == '(') ++depth;
        if (c == ')') --depth;
        // Each look-up comes by here, so the first letter is compared before all else.
        if (depth == 0 && lower(c) == word[0] && (i == 0 || !isWordCharacter(statement[i - 1])) &&
            automation::sameName(statement.substr(i, word.size()), word) &&
            (i + word.size() == statement.size() || !isWordCharacter(statement[i + word.size()])))
            return i;
    }
    return std::string_view::npos;
}

} // namespace

Query::Query(const ObjectPtr& connection, const std::string& sql)
    : recordset_(held(connection).call("Execute", sql).objectPtr()) {
    held(recordset_);
}

Query::~Query() {
    try {
        recordset_->call("Close");
    } catch (...) {
        // A record set that cannot be closed has nothing left to read.
    }
}

bool Query::atEnd() const { return basic::cBool(recordset_->get("EOF")); }

void Query::next() { recordset_->call("MoveNext"); }

int Query::columns() const { return basic::cLng(recordset_->get("Fields").object().get("Count")); }

Value Query::value(int column) const {
    return recordset_->call("Fields", static_cast<std::int32_t>(column)).object().get("Value");
}

ObjectPtr Query::field(std::string_view column) const { return recordset_->call("Fields", column).objectPtr(); }

void execute(const ObjectPtr& connection, const std::string& sql) { held(connection).call("Execute", sql); }

std::string quoted(std::string_view text) { return "'" + basic::replaceAll(text, "'", "''") + "'"; }

std::string literal(const Value& value) {
    if (value.isNull() || value.isEmpty()) return "null";
    if (const std::string* text = value.as<std::string>()) return quoted(*text);
    if (value.is<automation::Date>()) return quoted(basic::format(value, "yyyymmdd hh:nn:ss"));
    if (const bool* flag = value.as<bool>()) return *flag ? "1" : "0";
    if (const double* number = value.as<double>()) return basic::decimalText(*number);
    return basic::cStr(value);
}

std::string restricted(const std::string& source, const std::string& condition) {
    if (basic::trim(condition).empty()) return source;
    return source + (findWord(source, "where") == std::string::npos ? " where " : " and ") + condition;
}

std::string withoutOrder(const std::string& query) { return query.substr(0, findWord(query, "order")); }

} // namespace sandbox
