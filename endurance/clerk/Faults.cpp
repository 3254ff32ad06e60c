// What goes wrong at one till.
#include "endurance/clerk/Clerk.h"

#include "automation/Members.h"
#include "basic/Conversion.h"
#include "basic/Text.h"

#include <algorithm>
#include <utility>

namespace endurance::clerk {

using automation::Access;
using automation::Arguments;
using automation::ObjectPtr;
using automation::sameName;
using automation::Value;

namespace {

constexpr std::string_view kErrors = "ErrorHandler.ErrorDetails", kHelper = "CommonModule.clsCommonDB",
                           kRecordset = "ADODB.Recordset";
/// Components that may be missing, with the members that may fail.
const std::pair<std::string_view, std::vector<std::string_view>> kSuite[] = {
    {"PosUserAuditing.clsUserAuditing",
     {"OpenObject", "LoggedTime", "SaveUserAuditingInfo", "SaveInToTag", "DataChanged"}},
    {kHelper, {"fnReturnField", "fnReturnRecords", "fnGetNextMaxNo", "fnUpdateListViewDetails", "populateComboorList"}},
    {"CommonModule.clsCommonGen", {"SelectComboItemByValue", "SelectComboItemByname", "TextValidateNum"}},
    {"Formcolor.clsFormcolor", {"Applyformcolor"}},
    {"MasterGridSetting.clsMasterGridSetting", {"fnGridSettings"}},
    {"Fetch.clsFetch", {"Show", "getCancelledStatus"}},
    {kRecordset, {"Open", "Close", "EOF", "MoveNext", "Fields", "AddNew", "Update", "RecordCount"}},
    {kErrors, {}}};

/// The members that may fail, each with its component.
const auto kMembers = [] {
    std::vector<std::pair<std::string_view, std::string_view>> all;
    for (const auto& [progId, names] : kSuite)
        for (const std::string_view name : names) all.emplace_back(progId, name);
    return all;
}();

/// A component that does what the one inside does, unless it is to fail.
class Wrapped : public automation::Object {
public:
    Wrapped(std::string_view progId, ObjectPtr inner, Faults& faults, bool quiet)
        : progId_(progId), inner_(std::move(inner)), faults_(faults), quiet_(quiet) {}

