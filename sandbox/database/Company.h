// Making and opening a company's database, and running scripts on it.
#pragma once

#include "sandbox/database/Connection.h"

#include <memory>
#include <string>
#include <string_view>

namespace sandbox {

/// Builds an empty database from the schema in the server's DDL and leaves it open. ":memory:" makes one that lives as
/// long as the connection. Errors: -2147467259 when the file exists or cannot be made, -2147217900 for a wrong schema.
std::shared_ptr<Connection> createCompany(const std::string& path, std::string_view schemaText);

/// Error -2147467259 when there is no such database.
std::shared_ptr<Connection> openConnection(const std::string& path);

/// Runs statements that are separated by lines "GO" or by ";", in one transaction that is rolled back on an error.
/// Nothing of this is traced. The error names the statement that failed.
void runScript(Connection& connection, std::string_view text);

/// The whole file. Error -2147467259 when it cannot be read.
std::string readTextFile(const std::string& path);

} // namespace sandbox
