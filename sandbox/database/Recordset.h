// ADODB.Recordset over the sandbox's database: the rows of a query, read whole, with a current one that can be edited.
#pragma once

#include "automation/Members.h"
#include "automation/Object.h"
#include "sandbox/database/Connection.h"

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace sandbox {

class Recordset : public automation::Object, public std::enable_shared_from_this<Recordset> {
public:
    enum Cursor : std::int32_t { kForwardOnly = 0, kKeyset = 1, kDynamic = 2, kStatic = 3 };
    enum Lock : std::int32_t { kReadOnlyLock = 1, kPessimistic = 2, kOptimistic = 3, kBatch = 4 };

    Recordset() = default;
    ~Recordset() override;

    automation::Value invoke(automation::Access access, std::string_view member,
                             automation::Arguments arguments) override;
    bool has(std::string_view member) const override;
    std::string className() const override { return "Recordset"; }
    /// The fields, as "for each" over a record set visits them.
    automation::Array elements() override;

    /// Takes over what a statement gave; stays closed when that was no query.
    void adopt(Outcome outcome, std::shared_ptr<Connection> connection, std::string source);

    bool isOpen() const { return open_; }
    bool atEnd() const;
    bool atBegin() const;

    // For the fields. Errors: 3704 when closed, 3265 for an unknown field, 3021 without a current record.
    const std::vector<OutputColumn>& columns() const;
    std::size_t indexOf(const automation::Value& nameOrPosition) const;
    automation::Value value(std::size_t index) const;
    /// Errors also: 3251 where nothing can be written, 3421 and -2147217887 for a value that the field cannot hold.
    void setValue(std::size_t index, const automation::Value& value);

private:
    enum class Editing { none, changing, adding };

    static const automation::Members<Recordset>& members();
    static void addOpening(automation::Members<Recordset>& m);
    static void addMoving(automation::Members<Recordset>& m);
    static void addEditing(automation::Members<Recordset>& m);
    void open(automation::Arguments arguments);
    void run();
    void close();
    void setConnection(const automation::Value& value);
    void moveTo(std::ptrdiff_t position);
    void tellWhetherRead();
    void wantOpen() const;
    void wantWritable() const;
    Database& database() const;
    Database& idleDatabase() const;
    void addNew();
    void update();
    void insertPending();
    void writePending();
    void cancelUpdate();
    automation::Value getString(automation::Arguments arguments);

    std::shared_ptr<Connection> connection_;
    std::string source_;
    std::int32_t cursor_ = kForwardOnly;
    std::int32_t lock_ = kReadOnlyLock;
    bool occupies_ = false; ///< the connection, with rows that were not read yet
    bool open_ = false;
    Outcome data_;
    std::ptrdiff_t position_ = 0; ///< -1 before the first row, the number of rows after the last
    Editing editing_ = Editing::none;
    std::vector<std::optional<automation::Value>> pending_; ///< of the row being edited: the fields that were set
};

} // namespace sandbox