    Value invoke(Access access, std::string_view member, Arguments arguments) override {
        const auto is = [&](std::string_view name) { return sameName(member, name); };
        const auto text = [&](std::size_t i) { return basic::concatText(arguments[i]); };
        is("Close") ? faults_.closes(inner_) : faults_.called(progId_, member, quiet_);
        if (is("ErrorTrack"))
            faults_.reports.push_back({text(0), text(1), text(2), text(5), basic::cLng(arguments[3])});
        if (faults_.commaIsTyped && is("TextValidateNum")) {
            const std::int16_t key = basic::cInt(arguments[1]);
            if (key == ',' || (key >= '0' && key <= '9')) return {};
        }
        Value result = inner_->invoke(access, member, arguments);
        if (is("Close")) faults_.called(progId_, member, true); // what fails is the answer
        return result;
    }
    bool has(std::string_view member) const override { return inner_->has(member); }
    std::string className() const override { return inner_->className(); }
    automation::Array elements() override { return inner_->elements(); }

private:
    std::string progId_;
    ObjectPtr inner_;
    Faults& faults_;
    bool quiet_; ///< of a helper that only makes a report better
};

} // namespace

bool Faults::inTransaction() const {
    return till->connection->isOpen() && till->connection->database().inTransaction();
}

bool Faults::due(Fault fault) {
    const auto found = armed_.find(fault);
    if (found == armed_.end() || --found->second.first > 0) return false;
    armed_.erase(found);
    return true;
}

void Faults::strike(const std::string& what, bool quiet) {
    const std::string text = what + " (struck " + std::to_string(++struck_) + ")";
    strikes.push_back({text, quiet});
    throw automation::RunTimeError(-2147467259, text, "the clerk");
}

void Faults::statement(std::string_view text) {
    sent.emplace_back(text);
    const auto starts = [&](std::string_view word) { return basic::startsWithNoCase(text, word); };
    if (starts("BEGIN")) {
        if (!inTransaction()) written_ = false;
        for (const auto& one : recordsets_)
            if (const ObjectPtr recordset = one.lock())
                openAtBegin = openAtBegin || basic::cLng(recordset->get("State")) != 0;
    }
    // From there on others would wait for this till.
    for (const char* word : {"insert", "update", "delete", "COMMIT", "ROLLBACK"})
        if (starts(word)) written_ = true;
    if (starts("COMMIT")) {
        if (armed_.erase(Fault::commitRefused) || armed_.contains(Fault::commitStuck)) strike("commit refused");
        if (armed_.erase(Fault::commitUnheard)) {
            till->connection->database().commit();
            strike("commit unheard");
        }
    }
    if (starts("ROLLBACK")) {
        if (armed_.erase(Fault::commitStuck)) strike("rollback refused", true);
        return;
    }
    // The name of the user is asked for by those who report, too.
    const bool quiet = text.find("LOUSERS where") != std::string_view::npos;
    const bool committed = std::find(sent.begin(), sent.end(), "COMMIT TRANSACTION") != sent.end();
    if (armed_.contains(Fault::rival) && !committed && !(inTransaction() && written_) && due(Fault::rival)) rival();
    if (due(Fault::statement)) strike("statement refused", quiet);
    if (!due(Fault::dies)) return;
    till->connection->kill();
    dead = diedNow = true;
    strike("connection lost", quiet);
}

void Faults::created(std::string_view progId, bool quiet) {
    if (sameName(progId, kRecordset)) return;
    const auto missing = armed_.find(Fault::missing);
    const bool gone = missing != armed_.end() && sameName(progId, of(kSuite, missing->second.second).first);
    if (gone || due(Fault::create)) strike("cannot create " + std::string(progId), quiet || sameName(progId, kErrors));
}

void Faults::closes(const ObjectPtr& recordset) {
    if (!due(Fault::closeStays)) return;
    std::erase_if(recordsets_, [&](const auto& one) { return one.lock() == recordset; });
    strike("Close failed, still open", true);
}

void Faults::called(std::string_view progId, std::string_view member, bool quiet) {
    constexpr int kStays = 40; // calls
    for (const Fault fault : {Fault::member, Fault::memberStays, Fault::report}) {
        const auto found = armed_.find(fault);
        if (found == armed_.end()) continue;
        auto& [count, which] = found->second;
        const auto& [component, name] = of(kMembers, which);
        if (!sameName(progId, component) || !sameName(member, name) || --count > 0) continue;
        if (fault != Fault::memberStays || count < -kStays) armed_.erase(found);
        reportFails_ = reportFails_ || fault == Fault::report;
        strike(std::string(name) + " failed", quiet);
    }
    if (!sameName(member, "ErrorTrack") || !std::exchange(reportFails_, false)) return;
    ++till->desktop.refusals;
    ++boxesLost;
    strike("ErrorTrack failed", true);
}

automation::ObjectFactory Faults::around(automation::ObjectFactory inner) {
    return [this, inner = std::move(inner)](std::string_view progId) -> ObjectPtr {
        // Who reports makes the helper right after the error component, and can do without it.
        const bool quiet = std::exchange(reporting_, false) && sameName(progId, kHelper);
        created(progId, quiet);
        reporting_ = sameName(progId, kErrors);
        ObjectPtr made = inner(progId);
        if (sameName(progId, kRecordset)) {
            std::erase_if(recordsets_, [](const auto& one) { return one.expired(); });
            recordsets_.push_back(made);
        }
        return std::make_shared<Wrapped>(progId, std::move(made), *this, quiet);
    };
}

} // namespace endurance::clerk
