// The sandbox's host program: opens the module as the back office does, on the sandbox's company or on a real server.
#include "automation/RunTimeError.h"
#include "com/Bstr.h"
#include "com/ObjectFactory.h"
#include "sandbox/database/Company.h"
#include "sandbox/host/HostSession.h"
#include "sandbox/host/SuiteManifest.h"

#include <windows.h>

#include <objbase.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iostream>

namespace {

using sandbox::HostOptions;

constexpr int kFailed = 1;
constexpr int kWrongOptions = 2;

/// The program under this name has a manifest that leaves ADO to the machine.
constexpr const wchar_t* kConnectProgram = L"goodsreq-connect.exe";

std::filesystem::path ownPath() {
    std::wstring path(32768, L'\0');
    path.resize(GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size())));
    return path;
}

std::string errorText(DWORD error) {
    wchar_t* text = nullptr;
    const DWORD length =
        FormatMessageW(FORMAT_MESSAGE_ALLOCATE_BUFFER | FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS,
                       nullptr, error, 0, reinterpret_cast<wchar_t*>(&text), 0, nullptr);
    std::string result = length ? com::toUtf8(std::wstring_view(text, length)) : "error " + std::to_string(error);
    LocalFree(text);
    while (!result.empty() && (result.back() == '\n' || result.back() == '\r')) result.pop_back();
    return result;
}

/// Whether a program of this width finds the class: the name alone is there for both widths.
bool isInstalled(const std::string& progId) {
    wchar_t id[64];
    DWORD size = sizeof id;
    const std::wstring name = com::toWide(progId) + L"\\CLSID";
    if (RegGetValueW(HKEY_CLASSES_ROOT, name.c_str(), nullptr, RRF_RT_REG_SZ, nullptr, id, &size) != ERROR_SUCCESS)
        return false;
    return std::ranges::any_of(std::array{L"InprocServer32", L"LocalServer32"}, [&](const wchar_t* server) {
        const std::wstring path = L"CLSID\\" + std::wstring(id) + L'\\' + server;
        HKEY key = nullptr;
        const bool there = RegOpenKeyExW(HKEY_CLASSES_ROOT, path.c_str(), 0, KEY_READ, &key) == ERROR_SUCCESS;
        if (there) RegCloseKey(key);
        return there;
    });
}

/// Stands in for what of the suite the machine lacks, and says what that is. ADO is always the machine's own.
void prepareStandIns(const std::filesystem::path& folder) {
    const std::string whole = sandbox::readTextFile(com::toUtf8((folder / L"goodsreq.sandbox.manifest").wstring()));
    std::vector<std::string> leftOut;
    std::string missing;
    for (const std::string& progId : sandbox::progIdsOf(whole)) {
        if (progId.starts_with("ADODB.") || isInstalled(progId))
            leftOut.push_back(progId);
        else
            missing += (missing.empty() ? "" : ", ") + progId;
    }
    std::cout << (missing.empty() ? "Nothing is stood in for: the machine has every component of the suite."
                                  : "Stood in for, since this machine lacks them: " + missing)
              << std::endl;

    const std::filesystem::path file = folder / L"goodsreq.suite.manifest";
    const std::string wanted = sandbox::manifestWithout(whole, "goodsreq.suite", leftOut);
    if (std::filesystem::exists(file) && sandbox::readTextFile(com::toUtf8(file.wstring())) == wanted) return;
    std::ofstream out(file, std::ios::binary | std::ios::trunc);
    out << wanted << std::flush;
    if (!out) throw automation::RunTimeError(automation::kPathAccess, "cannot write " + com::toUtf8(file.wstring()));
}

constexpr const wchar_t* kConnectVariable = L"GOODSREQ_CONNECT";

/// Takes it away too: programs that we start have no use for it.
std::string fromEnvironment(const std::string& name) {
    wchar_t text[32768];
    const std::wstring variable = com::toWide(name);
    const DWORD length = GetEnvironmentVariableW(variable.c_str(), text, 32768);
    SetEnvironmentVariableW(variable.c_str(), nullptr);
    return length < 32768 ? com::toUtf8(std::wstring_view(text, length)) : std::string();
}

/// What process lists show of us from now on ends with the option; how the text behind it was quoted does not matter
/// so.
void wipeCommandLine() {
    constexpr std::wstring_view kOption = L"--connect";
    if (wchar_t* found = wcsstr(GetCommandLineW(), kOption.data())) {
        found += kOption.size();
        std::fill(found, found + wcslen(found), L' ');
    }
}

