#include "sandbox/suite/ReportEngine.h"

#include "automation/RunTimeError.h"
#include "basic/Conversion.h"
#include "basic/Text.h"
#include "sandbox/database/Company.h"
#include "sandbox/suite/ReportTemplate.h"
#include "sandbox/suite/ReportWindow.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <map>

namespace sandbox {

using automation::Arguments;
using automation::Members;
using automation::Value;

namespace {

constexpr std::size_t kMostValues = 50;
constexpr const char* kPrintFile = "printed-report.txt";

/// Writes down a call for tests: "Member(argument|argument)", a small number with "%", a double with "#" behind it.
void note(const Surroundings& surroundings, const std::string& member, Arguments arguments) {
    if (!surroundings.reportCalls) return;
    std::string text = member + "(";
    for (const Value& argument : arguments)
        text += (text.ends_with('(') ? "" : "|") + basic::concatText(argument) +
                (argument.is<std::int16_t>() ? "%"
                 : argument.is<double>()     ? "#"
                                             : "");
    surroundings.reportCalls->push_back(text + ")");
}

class ValueField : public StandIn<ValueField> {
public:
    static constexpr const char* kClassName = "ParameterField";
    static const Members<ValueField>& members() {
        static const auto table = [] {
            Members<ValueField> m;
            m.method("SetCurrentValue", 1, 2, [](ValueField& self, Arguments a) {
                note(self.surroundings_, "SetCurrentValue " + std::to_string(self.position_), a.first(1));
                self.value = a[0].resolved();
                return Value();
            });
            return m;
        }();
        return table;
    }
    ValueField(const Surroundings& surroundings, std::size_t position)
        : surroundings_(surroundings), position_(position) {}

    Value value;

private:
    Surroundings surroundings_;
    std::size_t position_;
};

class ValueFields : public StandIn<ValueFields> {
public:
    static constexpr const char* kClassName = "ParameterFields";
    static const Members<ValueFields>& members() {
        static const auto table = [] {
            Members<ValueFields> m;
            const auto item = [](ValueFields& self, Arguments a) { return Value(self.item(basic::cLng(a[0]))); };
            m.method("Item", 1, 1, item);
            m.method("", 1, 1, item);
            return m;
        }();
        return table;
    }
    explicit ValueFields(const Surroundings& surroundings) : surroundings_(surroundings) {}

