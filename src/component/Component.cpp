#include "component/Component.h"

#include "automation/RunTimeError.h"
#include "screens/fetch/FrmFetch.h"
#include "screens/lines/frmRequestDetail.h"
#include "screens/lines/frmscanBc.h"
#include "screens/print/frmPrint.h"
#include "screens/register/frmMaster.h"
#include "screens/register/frmcancelreason.h"
#include "screens/request/frmRequest.h"

#include <utility>

namespace goodsreq {
namespace {

constexpr const char* kProjectKey = "KOVA/XB/TRAM/842";
constexpr long kAlreadyShown = 400;

struct ProcessModule {
    std::unique_ptr<forms::Desktop> desktop;
    std::unique_ptr<System> system;
    std::unique_ptr<Module> module;
};

// Never destroyed: windows and components of the process may outlive static destruction.
ProcessModule& process() {
    static ProcessModule& instance = *new ProcessModule;
    return instance;
}

} // namespace

FormMakers formMakers() {
    return {
        [](Module& module) { return std::make_shared<frmMaster>(module); },
        [](Module& module) { return std::make_shared<frmcancelreason>(module); },
        [](Module& module) { return std::make_shared<frmRequest>(module); },
        [](Module& module) { return std::make_shared<frmRequestDetail>(module); },
        [](Module& module) { return std::make_shared<frmPrint>(module); },
        [](Module& module) { return std::make_shared<frmscanBc>(module); },
        [](Module& module) { return std::make_shared<FrmFetch>(module); },
    };
}

bool Component::mayShow() const { return strProjectKey == kProjectKey; }

void Component::show() {
    if (module_.master().visible() || module_.master().loading()) {
        if (!mayShow()) return;
        throw automation::RunTimeError(kAlreadyShown,
                                       "The request register is open already. Close it before showing it again.");
    }
    if (!adocon) adocon = module_.create("ADODB.Connection");
    Session& session = module_.session;
    // Let go before the session is filled: a host may call Show at the end of its former connection, and that one has a
    // session of its own.
    std::exchange(session.connection, nullptr).reset();
    session.connection = adocon;
    session.companyId = intCompanyID;
    session.userId = intUserID;
    session.shopId = intShopid;
    session.screenId = interfaceid;
    session.messageBoxCaption = strMsgboxCaption;
    session.processDate = dtProcessDate;
    if (mayShow()) module_.master().showAfresh(nullptr);
}

Module& processModule() {
    if (!process().module) automation::raise(automation::kObjectNotSet);
    return *process().module;
}

void installProcessModule(std::unique_ptr<forms::Desktop> desktop, std::unique_ptr<System> system,
                          automation::ObjectFactory factory, std::string folder) {
    process().desktop = std::move(desktop);
    process().system = std::move(system);
    process().module = std::make_unique<Module>(*process().desktop, *process().system, std::move(factory), formMakers(),
                                                std::move(folder));
}

} // namespace goodsreq
