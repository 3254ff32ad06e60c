#include "common/Fetch.h"

#include "basic/Conversion.h"

namespace goodsreq {

using automation::Array;
using automation::Value;

automation::ObjectPtr Fetch::show(const FetchRequest& request, Value& shared) const {
    Array names, captions, widths;
    for (const FetchColumn& column : request.columns) {
        names.emplace_back(column.field);
        captions.emplace_back(column.caption);
        widths.emplace_back(column.width);
    }
    automation::Object& dialog = object();
    dialog.putRef("adocon", request.connection);
    dialog.put("strMsgboxTitle", request.messageBoxTitle);
    dialog.put("lngUserID", request.userId);
    dialog.put("strQuery", request.query);
    dialog.call("setRecordset", Value::byReference(shared));
    dialog.call("setFieldNames", std::move(names));
    dialog.call("setFieldCaptions", std::move(captions));
    dialog.call("setFieldWidths", std::move(widths));
    dialog.call("setDefaultFetchField", request.defaultColumn);
    dialog.call("setInterfaceCaption", request.caption);
    dialog.call("setShopId", request.shopId);
    dialog.call("setFetchType", "I");
    dialog.call("setLocationType", "S");
    dialog.put("interfaceid", request.screenId);
    dialog.put("DataIdentifier", "01");
    if (request.preserveData) dialog.put("PreserveData", true);
    dialog.call("Show");
    if (basic::cBool(dialog.get("getCancelledStatus"))) return nullptr;
    const automation::ObjectPtr* result = shared.as<automation::ObjectPtr>();
    return result ? *result : nullptr;
}

} // namespace goodsreq
