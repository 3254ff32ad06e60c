// The sandbox as a COM DLL: its database and the suite's stand-ins, created by their ProgIDs.
#include "com/Bridge.h"
#include "com/Guid.h"
#include "com/Server.h"
#include "sandbox/suite/StandIns.h"
#include "win32/Win32Desktop.h"

#include <cstdlib>

namespace {

// The stand-ins' dialogs are windows of this DLL. Errors are logged where GOODSREQ_ERROR_FOLDER says, else beside the
// DLL. Never destroyed: stand-ins may outlive the DLL's own clean-up at the end of the process.
const sandbox::Surroundings& surroundings() {
    static const sandbox::Surroundings& all = *[] {
        const char* folder = std::getenv("GOODSREQ_ERROR_FOLDER");
        return new sandbox::Surroundings{win32::makeDesktop().release(), folder ? folder : win32::moduleFolder()};
    }();
    return all;
}

com::ComPtr<IUnknown> create(const com::ServerClass& one) {
    return com::toDispatch(sandbox::createStandIn(one.progId, surroundings())).query<IUnknown>(IID_IUnknown);
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
