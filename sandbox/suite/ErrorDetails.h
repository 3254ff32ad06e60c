// Stand-in for ErrorHandler.ErrorDetails: a run-time error goes to a log file and to the person.
#pragma once

#include "forms/Desktop.h"
#include "sandbox/suite/StandIn.h"

namespace sandbox {

class ErrorDetails : public StandIn<ErrorDetails> {
public:
    static constexpr const char* kClassName = "ErrorDetails";
    static const automation::Members<ErrorDetails>& members();

    /// `desktop` outlives this; the log is errors.log in `logFolder`, none where that is empty.
    ErrorDetails(forms::Desktop& desktop, std::string logFolder)
        : desktop_(desktop), logFolder_(std::move(logFolder)) {}

private:
    struct Details {
        std::string module, user, routine, number, source, description, mode;
    };
    void ErrorTrack(const Details& details);
    void writeLog(const Details& details);

    forms::Desktop& desktop_;
    std::string logFolder_;
};

} // namespace sandbox
