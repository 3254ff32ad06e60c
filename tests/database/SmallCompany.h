// A small company in memory, and shorthand for asking it.
#pragma once

#include "basic/Conversion.h"
#include "sandbox/database/Company.h"
#include "sandbox/database/Errors.h"
#include "sandbox/database/Recordset.h"
#include "tests/basic/ExpectError.h"
#include "tests/support/Scratch.h"

#include <string>
#include <vector>

namespace database_test {

using automation::Value;
using ConnectionPtr = std::shared_ptr<sandbox::Connection>;
using RecordsetPtr = std::shared_ptr<sandbox::Recordset>;

inline std::string schemaText() { return sandbox::readTextFile(PROJECT_DIR "/sandbox/data/schema.sql"); }

/// Two shops that share a category and an item, one that shares nothing; one request of each kind.
ConnectionPtr smallCompany(const std::string& path = ":memory:");

/// The value as a person reads it: NULL, quoted text, #date#, numbers with their kind where it is not obvious.
std::string shown(const Value& value);

/// Rows separated by "|", columns by ",".
std::string rows(sandbox::Connection& connection, const std::string& statement);

inline RecordsetPtr opened(const ConnectionPtr& connection, const std::string& source, std::int32_t cursor = 1,
                           std::int32_t lock = 3) {
    auto records = std::make_shared<sandbox::Recordset>();
    records->call("Open", source, connection, cursor, lock);
    return records;
}

inline Value field(const RecordsetPtr& records, const std::string& name) {
    return records->call("Fields", name).object().get("Value");
}

inline void setField(const RecordsetPtr& records, const std::string& name, Value value) {
    records->call("Fields", name).object().put("Value", std::move(value));
}

} // namespace database_test
