// Turns statements of the server's dialect into SQLite's, with the types of what they return.
#pragma once

#include "automation/Members.h"
#include "sandbox/database/Schema.h"

#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace sandbox {

struct OutputColumn {
    std::string name; ///< "" where the statement gives none
    SqlType type;
    std::string baseColumn; ///< the column of the base table it shows, unchanged
};

/// A parameter that is stored as it is: what its value is converted from and to.
struct StoredParameter {
    int number = 0;
    SqlType from;
    SqlType to;
};

struct Translation {
    std::string sql;
    bool isQuery = false;
    std::vector<OutputColumn> columns;   ///< of a query
    std::string baseTable;               ///< the one table whose rows a query shows; empty where rows cannot be updated
    std::vector<StoredParameter> stored; ///< of an insert
};

/// A piece of SQLite's text, and the type of the value it gives.
struct TypedText {
    std::string sql;
    SqlType type;
};

/// Values of a procedure's parameters, by name with "@".
using Variables = std::map<std::string, TypedText, automation::NameLess>;

std::string quotedName(std::string_view name);
std::string quotedText(std::string_view text);
/// Refuses a zero in what is to stand in a statement for SQLite, which would read no further. A value that is bound may
/// have one.
void wantReadable(std::string_view text);

class Translator {
public:
    explicit Translator(const Schema& schema) : schema_(schema) {}

    /// Errors: -2147217900, with the server's words, for unknown names and for what this dialect does not know.
    Translation translate(const Statement& statement) const;
    Translation query(const Select& select, const Variables& variables) const;

private:
    Translation insert(const Insert& insert) const;
    Translation update(const Update& update) const;
    Translation remove(const Delete& deletion) const;
    Translation call(const ProcedureCall& call) const;
    const Table& writable(const std::string& name) const;

    const Schema& schema_;
};

} // namespace sandbox
