// Reads a schema in the server's own DDL, and says what builds it in SQLite.
#pragma once

#include "sandbox/database/Schema.h"

#include <string>
#include <string_view>
#include <vector>

namespace sandbox {

struct SchemaText {
    Schema schema;
    std::vector<std::string> creation; ///< SQLite's statements, in order
};

/// "create table", "create index", "create view" and "create procedure" whose body is one select.
/// Errors: -2147217900 for anything else, naming the place.
SchemaText readSchema(std::string_view text);

} // namespace sandbox
