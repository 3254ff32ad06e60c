// Adding and changing rows through a record set.
#include "sandbox/database/Errors.h"
#include "sandbox/database/Recordset.h"
#include "sandbox/database/RowStatements.h"

#include <algorithm>

namespace sandbox {

using automation::Arguments;
using automation::Value;

namespace {

std::vector<std::string> baseColumns(const std::vector<OutputColumn>& columns) {
    std::vector<std::string> names;
    for (const OutputColumn& column : columns)
        if (!column.baseColumn.empty()) names.push_back(column.baseColumn);
    return names;
}

/// The row's values under the table's key, taken by `valueOf(column name)`.
template <class ValueOf> std::vector<ColumnValue> keyOf(const Table& table, ValueOf valueOf) {
    std::vector<ColumnValue> key;
    if (const Key* primary = table.primaryKey())
        for (const std::string& name : primary->columns)
            if (const std::optional<Value> value = valueOf(name)) key.push_back({table.column(name), *value});
    if (key.empty() || key.size() < table.primaryKey()->columns.size())
        fail(kServerFailure, "Insufficient key column information for updating or refreshing.");
    return key;
}

} // namespace

void Recordset::wantWritable() const {
    wantOpen();
    if (lock_ == kReadOnlyLock || lock_ == kBatch || data_.baseTable.empty()) fail(kReadOnly);
}

void Recordset::setValue(std::size_t index, const Value& value) {
    wantWritable();
    if (index >= columns().size()) fail(kItemNotFound);
    if (editing_ == Editing::none && atEnd()) fail(kNoCurrentRecord);
    const Table* table = database().schema().table(data_.baseTable);
    const Column* column = table->column(columns()[index].baseColumn);
    if (!column) fail(kMultipleStepErrors);
    Value converted = fieldValue(*column, value);
    if (editing_ == Editing::none) {
        editing_ = Editing::changing;
        pending_.assign(columns().size(), std::nullopt);
    }
    pending_[index] = std::move(converted);
}

void Recordset::addNew() {
    wantWritable();
    if (editing_ != Editing::none) update();
    editing_ = Editing::adding;
    pending_.assign(columns().size(), std::nullopt);
}

void Recordset::update() {
    wantWritable();
    if (editing_ == Editing::none) {
        if (atEnd()) fail(kNoCurrentRecord);
        return;
    }
    if (editing_ == Editing::adding)
        insertPending();
    else
        writePending();
    editing_ = Editing::none;
    pending_.clear();
}

void Recordset::insertPending() {
    Database& db = idleDatabase();
    const Table& table = *db.schema().table(data_.baseTable);
    std::vector<ColumnValue> values;
    for (std::size_t i = 0; i < pending_.size(); ++i)
        if (pending_[i]) values.push_back({table.column(columns()[i].baseColumn), *pending_[i]});
    if (values.empty()) fail(kServerFailure, "A new row needs at least one value.");
    std::vector<Value> row(columns().size(), automation::Null{});
    db.atomically([&] {
        db.execute(insertStatement(table, values));
        // The new row as the table has it now, with what the server filled in.
        const auto key = keyOf(table, [&](const std::string& name) -> std::optional<Value> {
            for (const ColumnValue& item : values)
                if (automation::sameName(item.column->name, name)) return item.value;
            return std::nullopt;
        });
        const Outcome fresh = db.executeSilently(selectStatement(table, baseColumns(columns()), key));
        if (fresh.rows.empty()) return;
        std::size_t next = 0;
        for (std::size_t i = 0; i < row.size(); ++i)
            if (!columns()[i].baseColumn.empty()) row[i] = fresh.rows[0][next++];
    });
    data_.rows.push_back(std::move(row));
    position_ = data_.rows.size() - 1;
}

void Recordset::writePending() {
    Database& db = idleDatabase();
    const Table& table = *db.schema().table(data_.baseTable);
    std::vector<Value>& row = data_.rows[position_];
    const auto key = keyOf(table, [&](const std::string& name) -> std::optional<Value> {
        for (std::size_t i = 0; i < columns().size(); ++i)
            if (automation::sameName(columns()[i].baseColumn, name)) return row[i];
        return std::nullopt;
    });
    // All that was put is written, whether it differs or not.
    std::vector<ColumnValue> changes;
    for (std::size_t i = 0; i < pending_.size(); ++i)
        if (pending_[i]) changes.push_back({table.column(columns()[i].baseColumn), *pending_[i]});
    db.atomically([&] {
        // The server keeps the values that the cursor read and compares them before it writes.
        const Outcome now = db.executeSilently(selectStatement(table, baseColumns(columns()), key));
        if (now.rows.empty()) fail(kRowChanged);
        std::size_t next = 0;
        for (std::size_t i = 0; i < row.size(); ++i)
            if (!columns()[i].baseColumn.empty() && !(now.rows[0][next++] == row[i])) fail(kRowChanged);
        db.execute(updateStatement(table, changes, key));
    });
    for (std::size_t i = 0; i < pending_.size(); ++i)
        if (pending_[i]) row[i] = *pending_[i];
}

void Recordset::addEditing(automation::Members<Recordset>& m) {
    m.method("AddNew", 0, 0, [](Recordset& self, Arguments) {
        self.addNew();
        return Value();
    });
    m.method("Update", 0, 0, [](Recordset& self, Arguments) {
        self.update();
        return Value();
    });
}

} // namespace sandbox
