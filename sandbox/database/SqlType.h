// Column types of the server's dialect, and how their values are stored in SQLite.
#pragma once

#include <string>
#include <string_view>

namespace sandbox {

/// In the order of the server's precedence: of two kinds that meet, the later one wins.
enum class Kind {
    unknown,  ///< NULL as a literal
    text,     ///< TEXT
    bit,      ///< INTEGER 0 or 1
    smallInt, ///< INTEGER
    integer,  ///< INTEGER
    bigInt,   ///< INTEGER
    money,    ///< INTEGER, ten-thousandths
    decimal,  ///< TEXT with exactly `scale` decimals, so that no digit is lost
    real,     ///< REAL
    dateTime, ///< INTEGER, milliseconds since 1899-12-30
};

struct SqlType {
    Kind kind = Kind::unknown;
    int size = 0;       ///< text: most characters, 0 for no limit; decimal: digits in all
    int scale = 0;      ///< decimal: digits after the point
    bool wide = false;  ///< text: nvarchar
    bool fixed = false; ///< text: char; filled up with blanks
};

bool isWholeNumber(Kind kind);
bool isNumber(Kind kind);

/// The type of that name ("int", "varchar" ...) without its size; kind unknown where there is none.
SqlType typeNamed(std::string_view name);

/// As the server names it in messages: "int", "varchar", "numeric".
std::string typeName(const SqlType& type);

/// What two operands of these types become when they meet.
SqlType commonType(const SqlType& a, const SqlType& b);

/// The column's declaration in SQLite, collation included.
std::string storageDeclaration(const SqlType& type);

} // namespace sandbox
