// The sandbox as a COM DLL: its database and the suite's stand-ins, created by their ProgIDs.
#include "com/Bridge.h"
#include "com/Guid.h"
#include "com/Server.h"
#include "sandbox/suite/StandIns.h"

namespace {

com::ComPtr<IUnknown> create(const com::ServerClass& one) {
    return com::toDispatch(sandbox::createStandIn(one.progId, {})).query<IUnknown>(IID_IUnknown);
}

const com::ServerClass kClasses[] = {
#include "SandboxClasses.inc"
};

} // namespace

// On a machine that has the suite or an ADO of its own, those keep their names.
const com::Server& com::server() {
    static const Server theServer{kClasses, false, false};
    return theServer;
}
