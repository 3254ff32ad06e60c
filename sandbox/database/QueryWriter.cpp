#include "sandbox/database/Errors.h"
#include "sandbox/database/ExpressionWriter.h"

namespace sandbox {
namespace {

using Form = Expression::Form;

bool sameColumn(const Expression& a, const Expression& b) {
    return a.form == Form::column && b.form == Form::column && automation::sameName(a.name, b.name) &&
           (a.qualifier.empty() || b.qualifier.empty() || automation::sameName(a.qualifier, b.qualifier));
}

bool hasAggregate(const Expression& expression) {
    if (isAggregate(expression)) return true;
    for (const auto& part : expression.parts)
        if (hasAggregate(*part)) return true;
    return false;
}

/// Refuses a column that stands outside of every aggregate and of the group's own columns.
void checkGrouped(const Expression& expression, const Select& select) {
    if (isAggregate(expression)) return;
    if (expression.form == Form::column) {
        for (const auto& grouped : select.groupBy)
            if (sameColumn(expression, *grouped)) return;
        fail(kSyntaxError, "Column '" + expression.name +
                               "' is invalid in the select list because it is not contained in either an aggregate "
                               "function or the GROUP BY clause.");
    }
    for (const auto& part : expression.parts) checkGrouped(*part, select);
}

} // namespace

Scope QueryWriter::scopeOf(const Select& select, const Scope* outer, std::string& from) const {
    Scope scope;
    scope.outer = outer;
    for (const Source& source : select.sources) {
        ScopeSource named{source.alias, {}};
        std::string text;
        if (source.select) {
            Written written = write(*source.select, outer);
            named.columns = std::move(written.columns);
            for (OutputColumn& column : named.columns) column.baseColumn.clear();
            text = "(" + written.sql + ")";
        } else {
            const Table* table = schema_.table(source.table);
            if (!table) fail(kSyntaxError, "Invalid object name '" + source.table + "'.");
            for (const Column& column : table->columns)
                named.columns.push_back({column.name, column.type, table->isView ? "" : column.name});
            text = quotedName(table->name);
        }
        for (const ScopeSource& other : scope.sources)
            if (automation::sameName(other.alias, named.alias))
                fail(kSyntaxError, "Tables or functions '" + other.alias + "' and '" + named.alias +
                                       "' have the same exposed names. Use correlation names to distinguish them.");
        scope.sources.push_back(std::move(named));
        if (!from.empty()) from += source.on ? " INNER JOIN " : ", ";
        from += text + " AS " + quotedName(source.alias);
        if (source.on) from += " ON " + ExpressionWriter(*this, scope).condition(*source.on);
    }
    return scope;
}

std::string QueryWriter::core(const Select& select, const Scope* outer, Written& into, const char* onlyAlias,
                              bool intersects) const {
    std::string from;
    const Scope scope = scopeOf(select, outer, from);
    const ExpressionWriter writer(*this, scope);
    // Where rows are compared whole, text compares by the server's collation.
    const bool compares = select.distinct || intersects;

    std::string list;
    auto add = [&](const TypedText& value, std::string name, std::string baseColumn) {
        if (!list.empty()) list += ", ";
        list += compares ? ExpressionWriter::collated(value) : value.sql;
        if (onlyAlias)
            list += std::string(" AS ") + onlyAlias;
        else if (!name.empty())
            list += " AS " + quotedName(name);
        into.columns.push_back({std::move(name), value.type, std::move(baseColumn)});
    };
    bool aggregates = !select.groupBy.empty();
    for (const SelectItem& item : select.items) {
        if (item.expression) {
            const Expression& expression = *item.expression;
            aggregates = aggregates || hasAggregate(expression);
            std::string name = item.alias;
            std::string base;
            if (expression.form == Form::column) {
                const auto found = scope.find(expression.qualifier, expression.name);
                // The server names the column as the statement writes it.
                if (name.empty()) name = expression.name;
                base = found.column->baseColumn;
            }
            TypedText value = writer.value(expression);
            if (value.type.kind == Kind::unknown) value.type.kind = Kind::integer;
            add(value, std::move(name), std::move(base));
            continue;
        }
        if (scope.sources.empty()) fail(kSyntaxError, "Incorrect syntax near '*'.");
        for (const ScopeSource& source : scope.sources)
            for (const OutputColumn& column : source.columns)
                add({quotedName(source.alias) + "." + quotedName(column.name), column.type}, column.name,
                    column.baseColumn);
    }
    if (aggregates) {
        into.baseTable.clear();
        for (const SelectItem& item : select.items)
            if (item.expression)
                checkGrouped(*item.expression, select);
            else
                fail(kSyntaxError, "'*' is invalid in the select list of a grouped query.");
    } else if (select.sources.size() == 1 && !select.sources.front().select && !compares) {
        const Table* table = schema_.table(select.sources.front().table);
        if (!table->isView) into.baseTable = table->name;
    }
    if (onlyAlias && into.columns.size() != 1)
        fail(kSyntaxError, "Only one expression can be specified in the select list when the subquery is not "
                           "introduced with EXISTS.");

    std::string sql = std::string(select.distinct ? "SELECT DISTINCT " : "SELECT ") + list;
    if (!from.empty()) sql += " FROM " + from;
    if (select.where) {
        if (hasAggregate(*select.where)) fail(kSyntaxError, "An aggregate may not appear in the WHERE clause.");
        sql += " WHERE " + writer.condition(*select.where);
    }
    for (const auto& grouped : select.groupBy) {
        sql += grouped == select.groupBy.front() ? " GROUP BY " : ", ";
        sql += ExpressionWriter::collated(writer.value(*grouped));
    }
    return sql;
}

std::string QueryWriter::order(const Select& select, const Scope* outer,
                               const std::vector<OutputColumn>& columns) const {
    std::string sql;
    std::string unused;
    std::optional<Scope> scope;
    for (const ExpressionPtr& item : select.orderBy) {
        sql += sql.empty() ? " ORDER BY " : ", ";
        const Expression& expression = *item;
        std::size_t position = 0;
        if (expression.form == Form::whole) fail(kSyntaxError, "A position in ORDER BY is not known here.");
        if (expression.form == Form::column && expression.qualifier.empty()) {
            for (std::size_t i = columns.size(); i-- > 0;)
                if (automation::sameName(columns[i].name, expression.name)) position = i + 1;
        }
        if (position > 0) {
            sql += ExpressionWriter::collated({std::to_string(position), columns[position - 1].type});
        } else if (!select.intersected.empty()) {
            fail(kSyntaxError,
                 "Items of ORDER BY must appear in the select list if the statement contains an INTERSECT "
                 "operator.");
        } else {
            if (!scope) scope = scopeOf(select, outer, unused);
            sql += ExpressionWriter::collated(ExpressionWriter(*this, *scope).value(expression));
        }
    }
    return sql;
}

QueryWriter::Written QueryWriter::write(const Select& select, const Scope* outer, const char* onlyAlias) const {
    Written written;
    const bool intersects = !select.intersected.empty();
    written.sql = core(select, outer, written, onlyAlias, intersects);
    for (const auto& other : select.intersected) {
        Written next;
        const std::string sql = core(*other, outer, next, onlyAlias, intersects);
        if (next.columns.size() != written.columns.size())
            fail(kSyntaxError, "All queries in an SQL statement containing an INTERSECT operator must have an equal "
                               "number of expressions in their target lists.");
        for (std::size_t i = 0; i < next.columns.size(); ++i) {
            SqlType& type = written.columns[i].type;
            const SqlType& otherType = next.columns[i].type;
            if (type.kind != otherType.kind && !(isWholeNumber(type.kind) && isWholeNumber(otherType.kind)))
                fail(kSyntaxError, "Columns of different types are joined; convert them to one type.");
            type = commonType(type, otherType);
            written.columns[i].baseColumn.clear();
        }
        if (select.top || other->top) fail(kSyntaxError, "TOP is not known here together with INTERSECT.");
        written.sql += " INTERSECT " + sql;
    }
    written.sql += order(select, outer, written.columns);
    if (select.top) written.sql += " LIMIT " + std::to_string(*select.top);
    return written;
}

} // namespace sandbox
