#include "sandbox/database/Schema.h"

#include "sandbox/database/Errors.h"

namespace sandbox {

const Column* Table::column(std::string_view columnName) const {
    for (const Column& column : columns)
        if (automation::sameName(column.name, columnName)) return &column;
    return nullptr;
}

const Key* Table::primaryKey() const {
    for (const Key& key : keys)
        if (key.primary) return &key;
    return nullptr;
}

const Table* Schema::table(std::string_view name) const {
    auto found = tables_.find(name);
    return found == tables_.end() ? nullptr : &found->second;
}

const Procedure* Schema::procedure(std::string_view name) const {
    auto found = procedures_.find(name);
    return found == procedures_.end() ? nullptr : &found->second;
}

const Table* Schema::tableWithKey(std::string_view keyName) const {
    for (const auto& [name, table] : tables_)
        for (const Key& key : table.keys)
            if (automation::sameName(key.name, keyName)) return &table;
    return nullptr;
}

void Schema::add(Table table) {
    std::string name = table.name;
    if (!tables_.emplace(name, std::move(table)).second)
        fail(kSyntaxError, "There is already an object named '" + name + "' in the database.");
}

void Schema::add(Procedure procedure) {
    std::string name = procedure.name;
    if (!procedures_.emplace(name, std::move(procedure)).second)
        fail(kSyntaxError, "There is already an object named '" + name + "' in the database.");
}

} // namespace sandbox
