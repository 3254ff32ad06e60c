// The slip out of the delivered DLL: created by its ProgID, worked from the register's list to the print dialog, read
// from the file that stands for the printer, on a host whose arithmetic and stack are the worst that there are.
#include "basic/Calendar.h"
#include "com/Bridge.h"
#include "sandbox/data/SchemaText.h"
#include "sandbox/database/Company.h"
#include "tests/printing/SlipWorld.h"
#include "tests/support/Scratch.h"
#include "tests/windows/Session.h"
#include "win32/Environment.h"
#include "win32/Win32System.h"

#include <gtest/gtest.h>

#include <initguid.h>
// The type library's declarations, with their ids defined here.
#include "goodsreq_h.h"

#include <immintrin.h>

namespace {

using support::RealUser;

/// From the register's first row to the wanted one, and through the print dialog, which offers the printer.
void printByKeys(RealUser& user, int row) {
    if (!user.awaits("active frmMaster")) return;
    for (int i = 1; i < row; ++i) user.sendsKey(VK_DOWN);
    user.sendsAlt('p');
    if (!user.awaits("active frmPrint")) return;
    user.sendsAlt('o');
    if (user.awaits("unloaded frmPrint")) support::closesRegister(user);
}

/// In days, with so many seconds after it.
double now(double seconds) {
    SYSTEMTIME t;
    GetLocalTime(&t);
    return basic::dateOf(t.wYear, t.wMonth, t.wDay, t.wHour, t.wMinute, t.wSecond).days + seconds / 86400;
}

/// What a host may have set for its thread; the two of a plain program are 0x37F and 0x1F80.
struct Arithmetic {
    bool operator==(const Arithmetic&) const = default;
    unsigned short x87 = 0x40; ///< 24 bits of precision, every exception raised
    unsigned sse = 0;          ///< every exception raised

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

/// Calls Show. On 32 bits the stack is `offset` bytes away from one that is aligned to 16, as hosts have it.
HRESULT show(_clsGRtoShop* object, [[maybe_unused]] unsigned offset) {
#ifdef _WIN64
    return object->Show();
#else
    constexpr int kShow = 3 + 4 + 3 + 7 * 2; // after IUnknown, IDispatch, the connection and the other fields
    void* const method = (*reinterpret_cast<void***>(object))[kShow];
    HRESULT result;
    asm volatile("movl %%esp, %%ebx\n\t"
                 "andl $-16, %%esp\n\t"
                 "subl %[offset], %%esp\n\t"
                 "pushl %[object]\n\t"
                 "call *%[method]\n\t"
                 "movl %%ebx, %%esp"
                 : "=a"(result), [offset] "+c"(offset)
                 : [object] "S"(object), [method] "D"(method)
                 : "ebx", "edx", "memory", "cc");
    return result;
#endif
}

TEST(SlipOfTheDll, IsWhatTheModuleItselfPrints) {
    const struct {
        int request;
        printing::Settings changes;
    } cases[] = {
        {printing::kThreeLines, {{"showcostintrans", "1"}, {"showspintransrep", "1"}}},
        {printing::kForeignLetters, {{"showspintransrep", "1"}}},
    };
    printing::SlipWorld::makeMachine = [] { return win32::makeSystem(); };
    const std::string company = support::scratch("slips.db");
    sandbox::runScript(*sandbox::createCompany(company, sandbox::schemaText()), printing::SlipWorld::companyScript());
    const automation::ObjectPtr connection = support::openConnection(company);
    unsigned shows = 0;
    for (const auto& c : cases) {
        printing::SlipWorld world(c.changes);
        world.desktop.userLocale = win32::userLocale();
        const automation::ObjectPtr module = support::makeModule(connection, 5);
        support::writeAll(support::printSettings(),
                          win32::makeSystem()->encode("printtoscreen :=0\r\n" + world.settings()));
        const auto component = com::toDispatch(module).query<_clsGRtoShop>(IID__clsGRtoShop);
        const Arithmetic plain = Arithmetic::current(), harsh;
        Arithmetic after;
        const double begin = now(0.25);
        RealUser::sits(
            [&] {
                harsh.set();
                const HRESULT shown = show(component.get(), 4 * (1 + 2 * shows++));
                after = Arithmetic::current();
                plain.set();
                EXPECT_EQ(shown, S_OK);
            },
            [&](RealUser& user) { printByKeys(user, c.request); });
        EXPECT_TRUE(after == harsh) << after.x87 << " " << after.sse;
        std::filesystem::remove(support::printSettings());
        const std::string slip = support::readAll(printing::SlipWorld::portFile());
        EXPECT_NE(slip, "");
        std::string expected;
        // The footer tells in which second it was printed.
        for (double time = begin; time < now(1) && expected != slip; time += 1.0 / 86400) {
            world.desktop.time.days = time;
            expected = world.print(c.request);
        }
        EXPECT_EQ(slip, expected);
    }
}

} // namespace
