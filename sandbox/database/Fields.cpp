#include "sandbox/database/Fields.h"

#include "sandbox/database/Errors.h"

namespace sandbox {
namespace {

using automation::Arguments;
using automation::Value;

/// The data access interface's number for a field's type.
std::int32_t typeCode(const SqlType& type) {
    switch (type.kind) {
    case Kind::bit: return 11;
    case Kind::tinyInt: return 17;
    case Kind::smallInt: return 2;
    case Kind::bigInt: return 20;
    case Kind::money: return 6;
    case Kind::decimal: return 131;
    case Kind::real: return 5;
    case Kind::dateTime: return 135;
    case Kind::text: return type.fixed ? (type.wide ? 130 : 129) : (type.wide ? 202 : 200);
    default: return 3;
    }
}

std::int32_t definedSize(const SqlType& type) {
    switch (type.kind) {
    case Kind::text: return type.size > 0 ? type.size : 8000;
    case Kind::bit: return 2;
    case Kind::tinyInt: return 1;
    case Kind::smallInt: return 2;
    case Kind::integer:
    case Kind::unknown: return 4;
    case Kind::decimal: return 19;
    case Kind::dateTime: return 16;
    default: return 8;
    }
}

} // namespace

automation::ObjectPtr Fields::item(const Value& nameOrPosition) const {
    return std::make_shared<Field>(records_, records_->indexOf(nameOrPosition));
}

automation::Array Fields::elements() {
    automation::Array list;
    for (std::size_t i = 0; i < records_->columns().size(); ++i) list.push_back(std::make_shared<Field>(records_, i));
    return list;
}

const automation::Members<Fields>& Fields::members() {
    static const auto table = [] {
        automation::Members<Fields> m;
        m.readOnly("Count", [](Fields& self) {
            return Value(static_cast<std::int32_t>(self.records_->isOpen() ? self.records_->columns().size() : 0));
        });
        auto get = [](Fields& self, Arguments arguments) { return Value(self.item(arguments[0])); };
        auto put = [](Fields& self, Arguments arguments) {
            self.item(arguments[0])->put("Value", arguments[1].resolved());
            return Value();
        };
        m.indexed("Item", 1, get, put);
        m.indexed("", 1, get, put);
        return m;
    }();
    return table;
}

Value Fields::invoke(automation::Access access, std::string_view member, Arguments arguments) {
    return members().invoke(*this, access, member, arguments);
}

bool Fields::has(std::string_view member) const { return members().has(member); }

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
        m.readOnly("Name", [](Field& self) { return Value(self.column().name); });
        m.readOnly("Type", [](Field& self) { return Value(typeCode(self.column().type)); });
        m.readOnly("DefinedSize", [](Field& self) { return Value(definedSize(self.column().type)); });
        m.readOnly("NumericScale", [](Field& self) { return Value(std::int32_t(self.column().type.scale)); });
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
