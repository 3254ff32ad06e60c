// Reading and writing through an ADO connection by its members.
#pragma once

#include "automation/Object.h"

#include <string>
#include <string_view>

namespace sandbox {

/// The rows of a query, forwards; closes its record set at the end.
class Query {
public:
    /// Runs `sql` on `connection`. Error 91 without a connection; else the provider's own.
    Query(const automation::ObjectPtr& connection, const std::string& sql);
    Query(const Query&) = delete;
    Query& operator=(const Query&) = delete;
    ~Query();

    bool atEnd() const;
    void next();
    int columns() const;
    /// Of the current row; columns count from 0.
    automation::Value value(int column) const;
    /// A live column of the current row; take it once, before the loop over the rows. Read its "Value".
    automation::ObjectPtr field(std::string_view column) const;

private:
    automation::ObjectPtr recordset_;
};

/// Runs a statement that gives no rows. Error 91 without a connection; else the provider's own.
void execute(const automation::ObjectPtr& connection, const std::string& sql);

/// Between single quotes, with apostrophes doubled.
std::string quoted(std::string_view text);

/// As it stands in a statement: numbers plain, text quoted, dates 'yyyymmdd hh:mm:ss', Null and Empty as null.
/// Error 13 for arrays and objects.
std::string literal(const automation::Value& value);

/// `source` with the condition added: by "and" where it has a where-condition already, else by "where".
std::string restricted(const std::string& source, const std::string& condition);

/// The query up to its own "order by", so that it can stand inside another one.
std::string withoutOrder(const std::string& query);

} // namespace sandbox
