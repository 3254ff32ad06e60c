#include "automation/RunTimeError.h"
#include "basic/Conversion.h"
#include "com/ObjectFactory.h"
#include "sandbox/check/Check.h"
#include "sandbox/host/SuiteManifest.h"
#include "tests/support/Scratch.h"
#include "win32/Text.h"

#include <windows.h>

#include <objbase.h>
#include <shlwapi.h>

namespace check {
namespace {

template <class Function> Function exported(const wchar_t* library, const char* name) {
    return reinterpret_cast<Function>(reinterpret_cast<void*>(GetProcAddress(LoadLibraryW(library), name)));
}

std::string windowsVersion() {
    OSVERSIONINFOEXW version{};
    version.dwOSVersionInfoSize = sizeof version;
    exported<LONG(WINAPI*)(OSVERSIONINFOEXW*)>(L"ntdll.dll", "RtlGetVersion")(&version);
    std::string text = std::to_string(version.dwMajorVersion) + "." + std::to_string(version.dwMinorVersion) +
                       " build " + std::to_string(version.dwBuildNumber) + " " + win32::narrow(version.szCSDVersion);
    if (const auto wine = exported<const char*(CDECL*)()>(L"ntdll.dll", "wine_get_version"))
        text += std::string(", Wine ") + wine();
    return text;
}

std::string isElevated() {
    HANDLE token = nullptr;
    TOKEN_ELEVATION elevation{};
    DWORD size = 0;
    OpenProcessToken(GetCurrentProcess(), TOKEN_QUERY, &token);
    GetTokenInformation(token, TokenElevation, &elevation, sizeof elevation, &size);
    CloseHandle(token);
    return elevation.TokenIsElevated ? "yes" : "no";
}

std::string localeInfo(LCTYPE what) {
    wchar_t text[128] = L"";
    GetLocaleInfoW(LOCALE_USER_DEFAULT, what, text, 128);
    return win32::narrow(text);
}

std::string controlsVersion() {
    DLLVERSIONINFO version{};
    version.cbSize = sizeof version;
    exported<DLLGETVERSIONPROC>(L"comctl32.dll", "DllGetVersion")(&version);
    return std::to_string(version.dwMajorVersion) + "." + std::to_string(version.dwMinorVersion) + "." +
           std::to_string(version.dwBuildNumber);
}

std::string dotsPerInch() {
    HDC screen = GetDC(nullptr);
    const int dots = GetDeviceCaps(screen, LOGPIXELSX);
    ReleaseDC(nullptr, screen);
    return std::to_string(dots);
}

std::string adoVersion() {
    try {
        return basic::concatText(com::comObjectFactory()("ADODB.Connection")->get("Version"));
    } catch (const automation::RunTimeError& error) {
        return "none: " + error.description();
    }
}

/// Whether a program of this width can have the class: its name alone is there for both.
std::string isInstalled(const std::string& progId) {
    CLSID id{};
    wchar_t text[40] = L"";
    if (FAILED(CLSIDFromProgID(win32::wide(progId).c_str(), &id))) return "no";
    StringFromGUID2(id, text, 40);
    for (const wchar_t* server : {L"InprocServer32", L"LocalServer32"}) {
        const std::wstring path = std::wstring(L"CLSID\\") + text + L"\\" + server;
        HKEY key = nullptr;
        if (RegOpenKeyExW(HKEY_CLASSES_ROOT, path.c_str(), 0, KEY_READ, &key) != ERROR_SUCCESS) continue;
        RegCloseKey(key);
        return "yes";
    }
    return "not in this width";
}

/// A file that was not there is none afterwards either.
std::string mayWrite(const wchar_t* path) {
    const bool exists = GetFileAttributesW(path) != INVALID_FILE_ATTRIBUTES;
    HANDLE file = CreateFileW(path, GENERIC_WRITE | DELETE, FILE_SHARE_READ, nullptr,
                              exists ? OPEN_EXISTING : CREATE_NEW, exists ? 0 : FILE_FLAG_DELETE_ON_CLOSE, nullptr);
    if (file == INVALID_HANDLE_VALUE) return "no, error " + std::to_string(GetLastError());
    CloseHandle(file);
    return "yes";
}

} // namespace

void reportFacts(Report& report, const std::filesystem::path& folder) {
    report.fact("Windows", windowsVersion());
    report.fact("Bits", std::to_string(8 * sizeof(void*)));
    report.fact("Elevated", isElevated());
    report.fact("Remote session", GetSystemMetrics(SM_REMOTESESSION) ? "yes" : "no");
    report.fact("Dots per inch", dotsPerInch());
    report.fact("Locale", localeInfo(LOCALE_SNAME));
    report.fact("Short date", localeInfo(LOCALE_SSHORTDATE));
    report.fact("Decimal sign", localeInfo(LOCALE_SDECIMAL));
    report.fact("Code pages", std::to_string(GetACP()) + ", " + std::to_string(GetOEMCP()));
    report.fact("Controls without styles", controlsVersion());
    report.fact("ADO", adoVersion());
    for (const char* provider :
         {"SQLOLEDB", "SQLNCLI", "SQLNCLI10", "SQLNCLI11", "MSOLEDBSQL", "MSOLEDBSQL19", "MSDASQL"})
        report.fact(std::string("Provider ") + provider, isInstalled(provider));
    report.fact("Component goodsreq.clsGRtoShop", isInstalled("goodsreq.clsGRtoShop"));
    for (const std::string& progId : sandbox::progIdsOf(support::readAll(folder / "goodsreq.sandbox.manifest")))
        report.fact("Component " + progId, isInstalled(progId));
    report.fact("C:\\ShopReq.txt may be written", mayWrite(L"C:\\ShopReq.txt"));
}

} // namespace check
