#include "sandbox/suite/ClsMasterGridSetting.h"

#include "basic/Conversion.h"
#include "sandbox/suite/Query.h"

namespace sandbox {

using automation::Arguments;
using automation::Value;

namespace {

void applySavedWidths(std::int32_t user, std::int32_t company, automation::Object& grid,
                      const automation::ObjectPtr& connection) {
    const std::int32_t columns = basic::cLng(grid.get("Cols"));
    Query query(connection, "select ColumnNo,ColumnWidth from aMasterGridSettings where UserID=" +
                                std::to_string(user) + " and CompanyID=" + std::to_string(company) +
                                " and GridName=" + quoted(basic::cStr(grid.get("Name"))));
    for (; !query.atEnd(); query.next()) {
        const std::int32_t column = basic::cLng(query.value(0));
        if (column < 0 || column >= columns) continue;
        std::array<Value, 2> width{column, basic::cLng(query.value(1))};
        grid.invoke(automation::Access::put, "ColWidth", width);
    }
}

} // namespace

const automation::Members<ClsMasterGridSetting>& ClsMasterGridSetting::members() {
    static const auto table = [] {
        automation::Members<ClsMasterGridSetting> m;
        m.method("fnGridSettings", 4, 4, [](ClsMasterGridSetting&, Arguments a) {
            applySavedWidths(basic::cLng(a[0]), basic::cLng(a[1]), a[2].object(), a[3].objectPtr());
            return Value();
        });
        return m;
    }();
    return table;
}

} // namespace sandbox
