#include "win32/Environment.h"

#include "automation/RunTimeError.h"
#include "win32/Platform.h"
#include "win32/Text.h"

#include <shellapi.h>

namespace win32 {
namespace {

std::wstring choice(LCTYPE what) {
    wchar_t text[128];
    const int length = GetLocaleInfoW(LOCALE_USER_DEFAULT, what, text, 128);
    return length > 1 ? std::wstring(text, static_cast<std::size_t>(length - 1)) : std::wstring();
}

char signOf(LCTYPE what, char otherwise) {
    const std::wstring text = choice(what);
    return text.size() == 1 && text[0] < 0x80 ? static_cast<char>(text[0]) : otherwise;
}

bool isFullPath(const std::wstring& path) {
    return path.size() > 3 && ((path[1] == L':' && path[2] == L'\\') || path.starts_with(L"\\\\"));
}

} // namespace

void startProgram(const std::string& program, const std::string& arguments, bool maximised) {
    const std::wstring file = wide(program);
    // Without a full path the system would look into the current folder, which is anybody's. Given the program by its
    // name alone, it does not cut the line at a blank either.
    if (!isFullPath(file)) automation::raise(automation::kFileNotFound);
    const std::wstring rest = wide(arguments);
    std::wstring line = L'"' + file + L"\" " + rest;
    STARTUPINFOW start{};
    start.cb = sizeof start;
    start.dwFlags = STARTF_USESHOWWINDOW;
    start.wShowWindow = static_cast<WORD>(maximised ? SW_SHOWMAXIMIZED : SW_SHOWNORMAL);
    PROCESS_INFORMATION process{};
    if (CreateProcessW(file.c_str(), line.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &start, &process)) {
        AllowSetForegroundWindow(process.dwProcessId);
        CloseHandle(process.hThread);
        CloseHandle(process.hProcess);
        return;
    }
    // A program that asks for other rights: the shell knows how.
    SHELLEXECUTEINFOW shell{};
    shell.cbSize = sizeof shell;
    shell.fMask = SEE_MASK_FLAG_NO_UI;
    shell.lpFile = file.c_str();
    shell.lpParameters = rest.c_str();
    shell.nShow = start.wShowWindow;
    if (ShellExecuteExW(&shell)) return;
    const DWORD error = GetLastError();
    const bool missing = error == ERROR_FILE_NOT_FOUND || error == ERROR_PATH_NOT_FOUND;
    automation::raise(missing ? automation::kFileNotFound : automation::kInvalidCall);
}

namespace {

bool localeKnown = false;

basic::Locale readLocale() {
    basic::Locale locale;
    const std::wstring order = choice(LOCALE_IDATE);
    locale.dateOrder = order == L"0"   ? basic::DateOrder::monthDayYear
                       : order == L"2" ? basic::DateOrder::yearMonthDay
                                       : basic::DateOrder::dayMonthYear;
    locale.dateSeparator = signOf(LOCALE_SDATE, '/');
    if (const std::wstring pattern = choice(LOCALE_SSHORTDATE); !pattern.empty()) locale.shortDate = narrow(pattern);
    DWORD lastYear = 0;
    if (GetCalendarInfoW(LOCALE_USER_DEFAULT, CAL_GREGORIAN, CAL_ITWODIGITYEARMAX | CAL_RETURN_NUMBER, nullptr, 0,
                         &lastYear) &&
        lastYear >= 99 && lastYear <= 9999)
        locale.lastTwoDigitYear = static_cast<int>(lastYear);
    locale.decimalSeparator = signOf(LOCALE_SDECIMAL, '.');
    locale.codePage = static_cast<int>(GetACP());
    return locale;
}

} // namespace

const basic::Locale& userLocale() {
    static basic::Locale locale;
    if (!localeKnown) locale = readLocale();
    localeKnown = true;
    return locale;
}

void userLocaleChanged() { localeKnown = false; }

} // namespace win32
