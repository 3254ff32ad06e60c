// What is the host's while the module runs: the activation context in which components are called, also while a form
// shows under the module's own visual styles; arithmetic, stack and thread.
#include "Relay.h"
#include "TestObject.h"
#include "com/Bridge.h"
#include "com/CallContext.h"
#include "com/ObjectFactory.h"
#include "tests/basic/ExpectError.h"
#include "tests/support/Scratch.h"
#include "tests/windows/Session.h"
#include "win32/Text.h"

#include <initguid.h>
// The type library's declarations, with their ids defined here.
#include "goodsreq_h.h"

#include <immintrin.h>

#include <map>
#include <thread>

using namespace automation;
using com::ComPtr;
using support::makeModule;
using support::RealUser;
using tests::Relay;

namespace {

HANDLE currentContext() {
    HANDLE context = nullptr;
    EXPECT_TRUE(GetCurrentActCtx(&context));
    if (context) ReleaseActCtx(context); // whoever activated it keeps it
    return context;
}

/// What a manifest says, in force while it lives; nothing but the program's own for "".
class Activated {
public:
    explicit Activated(const std::string& manifest) {
        if (manifest.empty()) return;
        const std::filesystem::path file = support::scratch("extra.manifest");
        support::writeAll(file, "<assembly xmlns=\"urn:schemas-microsoft-com:asm.v1\" manifestVersion=\"1.0\">\n" +
                                    manifest + "</assembly>\n");
        ACTCTXW description{};
        description.cbSize = sizeof description;
        description.lpSource = file.c_str();
        context_ = CreateActCtxW(&description);
        std::filesystem::remove(file);
        EXPECT_NE(context_, INVALID_HANDLE_VALUE);
        EXPECT_TRUE(ActivateActCtx(context_, &cookie_));
    }
    ~Activated() {
        if (!context_) return;
        DeactivateActCtx(0, cookie_);
        ReleaseActCtx(context_);
    }
    Activated(const Activated&) = delete;
    Activated& operator=(const Activated&) = delete;

    HANDLE context() const { return context_; }

private:
    HANDLE context_ = nullptr;
    ULONG_PTR cookie_ = 0;
};

const std::string kPlain = "<assemblyIdentity type=\"win32\" name=\"goodsreq.extra\" version=\"1.0.0.0\"/>\n";

std::string dictionary() {
    wchar_t folder[MAX_PATH] = L"";
    GetSystemDirectoryW(folder, MAX_PATH);
    return kPlain + "<file name=\"" + win32::narrow(folder) + "\\scrrun.dll\"><comClass" +
           " clsid=\"{EE09B103-97E0-11CF-978F-00A02463E06F}\" progid=\"Extra.Dictionary\"/></file>\n";
}

/// How a thread computes.
struct Arithmetic {
    unsigned short x87;
    unsigned sse;
    bool operator==(const Arithmetic&) const = default;

