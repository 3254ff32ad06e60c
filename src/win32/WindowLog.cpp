#include "win32/WindowLog.h"

#include "win32/Platform.h"

#include <string>

namespace win32 {
namespace {

std::wstring logFile() {
    wchar_t path[1024];
    const DWORD length = GetEnvironmentVariableW(L"GOODSREQ_WINDOW_LOG", path, 1024);
    return length > 0 && length < 1024 ? std::wstring(path, length) : std::wstring();
}

} // namespace

void logWindow(std::string_view event, std::string_view detail) {
    static const std::wstring path = logFile();
    if (path.empty()) return;
    std::string line(event);
    line += ' ';
    for (const char c : detail) {
        if (c == '\n')
            line += "\\n";
        else if (c != '\r')
            line += c;
    }
    line += '\n';
    // Opened for each line, so that another program may read, move or delete the file in between.
    HANDLE file = CreateFileW(path.c_str(), FILE_APPEND_DATA, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                              nullptr, OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE) return;
    DWORD written = 0;
    WriteFile(file, line.data(), static_cast<DWORD>(line.size()), &written, nullptr);
    CloseHandle(file);
}

} // namespace win32
