// The component as a host meets it: created by its ProgID, its fields and refusals, type library and registration.
#include "TestObject.h"
#include "com/Bridge.h"
#include "com/Bstr.h"
#include "com/ObjectFactory.h"
#include "com/Variant.h"
#include "tests/basic/ExpectError.h"

#include <initguid.h>
// The type library's ids are defined here, by what comes before.
#include "goodsreq_h.h"

// After it, so that what is declared is defined too.
#include "goodsreq_h.h"

#include <gtest/gtest.h>

#include <thread>

using namespace automation;
using com::ComPtr;

namespace {

class Component : public testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(SUCCEEDED(CoInitialize(nullptr)));
        object = com::comObjectFactory()("goodsreq.clsGRtoShop");
        face = com::toDispatch(object).query<_clsGRtoShop>(IID__clsGRtoShop);
        ASSERT_TRUE(face);
    }
    void TearDown() override {
        letGo();
        CoUninitialize();
    }
    void letGo() {
        face = {};
        object.reset();
    }

    ObjectPtr object;          ///< late-bound
    ComPtr<_clsGRtoShop> face; ///< early-bound
};

ObjectPtr create(const char* progId) { return com::comObjectFactory()(progId); }

template <class Function> Function exported(const char* name) {
    return reinterpret_cast<Function>(reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(L"goodsreq.dll"), name)));
}

bool mayBeUnloaded() { return exported<HRESULT(STDAPICALLTYPE*)()>("DllCanUnloadNow")() == S_OK; }

// First, as it is true only until the first Show of the process.
TEST_F(Component, ADllThatHasShownNothingMayBeUnloadedOnceItsObjectsAreGone) {
    EXPECT_FALSE(mayBeUnloaded());
    object->put("intShopid", std::int16_t{3});
    face = {};
    EXPECT_FALSE(mayBeUnloaded());
    object.reset();
    EXPECT_TRUE(mayBeUnloaded());
}

TEST_F(Component, FieldsKeepWhatTheHostSets) {
    const struct {
        const char* field;
        Value value;
    } cases[] = {
        {"strProjectKey", "kova"},        {"strMsgboxCaption", "B\u00E4ckerei"}, {"intCompanyID", std::int16_t{1}},
        {"intUserID", std::int16_t{-7}},  {"intShopid", std::int16_t{32767}},    {"interfaceid", std::int32_t{1507}},
        {"dtProcessDate", Date{45291.5}},
    };
    for (const auto& one : cases) {
        object->put(one.field, one.value);
        EXPECT_TRUE(object->get(one.field) == one.value) << one.field;
    }
    short user = 0;
    EXPECT_EQ(face->get_intUserID(&user), S_OK);
    EXPECT_EQ(user, -7);
    object->put("INTUSERID", "12"); // text converts, names are without case
    EXPECT_TRUE(object->get("intUserID") == Value(std::int16_t{12}));
    EXPECT_EQ(errorOf([&] { object->put("intUserID", std::int32_t{40000}); }), kOverflow);
    EXPECT_TRUE(object->get("intUserID") == Value(std::int16_t{12}));
}

TEST_F(Component, AConnectionIsTakenWithSetAndWithoutAndNothingElseIs) {
    const ObjectPtr connection = create("ADODB.Connection");
    object->putRef("adocon", connection);
    EXPECT_EQ(object->get("adocon").objectPtr(), connection);
    object->putRef("adocon", ObjectPtr());
    EXPECT_EQ(object->get("adocon").objectPtr(), nullptr);
    object->put("adocon", connection);
    for (const Value& wrong : {Value(create("Scripting.Dictionary")), Value(std::make_shared<tests::TestObject>()),
                               Value(std::int16_t{5}), Value("Provider=x"), Value(Null())}) {
        EXPECT_EQ(errorOf([&] { object->putRef("adocon", wrong); }), kTypeMismatch);
        EXPECT_EQ(errorOf([&] { object->put("adocon", wrong); }), kTypeMismatch);
        EXPECT_EQ(object->get("adocon").objectPtr(), connection);
    }
}

TEST_F(Component, ACallThatNoMemberFitsIsRefused) {
    com::Variant arguments[2];
    for (com::Variant& argument : arguments) argument.vt = VT_I4;
    constexpr DISPID kCompany = 4;
    DISPID named[] = {DISPID_PROPERTYPUT, 7};
    const struct {
        WORD flags;
        UINT count, named;
        HRESULT expected;
    } cases[] = {
        // clang-format off
        {DISPATCH_PROPERTYGET, 1, 0, DISP_E_BADPARAMCOUNT}, {DISPATCH_PROPERTYGET, 1, 1, DISP_E_NONAMEDARGS},
        {DISPATCH_PROPERTYPUT, 0, 0, DISP_E_BADPARAMCOUNT}, {DISPATCH_PROPERTYPUT, 2, 1, DISP_E_BADPARAMCOUNT},
        {DISPATCH_PROPERTYPUT, 2, 2, DISP_E_NONAMEDARGS},   {DISPATCH_PROPERTYPUT, 1, 1, S_OK},
        {0xF, 1, 1, S_OK},                                  {0xF, 2, 1, DISP_E_BADPARAMCOUNT},
    };
    // clang-format on
    for (const auto& one : cases) {
        DISPPARAMS parameters{arguments, named, one.count, one.named};
        EXPECT_EQ(face->Invoke(kCompany, IID_NULL, 0, one.flags, &parameters, nullptr, nullptr, nullptr), one.expected)
            << one.flags << " with " << one.count << " arguments, " << one.named << " of them named";
    }
}

