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

class Recordset : public automation::WithMembers<Recordset>, public std::enable_shared_from_this<Recordset> {
public:
    enum Cursor : std::int32_t { kForwardOnly = 0, kKeyset = 1, kDynamic = 2, kStatic = 3 };
    enum Lock : std::int32_t { kReadOnlyLock = 1, kPessimistic = 2, kOptimistic = 3, kBatch = 4 };

    Recordset() = default;
    ~Recordset() override;

    static const automation::Members<Recordset>& members();
    std::string className() const override { return "Recordset"; }

    /// Takes over what a statement gave; stays closed when that was no query.
    void adopt(Outcome outcome, std::shared_ptr<Connection> connection);

    bool isOpen() const { return open_; }
    bool atEnd() const;

    // For the fields. Errors: 3704 when closed, 3265 for an unknown field, 3021 without a current record.
    const std::vector<OutputColumn>& columns() const;
    std::size_t indexOf(const automation::Value& nameOrPosition) const;
    automation::Value value(std::size_t index) const;
    /// Errors also: 3251 where nothing can be written, 3421 and -2147217887 for a value that the field cannot hold.
    void setValue(std::size_t index, const automation::Value& value);

private:
    enum class Editing { none, changing, adding };

    static void addEditing(automation::Members<Recordset>& m);
    void open(automation::Arguments arguments);
    void close();
    void moveNext();
    void tellWhetherRead();
    void wantOpen() const;
    void wantWritable() const;
    Database& database() const;
    Database& idleDatabase() const;
    void addNew();
    void update();
    void insertPending();
    void writePending();
    automation::Value getString(automation::Arguments arguments);

    std::shared_ptr<Connection> connection_;
    std::int32_t cursor_ = kForwardOnly;
    std::int32_t lock_ = kReadOnlyLock;
    bool occupies_ = false; ///< the connection, with rows that were not read yet
    bool open_ = false;
    Outcome data_;
    std::size_t position_ = 0; ///< the number of rows after the last
    Editing editing_ = Editing::none;
    std::vector<std::optional<automation::Value>> pending_; ///< of the row being edited: the fields that were set
};

} // namespace sandbox
