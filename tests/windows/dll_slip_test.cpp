// The golden slips once more, out of the delivered DLL: created by its ProgID, worked from the register's list to
// the print dialog, the slip read from the file that stands for the printer.
#include "sandbox/data/SchemaText.h"
#include "sandbox/database/Company.h"
#include "tests/printing/SlipWorld.h"
#include "tests/windows/Clerk.h"
#include "tests/windows/Person.h"

#include "basic/Calendar.h"
#include "basic/Format.h"

#include <gtest/gtest.h>

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

/// A company in a file, and a host's session on it.
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
        support::Person::sits([&] { module->call("Show"); }, [&] { printByKeys(clerk, request); });
        std::filesystem::remove(settingsFile);
        return withTime(support::readAll(kSlipOut), time, before, now());
    }

private:
    automation::ObjectPtr connection_;
};

const bool installed = [] {
    printing::SlipWorld::printElsewhere = [](const std::string& settings, int request, automation::Date time) {
        static Host& host = *new Host; // COM ends with the process
        return host.print(settings, request, time);
    };
    return true;
}();

} // namespace
