#include "win32/WindowLog.h"

#include "win32/Platform.h"

#include <string>

namespace win32 {
namespace {

std::wstring setting(const wchar_t* name) {
    wchar_t text[1024];
    const DWORD length = GetEnvironmentVariableW(name, text, 1024);
    return length > 0 && length < 1024 ? std::wstring(text, length) : std::wstring();
}

} // namespace

void logWindow(std::string_view event, std::string_view detail) {
    static const std::wstring path = setting(L"GOODSREQ_WINDOW_LOG");
    if (path.empty()) return;
    std::string line(event);
    line += ' ';
    line += detail;
    line += '\n';
    // Opened for each line, so that another program may read, move or delete the file in between.
    HANDLE file = CreateFileW(path.c_str(), FILE_APPEND_DATA, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                              nullptr, OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE) return;
    DWORD written = 0;
    WriteFile(file, line.data(), static_cast<DWORD>(line.size()), &written, nullptr);
    CloseHandle(file);
}

void logText(std::string_view event, std::string_view text) {
    static const bool wanted = setting(L"GOODSREQ_WINDOW_TEXTS") == L"1";
    std::string line;
    for (const char c : wanted ? text : std::string_view()) {
        if (c == '\n')
            line += "\\n";
        else if (c != '\r')
            line += c;
    }
    logWindow(event, line);
}

} // namespace win32
