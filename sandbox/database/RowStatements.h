// The statements that write one row of a record set back into its table.
#pragma once

#include "sandbox/database/Cell.h"
#include "sandbox/database/Schema.h"

#include <string>
#include <utility>
#include <vector>

namespace sandbox {

struct ColumnValue {
    const Column* column = nullptr;
    automation::Value value;
};

std::string insertStatement(const Table& table, const std::vector<ColumnValue>& values);
std::string updateStatement(const Table& table, const std::vector<ColumnValue>& changes,
                            const std::vector<ColumnValue>& key);
std::string selectStatement(const Table& table, const std::vector<std::string>& columns,
                            const std::vector<ColumnValue>& key);

/// What a field of that column becomes when the value is assigned to it, by the rules of the language rather than the
/// server's. Errors: 3421 for the wrong type of value, -2147217887 for one that does not fit.
automation::Value fieldValue(const Column& column, const automation::Value& value);

} // namespace sandbox
