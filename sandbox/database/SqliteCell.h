// Cells out of SQLite and into it.
#pragma once

#include "sandbox/database/Cell.h"

#include <sqlite3.h>

namespace sandbox {

Cell cellFrom(sqlite3_value* value);
void setResult(sqlite3_context* context, const Cell& cell);
/// Text is not copied: it outlives the statement's run.
void bindCell(sqlite3_stmt* statement, int number, const Cell& cell);

} // namespace sandbox
