#include "common/CommonDb.h"

#include "automation/RunTimeError.h"

namespace goodsreq {

using automation::Access;
using automation::Value;

CommonDb::CommonDb(automation::ObjectPtr helper, const automation::ObjectPtr& connection) : helper_(std::move(helper)) {
    helper_->putRef("adocon", connection);
}

automation::ObjectPtr CommonDb::helper() const {
    if (!helper_) automation::raise(automation::kObjectNotSet);
    return helper_;
}

automation::ObjectPtr CommonDb::on(const std::string& table) const {
    automation::ObjectPtr kept = helper();
    kept->put("strTableName", table);
    return kept;
}

Value CommonDb::lookUp(const std::string& table, const std::string& field, const std::string& criterion) const {
    const automation::ObjectPtr source = on(table);
    return criterion.empty() ? source->call("fnReturnField", field) : source->call("fnReturnField", field, criterion);
}

Recordset CommonDb::fnReturnRecords(const std::string& query) const {
    Value text = query;
    return Recordset(helper()->call("fnReturnRecords", Value::byReference(text)).objectPtr());
}

Value CommonDb::fnGetNextMaxNo(const std::string& table, const std::string& field) const {
    return on(table)->call("fnGetNextMaxNo", field);
}

void CommonDb::fnUpdateListViewDetails(const std::string& table, forms::ListView& list,
                                       const std::vector<ColumnSource>& columns) const {
    std::vector<Value> arguments{list.self()};
    for (const ColumnSource& column : columns) {
        arguments.emplace_back(column.kind);
        arguments.push_back(column.value);
    }
    on(table)->invoke(Access::get, "fnUpdateListViewDetails", arguments);
}

void CommonDb::populateComboorList(const std::string& table, forms::ComboBox& box, const std::string& valueField,
                                   const std::string& textField, const std::string& condition) const {
    on(table)->call("populateComboorList", box.self(), valueField, textField, condition);
}

} // namespace goodsreq
