#include "endurance/clerk/Run.h"

#include "basic/Calendar.h"
#include "endurance/Endurance.h"
#include "sandbox/data/Random.h"

#include <algorithm>
#include <cmath>
#include <set>

namespace endurance::clerk {
namespace {

using support::Waiting;

class Round {
public:
    Round() : rest_(company_.rest()), last_(company_.snapshot()) {
        Cases::takeFailure();
        for (int i = 0; i < kTills; ++i) {
            Clerk& clerk = *clerks_.emplace_back(std::make_unique<Clerk>(company_));
            clerk.faults().rival = [this, i] {
                rival(i, rivalNumber_, rivalNumber_ / 2);
                last_ = company_.snapshot();
                rivalCame_ = true;
            };
        }
        crippled_.resize(kTills);
    }

    /// What the step breaks; whether it was possible goes to `done`.
    Broken play(const Step& step, bool& done, std::string& told);
    /// Everybody goes home.
    Broken leave();
    const Clerk& clerk(int till) const { return *clerks_[static_cast<std::size_t>(till)]; }

private:
    void rival(int till, int which, int how);
    void setting(int number);
    void remember(Happening& h, Memory& memory, std::set<std::string>& crippled);

    Company company_;
    std::string rest_;
    Snapshot last_;
    std::vector<std::unique_ptr<Clerk>> clerks_;
    std::vector<std::set<std::string>> crippled_; ///< forms of which a load failed, by till
    int rivalNumber_ = 0;
    bool rivalCame_ = false;
    long minute_ = std::lround(basic::dateOf(2026, 3, 31, 10, 30).days * 1440);
};

void Round::rival(int till, int which, int how) {
    for (auto& clerk : clerks_) clerk->memory.rivalSince = true;
    const Memory& m = clerk(till).memory;
    if (m.shop == 0) return;
    std::vector<int> ids;
    for (const auto& [key, header] : last_.headers)
        if (key.first == m.shop) ids.push_back(key.second);
    int id = ids.empty() ? 0 : ids[static_cast<std::size_t>(which / 2) % ids.size()];
    if (which % 4 != 0 && last_.headers.contains({m.shop, m.request})) id = m.request;
    const std::string key = " where srhshopid=" + std::to_string(m.shop) + " and srhrequestid=" + std::to_string(id);
    const std::string update = "update mesRequesttoShopHeader set ";
    switch (how % 5) {
    case 0: return company_.change(update + "srhTransfinished=1" + key);
    case 1: return company_.change(update + "srhused=1" + key);
    case 2: return company_.change(update + "SRHcancelled=1,srhcancelledRemarks='a rival'" + key);
    default: break;
    }
    // Another till of the shop stores a request of its own.
    const int next = ids.empty() ? 1 : *std::max_element(ids.begin(), ids.end()) + 1;
    const std::string prefix = company_.prefix(m.shop, m.screen);
    const std::string values = std::to_string(next) + "," + std::to_string(m.shop);
    company_.change(
        "insert into mesRequesttoShopHeader (srhrequestid,srhshopid,srhrequestno,srhrequestdate,srhtoShopid,SRHremarks,"
        "srhrecaddUser,srhNoofDetails,srhtype) values (" +
        values + ",'" + nextNumber(last_, m.shop, prefix) + "','20260331',5,'a rival''s','Ann',1,'r');" +
        "insert into mesRequesttoShopDetail values (" + values + ",101,5,1,0,0)");
}

void Round::setting(int number) {
    static const char* const changes[] = {"update aPAckageSettings set alias=1",
                                          "update aPAckageSettings set alias=0",
                                          "update aPAckageSettings set IntegerQuantity=1",
                                          "update aPAckageSettings set IntegerQuantity=0",
                                          "delete aPAckageSettings",
                                          "delete aPAckageSettings;insert into aPAckageSettings values (0,0,0)",
                                          "update miscsettings set AllowItemCodeDuplication=1"};
    company_.change(changes[static_cast<std::size_t>(number) % std::size(changes)]);
}

Broken Round::play(const Step& step, bool& done, std::string& told) {
    done = false;
    if (step.till < 0 || step.till >= kTills) return {};
    Clerk& clerk = *clerks_[static_cast<std::size_t>(step.till)];
    std::set<std::string>& crippled = crippled_[static_cast<std::size_t>(step.till)];
    ++minute_;
    for (auto& other : clerks_)
        if (other.get() != &clerk || step.verb == Verb::rival || step.verb == Verb::setting) other->ownerRollsBack();
    if (step.verb == Verb::rival || step.verb == Verb::setting) {
        done = step.verb == Verb::setting || clerk.memory.shop != 0;
        told = step.verb == Verb::rival ? "a rival " +
                                              std::string(step.b % 5 == 0   ? "confirms"
                                                          : step.b % 5 == 1 ? "uses"
                                                          : step.b % 5 == 2 ? "cancels"
                                                                            : "adds") +
                                              " a request of the till's shop"
                                        : "a package setting changes";
        step.verb == Verb::rival ? rival(step.till, step.a, step.b) : setting(step.a);
        last_ = company_.snapshot();
        return {};
    }
    Faults& faults = clerk.faults();
    faults.strikes.clear();
    faults.reports.clear();
    faults.statements.clear();
    faults.openAtBegin = false;
    faults.boxesLost = 0;
    if (step.verb == Verb::fault && static_cast<Fault>(step.a % kFaults) == Fault::rival) rivalNumber_ = step.c;
    const std::size_t boxes = clerk.desktop.messages.size();
    const bool wasDead = faults.dead, wasInTransaction = faults.inTransaction();
    View before = look(clerk);
    rivalCame_ = false;
    if (step.verb == Verb::edits) clerk.memory.rivalSince = false;
    done = clerk.play(step, minute_);
    told = "till " + std::to_string(step.till) + " " + clerk.memory.said;
    if (!done) return {};
    Happening h{step, clerk, clerk.memory, std::move(before), look(clerk), std::move(last_), company_.snapshot()};
    h.boxes.assign(clerk.desktop.messages.begin() + static_cast<long>(boxes), clerk.desktop.messages.end());
    h.strikes = faults.strikes;
    h.reports = faults.reports;
    h.statements = faults.statements;
    h.dead = wasDead || faults.dead;
    h.wasInTransaction = wasInTransaction;
    h.lostBox = faults.boxesLost > 0;
    h.openAtBegin = faults.openAtBegin;
    h.rivalCame = rivalCame_;
    last_ = h.storedAfter;
    remember(h, clerk.memory, crippled);
    Broken broken = judge(h, company_);
    if (const std::string failed = Cases::takeFailure(); broken.empty() && !failed.empty())
        broken = "desktop: " + failed;
    // What the person has seen now is not new at the next step.
    if (h.after.atForm("frmRequest") && !clerk.memory.opened) {
        clerk.memory.opened = true;
        clerk.memory.openRemarks = h.after.editor.remarks;
    }
    clerk.recover();
    return broken;
}

void Round::remember(Happening& h, Memory& memory, std::set<std::string>& crippled) {
    if (h.acts(Verb::shows)) {
        crippled.clear();
        memory.rightsRead = true;
    }
    h.crippled = crippled;
    for (const Report& report : h.reports)
        if (report.routine.starts_with("Form_Load") && (!h.strikes.empty() || h.dead || memory.badDate))
            h.crippled.insert(report.module);
    const auto struck = [&](const char* what) {
        return std::any_of(h.strikes.begin(), h.strikes.end(),
                           [&](const Strike& s) { return s.text.starts_with(what); });
    };
    if (h.lostBox || struck("cannot create ErrorHandler")) h.crippled.insert("unheard");
    crippled = h.crippled;
    if (struck("commit unheard") || struck("rollback refused") || (struck("commit") && h.dead)) memory.unknown = true;
    if (h.storedAfter.audit.size() > h.storedBefore.audit.size() ||
        (memory.unknown && h.said("Request no already exists")))
        memory.stored = true;
    else if (h.after.editor.lines != h.before.editor.lines || h.after.editor.remarks != h.before.editor.remarks)
        memory.stored = memory.stored && !h.after.editor.shown;
    if (h.before.form == "frmcancelreason") memory.reason = h.before.reason;
    if (h.after.waiting == Waiting::form) {
        if (!h.after.editor.shown) crippled.erase("frmRequest ");
        if (!h.after.entry.shown) crippled.erase("frmRequestDetail ");
        if (h.after.form != "FrmFetch") crippled.erase("FrmFetch");
        if (h.after.form != "frmscanBc") crippled.erase("frmscanBc ");
        if (h.after.form != "frmcancelreason") crippled.erase("frmcancelreason ");
        if (h.after.form != "frmPrint") crippled.erase("frmPrint ");
    }
    memory.boxes += static_cast<int>(h.boxes.size());
    if (!memory.opened && memory.command == 0)
        for (const Strike& strike : h.strikes)
            if (!strike.quiet && strike.text.find("fnGridSettings") == std::string::npos &&
                strike.text.find("MasterGridSetting") == std::string::npos)
                memory.rightsRead = false;
    if ((h.dead && memory.command == 0) || memory.badDate) memory.rightsRead = false;
    if (h.acts(Verb::ok) && h.before.form == "frmRequestDetail" && h.before.editor.lines != h.after.editor.lines)
        memory.typedLines = true;
    if (h.before.entry.item != h.after.entry.item || !h.after.entry.shown)
        memory.typedPrice = memory.typedQuantity = false;
    if (!h.after.entry.shown || h.before.entry.quantity != h.after.entry.quantity ||
        h.before.entry.item != h.after.entry.item)
        memory.packs = {"", -1};
    if (h.acts(Verb::enters) && h.after.entry.shown)
        for (const auto& [id, quantity] : h.after.entry.packs)
            if (id == "51" && !quantity.empty()) memory.packs = {h.after.entry.quantity, std::atof(quantity.c_str())};
}

Broken Round::leave() {
    constexpr int kPatience = 25;
    for (auto& one : clerks_) {
        Clerk& clerk = *one;
        for (int act = 0; clerk.desktop.waiting() != Waiting::ended && clerk.desktop.waiting() != Waiting::nothing;
             ++act) {
            if (act == kPatience) return "leave: " + clerk.user.form() + " cannot be left";
            switch (clerk.desktop.waiting()) {
            case Waiting::message:
                clerk.desktop.answer(clerk.desktop.message().buttons == forms::MessageButtons::ok ? forms::Answer::ok
                                                                                                  : forms::Answer::no);
                break;
            case Waiting::menu: clerk.desktop.choose(std::nullopt); break;
            default: clerk.user.closesFrame(); break;
            }
        }
    }
    if (company_.rest() != rest_) return "company: more than requests changed";
    if (const std::string failed = Cases::takeFailure(); !failed.empty()) return "desktop: " + failed;
    return {};
}

/// Plays what `next` gives until it gives nothing more.
template <class Next> Outcome playAll(const Next& next) {
    Cases::takeFailure();
    Outcome outcome;
    Round round;
    while (outcome.broken.empty()) {
        const std::optional<Step> step = next(round);
        if (!step) {
            outcome.broken = round.leave();
            return outcome;
        }
        bool done = false;
        std::string told;
        outcome.broken = round.play(*step, done, told);
        if (!done) continue;
        outcome.steps.push_back(*step);
        outcome.told.push_back(told);
    }
    return outcome;
}

Step madeUp(sandbox::Random& random, const Round& round, int& till) {
    if (!random.percent(80)) till = random.below(kTills);
    Step step{till, Verb::answers, random.below(1000), random.below(1000), random.below(10000)};
    if (random.percent(9)) {
        step.verb = Verb::fault;
        static constexpr Fault kinds[] = {Fault::statement,     Fault::statement,   Fault::statement,     Fault::dies,
                                          Fault::commitRefused, Fault::commitStuck, Fault::commitUnheard, Fault::create,
                                          Fault::create,        Fault::member,      Fault::member,        Fault::member,
                                          Fault::member,        Fault::memberStays, Fault::report,        Fault::rival,
                                          Fault::rival};
        // What matters most is what fails over an open editor.
        static constexpr Fault atSaving[] = {Fault::commitRefused, Fault::commitRefused, Fault::commitStuck,
                                             Fault::commitUnheard, Fault::rival,         Fault::member,
                                             Fault::memberStays};
        const bool saving = round.clerk(till).user.form() == "frmRequest" && random.percent(50);
        const Fault kind = saving ? atSaving[random.below(static_cast<int>(std::size(atSaving)))]
                                  : kinds[random.below(static_cast<int>(std::size(kinds)))];
        step.a = static_cast<int>(kind);
        static constexpr int membersAtSaving[] = {2, 4, 8, 10, 18}; // of the audit, of lines, of the shop box, Close
        if (saving) step.c = membersAtSaving[random.below(static_cast<int>(std::size(membersAtSaving)))];
        const bool counted = kind == Fault::statement || kind == Fault::dies || kind == Fault::rival;
        step.b = counted ? random.between(1, 20) : kind == Fault::create ? random.between(1, 4) : random.between(1, 3);
        return step;
    }
    if (random.percent(3)) {
        step.verb = random.percent(75) ? Verb::rival : Verb::setting;
        return step;
    }
    const std::vector<Verb> verbs = round.clerk(till).possible();
    step.verb = verbs[static_cast<std::size_t>(random.below(static_cast<int>(verbs.size())))];
    return step;
}

} // namespace

std::string ruleOf(const Broken& broken) {
    std::string rule;
    for (const char c : broken)
        if ((c < '0' || c > '9') && c != '.') rule += c;
    return rule;
}

Outcome play(const Steps& steps) {
    std::size_t at = 0;
    return playAll([&](const Round&) { return at < steps.size() ? std::optional(steps[at++]) : std::nullopt; });
}

Outcome play(unsigned seed, int count) {
    sandbox::Random random(seed);
    int till = 0, made = 0;
    return playAll(
        [&](const Round& round) { return made++ < count ? std::optional(madeUp(random, round, till)) : std::nullopt; });
}

Outcome shortest(const Outcome& broken) {
    Outcome best = broken;
    const std::string rule = ruleOf(broken.broken);
    for (std::size_t chunk = std::max<std::size_t>(best.steps.size() / 2, 1);;) {
        bool shorter = false;
        for (std::size_t from = 0; from < best.steps.size();) {
            Steps fewer = best.steps;
            const auto begin = fewer.begin() + static_cast<long>(from);
            fewer.erase(begin, begin + static_cast<long>(std::min(chunk, fewer.size() - from)));
            Outcome tried = play(fewer);
            if (ruleOf(tried.broken) == rule && tried.steps.size() < best.steps.size()) {
                best = std::move(tried);
                shorter = true;
            } else {
                from += chunk;
            }
        }
        if (chunk == 1 && !shorter) return best;
        if (chunk > 1) chunk /= 2;
    }
}

} // namespace endurance::clerk