#ifndef _WIN64
/// Before the component is there: what a host has that was built by the same compiler.
const HMODULE otherUnwinder = LoadLibraryW(L"libgcc_s_dw2-1.dll");

TEST_F(Component, ErrsWithoutHarmBesideAHostsOtherUnwinder) {
    EXPECT_TRUE(otherUnwinder);
    EXPECT_EQ(errorOf([&] { object->putRef("adocon", create("Scripting.Dictionary")); }), kTypeMismatch);
}
#endif

TEST_F(Component, AnEarlyBoundCallersErrorCarriesInformation) {
    const ComPtr<IDispatch> dictionary = com::toDispatch(create("Scripting.Dictionary"));
    EXPECT_EQ(face->put_adocon(dictionary.get()), static_cast<HRESULT>(0x800A000D));
    const auto support = face.query<ISupportErrorInfo>(IID_ISupportErrorInfo);
    ASSERT_TRUE(support);
    EXPECT_EQ(support->InterfaceSupportsErrorInfo(IID__clsGRtoShop), S_OK);
    ComPtr<IErrorInfo> information;
    ASSERT_EQ(GetErrorInfo(0, information.out()), S_OK);
    com::Bstr source, description;
    information->GetSource(source.out());
    information->GetDescription(description.out());
    EXPECT_EQ(source.utf8(), "goodsreq");
    EXPECT_EQ(description.utf8(), "Type mismatch");
    EXPECT_EQ(face->get_adocon(nullptr), E_POINTER);
}

TEST_F(Component, AWrongProjectKeyShowsNothingBindsNoThreadAndTheComponentStaysLoaded) {
    object->put("strProjectKey", "kova/xb/tram/842");
    object->call("Show");
    EXPECT_TRUE(object->get("adocon").objectPtr()->has("Execute")); // none was given, so it made one
    std::thread([] {
        ASSERT_TRUE(SUCCEEDED(CoInitialize(nullptr)));
        create("goodsreq.clsGRtoShop")->call("Show");
        CoUninitialize();
    }).join();
    letGo();
    CoUninitialize();
    EXPECT_TRUE(GetModuleHandleW(L"goodsreq.dll"));
    ASSERT_TRUE(SUCCEEDED(CoInitialize(nullptr)));
}

TEST_F(Component, AMultithreadedCallerHasTheInterface) {
    std::thread([] {
        ASSERT_TRUE(SUCCEEDED(CoInitializeEx(nullptr, COINIT_MULTITHREADED)));
        CLSID id{};
        ComPtr<IUnknown> made;
        EXPECT_EQ(CLSIDFromProgID(L"goodsreq.clsGRtoShop", &id), S_OK);
        EXPECT_EQ(CoCreateInstance(id, nullptr, CLSCTX_INPROC_SERVER, IID_IUnknown, made.outVoid()), S_OK);
        if (const auto across = made.query<_clsGRtoShop>(IID__clsGRtoShop)) {
            short shop = 0;
            EXPECT_EQ(across->put_intShopid(7), S_OK);
            EXPECT_EQ(across->get_intShopid(&shop), S_OK);
            EXPECT_EQ(shop, 7);
        } else {
            ADD_FAILURE() << "the interface does not cross";
        }
        made = {};
        CoUninitialize();
    }).join();
}

TEST_F(Component, TheTypeLibraryListsTheFieldsInTheirOrderThenShow) {
    EXPECT_EQ(object->className(), "clsGRtoShop");
    ComPtr<ITypeInfo> info;
    ASSERT_EQ(face->GetTypeInfo(0, 0, info.out()), S_OK);
    std::string names;
    FUNCDESC* function = nullptr;
    MEMBERID last = 0;
    for (UINT i = 0; SUCCEEDED(info->GetFuncDesc(i, &function)); ++i) {
        if (function->memid == last + 1) {
            com::Bstr name;
            UINT count = 0;
            info->GetNames(++last, name.out(), 1, &count);
            names += name.utf8() + " ";
        }
        info->ReleaseFuncDesc(function);
    }
    EXPECT_EQ(names, "adocon strProjectKey strMsgboxCaption intCompanyID intUserID intShopid interfaceid "
                     "dtProcessDate Show ");
}

TEST_F(Component, RegisteringSaysWhyItFails) {
    // In the place of the machine's registry, for this program alone, stands a key that is deleted.
    HKEY gone = nullptr;
    ASSERT_EQ(RegCreateKeyW(HKEY_CURRENT_USER, L"Software\\goodsreq gone", &gone), 0);
    RegDeleteKeyW(HKEY_CURRENT_USER, L"Software\\goodsreq gone");
    EXPECT_EQ(RegOverridePredefKey(HKEY_LOCAL_MACHINE, gone), 0);
    const auto registerServer = exported<HRESULT(STDAPICALLTYPE*)()>("DllRegisterServer");
    EXPECT_EQ(registerServer(), HRESULT_FROM_WIN32(ERROR_KEY_DELETED));
    RegOverridePredefKey(HKEY_LOCAL_MACHINE, nullptr);
    RegCloseKey(gone);
}

} // namespace
