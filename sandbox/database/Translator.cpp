#include "sandbox/database/Translator.h"

#include "sandbox/database/Errors.h"
#include "sandbox/database/ExpressionWriter.h"

namespace sandbox {
namespace {

Scope scopeOf(const Table& table) {
    Scope scope;
    ScopeSource source{table.name, {}};
    for (const Column& column : table.columns) source.columns.push_back({column.name, column.type, column.name});
    scope.sources.push_back(std::move(source));
    return scope;
}

const Column& columnOf(const Table& table, const std::string& name) {
    const Column* column = table.column(name);
    if (!column) fail(kSyntaxError, "Invalid column name '" + name + "'.");
    if (column->identity)
        fail(kSyntaxError, "Cannot insert or update explicit value for identity column in table '" + table.name + "'.");
    return *column;
}

} // namespace

void wantReadable(std::string_view text) {
    if (text.find('\0') != std::string_view::npos) fail(kSyntaxError, std::string("Incorrect syntax near '\0'.", 26));
}

std::string quotedName(std::string_view name) {
    wantReadable(name);
    std::string quoted = "\"";
    for (char c : name) quoted += c == '"' ? std::string("\"\"") : std::string(1, c);
    return quoted + "\"";
}

std::string quotedText(std::string_view text) {
    std::string quoted = "'";
    for (char c : text) quoted += c == '\'' ? std::string("''") : std::string(1, c);
    return quoted + "'";
}

const Table& Translator::writable(const std::string& name) const {
    const Table* table = schema_.table(name);
    if (!table) fail(kSyntaxError, "Invalid object name '" + name + "'.");
    if (table->isView) fail(kSyntaxError, "View '" + name + "' is not updatable here.");
    return *table;
}

Translation Translator::translate(const Statement& statement) const {
    if (auto* select = std::get_if<std::unique_ptr<Select>>(&statement)) return query(**select, {});
    if (auto* one = std::get_if<Insert>(&statement)) return insert(*one);
    if (auto* one = std::get_if<Update>(&statement)) return update(*one);
    if (auto* one = std::get_if<Delete>(&statement)) return remove(*one);
    return call(std::get<ProcedureCall>(statement));
}

Translation Translator::query(const Select& select, const Variables& variables) const {
    auto written = QueryWriter(schema_, variables).write(select, nullptr);
    return {std::move(written.sql), true, std::move(written.columns), std::move(written.baseTable)};
}

Translation Translator::insert(const Insert& insert) const {
    const Table& table = writable(insert.table);
    std::vector<const Column*> named;
    if (insert.columns.empty()) {
        for (const Column& column : table.columns)
            if (!column.identity) named.push_back(&column);
    } else {
        for (const std::string& name : insert.columns) named.push_back(&columnOf(table, name));
    }
    std::vector<const Column*> defaulted;
    for (const Column& column : table.columns)
        if (column.defaultValue && std::find(named.begin(), named.end(), &column) == named.end())
            defaulted.push_back(&column);

    const Variables none;
    const QueryWriter queries(schema_, none);
    const Scope empty;
    const ExpressionWriter writer(queries, empty);
    std::string tail;
    for (const Column* column : defaulted)
        tail += ", " + ExpressionWriter::stored(writer.value(*column->defaultValue), column->type);

    std::string sql = "INSERT INTO " + quotedName(table.name) + " (";
    for (const Column* column : named) sql += (column == named.front() ? "" : ", ") + quotedName(column->name);
    for (const Column* column : defaulted) sql += ", " + quotedName(column->name);
    sql += ") ";
    std::vector<StoredParameter> stored;
    sql += "VALUES ";
    for (const auto& row : insert.rows) {
        if (row.size() != named.size())
            fail(kSyntaxError, "There are more or fewer values than columns. The number of values must match the "
                               "number of columns.");
        sql += &row == &insert.rows.front() ? "(" : ", (";
        for (std::size_t i = 0; i < row.size(); ++i) {
            if (i) sql += ", ";
            const TypedText value = writer.value(*row[i]);
            if (row[i]->parameter > 0) {
                sql += value.sql;
                stored.push_back({row[i]->parameter, value.type, named[i]->type});
            } else {
                sql += ExpressionWriter::stored(value, named[i]->type);
            }
        }
        sql += tail + ")";
    }
    return {std::move(sql), false, {}, "", std::move(stored)};
}

Translation Translator::update(const Update& update) const {
    const Table& table = writable(update.table);
    const Variables none;
    const QueryWriter queries(schema_, none);
    const Scope scope = scopeOf(table);
    const ExpressionWriter writer(queries, scope);
    std::string sql = "UPDATE " + quotedName(table.name) + " SET ";
    for (const auto& [name, expression] : update.assignments) {
        const Column& column = columnOf(table, name);
        if (&expression != &update.assignments.front().second) sql += ", ";
        sql += quotedName(column.name) + " = " + ExpressionWriter::stored(writer.value(*expression), column.type);
    }
    if (update.where) sql += " WHERE " + writer.condition(*update.where);
    return {std::move(sql), false, {}, ""};
}

Translation Translator::remove(const Delete& deletion) const {
    const Table& table = writable(deletion.table);
    const Variables none;
    const QueryWriter queries(schema_, none);
    const Scope scope = scopeOf(table);
    std::string sql = "DELETE FROM " + quotedName(table.name);
    if (deletion.where) sql += " WHERE " + ExpressionWriter(queries, scope).condition(*deletion.where);
    return {std::move(sql), false, {}, ""};
}

Translation Translator::call(const ProcedureCall& call) const {
    const Procedure* procedure = schema_.procedure(call.name);
    if (!procedure) fail(kSyntaxError, "Could not find stored procedure '" + call.name + "'.");
    if (call.arguments.size() > procedure->parameters.size())
        fail(kSyntaxError, "Procedure or function " + procedure->name + " has too many arguments specified.");
    if (call.arguments.size() < procedure->parameters.size())
        fail(kSyntaxError, "Procedure '" + procedure->name + "' expects parameter '" +
                               procedure->parameters[call.arguments.size()].first + "', which was not supplied.");
    const Variables none;
    const QueryWriter queries(schema_, none);
    const Scope empty;
    const ExpressionWriter writer(queries, empty);
    Variables variables;
    for (std::size_t i = 0; i < call.arguments.size(); ++i) {
        const auto& [name, type] = procedure->parameters[i];
        variables[name] = ExpressionWriter::fitted(writer.value(*call.arguments[i]), type);
    }
    Translation translation = query(*procedure->body, variables);
    translation.baseTable.clear();
    return translation;
}

} // namespace sandbox
