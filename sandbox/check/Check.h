// What the check of a real machine says, on the screen and in report.txt, and its parts.
#pragma once

#include "sandbox/host/HostOptions.h"

#include <filesystem>
#include <string>

namespace check {

/// Appends to the file. No line holds the connection string or its password.
class Report {
public:
    Report(std::filesystem::path file, std::string connection);

    void line(const std::string& text);
    void fact(const std::string& name, const std::string& value) { line(name + ": " + value); }
    void passed(const std::string& name) { line("ok " + name); }
    void failed(const std::string& name, const std::string& why);
    int failures() const { return failures_; }

private:
    std::filesystem::path file_;
    sandbox::HostOptions secret_;
    int failures_ = 0;
};

/// What kind of machine this is. `folder` holds the component and the sandbox.
void reportFacts(Report& report, const std::filesystem::path& folder);

/// Runs a working day's selects, one a line of `statements`, through the machine's own ADO. Tells of columns, never
/// what a row holds. `write` adds a request within a transaction and takes it back.
void reportServer(Report& report, const std::string& connection, const std::filesystem::path& statements, bool write);

} // namespace check
