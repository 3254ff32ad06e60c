// The golden slips once more, out of the delivered DLL: created by its ProgID, worked from the register's list to
// the print dialog, the slip read from the file that stands for the printer.
#include "com/Bridge.h"
#include "sandbox/data/SchemaText.h"
#include "sandbox/database/Company.h"
#include "tests/printing/SlipWorld.h"
#include "tests/windows/Clerk.h"
#include "tests/windows/Person.h"

#include "basic/Calendar.h"
#include "basic/Format.h"

#include <gtest/gtest.h>

#include <initguid.h>
// The type library's declarations, with their ids defined here.
#include "goodsreq_h.h"

#include <immintrin.h>

#include <filesystem>

namespace {

constexpr const char* kCompanyFile = "C:\\slips.db";
constexpr const char* kSlipOut = "C:\\SLIP.TXT";
constexpr const char* kUser = "Ann Porter - ";
constexpr std::size_t kTimeLength = 19; ///< dd/mm/yyyy HH:MM:SS

/// From the register's first row to the wanted one, and through the print dialog, which offers the printer.
void printByKeys(support::Clerk& clerk, int row) {
    if (!clerk.awaits("active frmMaster")) return;
    for (int i = 1; i < row; ++i) clerk.presses(VK_DOWN);
    clerk.pressesAlt('p');
    if (!clerk.awaits("active frmPrint")) return;
    clerk.pressesAlt('o');
    if (!clerk.awaits("unloaded frmPrint")) return;
    clerk.pressesAlt('c');
    clerk.awaits("unloaded frmMaster");
}

/// The slip with `time` in each footer, in place of the time at which it was printed, which lies from `from` to `to`.
std::string withTime(std::string slip, automation::Date time, automation::Date from, automation::Date to) {
    const auto text = [](automation::Date at) { return basic::format(at, "yyyymmddHHMMSS"); };
    for (std::size_t at = 0; (at = slip.find(kUser, at)) != std::string::npos;) {
        at += std::string(kUser).size();
        const std::string shown = slip.substr(at, kTimeLength);
        if (shown.size() < kTimeLength) break;
        const std::string ordered = shown.substr(6, 4) + shown.substr(3, 2) + shown.substr(0, 2) + shown.substr(11, 2) +
                                    shown.substr(14, 2) + shown.substr(17, 2);
        EXPECT_LE(text(from), ordered);
        EXPECT_LE(ordered, text(to));
        slip.replace(at, kTimeLength, basic::format(time, "dd/mm/yyyy") + " " + basic::format(time, "HH:MM:SS"));
    }
    return slip;
}

automation::Date now() {
    SYSTEMTIME t;
    GetLocalTime(&t);
    return basic::dateOf(t.wYear, t.wMonth, t.wDay, t.wHour, t.wMinute, t.wSecond);
}

/// What a host may have set for its thread; the two of a plain program are 0x37F and 0x1F80.
struct Arithmetic {
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

/// A company in a file, and a session on it of a host whose arithmetic and stack are the worst that there are.

class Host {
public:
    Host() {
        SetLocaleInfoW(LOCALE_USER_DEFAULT, LOCALE_SSHORTDATE, L"dd/MM/yyyy");
        std::filesystem::remove(kCompanyFile);
        sandbox::runScript(*sandbox::createCompany(kCompanyFile, sandbox::schemaText()),
                           printing::SlipWorld::companyScript());
        connection_ = support::openConnection(kCompanyFile);
    }

    std::string print(const std::string& settings, int request, automation::Date time) {
        const automation::ObjectPtr module = support::makeModule(connection_, 5);
        const std::filesystem::path settingsFile = support::printSettings();
        support::writeAll(settingsFile, "printtoscreen :=0\r\n" + settings); // of two lines the first is taken
        std::filesystem::remove(kSlipOut);
        support::Clerk clerk;
        const automation::Date before = now();
        const auto component = com::toDispatch(module).query<_clsGRtoShop>(IID__clsGRtoShop);
        const Arithmetic plain = Arithmetic::current(), harsh;
        Arithmetic after;
        support::Person::sits(
            [&] {
                harsh.set();
                const HRESULT shown = show(component.get(), 4 * (shows_++ % 4));
                after = Arithmetic::current();
                plain.set();
                EXPECT_EQ(shown, S_OK);
            },
            [&] { printByKeys(clerk, request); });
        EXPECT_EQ(after.x87, harsh.x87);
        EXPECT_EQ(after.sse, harsh.sse);
        std::filesystem::remove(settingsFile);
        return withTime(support::readAll(kSlipOut), time, before, now());
    }

private:
    automation::ObjectPtr connection_;
    unsigned shows_ = 0;
};

const bool installed = [] {
    printing::SlipWorld::printElsewhere = [](const std::string& settings, int request, automation::Date time) {
        static Host& host = *new Host; // COM ends with the process
        return host.print(settings, request, time);
    };
    return true;
}();

} // namespace
