#include "sandbox/database/SqlType.h"

#include "automation/Members.h"

#include <algorithm>
#include <map>

namespace sandbox {

bool isWholeNumber(Kind kind) { return kind >= Kind::bit && kind <= Kind::bigInt; }
bool isNumber(Kind kind) { return kind >= Kind::bit && kind <= Kind::real; }

SqlType typeNamed(std::string_view name) {
    static const std::map<std::string, SqlType, automation::NameLess> types{
        {"bit", {Kind::bit}},
        {"smallint", {Kind::smallInt}},
        {"int", {Kind::integer}},
        {"bigint", {Kind::bigInt}},
        {"money", {Kind::money}},
        {"decimal", {Kind::decimal, 18, 0}},
        {"float", {Kind::real}},
        {"real", {Kind::real}},
        {"datetime", {Kind::dateTime}},
        {"char", {Kind::text, 1, 0, false, true}},
        {"varchar", {Kind::text, 1, 0, false, false}},
        {"nvarchar", {Kind::text, 1, 0, true, false}},
    };
    auto found = types.find(name);
    return found == types.end() ? SqlType{} : found->second;
}

std::string typeName(const SqlType& type) {
    switch (type.kind) {
    case Kind::unknown: return "NULL";
    case Kind::text: return std::string(type.wide ? "n" : "") + (type.fixed ? "char" : "varchar");
    case Kind::bit: return "bit";
    case Kind::smallInt: return "smallint";
    case Kind::integer: return "int";
    case Kind::bigInt: return "bigint";
    case Kind::money: return "money";
    case Kind::decimal: return "numeric";
    case Kind::real: return "float";
    case Kind::dateTime: return "datetime";
    }
    return "";
}

SqlType commonType(const SqlType& a, const SqlType& b) {
    if (a.kind != b.kind) {
        SqlType common = a.kind > b.kind ? a : b;
        const SqlType& other = a.kind > b.kind ? b : a;
        if (common.kind == Kind::decimal && isNumber(other.kind)) {
            // Wide enough for every value of the other kind.
            const int digits = other.kind == Kind::bigInt || other.kind == Kind::money ? 19 : 10;
            common.size = std::min(38, std::max(common.size - common.scale, digits) + common.scale);
        }
        return common;
    }
    SqlType common = a;
    if (a.kind == Kind::text) {
        common.size = a.size == 0 || b.size == 0 ? 0 : std::max(a.size, b.size);
        common.wide = a.wide || b.wide;
        common.fixed = a.fixed && b.fixed && a.size == b.size;
    } else if (a.kind == Kind::decimal) {
        common.scale = std::max(a.scale, b.scale);
        common.size = std::min(38, std::max(a.size - a.scale, b.size - b.scale) + common.scale);
    }
    return common;
}

std::string storageDeclaration(const SqlType& type) {
    switch (type.kind) {
    case Kind::text: return "TEXT COLLATE SERVER";
    case Kind::decimal: return "TEXT COLLATE DECIMAL";
    case Kind::real: return "REAL";
    default: return "INT";
    }
}

} // namespace sandbox
