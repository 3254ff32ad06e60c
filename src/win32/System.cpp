#include "win32/System.h"

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

/// The program of a command line, which may stand in quotes; the rest are its arguments.
std::pair<std::wstring, std::wstring> split(const std::wstring& line) {
    const bool quoted = !line.empty() && line[0] == L'"';
    const std::size_t end = line.find(quoted ? L'"' : L' ', 1);
    if (end == std::wstring::npos) return {quoted ? line.substr(1) : line, {}};
    const std::size_t rest = line.find_first_not_of(L' ', end + 1);
    return {line.substr(quoted ? 1 : 0, end - (quoted ? 1 : 0)), rest == std::wstring::npos ? L"" : line.substr(rest)};
}

} // namespace

void startProgram(const std::string& commandLine, bool maximised) {
    std::wstring line = wide(commandLine);
    STARTUPINFOW start{};
    start.cb = sizeof start;
    start.dwFlags = STARTF_USESHOWWINDOW;
    start.wShowWindow = static_cast<WORD>(maximised ? SW_SHOWMAXIMIZED : SW_SHOWNORMAL);
    PROCESS_INFORMATION process{};
    if (CreateProcessW(nullptr, line.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &start, &process)) {
        AllowSetForegroundWindow(process.dwProcessId);
        CloseHandle(process.hThread);
        CloseHandle(process.hProcess);
        return;
    }
    // A document, or a program that asks for other rights: the shell knows how.
    const auto [file, arguments] = split(wide(commandLine));
    SHELLEXECUTEINFOW shell{};
    shell.cbSize = sizeof shell;
    shell.fMask = SEE_MASK_FLAG_NO_UI;
    shell.lpFile = file.c_str();
    shell.lpParameters = arguments.empty() ? nullptr : arguments.c_str();
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
    locale.decimalSeparator = signOf(LOCALE_SDECIMAL, '.');
    locale.groupSeparator = signOf(LOCALE_STHOUSAND, ',');
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
