// The golden slips once more, out of the delivered DLL: created by its ProgID, worked from the register's list to
// the print dialog, the slip read from the file that stands for the printer.
#include "com/Bridge.h"
#include "com/ObjectFactory.h"
#include "sandbox/data/SchemaText.h"
#include "sandbox/database/Company.h"
#include "tests/printing/SlipWorld.h"
#include "tests/windows/Person.h"
#include "win32/Win32System.h"

#include "basic/Calendar.h"
#include "basic/Format.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

namespace {

constexpr const char* kCompanyFile = "C:\\slips.db";
constexpr const char* kLogFile = "C:\\slips.log";
constexpr const char* kSlipOut = "C:\\SLIP.TXT";
constexpr const char* kUser = "Ann Porter - ";
constexpr std::size_t kTimeLength = 19; ///< dd/mm/yyyy HH:MM:SS

std::string readAll(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

void writeAll(const std::filesystem::path& path, const std::string& text) {
    std::ofstream(path, std::ios::binary | std::ios::trunc) << text;
}

/// The control of a thread's usable window that has the keyboard, or null.
HWND focusOf(DWORD thread) {
    GUITHREADINFO info{};
    info.cbSize = sizeof info;
    if (!GetGUIThreadInfo(thread, &info) || !info.hwndFocus) return nullptr;
    return IsWindowEnabled(GetAncestor(info.hwndFocus, GA_ROOT)) ? info.hwndFocus : nullptr;
}

/// One who works the DLL's windows, on the thread that made it, and watches what they do. The messages of the keys go to the
/// control itself: which window of the screen has the keyboard changes some time after a window has closed.
class Clerk {
public:
    Clerk() { writeAll(kLogFile, ""); }

    /// Waits for the next line `text` of the log. False when a message box comes first, or nothing for ten seconds.
    bool awaits(const std::string& text) {
        return until(text, [&] {
            const std::string log = readAll(kLogFile);
            for (std::size_t stop; (stop = log.find('\n', seen_)) != std::string::npos;) {
                const std::string line = log.substr(seen_, stop - seen_);
                seen_ = stop + 1;
                if (line == text) return true;
                if (line.starts_with("message")) ADD_FAILURE() << line;
            }
            return false;
        });
    }
    void presses(int key) {
        if (HWND control = focus()) SendMessageW(control, WM_KEYDOWN, static_cast<WPARAM>(key), 1);
    }
    /// Returns at once: what the letter chooses may last as long as a window stays open.
    void pressesAlt(char letter) {
        if (HWND control = focus()) PostMessageW(control, WM_SYSCHAR, static_cast<WPARAM>(letter), 1 << 29 | 1);
    }

private:
    HWND focus() const {
        HWND control = nullptr;
        until("a focus", [&] { return (control = focusOf(thread_)) != nullptr; });
        return control;
    }
    static bool until(const std::string& what, const std::function<bool()>& seen) {
        const ULONGLONG end = GetTickCount64() + 10000;
        while (!seen()) {
            if (GetTickCount64() > end) {
                ADD_FAILURE() << what << " did not come after\n" << readAll(kLogFile);
                return false;
            }
            Sleep(2);
        }
        return true;
    }

    const DWORD thread_ = GetCurrentThreadId();
    std::size_t seen_ = 0;
};

/// From the register's first row to the wanted one, and through the print dialog, which offers the printer.
void printByKeys(Clerk& clerk, int row) {
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

std::filesystem::path folderOfDll() {
    wchar_t path[MAX_PATH];
    GetModuleFileNameW(GetModuleHandleW(L"goodsreq.dll"), path, MAX_PATH);
    return std::filesystem::path(path).parent_path();
}

/// A company in a file, and a host's session on it.
class Host {
public:
    Host() {
        SetEnvironmentVariableW(L"GOODSREQ_WINDOW_LOG", L"C:\\slips.log");
        SetLocaleInfoW(LOCALE_USER_DEFAULT, LOCALE_SSHORTDATE, L"dd/MM/yyyy");
        std::filesystem::remove(kCompanyFile);
        sandbox::runScript(*sandbox::createCompany(kCompanyFile, sandbox::schemaText()), printing::SlipWorld::companyScript());
        EXPECT_TRUE(SUCCEEDED(CoInitialize(nullptr)));
        connection_ = com::comObjectFactory()("ADODB.Connection");
        connection_->call("Open", std::string("Data Source=") + kCompanyFile);
    }

    std::string print(const std::string& settings, int request, automation::Date time) {
        const automation::ObjectPtr module = com::comObjectFactory()("goodsreq.clsGRtoShop");
        module->putRef("adocon", connection_);
        module->put("strProjectKey", "KOVA/XB/TRAM/842");
        module->put("strMsgboxCaption", "Retail");
        module->put("intCompanyID", std::int16_t{1});
        module->put("intUserID", std::int16_t{5});
        module->put("intShopid", std::int16_t{1});
        module->put("interfaceid", std::int32_t{1507});
        module->put("dtProcessDate", basic::dateOf(2026, 3, 31));
        const std::filesystem::path settingsFile = folderOfDll() / "ShopSetting.txt";
        writeAll(settingsFile, "printtoscreen :=0\r\n" + settings); // of two lines the first is taken
        std::filesystem::remove(kSlipOut);
        Clerk clerk;
        const automation::Date before = now();
        support::Person::sits([&] { module->call("Show"); }, [&] { printByKeys(clerk, request); });
        std::filesystem::remove(settingsFile);
        return withTime(readAll(kSlipOut), time, before, now());
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