    static Arithmetic current() {
        Arithmetic now{0, _mm_getcsr() & ~0x3Fu};
        asm volatile("fnstcw %0" : "=m"(now.x87));
        return now;
    }
    void set() const {
        asm volatile("fnclex\n\tfldcw %0" : : "m"(x87));
        _mm_setcsr(sse);
    }
};
constexpr Arithmetic kPlainArithmetic{0x37F, 0x1F80};
constexpr Arithmetic kHarshArithmetic{0x40, 0}; ///< 24 bits of precision, every exception raised

/// Calls Show. On 32 bits the stack is aligned to 4 bytes only, as hosts have it.
HRESULT show(_clsGRtoShop* object) {
#ifdef _WIN64
    return object->Show();
#else
    constexpr int kShow = 3 + 4 + 3 + 7 * 2; // after IUnknown, IDispatch, the connection and the other fields
    void* const method = (*reinterpret_cast<void***>(object))[kShow];
    HRESULT result;
    asm volatile("movl %%esp, %%ebx\n\t"
                 "andl $-16, %%esp\n\t"
                 "subl $8, %%esp\n\t"
                 "pushl %[object]\n\t"
                 "call *%[method]\n\t"
                 "movl %%ebx, %%esp"
                 : "=a"(result)
                 : [object] "S"(object), [method] "D"(method)
                 : "ebx", "ecx", "edx", "memory", "cc");
    return result;
#endif
}

/// The register in a host whose arithmetic and stack are the worst that there are.
void showHarshly(const ObjectPtr& module, const RealUser::Script& script) {
    const auto component = com::toDispatch(module).query<_clsGRtoShop>(IID__clsGRtoShop);
    const auto host = [&] {
        kHarshArithmetic.set();
        const HRESULT shown = show(component.get());
        const Arithmetic after = Arithmetic::current();
        kPlainArithmetic.set();
        EXPECT_EQ(shown, S_OK);
        EXPECT_TRUE(after == kHarshArithmetic) << after.x87 << " " << after.sse;
    };
    RealUser::sits(host, script);
}

/// The contexts that the calls of a component come in.
struct Watch {
    explicit Watch(const ObjectPtr& object) : component(Relay::to(object)), foreign(com::toObject(component.get())) {
        component->told = [this](Relay::Call call) {
            contexts[call].push_back(currentContext());
            if (call == Relay::Call::invoke) invoked();
        };
    }
    ComPtr<Relay> component;
    ObjectPtr foreign; ///< as the module sees it
    std::map<Relay::Call, std::vector<HANDLE>> contexts;
    std::function<void()> invoked = [] {}; ///< what a careless component does
};

class Context : public testing::Test {
protected:
    void SetUp() override { ASSERT_TRUE(SUCCEEDED(CoInitialize(nullptr))); }
    void TearDown() override { CoUninitialize(); }
};

TEST_F(Context, ACallOutRunsAsTheCallInCame) {
    Watch watch(std::make_shared<tests::TestObject>());
    const ObjectPtr& foreign = watch.foreign;
    for (const std::string& hosts : {std::string(), kPlain}) {
        SCOPED_TRACE(hosts);
        const Activated host(hosts);
        const com::CallIn call;
        foreign->call("Echo", 1.0);
        {
            const Activated own(kPlain);
            const com::CallIn again; // One from the message loop is no host of its own.
            foreign->call("Echo", 1.0);
            foreign->has("Kept");
            watch.invoked = [] {
                for (ULONG_PTR never : {0, 0}) ActivateActCtx(nullptr, &never);
            };
            foreign->call("Echo", 1.0);
            watch.invoked = [] {};
            EXPECT_EQ(errorOf([&] { foreign->call("Fail", std::int32_t{5}, "no", "tests"); }), 5);
            EXPECT_EQ(currentContext(), own.context());
        }
        EXPECT_EQ(watch.contexts[Relay::Call::invoke], std::vector<HANDLE>(4, host.context()));
        for (const HANDLE context : watch.contexts[Relay::Call::lookUp]) EXPECT_EQ(context, host.context());
        watch.contexts.clear();
    }
}

TEST_F(Context, WhatAComponentDoesToTheArithmeticEndsWithItsCall) {
    Watch watch(std::make_shared<tests::TestObject>());
    watch.invoked = [] { kHarshArithmetic.set(); };
    const com::CallIn call;
    watch.foreign->call("Echo", ObjectPtr());
    const Arithmetic after = Arithmetic::current();
    kPlainArithmetic.set();
    EXPECT_TRUE(after == kPlainArithmetic) << after.x87 << " " << after.sse;
}

TEST_F(Context, AClassThatOnlyTheHostNamesIsFound) {
    const auto create = com::comObjectFactory();
    EXPECT_EQ(errorOf([&] { create("Extra.Dictionary"); }), kCannotCreateObject);
    const Activated host(dictionary());
    const com::CallIn call;
    const Activated own(kPlain);
    EXPECT_TRUE(create("Extra.Dictionary")->has("Exists"));
}

/// From the register's list into a request and back.
void lookIntoARequest(RealUser& user) {
    user.awaits("active frmMaster");
    user.sendsAlt('e', "active frmRequest");
    user.sendsKey(VK_ESCAPE, "unloaded frmRequest");
    support::closesRegister(user);
}

TEST_F(Context, WhileAFormShowsARecordSetOpensAsTheHostCalled) {
    const std::string company = support::sampleCompany("context.db");
    Watch connection(support::openConnection(company));
    connection.component->hides = false;
    CoUninitialize(); // openConnection() has started it once more
    for (const std::string& hosts : {std::string(), kPlain}) {
        SCOPED_TRACE(hosts);
        const Activated host(hosts);
        const ObjectPtr module = makeModule(connection.foreign, 1);
        connection.contexts.clear();
        showHarshly(module, lookIntoARequest);
        // Another component that it is handed to asks what it really is.
        EXPECT_FALSE(connection.contexts[Relay::Call::question].empty());
        for (const HANDLE context : connection.contexts[Relay::Call::question]) EXPECT_EQ(context, host.context());
        EXPECT_EQ(currentContext(), host.context());
    }
}

/// A time of COM of its own, as a host may have for each of its windows.
void withCom(const std::function<void()>& body) {
    ASSERT_TRUE(SUCCEEDED(CoInitialize(nullptr)));
    body();
    CoUninitialize();
}

TEST_F(Context, AnotherThreadShowsTheRegisterOnceItIsClosed) {
    const std::string company = support::sampleCompany("threads.db");
    CoUninitialize(); // so that each thread's end is the end of COM, and of the components' DLLs
    const auto show = [&](const RealUser::Script& script) {
        withCom([&] {
            const ObjectPtr module = makeModule(support::openConnection(company), 1);
            CoUninitialize(); // openConnection() has started it once more
            showHarshly(module, script);
        });
    };
    const auto isRefusedElsewhere = [](RealUser& user) {
        user.awaits("active frmMaster");
        const auto shows = [] { makeModule(com::comObjectFactory()("ADODB.Connection"), 1)->call("Show"); };
        Failure error;
        std::thread([&] { withCom([&] { error = failureOf(shows); }); }).join();
        EXPECT_EQ(error.number, static_cast<long>(RPC_E_WRONG_THREAD));
        EXPECT_EQ(error.source, "goodsreq");
        EXPECT_NE(error.text.find("another thread"), std::string::npos);
        support::closesRegister(user);
    };
    std::thread(show, isRefusedElsewhere).join();
    std::thread(show, lookIntoARequest).join();
    show(lookIntoARequest);
    show(lookIntoARequest);
    ASSERT_TRUE(SUCCEEDED(CoInitialize(nullptr)));
}

} // namespace
