// An ADO record set by its members.
#pragma once

#include "automation/Object.h"

#include <string>
#include <vector>

namespace goodsreq {

/// ADO's cursor types.
enum class Cursor : std::int32_t { forwardOnly = 0, keyset = 1, dynamic = 2, statik = 3 };
/// ADO's lock types.
enum class Lock : std::int32_t { readOnly = 1, pessimistic = 2, optimistic = 3 };

/// A live column of a record set's current row. Take it once, before the loop over the rows.
class Field {
public:
    explicit Field(automation::ObjectPtr object) : object_(std::move(object)) {}
    automation::Value value() const { return object_->get("Value"); }
    /// Characters that a text column holds.
    std::int32_t definedSize() const;

private:
    automation::ObjectPtr object_;
};

/// Owns an ADO record set and closes it at the end, quietly when an error is on its way.
class Recordset {
public:
    explicit Recordset(automation::ObjectPtr object) : object_(std::move(object)) {}
    Recordset(Recordset&&) = default;
    Recordset& operator=(Recordset&&) = delete;
    ~Recordset();

    const automation::ObjectPtr& object() const { return object_; }
    bool isOpen() const;
    bool eof() const;
    /// Error 3021, with the reason in place of the provider's, where there is no row.
    void needsRow(const char* reason) const;
    void moveNext();
    /// -1 where the cursor cannot tell.
    std::int32_t recordCount() const;
    Field field(std::string_view name) const;
    std::vector<Field> fields() const;
    /// The current row's value. Error 3265 (of ADO) for an unknown column, 3021 where there is no row.
    automation::Value value(std::string_view name) const { return field(name).value(); }
    automation::Value value(int position) const;
    /// The rows from the current one on as a grid takes them in at once: cells parted by tabs, rows by carriage
    /// returns, Null empty. The record set stands behind its last row then. Error 3021 where there is no row.
    std::string clipText();
    void addNew();
    void set(std::string_view name, automation::Value value);
    void update();
    void close();

private:
    /// Error 91 where a component answered with no record set.
    automation::Object& held() const;

    automation::ObjectPtr object_;
};

} // namespace goodsreq
