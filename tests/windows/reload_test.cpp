// The DLL unloaded after it has shown windows, as the end of COM in its host does, and loaded once more.
#include "basic/Calendar.h"
#include "com/Bridge.h"
#include "tests/windows/Clerk.h"
#include "tests/windows/Person.h"

#include <initguid.h>

#include "goodsreq_h.h"

#include <gtest/gtest.h>

namespace {

automation::ObjectPtr makeComponent(HMODULE library) {
    const auto getClassObject = reinterpret_cast<HRESULT(STDAPICALLTYPE*)(REFCLSID, REFIID, void**)>(
        reinterpret_cast<void*>(GetProcAddress(library, "DllGetClassObject")));
    com::ComPtr<IClassFactory> factory;
    com::ComPtr<IDispatch> component;
    if (!getClassObject || FAILED(getClassObject(CLSID_clsGRtoShop, IID_IClassFactory, factory.outVoid())) ||
        FAILED(factory->CreateInstance(nullptr, IID_IDispatch, component.outVoid())))
        return nullptr;
    return com::toObject(component.get());
}

} // namespace

TEST(Reloaded, ShowsItsWindowsAgainWhereItsClassIsStillRegistered) {
    ASSERT_TRUE(SUCCEEDED(CoInitialize(nullptr)));
    HMODULE before = nullptr;
    for (int load = 1; load <= 2; ++load) {
        SCOPED_TRACE(load);
        HMODULE library = LoadLibraryW(L"goodsreq.dll");
        ASSERT_TRUE(library);
        ASSERT_TRUE(!before || library == before) << "classes belong to the place of their module";
        before = library;
        {
            const automation::ObjectPtr component = makeComponent(library);
            ASSERT_TRUE(component);
            component->put("strProjectKey", "KOVA/XB/TRAM/842");
            component->put("dtProcessDate", basic::dateOf(2026, 3, 31));
            const support::Clerk clerk;
            support::Person::sits([&] { component->call("Show"); }, [] {}); // It is closed as soon as it is seen.
            const std::string log = support::readAll(support::Clerk::logFile());
            EXPECT_NE(log.find("active frmMaster"), std::string::npos) << log;
        }
        for (int left = 100; left > 0 && GetModuleHandleW(L"goodsreq.dll"); --left) FreeLibrary(library);
        ASSERT_FALSE(GetModuleHandleW(L"goodsreq.dll"));
    }
    CoUninitialize();
}
