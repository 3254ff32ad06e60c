// Checks a real machine, for one width: what kind of machine it is, the test programs, the register out of a host that
// was started hidden, and the machine's own ADO where a connection is given. check.cmd starts it.
//
//   goodsreq-check [/write] [/keys]    the check; the connection stands in GOODSREQ_CHECK_CONNECTION
//   goodsreq-check /total              counts what report.txt says
#include "sandbox/check/Check.h"
#include "tests/support/Scratch.h"
#include "tests/windows/TopWindow.h"
#include "win32/Text.h"

#include <windows.h>

#include <objbase.h>

#include <algorithm>
#include <cstdio>
#include <sstream>

namespace check {

Report::Report(std::filesystem::path file, std::string connection) : file_(std::move(file)) {
    if (!connection.empty()) secret_.connect = std::move(connection);
}

void Report::line(const std::string& text) {
    const std::string shown = sandbox::withoutSecrets(text, secret_) + "\n";
    std::ofstream(file_, std::ios::app) << shown;
    std::fputs(shown.c_str(), stdout);
    std::fflush(stdout);
}

void Report::failed(const std::string& name, const std::string& why) {
    ++failures_;
    line("FAILED " + name);
    std::istringstream lines(why);
    int shown = 0;
    for (std::string one; shown < 30 && std::getline(lines, one); ++shown) line("    " + one);
}

namespace {

const std::string kWidth = sizeof(void*) == 8 ? "x64 " : "x86 ";

struct Program {
    const char* command;
    int seconds;
    bool keys = false; ///< takes the keyboard, so that nobody may type meanwhile
};

/// What would write the registry or the root of the disk is left out; so is marshalling, for which Wine registers a
/// type library by itself.
constexpr Program kPrograms[] = {
    {"bridge_test", 60},
    {"component_test --gtest_filter=-*egister*:*AMultithreaded*", 120},
    {"slip_test --gtest_filter=-Machine.StartsAProgram*", 120},
    {"context_test", 120},
    {"looks_test", 120},
    {"stress-windows rounds --quick", 300},
    {"desktop_test", 300, true},
    {"window_test", 300, true},
};
/// What can only be so where plain text is of Western Europe.
constexpr const char* kWesternOnly = ":Machine.HasNoBestFit*:*letters_outside_ascii*";

struct Child {
    HANDLE process = nullptr;
    DWORD id = 0;
    DWORD status = 0; ///< once it has ended
    explicit operator bool() const { return process != nullptr; }
};

/// Starts a program of the folder; what it prints goes to the file.
Child start(const std::filesystem::path& folder, const std::string& command, const std::string& output, WORD show) {
    SECURITY_ATTRIBUTES inherited{sizeof inherited, nullptr, TRUE};
    HANDLE file =
        CreateFileW(win32::wide(output).c_str(), GENERIC_WRITE, FILE_SHARE_READ, &inherited, CREATE_ALWAYS, 0, nullptr);
    STARTUPINFOW how{};
    how.cb = sizeof how;
    how.dwFlags = STARTF_USESTDHANDLES | STARTF_USESHOWWINDOW;
    how.wShowWindow = show;
    how.hStdOutput = how.hStdError = file;
    const std::size_t name = command.find(' ');
    std::wstring line = L"\"" + (folder / (command.substr(0, name) + ".exe")).wstring() + L"\"";
    if (name != std::string::npos) line += win32::wide(command.substr(name));
    PROCESS_INFORMATION made{};
    CreateProcessW(nullptr, line.data(), nullptr, nullptr, TRUE, 0, nullptr, folder.c_str(), &how, &made);
    CloseHandle(file);
    if (made.hThread) CloseHandle(made.hThread);
    return {made.hProcess, made.dwProcessId};
}

/// Why it did not end well; "" where it did.
std::string end(Child& child, int seconds) {
    if (!child) return "It does not start";
    const bool inTime = WaitForSingleObject(child.process, static_cast<DWORD>(1000 * seconds)) == WAIT_OBJECT_0;
    if (!inTime) TerminateProcess(child.process, 1);
    GetExitCodeProcess(child.process, &child.status);
    CloseHandle(child.process);
    if (!inTime) return "It did not end within " + std::to_string(seconds) + " seconds";
    return child.status ? "It ended with status " + std::to_string(child.status) : "";
}

/// Counts what a test program says of each of its tests; the last one named is where it crashed or hung.
void countTests(Report& report, const std::string& program, const std::string& output, const std::string& ending) {
    std::istringstream lines(output);
    std::string test, said;
    int tests = 0, failures = report.failures();
    for (std::string line; std::getline(lines, line);) {
        if (line.ends_with('\r')) line.pop_back();
        const auto says = [&](const char* mark) { return line.starts_with(mark + std::string(" ") + test); };
        if (line.starts_with("[ RUN      ] ")) {
            test = line.substr(13);
            said.clear();
            ++tests;
        } else if (test.empty()) {
        } else if (says("[       OK ]")) {
            report.passed(kWidth + test);
            test.clear();
        } else if (says("[  SKIPPED ]")) {
            report.line("skipped " + kWidth + test);
            test.clear();
        } else if (says("[  FAILED  ]")) {
            report.failed(kWidth + test, said);
            test.clear();
        } else {
            said += line + "\n";
        }
    }
    if (!test.empty())
        report.failed(kWidth + test, ending + "\n" + said);
    else if (!tests || (!ending.empty() && report.failures() == failures))
        report.failed(kWidth + program, ending.empty() ? "It ran no test" : ending + "\n" + output);
}

void runProgram(Report& report, const std::filesystem::path& folder, const Program& program) {
    std::string command = program.command;
    const std::string name = command.substr(0, command.find(' '));
    if (name == "slip_test" && GetACP() != 1252) command += kWesternOnly;
    const std::string output = support::scratch(name + ".txt");
    Child child = start(folder, command, output, SW_SHOWDEFAULT);
    const std::string ending = end(child, program.seconds);
    if (name.ends_with("_test"))
        countTests(report, name, support::readAll(output), ending);
    else if (ending.empty())
        report.passed(kWidth + command);
    else
        report.failed(kWidth + command, ending + "\n" + support::readAll(output));
}

/// A script that a service or a task starts hidden still has to show its register.
void showsFromAHiddenHost(Report& report, const std::filesystem::path& folder) {
    const std::string name = kWidth + "a host that was started hidden shows the register";
    const std::string output = support::scratch("host.txt");
    Child child = start(folder, "goodsreq-host --database \"" + support::scratch("company.db") + "\"", output, SW_HIDE);
    HWND window = nullptr;
    for (int tenths = 0; child && !window && tenths < 600; ++tenths) {
        if (WaitForSingleObject(child.process, 100) == WAIT_OBJECT_0) break;
        window = support::topWindow([&](HWND shown) {
            return support::processOf(shown) == child.id && IsWindowVisible(shown) &&
                   support::classOf(shown) != L"ConsoleWindowClass";
        });
    }
    PostMessageW(window, WM_CLOSE, 0, 0);
    const std::string ending = end(child, window ? 30 : 0);
    if (window && ending.empty())
        report.passed(name);
    else
        report.failed(name, ending + (window ? "" : ", and no window was seen") + "\n" + support::readAll(output));
}

std::string environment(const wchar_t* name) {
    wchar_t text[32768];
    return win32::narrow({text, GetEnvironmentVariableW(name, text, 32768)});
}

int total(Report& report, const std::filesystem::path& file) {
    int passed = 0, failed = 0;
    std::istringstream lines(support::readAll(file));
    for (std::string line; std::getline(lines, line);) {
        if (line.starts_with("ok ")) ++passed;
        if (line.starts_with("FAILED ")) ++failed;
    }
    report.line(std::to_string(passed) + " passed, " + std::to_string(failed) + " failed");
    return passed > 0 && failed == 0 ? 0 : 1;
}

int run(const std::vector<std::wstring>& switches) {
    const auto isOn = [&](const wchar_t* name) {
        return std::find(switches.begin(), switches.end(), name) != switches.end();
    };
    std::wstring path(32768, L'\0');
    path.resize(GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size())));
    const std::filesystem::path folder = std::filesystem::path(path).parent_path(), kit = folder.parent_path();
    constexpr const wchar_t* kConnection = L"GOODSREQ_CHECK_CONNECTION";
    const std::string connection = environment(kConnection);
    SetEnvironmentVariableW(kConnection, nullptr); // no child has it
    Report report(kit / "report.txt", connection);
    if (isOn(L"/total")) return total(report, kit / "report.txt");

    // A crash is told at once, not by a dialog that somebody has to close.
    SetErrorMode(SEM_FAILCRITICALERRORS | SEM_NOGPFAULTERRORBOX);
    // The folder goes with this process, and all that the programs have left in it.
    const std::wstring scratch = std::filesystem::path(support::scratch("")).parent_path().wstring();
    for (const wchar_t* name : {L"TEMP", L"TMP"}) SetEnvironmentVariableW(name, scratch.c_str());
    reportFacts(report, folder);
    for (const Program& program : kPrograms)
        if (!program.keys || isOn(L"/keys")) runProgram(report, folder, program);
    showsFromAHiddenHost(report, folder);
    if (!connection.empty()) reportServer(report, connection, kit / "statements.txt", isOn(L"/write"));
    return report.failures() ? 1 : 0;
}

} // namespace
} // namespace check

int wmain(int count, wchar_t** arguments) {
    if (FAILED(CoInitialize(nullptr))) return 1;
    return check::run({arguments + 1, arguments + count});
}
