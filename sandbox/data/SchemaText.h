// The schema of a company's database, as schema.sql has it, carried inside the program.
#pragma once

#include <string>

namespace sandbox {

const std::string& schemaText();

} // namespace sandbox
