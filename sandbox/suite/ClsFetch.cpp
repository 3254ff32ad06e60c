#include "sandbox/suite/ClsFetch.h"

#include "basic/Conversion.h"
#include "basic/Text.h"
#include "sandbox/suite/Query.h"

namespace sandbox {

using automation::Access;
using automation::Arguments;
using automation::Array;
using automation::Value;

namespace {

// ADO's numbers.
constexpr std::int32_t kStateClosed = 0;
constexpr std::int32_t kKeysetCursor = 1;
constexpr std::int32_t kReadOnlyLock = 1;

const Array& arrayOf(const Value& value) {
    const Array* array = value.as<Array>();
    if (!array) automation::raise(automation::kTypeMismatch);
    return *array;
}

std::vector<std::string> texts(const Value& value) {
    std::vector<std::string> result;
    for (const Value& element : arrayOf(value)) result.push_back(basic::cStr(element));
    return result;
}

std::vector<std::int32_t> numbers(const Value& value) {
    std::vector<std::int32_t> result;
    for (const Value& element : arrayOf(value)) result.push_back(basic::cLng(element));
    return result;
}

template <class T> T at(const std::vector<T>& list, std::size_t index, T otherwise) {
    return index < list.size() ? list[index] : otherwise;
}

constexpr std::int32_t kDefaultWidth = 2000;

} // namespace

const automation::Members<ClsFetch>& ClsFetch::members() {
    static const auto table = [] {
        automation::Members<ClsFetch> m;
        m.property(
            "adocon", [](ClsFetch& self) { return Value(self.connection_); },
            [](ClsFetch& self, const Value& v) { self.connection_ = v.objectPtr(); });
        m.property(
            "strQuery", [](ClsFetch& self) { return Value(self.query_); },
            [](ClsFetch& self, const Value& v) { self.query_ = basic::cStr(v); });
        m.property(
            "setInterfaceCaption", [](ClsFetch& self) { return Value(self.caption_); },
            [](ClsFetch& self, const Value& v) { self.caption_ = basic::cStr(v); });
        m.property(
            "setFieldNames", [](ClsFetch& self) { return Value(Array(self.fields_.begin(), self.fields_.end())); },
            [](ClsFetch& self, const Value& v) { self.fields_ = texts(v); });
        m.property(
            "setFieldCaptions",
            [](ClsFetch& self) { return Value(Array(self.captions_.begin(), self.captions_.end())); },
            [](ClsFetch& self, const Value& v) { self.captions_ = texts(v); });
        m.property(
            "setFieldWidths", [](ClsFetch& self) { return Value(Array(self.widths_.begin(), self.widths_.end())); },
            [](ClsFetch& self, const Value& v) { self.widths_ = numbers(v); });
        m.property(
            "setDefaultFetchField", [](ClsFetch& self) { return Value(self.defaultField_); },
            [](ClsFetch& self, const Value& v) { self.defaultField_ = basic::cLng(v); });
        m.property(
            "PreserveData", [](ClsFetch& self) { return Value(self.preserve_); },
            [](ClsFetch& self, const Value& v) { self.preserve_ = basic::cBool(v); });
        m.property(
            "setRecordset", [](ClsFetch& self) { return Value(self.recordset_); },
            [](ClsFetch& self, const Value& v) { self.setRecordset(v); });
        m.readOnly("getRecordset", [](ClsFetch& self) { return Value(self.recordset_); });
        m.readOnly("getCancelledStatus", [](ClsFetch& self) { return Value(self.cancelled_); });
        for (const std::string name : {"setFetchType", "setLocationType", "setShopId", "strMsgboxTitle", "interfaceid",
                                       "lngUserID", "DataIdentifier"})
            m.property(
                name, [name](ClsFetch& self) { return self.told_[name]; },
                [name](ClsFetch& self, const Value& v) { self.told_[name] = v.resolved(); });
        m.method("Show", 0, 0, [](ClsFetch& self, Arguments) {
            self.Show();
            return Value();
        });
        return m;
    }();
    return table;
}

Value ClsFetch::invoke(Access access, std::string_view member, Arguments arguments) {
    const bool givenByCall = access == Access::get && arguments.size() == 1;
    return members().invoke(*this, givenByCall ? Access::put : access, member, arguments);
}

void ClsFetch::setRecordset(const Value& value) {
    const automation::ObjectPtr* object = value.as<automation::ObjectPtr>();
    recordset_ = object ? *object : nullptr;
    ownsRecordset_ = !recordset_;
}

void ClsFetch::Show() {
    if (fields_.empty()) automation::raise(automation::kInvalidCall);
    cancelled_ = true;

    FetchWindow::Content content;
    content.caption = caption_.empty() ? "Fetch" : caption_;
    for (std::size_t i = 0; i < fields_.size(); ++i)
        content.columns.push_back({at(captions_, i, fields_[i]), at(widths_, i, kDefaultWidth)});

    std::vector<Value> keys;
    {
        Query query(connection_, query_);
        std::vector<automation::ObjectPtr> columns;
        for (const std::string& field : fields_) columns.push_back(query.field(field));
        for (; !query.atEnd(); query.next()) {
            std::vector<std::string> cells;
            cells.reserve(columns.size());
            for (const automation::ObjectPtr& column : columns)
                cells.push_back(basic::trim(basic::concatText(column->get("Value"), desktop_.locale())));
            keys.push_back(columns.front()->get("Value"));
            content.rows.push_back(std::move(cells));
        }
    }

    FetchWindow::Search search{defaultField_ < 0 ? 0 : static_cast<std::size_t>(defaultField_), ""};
    if (preserve_ && shownBefore_) search = lastSearch_;
    const auto window = std::make_shared<FetchWindow>(desktop_, std::move(content), search);
    window->showModal(desktop_.topForm());
    lastSearch_ = window->search();
    shownBefore_ = true;
    if (!window->chosen()) return;
    openResult(keys[*window->chosen()]);
    cancelled_ = false;
}

void ClsFetch::openResult(const Value& key) {
    const std::string sql =
        "select * from (" + withoutOrder(query_) + ") q where q." + fields_.front() + "=" + literal(key);
    if (ownsRecordset_) {
        recordset_ = connection_->call("Execute", sql).objectPtr();
        return;
    }
    if (basic::cLng(recordset_->get("State")) != kStateClosed) recordset_->call("Close");
    recordset_->call("Open", sql, connection_, kKeysetCursor, kReadOnlyLock);
}

} // namespace sandbox
