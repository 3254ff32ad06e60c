// What the parser makes of a statement of the server's dialect.
#pragma once

#include "sandbox/database/SqlType.h"

#include <memory>
#include <optional>
#include <string>
#include <variant>
#include <vector>

namespace sandbox {

struct Select;

struct Expression {
    enum class Form {
        null,
        whole,      ///< `name` is the literal
        decimal,    ///< `name` is the literal
        real,       ///< `name` is the literal
        text,       ///< `name` is the literal
        variable,   ///< `name` with its "@"
        column,     ///< `name`, perhaps `qualifier`
        call,       ///< function `name` of `parts`; `star` for count(*)
        convert,    ///< parts[0] to int
        negate,     ///< - parts[0]
        arithmetic, ///< parts[0] `name` (+, -) parts[1]
        caseOf, ///< pairs of condition and result, then the other result where `hasElse`; `subject` stands first where
                ///< given
        subquery, ///< (select ...)
        // Conditions, which are no values:
        compare, ///< parts[0] `name` parts[1]
        logical, ///< parts[0] `name` (and, or) parts[1]
        like,    ///< parts[0] like parts[1]
        isNull,  ///< parts[0] is null
        inList,  ///< parts[0] in the other parts
        inQuery, ///< parts[0] in (select ...)
    };
    Form form = Form::null;
    std::string name;
    std::string qualifier;
    std::vector<std::unique_ptr<Expression>> parts;
    std::unique_ptr<Select> select;
    int parameter = 0;    ///< of a literal: the number under which its value is bound; 0 where it is written out
    bool negated = false; ///< "not like", "is not null" ...
    bool star = false;
    bool wide = false; ///< N'text'
    bool hasSubject = false;
    bool hasElse = false;
};
using ExpressionPtr = std::unique_ptr<Expression>;

struct SelectItem {
    ExpressionPtr expression; ///< none for "*"
    std::string alias;
};

struct Source {
    std::string table;
    std::string alias; ///< as written, or the table's name
    std::unique_ptr<Select> select;
    ExpressionPtr on; ///< of an inner join
};

struct Select {
    bool distinct = false;
    std::optional<long long> top;
    std::vector<SelectItem> items;
    std::vector<Source> sources;
    ExpressionPtr where;
    std::vector<ExpressionPtr> groupBy;
    std::vector<std::unique_ptr<Select>> intersected;
    std::vector<ExpressionPtr> orderBy;
};

struct Insert {
    std::string table;
    std::vector<std::string> columns;
    std::vector<std::vector<ExpressionPtr>> rows;
};

struct Update {
    std::string table;
    std::vector<std::pair<std::string, ExpressionPtr>> assignments;
    ExpressionPtr where;
};

struct Delete {
    std::string table;
    ExpressionPtr where;
};

struct ProcedureCall {
    std::string name;
    std::vector<ExpressionPtr> arguments;
};

using Statement = std::variant<std::unique_ptr<Select>, Insert, Update, Delete, ProcedureCall>;

} // namespace sandbox
