// What statements that differ only in their plain values have in common, so that one prepared statement serves them
// all: without that, a slip of 5,000 lines takes 3.3 times what its statements do, not 1.4 (`benchmarks`).
#pragma once

#include "sandbox/database/Ast.h"
#include "sandbox/database/Cell.h"

#include <string>
#include <string_view>
#include <vector>

namespace sandbox {

/// Plain values are texts and whole numbers of at most nine digits: nothing in a translation goes by what they are,
/// except where the statement counts or positions by them.
struct StatementShape {
    std::string key;          ///< the same for statements that differ in their plain values alone
    std::vector<Cell> values; ///< in the order of the statement
};

/// Errors as `tokenize`.
StatementShape shapeOf(std::string_view statement);

/// Reads the statement so that its plain values are translated as parameters, numbered from 1. Errors as
/// `parseStatement`.
Statement parseWithParameters(std::string_view statement);

} // namespace sandbox
