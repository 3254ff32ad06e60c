// The activation context in which the module's components are called: the host's, also while a form shows under the
// module's own visual styles.
#include "Relay.h"
#include "TestObject.h"
#include "com/Bridge.h"
#include "com/CallContext.h"
#include "com/ObjectFactory.h"
#include "tests/basic/ExpectError.h"
#include "tests/support/Scratch.h"
#include "tests/windows/Session.h"
#include "win32/Text.h"

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
    watch.invoked = [] {
        const unsigned short every = 0x40; // 24 bits, every exception raised
        asm volatile("fldcw %0" : : "m"(every));
        _mm_setcsr(0);
    };
    const com::CallIn call;
    watch.foreign->call("Echo", ObjectPtr());
    unsigned short x87 = 0;
    asm volatile("fnstcw %0" : "=m"(x87));
    const unsigned sse = _mm_getcsr();
    const com::PlainArithmetic plain;
    EXPECT_EQ(x87, 0x37F);
    EXPECT_EQ(sse & ~0x3Fu, 0x1F80u);
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
    if (!user.awaits("active frmMaster")) return;
    user.sendsAlt('e');
    if (!user.awaits("active frmRequest")) return;
    user.sendsKey(VK_ESCAPE);
    user.awaits("unloaded frmRequest");
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
        RealUser::sits([&] { module->call("Show"); }, lookIntoARequest);
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

void expectRefusal() {
    const Failure error = failureOf([] { makeModule(com::comObjectFactory()("ADODB.Connection"), 1)->call("Show"); });
    EXPECT_EQ(error.number, static_cast<long>(RPC_E_WRONG_THREAD));
    EXPECT_EQ(error.source, "goodsreq");
    EXPECT_NE(error.text.find("another thread"), std::string::npos);
}

void showOnce(const std::string& company, bool refusedElsewhere) {
    const ObjectPtr module = makeModule(support::openConnection(company), 1);
    CoUninitialize(); // openConnection() has started it once more
    RealUser::sits([&] { module->call("Show"); },
                   [&](RealUser& user) {
                       if (!refusedElsewhere || !user.awaits("active frmMaster")) return lookIntoARequest(user);
                       std::thread(withCom, expectRefusal).join();
                       support::closesRegister(user);
                   });
}

TEST_F(Context, AnotherThreadShowsTheRegisterOnceItIsClosed) {
    const std::string company = support::sampleCompany("threads.db");
    CoUninitialize(); // so that each thread's end is the end of COM, and of the components' DLLs
    const auto show = [&](bool refusedElsewhere) { withCom([&] { showOnce(company, refusedElsewhere); }); };
    std::thread(show, true).join();
    std::thread(show, false).join();
    show(false);
    show(false);
    ASSERT_TRUE(SUCCEEDED(CoInitialize(nullptr)));
}

} // namespace