/// One argument as a program takes it apart again: quotes, and the backslashes before them, are escaped.
std::wstring quotedArgument(std::wstring_view argument) {
    std::wstring quoted = L"\"";
    std::size_t backslashes = 0;
    for (const wchar_t c : argument) {
        if (c == L'"') quoted.append(backslashes + 1, L'\\');
        backslashes = c == L'\\' ? backslashes + 1 : 0;
        quoted += c;
    }
    return quoted.append(backslashes, L'\\') + L'"';
}

/// Our own command line with the variable's name in place of the connection string.
std::wstring commandLineWithout(const std::vector<std::string>& arguments) {
    std::wstring line = quotedArgument(kConnectProgram);
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        const bool secret = i > 0 && arguments[i - 1] == "--connect";
        line += L' ' + quotedArgument(secret ? L"env:" + std::wstring(kConnectVariable) : com::toWide(arguments[i]));
    }
    return line;
}

/// Runs this program again under the name whose manifest leaves ADO to the machine. Returns its exit status.
int runConnected(const std::filesystem::path& folder, const std::vector<std::string>& arguments,
                 const std::string& connection) {
    prepareStandIns(folder);
    const std::filesystem::path program = folder / kConnectProgram;
    std::wstring commandLine = commandLineWithout(arguments);
    SetEnvironmentVariableW(kConnectVariable, com::toWide(connection).c_str());
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION process{};
    if (!CreateProcessW(program.c_str(), commandLine.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr, &startup,
                        &process))
        throw automation::RunTimeError(automation::kFileNotFound,
                                       com::toUtf8(program.wstring()) + ": " + errorText(GetLastError()));
    WaitForSingleObject(process.hProcess, INFINITE);
    DWORD status = kFailed;
    GetExitCodeProcess(process.hProcess, &status);
    CloseHandle(process.hThread);
    CloseHandle(process.hProcess);
    return static_cast<int>(status);
}

class Apartment {
public:
    Apartment() {
        if (FAILED(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED)))
            throw automation::RunTimeError(automation::kCannotCreateObject, "COM cannot be started");
    }
    Apartment(const Apartment&) = delete;
    Apartment& operator=(const Apartment&) = delete;
    ~Apartment() { CoUninitialize(); }
};

int run(const HostOptions& options, const std::vector<std::string>& arguments) {
    const std::filesystem::path own = ownPath();
    if (options.connect && lstrcmpiW(own.filename().c_str(), kConnectProgram) != 0)
        return runConnected(own.parent_path(), arguments, *options.connect);
    if (!options.log.empty()) {
        SetEnvironmentVariableW(L"GOODSREQ_WINDOW_LOG", com::toWide(options.log).c_str());
        SetEnvironmentVariableW(L"GOODSREQ_WINDOW_TEXTS", L"1");
    }
    if (!options.connect && sandbox::ensureCompany(options.database))
        std::cout << "Made the sample company: " << options.database << std::endl;
    const Apartment apartment;
    sandbox::runSession(options, com::comObjectFactory());
    return 0;
}

} // namespace

int wmain(int count, wchar_t** arguments) {
    SetConsoleOutputCP(CP_UTF8);
    HostOptions options;
    try {
        std::vector<std::string> texts;
        for (int i = 1; i < count; ++i) texts.push_back(com::toUtf8(std::wstring_view(arguments[i])));
        const auto parsed = sandbox::parseHostOptions(texts);
        if (const std::string* wrong = std::get_if<std::string>(&parsed)) {
            std::cerr << "goodsreq-host: " << *wrong << std::endl;
            return kWrongOptions;
        }
        options = std::get<HostOptions>(parsed);
        if (options.help) {
            std::cout << sandbox::hostHelp();
            return 0;
        }
        if (options.connect) wipeCommandLine();
        sandbox::readConnection(options, fromEnvironment, std::cin);
        return run(options, texts);
    } catch (const automation::RunTimeError& error) {
        std::cerr << "goodsreq-host: error " << error.number() << ": "
                  << sandbox::withoutSecrets(error.description(), options) << std::endl;
    } catch (const std::exception& error) {
        std::cerr << "goodsreq-host: " << sandbox::withoutSecrets(error.what(), options) << std::endl;
    }
    return kFailed;
}
