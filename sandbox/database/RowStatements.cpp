#include "sandbox/database/RowStatements.h"

#include "basic/Conversion.h"
#include "sandbox/database/Errors.h"
#include "sandbox/database/ServerTime.h"

#include <array>

namespace sandbox {
namespace {

using automation::Value;

std::string literal(const ColumnValue& item) {
    const TypedCell given = cellOf(item.value);
    const SqlType& type = item.column->type;
    if (given.type.kind == Kind::text || type.kind == Kind::text) return literalText(given.cell, type);
    return literalText(convertCell(given.cell, given.type, type), type);
}

std::string keyCondition(const std::vector<ColumnValue>& key) {
    std::string text;
    for (const ColumnValue& item : key)
        text += (text.empty() ? "" : " AND ") + item.column->name + " = " + literal(item);
    return text;
}

TypedCell assignedCell(const SqlType& type, const Value& value) {
    switch (type.kind) {
    case Kind::bit: return {std::int64_t(basic::cBool(value)), {Kind::bit}};
    case Kind::smallInt:
    case Kind::integer: return {std::int64_t(basic::cLng(value)), {Kind::bigInt}};
    case Kind::real: return {basic::cDbl(value), {Kind::real}};
    case Kind::dateTime: return {momentOf(basic::cDate(value)), {Kind::dateTime}};
    case Kind::text: return {basic::cStr(value), {Kind::text}};
    default: return cellOf(value);
    }
}

} // namespace

std::string insertStatement(const Table& table, const std::vector<ColumnValue>& values) {
    std::string names;
    std::string literals;
    for (const ColumnValue& item : values) {
        names += (names.empty() ? "" : ", ") + item.column->name;
        literals += (literals.empty() ? "" : ", ") + literal(item);
    }
    return "INSERT INTO " + table.name + " (" + names + ") VALUES (" + literals + ")";
}

std::string updateStatement(const Table& table, const std::vector<ColumnValue>& changes,
                            const std::vector<ColumnValue>& key) {
    std::string assignments;
    for (const ColumnValue& item : changes)
        assignments += (assignments.empty() ? "" : ", ") + item.column->name + " = " + literal(item);
    return "UPDATE " + table.name + " SET " + assignments + " WHERE " + keyCondition(key);
}

std::string selectStatement(const Table& table, const std::vector<std::string>& columns,
                            const std::vector<ColumnValue>& key) {
    std::string names;
    for (const std::string& name : columns) names += (names.empty() ? "" : ", ") + name;
    return "SELECT " + names + " FROM " + table.name + " WHERE " + keyCondition(key);
}

Value fieldValue(const Column& column, const Value& value) {
    if (value.isNull() || value.isEmpty()) return automation::Null{};
    try {
        const TypedCell given = assignedCell(column.type, value);
        return valueOf(storeCell(given.cell, given.type, column.type), column.type);
    } catch (const automation::RunTimeError& error) {
        const bool wrongType = error.number() == automation::kTypeMismatch || error.number() == kConversionError ||
                               error.number() == kWrongValueType;
        fail(wrongType ? kWrongValueType : kMultipleStepErrors);
    }
}

} // namespace sandbox
