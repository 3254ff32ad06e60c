#include "sandbox/database/Fields.h"

#include "sandbox/database/Errors.h"

namespace sandbox {
namespace {

using automation::Arguments;
using automation::Value;

/// Characters that a text holds. The numbers and dates are given the bytes of the widest.
std::int32_t definedSize(const SqlType& type) {
    constexpr std::int32_t kUnlimited = 0x3FFFFFFF;
    if (type.kind != Kind::text) return 8;
    return type.size > 0 ? type.size : kUnlimited;
}

} // namespace

automation::ObjectPtr Fields::item(const Value& nameOrPosition) const {
    return std::make_shared<Field>(records_, records_->indexOf(nameOrPosition));
}

const automation::Members<Fields>& Fields::members() {
    static const auto table = [] {
        automation::Members<Fields> m;
        m.readOnly("Count", [](Fields& self) {
            return Value(static_cast<std::int32_t>(self.records_->isOpen() ? self.records_->columns().size() : 0));
        });
        m.method("Item", 1, 1, [](Fields& self, Arguments arguments) { return Value(self.item(arguments[0])); });
        return m;
    }();
    return table;
}

const OutputColumn& Field::column() const {
    const auto& columns = records_->columns();
    if (index_ >= columns.size()) fail(kItemNotFound);
    return columns[index_];
}

const automation::Members<Field>& Field::members() {
    static const auto table = [] {
        automation::Members<Field> m;
        auto get = [](Field& self) { return self.records_->value(self.index_); };
        auto put = [](Field& self, const Value& value) { self.records_->setValue(self.index_, value); };
        m.property("Value", get, put);
        m.property("", get, put);
        m.readOnly("DefinedSize", [](Field& self) { return Value(definedSize(self.column().type)); });
        return m;
    }();
    return table;
}

Value Field::invoke(automation::Access access, std::string_view member, Arguments arguments) {
    // What is read for each cell of each row goes past the table.
    if (access == automation::Access::get && arguments.empty() && member == "Value") return records_->value(index_);
    return members().invoke(*this, access, member, arguments);
}

bool Field::has(std::string_view member) const { return members().has(member); }

} // namespace sandbox
