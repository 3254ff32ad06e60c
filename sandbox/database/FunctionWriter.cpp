// The functions of the server's dialect that are known here, and what types they give.
#include "sandbox/database/Errors.h"
#include "sandbox/database/ExpressionWriter.h"

#include <array>

namespace sandbox {
namespace {

constexpr std::array<std::string_view, 5> kAggregates{"count", "sum", "avg", "min", "max"};

struct TextFunction {
    std::string_view name;
    std::string_view written;
    std::size_t texts;   ///< so many arguments are text, which come first
    std::size_t numbers; ///< and so many whole numbers after them
    bool givesNumber = false;
};

constexpr std::array<TextFunction, 11> kTextFunctions{{
    {"len", "ss_len", 1, 0, true},
    {"upper", "ss_upper", 1, 0},
    {"lower", "ss_lower", 1, 0},
    {"ltrim", "ltrim", 1, 0},
    {"rtrim", "rtrim", 1, 0},
    {"left", "ss_left", 1, 1},
    {"right", "ss_right", 1, 1},
    {"substring", "ss_substring", 1, 2},
    {"replace", "ss_replace", 3, 0},
    {"charindex", "ss_charindex", 2, 0, true},
    {"space", "ss_space", 0, 1},
}};

void wantArguments(const Expression& call, std::size_t fewest, std::size_t most) {
    if (call.parts.size() < fewest || call.parts.size() > most || call.star || call.distinct)
        fail(kSyntaxError, "The " + call.name + " function requires " + std::to_string(fewest) +
                               (most == fewest ? "" : " or more") + " arguments.");
}

} // namespace

bool isAggregate(const Expression& expression) {
    if (expression.form != Expression::Form::call) return false;
    for (std::string_view name : kAggregates)
        if (automation::sameName(name, expression.name)) return true;
    return false;
}

TypedText ExpressionWriter::aggregate(const Expression& expression) const {
    auto is = [&](std::string_view name) { return automation::sameName(name, expression.name); };
    if (is("count") && expression.star) return {"count(*)", {Kind::integer}};
    if (expression.parts.size() != 1 || expression.star)
        fail(kSyntaxError, "The " + expression.name + " function requires 1 argument.");
    if (isAggregate(*expression.parts[0]))
        fail(kSyntaxError, "Cannot perform an aggregate function on an expression containing an aggregate.");
    const TypedText inner = value(*expression.parts[0]);
    const std::string argument = (expression.distinct ? "DISTINCT " : "") + collated(inner);
    const Kind kind = inner.type.kind;
    if (is("count")) return {"count(" + argument + ")", {Kind::integer}};
    if (is("min") || is("max")) {
        if (kind == Kind::bit)
            fail(kSyntaxError, "Operand data type bit is invalid for " + expression.name + " operator.");
        return {(is("min") ? "min(" : "max(") + argument + ")", inner.type};
    }
    if (!isNumber(kind) || kind == Kind::bit)
        fail(kSyntaxError,
             "Operand data type " + typeName(inner.type) + " is invalid for " + expression.name + " operator.");
    SqlType type = inner.type;
    if (kind == Kind::tinyInt || kind == Kind::smallInt) type.kind = Kind::integer;
    if (is("sum")) {
        if (kind == Kind::decimal) {
            type.size = 38;
            return {"ss_sum(" + argument + ")", type};
        }
        if (type.kind == Kind::integer)
            return {"ss_to(sum(" + argument + "), " + std::to_string(static_cast<int>(Kind::bigInt)) + ", " +
                        std::to_string(static_cast<int>(Kind::integer)) + ", 0, 0)",
                    type};
        return {"sum(" + argument + ")", type};
    }
    if (kind == Kind::decimal) fail(kSyntaxError, "avg of a decimal is not known here.");
    if (kind == Kind::real) return {"avg(" + argument + ")", type};
    return {"(sum(" + argument + ") / count(" + argument + "))", type};
}

TypedText ExpressionWriter::dateCall(const Expression& expression) const {
    auto is = [&](std::string_view name) { return automation::sameName(name, expression.name); };
    const SqlType dateTime{Kind::dateTime};
    if (is("getdate")) {
        wantArguments(expression, 0, 0);
        return {"ss_now()", dateTime};
    }
    if (is("year") || is("month") || is("day")) {
        wantArguments(expression, 1, 1);
        const std::string moment = converted(value(*expression.parts[0]), dateTime).sql;
        return {"ss_datepart(" + quotedText(expression.name) + ", " + moment + ")", {Kind::integer}};
    }
    wantArguments(expression, 3, 3);
    const Expression& unit = *expression.parts[0];
    bool days = false;
    for (std::string_view name : {"day", "dd", "d"})
        days = days || (unit.form == Expression::Form::column && automation::sameName(unit.name, name));
    if (!days) fail(kSyntaxError, expression.name + " is known here for days only.");
    const std::string last = converted(value(*expression.parts[2]), dateTime).sql;
    if (is("dateadd")) {
        const std::string count = converted(value(*expression.parts[1]), {Kind::integer}).sql;
        return {"(" + last + " + " + count + " * 86400000)", dateTime};
    }
    const std::string from = converted(value(*expression.parts[1]), dateTime).sql;
    return {"ss_datediff(" + from + ", " + last + ")", {Kind::integer}};
}

TypedText ExpressionWriter::call(const Expression& expression) const {
    if (isAggregate(expression)) return aggregate(expression);
    auto is = [&](std::string_view name) { return automation::sameName(name, expression.name); };
    for (const TextFunction& function : kTextFunctions) {
        if (!is(function.name)) continue;
        wantArguments(expression, function.texts + function.numbers, function.texts + function.numbers);
        SqlType type{function.givesNumber ? Kind::integer : Kind::text};
        std::string arguments;
        for (std::size_t i = 0; i < expression.parts.size(); ++i) {
            const bool isText = i < function.texts;
            const TypedText part =
                isText ? text(*expression.parts[i]) : converted(value(*expression.parts[i]), {Kind::integer});
            if (isText && part.type.wide && !function.givesNumber) type.wide = true;
            arguments += (i ? ", " : "") + part.sql;
        }
        return {std::string(function.written) + "(" + arguments + ")", type};
    }
    if (is("isnull")) {
        wantArguments(expression, 2, 2);
        const TypedText first = value(*expression.parts[0]);
        const TypedText second = value(*expression.parts[1]);
        // The result has the type of the first argument, not the common one.
        if (first.type.kind == Kind::unknown) return second;
        return {"ifnull(" + first.sql + ", " + fitted(second, first.type).sql + ")", first.type};
    }
    if (is("coalesce")) {
        wantArguments(expression, 2, 50);
        std::vector<TypedText> parts;
        SqlType type;
        for (const auto& part : expression.parts) {
            parts.push_back(value(*part));
            type = commonType(type, parts.back().type);
        }
        std::string sql = "coalesce(";
        for (std::size_t i = 0; i < parts.size(); ++i) sql += (i ? ", " : "") + fitted(parts[i], type).sql;
        return {sql + ")", type};
    }
    if (is("nullif")) {
        wantArguments(expression, 2, 2);
        const TypedText first = value(*expression.parts[0]);
        return {"CASE WHEN " + compared(first, "=", value(*expression.parts[1])) + " THEN NULL ELSE " + first.sql +
                    " END",
                first.type};
    }
    if (is("isnumeric")) {
        wantArguments(expression, 1, 1);
        const TypedText inner = value(*expression.parts[0]);
        const bool isText = inner.type.kind == Kind::text;
        const char* otherwise = isNumber(inner.type.kind) ? " IS NOT NULL)" : " IS NULL AND 0)";
        return {isText ? "ss_isnumeric(" + inner.sql + ")" : "(" + inner.sql + otherwise, {Kind::integer}};
    }
    if (is("abs")) {
        wantArguments(expression, 1, 1);
        const TypedText inner = value(*expression.parts[0]);
        if (!isNumber(inner.type.kind) || inner.type.kind == Kind::decimal)
            fail(kSyntaxError, "abs of " + typeName(inner.type) + " is not known here.");
        return {"abs(" + inner.sql + ")", inner.type};
    }
    for (std::string_view name : {"getdate", "year", "month", "day", "dateadd", "datediff"})
        if (is(name)) return dateCall(expression);
    fail(kSyntaxError, "'" + expression.name + "' is not a recognized function name.");
}

} // namespace sandbox
