#include "sandbox/suite/ClsCommonDB.h"

#include "basic/Conversion.h"
#include "basic/Text.h"
#include "sandbox/suite/Query.h"

#include <limits>

namespace sandbox {

using automation::Arguments;
using automation::Object;
using automation::Value;

namespace {

/// The text of a list cell: sub-item 0 is the line's own text.
std::string cellText(Object& line, std::int32_t subItem) {
    return basic::cStr(subItem == 0 ? line.get("Text") : line.call("SubItems", subItem));
}

/// A cell is text, and the server converts it to its column's type: so no digit is lost on the way.
std::string cellLiteral(Object& line, std::int32_t subItem) {
    const std::string text = cellText(line, subItem);
    return text.empty() ? "null" : quoted(text);
}

} // namespace

const automation::Members<ClsCommonDB>& ClsCommonDB::members() {
    static const auto table = [] {
        automation::Members<ClsCommonDB> m;
        m.property(
            "adocon", [](ClsCommonDB& self) { return Value(self.connection_); },
            [](ClsCommonDB& self, const Value& value) { self.connection_ = value.objectPtr(); });
        m.property(
            "strTableName", [](ClsCommonDB& self) { return Value(self.table_); },
            [](ClsCommonDB& self, const Value& value) { self.table_ = basic::cStr(value); });
        m.method("fnReturnField", 1, 2, [](ClsCommonDB& self, Arguments a) {
            const bool hasCriterion = a.size() > 1 && !a[1].isMissing();
            return self.fnReturnField(basic::cStr(a[0]), hasCriterion ? basic::cStr(a[1]) : "");
        });
        m.method("fnReturnRecords", 1, 1,
                 [](ClsCommonDB& self, Arguments a) { return self.fnReturnRecords(basic::cStr(a[0])); });
        m.method("fnGetNextMaxNo", 1, 1,
                 [](ClsCommonDB& self, Arguments a) { return self.fnGetNextMaxNo(basic::cStr(a[0])); });
        m.method("fnUpdateListViewDetails", 3, 255, [](ClsCommonDB& self, Arguments a) {
            self.fnUpdateListViewDetails(a);
            return Value(true);
        });
        m.method("populateComboorList", 3, 4, [](ClsCommonDB& self, Arguments a) {
            const bool hasCondition = a.size() > 3 && !a[3].isMissing();
            self.populateComboorList(a[0].object(), basic::cStr(a[1]), basic::cStr(a[2]),
                                     hasCondition ? basic::cStr(a[3]) : "");
            return Value(true);
        });
        return m;
    }();
    return table;
}

Value ClsCommonDB::fnReturnField(const std::string& field, const std::string& criterion) {
    const Query query(connection_, restricted("select " + field + " from " + table_, criterion));
    return query.atEnd() ? Value() : query.value(0);
}

Value ClsCommonDB::fnReturnRecords(const std::string& sql) {
    if (!connection_) automation::raise(automation::kObjectNotSet);
    return connection_->call("Execute", sql);
}

Value ClsCommonDB::fnGetNextMaxNo(const std::string& field) {
    const Query query(connection_, "select max(" + field + ") from " + table_);
    const Value highest = query.atEnd() ? Value(automation::Null()) : query.value(0);
    if (highest.isNull() || highest.isEmpty()) return std::int32_t{1};
    const std::int32_t number = basic::cLng(highest);
    if (number == std::numeric_limits<std::int32_t>::max()) automation::raise(automation::kOverflow);
    return number + 1;
}

void ClsCommonDB::fnUpdateListViewDetails(Arguments arguments) {
    if (arguments.size() % 2 == 0) automation::raise(automation::kWrongNumberOfArguments);
    struct Source {
        std::string fixed; ///< the literal; empty for a sub-item
        std::int32_t subItem = 0;
    };
    std::vector<Source> sources;
    for (std::size_t i = 1; i < arguments.size(); i += 2) {
        const std::string kind = basic::ucase(basic::trim(basic::cStr(arguments[i])));
        if (kind == "V")
            sources.push_back({literal(arguments[i + 1])});
        else if (kind == "C")
            sources.push_back({"", basic::cLng(arguments[i + 1])});
        else
            automation::raise(automation::kInvalidCall);
    }
    const automation::ObjectPtr lines = arguments[0].object().get("ListItems").objectPtr();
    const std::int32_t count = basic::cLng(lines->get("Count"));
    for (std::int32_t row = 1; row <= count; ++row) {
        const automation::ObjectPtr line = lines->call("Item", row).objectPtr();
        std::string values;
        for (const Source& source : sources) {
            if (!values.empty()) values += ",";
            values += source.fixed.empty() ? cellLiteral(*line, source.subItem) : source.fixed;
        }
        execute(connection_, "insert into " + table_ + " values (" + values + ")");
    }
}

void ClsCommonDB::populateComboorList(Object& box, const std::string& valueField, const std::string& textField,
                                      const std::string& condition) {
    box.call("Clear");
    Query query(connection_, restricted("select " + valueField + "," + textField + " from " + table_, condition) +
                                 " order by " + textField);
    for (; !query.atEnd(); query.next()) {
        const Value id = query.value(0);
        box.call("AddItem", basic::concatText(query.value(1)));
        std::array<Value, 2> itemData{box.get("NewIndex"), id.isNull() ? Value(std::int32_t{0}) : id};
        box.invoke(automation::Access::put, "ItemData", itemData);
    }
}

} // namespace sandbox
