#include "common/Recordset.h"

#include "automation/RunTimeError.h"
#include "basic/Conversion.h"

namespace goodsreq {
namespace {

void closeQuietly(const automation::ObjectPtr& recordset) noexcept {
    try {
        if (recordset && basic::cLng(recordset->get("State")) != 0) recordset->call("Close");
    } catch (...) {
        // A record set that cannot even be closed is of no more use; the error that led here is the one to report.
    }
}

} // namespace

Recordset::~Recordset() { closeQuietly(object_); }

automation::Object& Recordset::held() const {
    if (!object_) automation::raise(automation::kObjectNotSet);
    return *object_;
}

std::int32_t Field::definedSize() const { return basic::cLng(object_->get("DefinedSize")); }

bool Recordset::isOpen() const { return object_ && basic::cLng(object_->get("State")) != 0; }

bool Recordset::eof() const { return basic::cBool(held().get("EOF")); }

void Recordset::needsRow(const char* reason) const {
    constexpr long kNoCurrentRecord = 3021;
    if (eof()) throw automation::RunTimeError(kNoCurrentRecord, reason);
}

void Recordset::moveNext() { held().call("MoveNext"); }

std::int32_t Recordset::recordCount() const { return basic::cLng(held().get("RecordCount")); }

Field Recordset::field(std::string_view name) const { return Field(held().call("Fields", name).objectPtr()); }

std::vector<Field> Recordset::fields() const {
    automation::ObjectPtr list = held().get("Fields").objectPtr();
    std::vector<Field> result;
    const std::int32_t count = basic::cLng(list->get("Count"));
    // No room is taken beforehand on the word of somebody else's component.
    for (std::int32_t i = 0; i < count; ++i)
        result.emplace_back(list->call("Item", i).objectPtr()); // NOLINT(performance-inefficient-vector-operation)
    return result;
}

automation::Value Recordset::value(int position) const {
    return Field(held().call("Fields", std::int32_t{position}).objectPtr()).value();
}

std::string Recordset::clipText() {
    constexpr std::int32_t kClipString = 2;
    constexpr std::int32_t kAllRows = -1;
    return basic::concatText(held().call("GetString", kClipString, kAllRows, "\t", "\r", ""));
}

void Recordset::addNew() { held().call("AddNew"); }

void Recordset::set(std::string_view name, automation::Value value) {
    held().call("Fields", name).object().put("Value", std::move(value));
}

void Recordset::update() { held().call("Update"); }

void Recordset::close() { held().call("Close"); }

} // namespace goodsreq
