#include "common/Fetch.h"

#include "automation/RunTimeError.h"
#include "basic/Conversion.h"

namespace goodsreq {

using automation::Array;
using automation::Value;

Recordset Fetch::show(const FetchRequest& request, const automation::ObjectPtr& choice) const {
    Array names, captions, widths;
    for (const FetchColumn& column : request.columns) {
        names.emplace_back(column.field);
        captions.emplace_back(column.caption);
        widths.emplace_back(column.width);
    }
    const automation::ObjectPtr dialog = object();
    Recordset ours(choice); // closed at the end, whatever becomes of the dialog
    Value shared = choice;
    dialog->putRef("adocon", request.connection);
    dialog->put("strMsgboxTitle", request.messageBoxTitle);
    dialog->put("lngUserID", request.userId);
    dialog->put("strQuery", request.query);
    tell("setRecordset", Value::byReference(shared));
    tellList("setFieldNames", std::move(names));
    tellList("setFieldCaptions", std::move(captions));
    tellList("setFieldWidths", std::move(widths));
    tell("setDefaultFetchField", request.defaultColumn);
    tell("setInterfaceCaption", request.caption);
    tell("setShopId", request.shopId);
    tell("setFetchType", "I");
    tell("setLocationType", "S");
    dialog->put("interfaceid", request.screenId);
    dialog->put("DataIdentifier", "01");
    if (request.preserveData) dialog->put("PreserveData", true);
    dialog->call("Show");
    if (basic::cBool(dialog->get("getCancelledStatus"))) return Recordset(nullptr);
    const automation::ObjectPtr* result = shared.as<automation::ObjectPtr>();
    if (result && *result == choice) return ours;
    return Recordset(result ? *result : nullptr);
}

void Fetch::tell(const char* member, Value value) const {
    try {
        object()->call(member, value);
    } catch (const automation::RunTimeError& error) {
        const bool property =
            error.number() == automation::kNoSuchMember || error.number() == automation::kWrongNumberOfArguments;
        if (!property) throw;
        // An object is assigned by reference.
        if (value.isObject())
            object()->putRef(member, value.resolved());
        else
            object()->put(member, std::move(value));
    }
}

void Fetch::tellList(const char* member, Array list) const {
    Value value = std::move(list);
    try {
        tell(member, value);
    } catch (const automation::RunTimeError& error) {
        if (error.number() != automation::kTypeMismatch) throw;
        tell(member, Value::byReference(value));
    }
}

} // namespace goodsreq
