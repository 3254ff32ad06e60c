// The sandbox's own report files: text with places for values, and the queries that these come from.
#pragma once

#include "automation/Object.h"
#include "basic/Locale.h"

#include <string>
#include <string_view>
#include <vector>

namespace sandbox {

struct ReportTemplate {
    int pageLines = 60;
    std::string headQuery; ///< one row, for every place but those of a line
    std::string lineQuery;
    std::vector<std::string> head; ///< of every page
    std::string line;              ///< of every row
    std::vector<std::string> foot; ///< of every page
};

/// Sections begin with "[name]"; lines with "#" before the first one are remarks. Error 5 for a text that is no report.
ReportTemplate readReportTemplate(std::string_view text);

/// What a report is filled with.
struct ReportData {
    std::vector<automation::Value> values; ///< its value fields; {1} is the first
    automation::ObjectPtr connection;
    automation::Date now;
    basic::Locale locale;
};

/// Runs the queries and gives the text of each page, at least one; lines end in CR LF. Errors: the database's own.
std::vector<std::string> renderReport(const ReportTemplate& report, const ReportData& data);

} // namespace sandbox
