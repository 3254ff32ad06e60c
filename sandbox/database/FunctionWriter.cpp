// The functions of the server's dialect that are known here, and what types they give.
#include "sandbox/database/Errors.h"
#include "sandbox/database/ExpressionWriter.h"

#include <array>

namespace sandbox {
namespace {

constexpr std::array<std::string_view, 4> kAggregates{"count", "sum", "min", "max"};

struct TextFunction {
    std::string_view name;
    std::string_view written;
    std::size_t texts;   ///< so many arguments are text, which come first
    std::size_t numbers; ///< and so many whole numbers after them
    bool givesNumber = false;
};

constexpr std::array<TextFunction, 7> kTextFunctions{{
    {"len", "ss_len", 1, 0, true},
    {"upper", "ss_upper", 1, 0},
    {"ltrim", "ltrim", 1, 0},
    {"rtrim", "rtrim", 1, 0},
    {"right", "ss_right", 1, 1},
    {"substring", "ss_substring", 1, 2},
    {"replace", "ss_replace", 3, 0},
}};

void wantArguments(const Expression& call, std::size_t count) {
    if (call.parts.size() != count || call.star)
        fail(kSyntaxError, "The " + call.name + " function requires " + std::to_string(count) + " arguments.");
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
    if (is("count")) {
        if (!expression.star) fail(kSyntaxError, "Of count, only count(*) is known here.");
        return {"count(*)", {Kind::integer}};
    }
    if (expression.parts.size() != 1) fail(kSyntaxError, "The " + expression.name + " function requires 1 argument.");
    if (isAggregate(*expression.parts[0]))
        fail(kSyntaxError, "Cannot perform an aggregate function on an expression containing an aggregate.");
    const TypedText inner = value(*expression.parts[0]);
    const std::string argument = collated(inner);
    const Kind kind = inner.type.kind;
    if (is("min") || is("max")) {
        if (kind == Kind::bit)
            fail(kSyntaxError, "Operand data type bit is invalid for " + expression.name + " operator.");
        return {(is("min") ? "min(" : "max(") + argument + ")", inner.type};
    }
    if (!isNumber(kind) || kind == Kind::bit)
        fail(kSyntaxError,
             "Operand data type " + typeName(inner.type) + " is invalid for " + expression.name + " operator.");
    SqlType type = inner.type;
    if (kind == Kind::smallInt) type.kind = Kind::integer;
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

TypedText ExpressionWriter::call(const Expression& expression) const {
    if (isAggregate(expression)) return aggregate(expression);
    auto is = [&](std::string_view name) { return automation::sameName(name, expression.name); };
    for (const TextFunction& function : kTextFunctions) {
        if (!is(function.name)) continue;
        wantArguments(expression, function.texts + function.numbers);
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
        wantArguments(expression, 2);
        const TypedText first = value(*expression.parts[0]);
        TypedText second = value(*expression.parts[1]);
        // The result has the type of the first argument, not the common one.
        if (first.type.kind == Kind::unknown) return second;
        return {"ifnull(" + first.sql + ", " + fitted(second, first.type).sql + ")", first.type};
    }
    if (is("isnumeric")) {
        wantArguments(expression, 1);
        return {"ss_isnumeric(" + text(*expression.parts[0]).sql + ")", {Kind::integer}};
    }
    if (is("getdate")) {
        wantArguments(expression, 0);
        return {"ss_now()", {Kind::dateTime}};
    }
    fail(kSyntaxError, "'" + expression.name + "' is not a recognized function name.");
}

} // namespace sandbox
