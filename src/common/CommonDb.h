// The suite's database helper, CommonModule.clsCommonDB, by its members.
#pragma once

#include "common/Recordset.h"
#include "forms/ComboBox.h"
#include "forms/ListView.h"

#include <string>
#include <vector>

namespace goodsreq {

/// One column of a row written from a list: a fixed value, or a sub-item of the line by its index.
struct ColumnSource {
    static ColumnSource fixed(automation::Value value) { return {"V", std::move(value)}; }
    static ColumnSource subItem(std::int16_t index) { return {"C", automation::Value(index)}; }

    const char* kind;
    automation::Value value;
};

class CommonDb {
public:
    CommonDb() = default;
    /// `connection` is what all its statements run on.
    CommonDb(automation::ObjectPtr helper, const automation::ObjectPtr& connection);

    /// The field in the first row of `table` (a table, several with aliases, or one with a where-condition) that meets
    /// the criterion, a condition without the word "where". Null or Empty when there is none.
    automation::Value lookUp(const std::string& table, const std::string& field,
                             const std::string& criterion = {}) const;
    Recordset fnReturnRecords(const std::string& query) const;
    /// The highest value of the field in `table` plus 1, or 1 when there is no row.
    automation::Value fnGetNextMaxNo(const std::string& table, const std::string& field) const;
    /// Writes one row into `table` for each line of the list; a source for each of the table's columns, in their order.
    void fnUpdateListViewDetails(const std::string& table, forms::ListView& list,
                                 const std::vector<ColumnSource>& columns) const;
    /// Fills the box with the text field of each row that meets the condition, the value field as its item data.
    void populateComboorList(const std::string& table, forms::ComboBox& box, const std::string& valueField,
                             const std::string& textField, const std::string& condition) const;

private:
    /// Kept alive over a call in which this helper may be dropped.
    automation::ObjectPtr helper() const;
    automation::ObjectPtr on(const std::string& table) const;

    automation::ObjectPtr helper_;
};

} // namespace goodsreq
