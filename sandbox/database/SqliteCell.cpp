#include "sandbox/database/SqliteCell.h"

namespace sandbox {

Cell cellFrom(sqlite3_value* value) {
    switch (sqlite3_value_type(value)) {
    case SQLITE_INTEGER: return std::int64_t(sqlite3_value_int64(value));
    case SQLITE_FLOAT: return sqlite3_value_double(value);
    case SQLITE_TEXT:
    case SQLITE_BLOB: {
        const auto* bytes = reinterpret_cast<const char*>(sqlite3_value_text(value));
        if (!bytes) return std::string();
        return std::string(bytes, static_cast<std::size_t>(sqlite3_value_bytes(value)));
    }
    default: return {};
    }
}

void setResult(sqlite3_context* context, const Cell& cell) {
    if (auto* whole = std::get_if<std::int64_t>(&cell)) return sqlite3_result_int64(context, *whole);
    if (auto* real = std::get_if<double>(&cell)) return sqlite3_result_double(context, *real);
    if (auto* text = std::get_if<std::string>(&cell))
        return sqlite3_result_text64(context, text->data(), text->size(), SQLITE_TRANSIENT, SQLITE_UTF8);
    sqlite3_result_null(context);
}

void bindCell(sqlite3_stmt* statement, int number, const Cell& cell) {
    if (auto* whole = std::get_if<std::int64_t>(&cell))
        sqlite3_bind_int64(statement, number, *whole);
    else if (auto* real = std::get_if<double>(&cell))
        sqlite3_bind_double(statement, number, *real);
    else if (auto* text = std::get_if<std::string>(&cell))
        sqlite3_bind_text64(statement, number, text->data(), text->size(), SQLITE_STATIC, SQLITE_UTF8);
    else
        sqlite3_bind_null(statement, number);
}

} // namespace sandbox
