#include "tests/windows/Clerk.h"

#include "automation/Value.h"
#include "basic/Calendar.h"
#include "com/ObjectFactory.h"

#include <gtest/gtest.h>

#include <objbase.h>

#include <fstream>
#include <iterator>

namespace support {
namespace {

constexpr const char* kLogFile = "C:\\windows.log";

/// The control of a thread's usable window that has the keyboard, or null.
HWND focusOf(DWORD thread) {
    GUITHREADINFO info{};
    info.cbSize = sizeof info;
    if (!GetGUIThreadInfo(thread, &info) || !info.hwndFocus) return nullptr;
    return IsWindowEnabled(GetAncestor(info.hwndFocus, GA_ROOT)) ? info.hwndFocus : nullptr;
}

bool until(const std::string& what, const std::function<bool()>& seen) {
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

} // namespace

std::string readAll(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

void writeAll(const std::filesystem::path& path, const std::string& text) {
    std::ofstream(path, std::ios::binary | std::ios::trunc) << text;
}

automation::ObjectPtr openConnection(const std::string& companyFile) {
    EXPECT_TRUE(SUCCEEDED(CoInitialize(nullptr)));
    const automation::ObjectPtr connection = com::comObjectFactory()("ADODB.Connection");
    connection->call("Open", "Data Source=" + companyFile);
    return connection;
}

automation::ObjectPtr makeModule(const automation::ObjectPtr& connection, std::int16_t user, std::int32_t interfaceId) {
    const automation::ObjectPtr module = com::comObjectFactory()("goodsreq.clsGRtoShop");
    module->putRef("adocon", connection);
    module->put("strProjectKey", "KOVA/XB/TRAM/842");
    module->put("strMsgboxCaption", "Retail");
    module->put("intCompanyID", std::int16_t{1});
    module->put("intUserID", user);
    module->put("intShopid", std::int16_t{1});
    module->put("interfaceid", interfaceId);
    module->put("dtProcessDate", basic::dateOf(2026, 3, 31));
    return module;
}

std::filesystem::path printSettings() {
    wchar_t path[MAX_PATH];
    GetModuleFileNameW(GetModuleHandleW(L"goodsreq.dll"), path, MAX_PATH);
    return std::filesystem::path(path).parent_path() / "ShopSetting.txt";
}

Clerk::Clerk() {
    writeAll(kLogFile, "");
    SetEnvironmentVariableA("GOODSREQ_WINDOW_LOG", kLogFile);
    SetEnvironmentVariableA("GOODSREQ_WINDOW_TEXTS", "1");
}

bool Clerk::awaits(const std::string& text) {
    return until(text, [&] {
        std::ifstream log(kLogFile, std::ios::binary);
        log.seekg(seen_);
        for (std::string line; std::getline(log, line) && !log.eof();) {
            seen_ = log.tellg();
            if (line == text) return true;
            if (line.starts_with("message")) ADD_FAILURE() << line;
        }
        return false;
    });
}

bool Clerk::answers(const std::string& text, int button) {
    if (!awaits("message " + text)) return false;
    HWND box = nullptr;
    if (!until("the box " + text, [&] { return (box = FindWindowW(L"#32770", nullptr)) != nullptr; })) return false;
    PostMessageW(box, WM_COMMAND, static_cast<WPARAM>(button), 0);
    return true;
}

const char* Clerk::logFile() { return kLogFile; }

void Clerk::presses(int key) {
    if (HWND control = focus()) SendNotifyMessageW(control, WM_KEYDOWN, static_cast<WPARAM>(key), 1);
}

void Clerk::types(char character) {
    if (HWND control = focus()) PostMessageW(control, WM_CHAR, static_cast<WPARAM>(character), 1);
}

void Clerk::pressesAlt(char letter) {
    if (HWND control = focus()) PostMessageW(control, WM_SYSCHAR, static_cast<WPARAM>(letter), 1 << 29 | 1);
}

HWND Clerk::window() const {
    HWND control = focus();
    return control ? GetAncestor(control, GA_ROOT) : nullptr;
}

HWND Clerk::focus() const {
    HWND control = nullptr;
    until("a focus", [&] { return (control = focusOf(thread_)) != nullptr; });
    return control;
}

} // namespace support
