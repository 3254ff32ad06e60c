#include "com/ObjectFactory.h"

#include "automation/OutsideCall.h"
#include "automation/RunTimeError.h"
#include "com/Bridge.h"
#include "com/Bstr.h"
#include "com/CallContext.h"
#include "com/Errors.h"

#include <objbase.h>

#include <string>

namespace com {
namespace {

automation::ObjectPtr create(std::string_view progId) {
    const automation::OutsideCall outside;
    const CallOut call;
    CLSID classId{};
    ComPtr<IDispatch> object;
    HRESULT result = CLSIDFromProgID(toWide(progId).data(), &classId);
    if (SUCCEEDED(result))
        result = CoCreateInstance(classId, nullptr, CLSCTX_INPROC_SERVER | CLSCTX_LOCAL_SERVER, IID_IDispatch,
                                  object.outVoid());
    if (FAILED(result))
        throw automation::RunTimeError(automation::kCannotCreateObject,
                                       "ActiveX component can't create object: " + std::string(progId) + " (" +
                                           resultText(result) + ")");
    return toObject(object.get());
}

} // namespace

automation::ObjectFactory comObjectFactory() { return create; }

} // namespace com
