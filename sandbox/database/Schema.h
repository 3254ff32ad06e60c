// What a company's database holds: tables with their columns and keys, views, procedures.
#pragma once

#include "automation/Members.h"
#include "sandbox/database/Ast.h"

#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace sandbox {

struct Column {
    std::string name;
    SqlType type;
    bool nullable = true;
    bool identity = false;                          ///< numbered by the server
    std::shared_ptr<const Expression> defaultValue; ///< none: NULL
};

struct Key {
    std::string name;
    bool primary = false;
    std::vector<std::string> columns;
};

struct Table {
    std::string name;
    std::vector<Column> columns;
    std::vector<Key> keys;
    bool isView = false;

    const Column* column(std::string_view columnName) const;
    const Key* primaryKey() const;
};

struct Procedure {
    std::string name;
    std::vector<std::pair<std::string, SqlType>> parameters; ///< names with their "@"
    std::shared_ptr<const Select> body;
};

/// Names are looked up without case.
class Schema {
public:
    const Table* table(std::string_view name) const;
    const Procedure* procedure(std::string_view name) const;
    /// The table that has a key of that name.
    const Table* tableWithKey(std::string_view keyName) const;

    /// Errors: -2147217900 where the name is taken.
    void add(Table table);
    void add(Procedure procedure);

private:
    std::map<std::string, Table, automation::NameLess> tables_;
    std::map<std::string, Procedure, automation::NameLess> procedures_;
};

} // namespace sandbox
