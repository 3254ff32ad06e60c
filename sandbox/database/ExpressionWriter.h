// Writes expressions in SQLite's text, typed as the server types them.
#pragma once

#include "sandbox/database/Scope.h"

namespace sandbox {

/// Writes a select as text and says what columns it has; a select inside an expression goes through this too.
class QueryWriter {
public:
    QueryWriter(const Schema& schema, const Variables& variables) : schema_(schema), variables_(variables) {}

    struct Written {
        std::string sql;
        std::vector<OutputColumn> columns;
        std::string baseTable;
    };
    /// `onlyAlias`, where given, becomes the name of the one column. Error -2147217900 when there are more.
    Written write(const Select& select, const Scope* outer, const char* onlyAlias = nullptr) const;

    const Variables& variables() const { return variables_; }

private:
    Scope scopeOf(const Select& select, const Scope* outer, std::string& from) const;
    /// `intersects`: its rows are compared with those of another select.
    std::string core(const Select& select, const Scope* outer, Written& into, const char* onlyAlias,
                     bool intersects) const;
    std::string order(const Select& select, const Scope* outer, const std::vector<OutputColumn>& columns) const;

    const Schema& schema_;
    const Variables& variables_;
};

class ExpressionWriter {
public:
    ExpressionWriter(const QueryWriter& queries, const Scope& scope) : queries_(queries), scope_(scope) {}

    /// Error -2147217900 where the expression is a condition.
    TypedText value(const Expression& expression) const;
    /// Error -2147217900 where the expression is a plain value.
    std::string condition(const Expression& expression) const;

    /// For operands that meet: a decimal keeps its digits.
    static TypedText converted(TypedText value, const SqlType& to);
    /// For a result of that very type: a decimal gets its scale.
    static TypedText fitted(TypedText value, const SqlType& to);
    /// As `converted`, checked against the column's size as an insert or update checks it.
    static std::string stored(const TypedText& value, const SqlType& to);
    /// The text with the collation that its type compares by.
    static std::string collated(const TypedText& value);

private:
    TypedText column(const Expression& expression) const;
    TypedText call(const Expression& expression) const;
    TypedText aggregate(const Expression& expression) const;
    TypedText arithmetic(const Expression& expression) const;
    TypedText caseOf(const Expression& expression) const;
    TypedText toInt(const Expression& expression) const;
    TypedText subquery(const Expression& expression) const;
    TypedText text(const Expression& expression) const;
    TypedText number(const Expression& expression) const;
    std::string compared(TypedText left, const std::string& symbol, TypedText right) const;
    std::string inQuery(const Expression& expression) const;

    const QueryWriter& queries_;
    const Scope& scope_;
};

/// Whether the call is of a function that works on groups of rows.
bool isAggregate(const Expression& expression);

} // namespace sandbox
