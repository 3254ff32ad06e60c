#include "sandbox/suite/ReportTemplate.h"

#include "automation/RunTimeError.h"
#include "basic/Conversion.h"
#include "basic/Format.h"
#include "basic/Numbers.h"
#include "basic/Text.h"
#include "sandbox/suite/Query.h"

#include <algorithm>
#include <functional>
#include <optional>

namespace sandbox {

using automation::Value;

namespace {

constexpr const char* kLineEnd = "\r\n";
using Source = std::function<std::optional<Value>(const std::string& name)>;

std::vector<std::string> split(std::string_view text, char at) {
    std::vector<std::string> parts(1);
    for (const char c : text) {
        if (c == at)
            parts.emplace_back();
        else if (c != '\r')
            parts.back() += c;
    }
    return parts;
}

/// "{name,width,format}" without its braces.
std::string placed(const std::string& place, const Source& source, const basic::Locale& locale) {
    const std::vector<std::string> parts = split(place, ',');
    const Value value = source(parts[0]).value_or(Value("{" + place + "}"));
    std::string text = parts.size() > 2 ? basic::format(value, parts[2], locale) : basic::concatText(value, locale);
    text = basic::replaceAll(basic::replaceAll(text, "\r\n", " "), "\n", " ");
    const int width = parts.size() > 1 ? basic::cInt(basic::val(parts[1])) : 0;
    if (width > 0) return basic::padRight(basic::left(text, width), width);
    return width < 0 ? basic::padLeft(text, -width) : text;
}

/// The text with each "{...}" replaced by what `fill` gives for it.
std::string filled(const std::string& text, const std::function<std::string(const std::string&)>& fill) {
    std::string result;
    std::size_t at = 0;
    while (true) {
        const std::size_t open = text.find('{', at);
        const std::size_t close = open == std::string::npos ? open : text.find('}', open);
        if (close == std::string::npos) return result + text.substr(at);
        result += text.substr(at, open - at) + fill(text.substr(open + 1, close - open - 1));
        at = close + 1;
    }
}

std::optional<Value> valueField(const ReportData& data, const std::string& name) {
    const double position = basic::val(name);
    if (position < 1 || position > static_cast<double>(data.values.size())) return std::nullopt;
    return data.values[static_cast<std::size_t>(position) - 1];
}

std::string statement(const std::string& query, const ReportData& data) {
    return filled(query, [&](const std::string& place) { return literal(valueField(data, place).value_or(Value())); });
}

} // namespace

ReportTemplate readReportTemplate(std::string_view text) {
    ReportTemplate report;
    std::string section;
    for (const std::string& line : split(text, '\n')) {
        if (line.size() > 2 && line.front() == '[' && line.back() == ']')
            section = line.substr(1, line.size() - 2);
        else if (section == "page lines" && !line.empty())
            report.pageLines = basic::cInt(line);
        else if (section == "head query")
            report.headQuery += line + " ";
        else if (section == "line query")
            report.lineQuery += line + " ";
        else if (section == "head")
            report.head.push_back(line);
        else if (section == "line" && !line.empty())
            report.line = line;
        else if (section == "foot" && !line.empty())
            report.foot.push_back(line);
    }
    if (report.headQuery.empty() || report.lineQuery.empty() || report.line.empty())
        automation::raise(automation::kInvalidCall);
    return report;
}

std::vector<std::string> renderReport(const ReportTemplate& report, const ReportData& data) {
    std::vector<std::string> lines;
    {
        Query rows(data.connection, statement(report.lineQuery, data));
        for (; !rows.atEnd(); rows.next())
            lines.push_back(filled(report.line, [&](const std::string& place) {
                return placed(
                    place,
                    [&](const std::string& name) -> std::optional<Value> {
                        if (name == "line") return Value(static_cast<std::int32_t>(lines.size()) + 1);
                        if (auto value = valueField(data, name)) return value;
                        return rows.field(name)->get("Value");
                    },
                    data.locale);
            }));
    }
    const int around = static_cast<int>(report.head.size() + report.foot.size());
    const auto perPage = static_cast<std::size_t>(std::max(1, report.pageLines - around));
    const std::size_t count = std::max<std::size_t>(1, (lines.size() + perPage - 1) / perPage);

    Query head(data.connection, statement(report.headQuery, data));
    std::vector<std::string> pages;
    for (std::size_t page = 0; page < count; ++page) {
        const Source source = [&](const std::string& name) -> std::optional<Value> {
            if (name == "page") return Value("Page " + std::to_string(page + 1) + " of " + std::to_string(count));
            if (name == "now") return Value(basic::format(data.now, "dd/mm/yyyy hh:nn", data.locale));
            if (auto value = valueField(data, name)) return value;
            return head.atEnd() ? Value() : head.field(name)->get("Value");
        };
        std::string text;
        const auto add = [&](const std::string& line) {
            text +=
                filled(line, [&](const std::string& place) { return placed(place, source, data.locale); }) + kLineEnd;
        };
        for (const std::string& line : report.head) add(line);
        for (std::size_t i = page * perPage; i < std::min(lines.size(), (page + 1) * perPage); ++i)
            text += lines[i] + kLineEnd;
        for (const std::string& line : report.foot) add(line);
        pages.push_back(std::move(text));
    }
    return pages;
}

} // namespace sandbox