    /// From 1. Error 9 out of range.
    std::shared_ptr<ValueField> item(std::int32_t position) {
        if (position < 1 || static_cast<std::size_t>(position) > kMostValues)
            automation::raise(automation::kSubscriptOutOfRange);
        while (fields_.size() < static_cast<std::size_t>(position))
            fields_.push_back(std::make_shared<ValueField>(surroundings_, fields_.size() + 1));
        return fields_[static_cast<std::size_t>(position) - 1];
    }
    std::vector<Value> values() const {
        std::vector<Value> all;
        for (const auto& field : fields_) all.push_back(field->value);
        return all;
    }

private:
    Surroundings surroundings_;
    std::vector<std::shared_ptr<ValueField>> fields_;
};

/// Switches of the preview window; what it has no button for is kept without effect.
class WindowOptions : public StandIn<WindowOptions> {
public:
    static constexpr const char* kClassName = "PrintWindowOptions";
    static const Members<WindowOptions>& members() {
        static const auto table = [] {
            Members<WindowOptions> m;
            for (const char* name : {"HasGroupTree", "CanDrillDown", "HasNavigationControls", "HasCancelButton",
                                     "HasPrintButton", "HasPrintSetupButton", "HasExportButton", "HasRefreshButton",
                                     "HasSearchButton", "HasZoomControl", "HasCloseButton", "HasProgressControls"})
                m.property(
                    name, [name](WindowOptions& self) { return Value(self.isOn(name)); },
                    [name](WindowOptions& self, const Value& value) {
                        Value noted = value;
                        note(self.surroundings_, name, Arguments(&noted, 1));
                        self.on_[name] = basic::cBool(value);
                    });
            return m;
        }();
        return table;
    }
    explicit WindowOptions(const Surroundings& surroundings) : surroundings_(surroundings) {}
    bool isOn(const std::string& name) const { return on_.contains(name) && on_.at(name); }

private:
    Surroundings surroundings_;
    std::map<std::string, bool> on_;
};

class Report : public StandIn<Report> {
public:
    static constexpr const char* kClassName = "Report";
    static const Members<Report>& members() {
        static const auto table = [] {
            Members<Report> m;
            m.readOnly("ParameterFields", [](Report& self) { return Value(self.fields_); });
            m.readOnly("PrintWindowOptions", [](Report& self) { return Value(self.options_); });
            m.method("Preview", 0, 6, [](Report& self, Arguments a) {
                note(self.surroundings_, "Preview", a);
                self.preview(a.empty() ? std::string() : basic::concatText(a[0]));
                return Value();
            });
            return m;
        }();
        return table;
    }
    Report(const Surroundings& surroundings, ReportTemplate layout, std::string company)
        : surroundings_(surroundings), template_(std::move(layout)), company_(std::move(company)),
          fields_(std::make_shared<ValueFields>(surroundings)),
          options_(std::make_shared<WindowOptions>(surroundings)) {}

private:
    std::vector<std::string> render() const {
        const auto connection = openConnection(company_);
        forms::Desktop& desktop = *surroundings_.desktop;
        auto pages = renderReport(template_, {fields_->values(), connection, desktop.now(), desktop.locale()});
        connection->close();
        return pages;
    }
    /// Comes back when the window is closed.
    void preview(const std::string& title) {
        if (company_.empty())
            throw automation::RunTimeError(20599, "Cannot open SQL server: there was no log-on.", "Report engine");
        ReportWindow::Content content;
        content.caption = title;
        content.pages = render();
        content.hasZoom = options_->isOn("HasZoomControl");
        content.hasSearch = options_->isOn("HasSearchButton");
        content.hasRefresh = options_->isOn("HasRefreshButton");
        content.refresh = [this] { return render(); };
        content.print = [this](const std::string& text) { return print(text); };
        const auto window = std::make_shared<ReportWindow>(*surroundings_.desktop, std::move(content));
        window->showModal(surroundings_.desktop->topForm());
    }
    /// The sandbox has no printer: the pages go into a file.
    std::string print(const std::string& text) const {
        const std::u8string folder(surroundings_.logFolder.begin(), surroundings_.logFolder.end());
        const std::filesystem::path path = std::filesystem::path(folder) / kPrintFile;
        std::ofstream file(path, std::ios::binary);
        file << text;
        file.close();
        const std::u8string name = path.u8string();
        return (file ? "The report was written to " : "The report could not be written to ") +
               std::string(name.begin(), name.end());
    }

    Surroundings surroundings_;
    ReportTemplate template_;
    std::string company_;
    std::shared_ptr<ValueFields> fields_;
    std::shared_ptr<WindowOptions> options_;
};

} // namespace

const Members<ReportEngine>& ReportEngine::members() {
    static const auto table = [] {
        Members<ReportEngine> m;
        m.method("LogOnServer", 5, 5, [](ReportEngine& self, Arguments a) {
            self.LogOnServer(a);
            return Value();
        });
        m.method("OpenReport", 1, 2, [](ReportEngine& self, Arguments a) {
            note(self.surroundings_, "OpenReport", a);
            return Value(self.OpenReport(basic::concatText(a[0])));
        });
        return m;
    }();
    return table;
}

void ReportEngine::LogOnServer(Arguments texts) {
    note(surroundings_, "LogOnServer", texts);
    for (const Value& text : texts)
        if (basic::concatText(text).empty()) automation::raise(automation::kInvalidCall);
    company_ = Connection::lastOpened();
}

automation::ObjectPtr ReportEngine::OpenReport(const std::string& path) {
    std::string name = path;
    std::replace(name.begin(), name.end(), '\\', '/');
    if (!std::filesystem::exists(std::filesystem::path(std::u8string(name.begin(), name.end()))))
        throw automation::RunTimeError(automation::kFileNotFound, "There is no report " + path, "Report engine");
    return std::make_shared<Report>(surroundings_, readReportTemplate(readTextFile(name)), company_);
}

} // namespace sandbox
