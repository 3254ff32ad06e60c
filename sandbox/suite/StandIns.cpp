#include "sandbox/suite/StandIns.h"

#include "automation/Members.h"
#include "sandbox/database/Connection.h"
#include "sandbox/database/Recordset.h"
#include "sandbox/suite/ClsCommonDB.h"
#include "sandbox/suite/ClsCommonGen.h"
#include "sandbox/suite/ClsFetch.h"
#include "sandbox/suite/ClsFormcolor.h"
#include "sandbox/suite/ClsMasterGridSetting.h"
#include "sandbox/suite/ClsUserAuditing.h"
#include "sandbox/suite/ErrorDetails.h"
#include "sandbox/suite/ReportEngine.h"

namespace sandbox {

using automation::ObjectPtr;

namespace {

struct Maker {
    const char* progId;
    ObjectPtr (*make)(const Surroundings&);
};

template <class Class> ObjectPtr plain(const Surroundings&) { return std::make_shared<Class>(); }

constexpr Maker kMakers[] = {
    {"CommonModule.clsCommonDB", plain<ClsCommonDB>},
    {"CommonModule.clsCommonGen", plain<ClsCommonGen>},
    {"Formcolor.clsFormcolor", plain<ClsFormcolor>},
    {"PosUserAuditing.clsUserAuditing", plain<ClsUserAuditing>},
    {"MasterGridSetting.clsMasterGridSetting", plain<ClsMasterGridSetting>},
    {"ErrorHandler.ErrorDetails",
     [](const Surroundings& s) -> ObjectPtr { return std::make_shared<ErrorDetails>(*s.desktop, s.logFolder); }},
    {"Fetch.clsFetch", [](const Surroundings& s) -> ObjectPtr { return std::make_shared<ClsFetch>(*s.desktop); }},
    {"Crystal.CRPE.Application", [](const Surroundings& s) -> ObjectPtr { return std::make_shared<ReportEngine>(s); }},
    {"ADODB.Connection", plain<Connection>},
    {"ADODB.Recordset", plain<Recordset>},
};

} // namespace

ObjectPtr createStandIn(std::string_view progId, const Surroundings& surroundings) {
    for (const Maker& maker : kMakers)
        if (automation::sameName(maker.progId, progId)) return maker.make(surroundings);
    return nullptr;
}

automation::ObjectFactory standInFactory(Surroundings surroundings) {
    return [surroundings = std::move(surroundings)](std::string_view progId) {
        ObjectPtr made = createStandIn(progId, surroundings);
        if (!made) automation::raise(automation::kCannotCreateObject);
        return made;
    };
}

const std::vector<std::string>& standInProgIds() {
    static const std::vector<std::string> ids = [] {
        std::vector<std::string> all;
        for (const Maker& maker : kMakers) all.emplace_back(maker.progId);
        return all;
    }();
    return ids;
}

} // namespace sandbox
