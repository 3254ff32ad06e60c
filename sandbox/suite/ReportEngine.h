// Stand-in for the report engine, Crystal.CRPE.Application: the members that the module calls, over the sandbox's own
// report files, and a preview window. The data source that it logs on to is the company that was opened last.
#pragma once

#include "forms/Desktop.h"
#include "sandbox/suite/StandIn.h"
#include "sandbox/suite/StandIns.h"

#include <string>

namespace sandbox {

class ReportEngine : public StandIn<ReportEngine> {
public:
    static constexpr const char* kClassName = "Application";
    static const automation::Members<ReportEngine>& members();

    explicit ReportEngine(const Surroundings& surroundings) : surroundings_(surroundings) {}

private:
    /// Error 5 where one of the five texts is empty.
    void LogOnServer(automation::Arguments texts);
    /// Error 53 where there is no such report, 5 where it is none.
    automation::ObjectPtr OpenReport(const std::string& path);

    Surroundings surroundings_;
    std::string company_; ///< file of the company; empty until the log-on
};

} // namespace sandbox
