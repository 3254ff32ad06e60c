// One stored value, and its conversions between the server's types.
#pragma once

#include "automation/Object.h"
#include "automation/Value.h"
#include "basic/Digits.h"
#include "sandbox/database/SqlType.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <variant>

namespace sandbox {

/// As SQLite stores it; what it means depends on its SqlType. std::monostate is NULL.
using Cell = std::variant<std::monostate, std::int64_t, double, std::string>;

/// A sign, digits, a point among them; blanks around. Nothing for other text.
std::optional<basic::Digits> parseDecimal(std::string_view text);

/// As the server's convert does it: text that is too long is cut. Errors: -2147217913 where the value does not convert,
/// -2147217833 where it is out of range.
Cell convertCell(const Cell& cell, const SqlType& from, const SqlType& to);

/// As an insert or update does it: text that is too long is error -2147217833, "String or binary data would be
/// truncated."; blanks at its end may be cut.
Cell storeCell(const Cell& cell, const SqlType& from, const SqlType& to);

/// What the server's isnumeric says of text: signs, blanks before, a currency sign, thousands separators, an exponent,
/// and also a lone sign, point, comma or currency sign.
bool looksNumeric(std::string_view text);

automation::Value valueOf(const Cell& cell, const SqlType& type);

/// A value as the server would take it as a parameter, with the type it has there.
/// Error 3421 for what no column can hold.
struct TypedCell {
    Cell cell;
    SqlType type;
};
TypedCell cellOf(const automation::Value& value);

/// The cell as a literal in the server's dialect.
std::string literalText(const Cell& cell, const SqlType& type);

} // namespace sandbox
