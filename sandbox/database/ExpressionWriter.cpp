#include "sandbox/database/ExpressionWriter.h"

#include "sandbox/database/Cell.h"
#include "sandbox/database/Errors.h"

#include <limits>

namespace sandbox {
namespace {

using Form = Expression::Form;

/// From kind, to kind, size, and scale; for text the last says whether it is filled up with blanks.
std::string typeArguments(const SqlType& from, const SqlType& to) {
    const int last = to.kind == Kind::text ? (to.fixed ? 1 : 0) : to.scale;
    return ", " + std::to_string(static_cast<int>(from.kind)) + ", " + std::to_string(static_cast<int>(to.kind)) +
           ", " + std::to_string(to.size) + ", " + std::to_string(last);
}

std::string parameterName(const Expression& expression) { return "?" + std::to_string(expression.parameter); }

} // namespace

std::string ExpressionWriter::collated(const TypedText& value) {
    if (value.type.kind == Kind::text) return value.sql + " COLLATE SERVER";
    if (value.type.kind == Kind::decimal) return value.sql + " COLLATE DECIMAL";
    return value.sql;
}

TypedText ExpressionWriter::converted(TypedText value, const SqlType& to) {
    const Kind from = value.type.kind;
    if (from == to.kind || from == Kind::unknown || (isWholeNumber(from) && isWholeNumber(to.kind) && from < to.kind))
        return {std::move(value.sql), to};
    // Operands that meet keep every digit, whatever sizes the two types have.
    SqlType unlimited = to;
    unlimited.size = 0;
    return {"ss_to(" + value.sql + typeArguments(value.type, unlimited) + ")", to};
}

TypedText ExpressionWriter::fitted(TypedText value, const SqlType& to) {
    const SqlType from = value.type;
    if (to.kind != Kind::decimal || from.kind == Kind::unknown || (from.kind == to.kind && from.scale == to.scale))
        return converted(std::move(value), to);
    return {"ss_to(" + value.sql + typeArguments(from, to) + ")", to};
}

std::string ExpressionWriter::stored(const TypedText& value, const SqlType& to) {
    if (value.sql == "NULL") return value.sql;
    return "ss_put(" + value.sql + typeArguments(value.type, to) + ")";
}

TypedText ExpressionWriter::number(const Expression& expression) const {
    // SQLite reads "1e3" itself; what it cannot hold is infinite and refused where it is converted.
    if (expression.form == Form::real) return {expression.name, {Kind::real}};
    if (expression.parameter > 0) return {parameterName(expression), {Kind::integer}};
    const basic::Digits exact = parseDecimal(expression.name).value_or(basic::Digits());
    const std::string text = basic::plainText(exact);
    if (expression.form == Form::whole && basic::compare(exact, basic::digitsOf(std::int64_t{2147483647})) <= 0)
        return {text, {Kind::integer}};
    const int scale = static_cast<int>(exact.fraction.size());
    const int size = static_cast<int>(exact.whole.size()) + scale;
    if (size > 38) fail(kSyntaxError, "The number '" + expression.name + "' is out of the range of numbers.");
    return {quotedText(text), {Kind::decimal, std::max(size, 1), scale}};
}

TypedText ExpressionWriter::value(const Expression& expression) const {
    switch (expression.form) {
    case Form::null: return {"NULL", {}};
    case Form::whole:
    case Form::decimal:
    case Form::real: return number(expression);
    case Form::text:
        if (expression.parameter == 0) wantReadable(expression.name);
        return {expression.parameter > 0 ? parameterName(expression) : quotedText(expression.name),
                {Kind::text, 0, 0, expression.wide, false}};
    case Form::variable: {
        auto found = queries_.variables().find(expression.name);
        if (found == queries_.variables().end())
            fail(kSyntaxError, "Must declare the variable '" + expression.name + "'.");
        return found->second;
    }
    case Form::column: return column(expression);
    case Form::call: return call(expression);
    case Form::convert: return toInt(expression);
    case Form::negate: {
        const TypedText inner = value(*expression.parts[0]);
        if (inner.type.kind == Kind::decimal) return {"ss_negate(" + inner.sql + ")", inner.type};
        if (!isNumber(inner.type.kind) && inner.type.kind != Kind::unknown)
            fail(kSyntaxError, "Operand data type " + typeName(inner.type) + " is invalid for minus operator.");
        return {"(-" + inner.sql + ")", inner.type};
    }
    case Form::arithmetic: return arithmetic(expression);
    case Form::caseOf: return caseOf(expression);
    case Form::subquery: return subquery(expression);
    default: fail(kSyntaxError, "A condition stands where a value is wanted.");
    }
}

TypedText ExpressionWriter::column(const Expression& expression) const {
    const auto found = scope_.find(expression.qualifier, expression.name);
    return {quotedName(found.source->alias) + "." + quotedName(found.column->name), found.column->type};
}

TypedText ExpressionWriter::subquery(const Expression& expression) const {
    const Select& select = *expression.select;
    const auto written = queries_.write(select, &scope_, "v");
    const bool oneRow = (select.top && *select.top <= 1) ||
                        (select.groupBy.empty() && select.intersected.empty() && select.items.size() == 1 &&
                         select.items[0].expression && isAggregate(*select.items[0].expression));
    const SqlType type = written.columns[0].type;
    if (oneRow) return {"(" + written.sql + ")", type};
    return {"(SELECT ss_single(v) FROM (" + written.sql + "))", type};
}

TypedText ExpressionWriter::caseOf(const Expression& expression) const {
    const std::size_t first = expression.hasSubject ? 1 : 0;
    const std::size_t pairs = (expression.parts.size() - first) / 2;
    std::vector<std::string> conditions;
    std::vector<TypedText> results;
    for (std::size_t i = 0; i < pairs; ++i) {
        const Expression& when = *expression.parts[first + 2 * i];
        conditions.push_back(expression.hasSubject ? compared(value(*expression.parts[0]), "=", value(when))
                                                   : condition(when));
        results.push_back(value(*expression.parts[first + 2 * i + 1]));
    }
    if (expression.hasElse) results.push_back(value(*expression.parts.back()));
    SqlType type;
    for (const TypedText& result : results) type = commonType(type, result.type);
    std::string sql = "CASE";
    for (std::size_t i = 0; i < pairs; ++i) sql += " WHEN " + conditions[i] + " THEN " + fitted(results[i], type).sql;
    if (expression.hasElse) sql += " ELSE " + fitted(results.back(), type).sql;
    return {sql + " END", type};
}

TypedText ExpressionWriter::toInt(const Expression& expression) const {
    const TypedText inner = value(*expression.parts[0]);
    const SqlType to{Kind::integer};
    return {"ss_to(" + inner.sql + typeArguments(inner.type, to) + ")", to};
}

TypedText ExpressionWriter::arithmetic(const Expression& expression) const {
    const TypedText left = value(*expression.parts[0]);
    const TypedText right = value(*expression.parts[1]);
    for (const Kind kind : {left.type.kind, right.type.kind})
        if (!isWholeNumber(kind) && kind != Kind::unknown)
            fail(kSyntaxError, "Operator " + expression.name + " is not known here for " + typeName({kind}) + ".");
    const SqlType to{Kind::integer};
    return {"ss_to(" + left.sql + " " + expression.name + " " + right.sql + typeArguments({Kind::bigInt}, to) + ")",
            to};
}

std::string ExpressionWriter::compared(TypedText left, const std::string& symbol, TypedText right) const {
    const SqlType type = commonType(left.type, right.type);
    left = converted(std::move(left), type);
    right = converted(std::move(right), type);
    return "(" + left.sql + " " + symbol + " " + collated(right) + ")";
}

std::string ExpressionWriter::inQuery(const Expression& expression) const {
    TypedText left = value(*expression.parts[0]);
    const auto written = queries_.write(*expression.select, &scope_, "v");
    const SqlType inner = written.columns[0].type;
    const SqlType type = commonType(left.type, inner);
    left = converted(std::move(left), type);
    const std::string query = converted({"v", inner}, type).sql;
    return "(" + collated(left) + (expression.negated ? " NOT IN (" : " IN (") +
           (query == "v" ? written.sql : "SELECT " + query + " FROM (" + written.sql + ")") + "))";
}

std::string ExpressionWriter::condition(const Expression& expression) const {
    const std::string negated = expression.negated ? " NOT" : "";
    switch (expression.form) {
    case Form::compare: return compared(value(*expression.parts[0]), expression.name, value(*expression.parts[1]));
    case Form::logical:
        return "(" + condition(*expression.parts[0]) + " " + expression.name + " " + condition(*expression.parts[1]) +
               ")";
    case Form::like: {
        const std::string call =
            "ss_like(" + text(*expression.parts[0]).sql + ", " + text(*expression.parts[1]).sql + ")";
        return expression.negated ? "(NOT " + call + ")" : call;
    }
    case Form::isNull: return "(" + value(*expression.parts[0]).sql + " IS" + negated + " NULL)";
    case Form::inList: {
        TypedText subject = value(*expression.parts[0]);
        std::vector<TypedText> list;
        SqlType type = subject.type;
        for (std::size_t i = 1; i < expression.parts.size(); ++i) {
            list.push_back(value(*expression.parts[i]));
            type = commonType(type, list.back().type);
        }
        std::string sql = "(" + collated(converted(std::move(subject), type)) + negated + " IN (";
        for (std::size_t i = 0; i < list.size(); ++i) sql += (i ? ", " : "") + converted(list[i], type).sql;
        return sql + "))";
    }
    case Form::inQuery: return inQuery(expression);
    default: fail(kSyntaxError, "A value stands where a condition is wanted.");
    }
}

TypedText ExpressionWriter::text(const Expression& expression) const {
    TypedText inner = value(expression);
    if (inner.type.kind == Kind::text) return inner;
    return converted(std::move(inner), {Kind::text, 0, 0, false, false});
}

} // namespace sandbox
