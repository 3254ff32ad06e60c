// The server's functions and collation, given to an SQLite connection.
#pragma once

#include "automation/RunTimeError.h"

#include <optional>
#include <string_view>

struct sqlite3;

namespace sandbox {

/// Registers everything that translated statements call. A function that fails leaves its error in `raised`, which
/// must outlive the connection.
void registerFunctions(sqlite3* connection, std::optional<automation::RunTimeError>& raised);

/// How text compares: without case, blanks at the end ignored. Negative, 0 or positive.
int compareText(std::string_view a, std::string_view b);

/// The server's like: "%", "_", "[a-z]", "[^a-z]", without case.
bool matchesLike(std::string_view text, std::string_view pattern);

} // namespace sandbox
