#include "endurance/clerk/Run.h"

#include "basic/Calendar.h"
#include "common/basGRtoShop.h"
#include "endurance/Endurance.h"
#include "sandbox/data/Random.h"

#include <algorithm>
#include <array>

namespace endurance::clerk {
namespace {

/// What somebody else does to a request: nobody changes what is final, and "" stores a new one.
const std::string kRivals[] = {"Header set srhTransfinished=1 where srh",
                               "Header set srhused=1 where srh",
                               "Header set SRHcancelled=1,srhcancelledRemarks='a rival' where srh",
                               "Header set SRHremarks='by a rival' where srh",
                               "Detail set srdgoodqty=77 where srd",
                               "",
                               ""};
const std::string kSettings[] = {"update aPAckageSettings set alias=1",
                                 "update aPAckageSettings set alias=0",
                                 "update aPAckageSettings set IntegerQuantity=1",
                                 "update aPAckageSettings set IntegerQuantity=0",
                                 "update aPAckageSettings set AllowItemCodeDuplication=1",
                                 "delete aPAckageSettings",
                                 "delete aPAckageSettings;insert into aPAckageSettings values (0,0,0)",
                                 "update miscsettings set AllowItemCodeDuplication=1"};

class Round {
public:
    explicit Round(const std::string& script)
        : company_(script), judged_(script.empty()), rest_(company_.rest()), last_(company_.snapshot()) {
        for (auto& till : tills_) {
            till.clerk = std::make_unique<Clerk>(company_);
            till.clerk->rival = [this, &till] {
                rival(till.clerk->memory, rivalNumber_, rivalNumber_ / 2);
                rivalCame_ = true;
            };
        }
    }

    /// What the step breaks; where it led to goes to `told`.
    Broken play(const Step& step, std::string& told);
    /// Everybody goes home.
    Broken leave();
    const Clerk& clerk(int till) const { return *tills_[static_cast<std::size_t>(till)].clerk; }
    int saves() const { return static_cast<int>(last_.audit.size()); }

private:
    struct Till {
        std::unique_ptr<Clerk> clerk;
        std::set<std::string> crippled; ///< forms of which a load failed
    };
    void rival(const Memory& m, int which, int how);
    static void remember(Happening& h, Till& till);
    void othersSee(const Clerk* but = nullptr) {
        for (auto& till : tills_)
            if (till.clerk.get() != but) till.clerk->memory.rivalSince = true;
    }

    Company company_;
    bool judged_;
    std::string rest_;
    Snapshot last_;
    std::array<Till, kTills> tills_;
    int rivalNumber_ = 0;
    bool rivalCame_ = false;
    double minute_ = 630; ///< since midnight
};

void Round::rival(const Memory& m, int which, int how) {
    othersSee();
    std::vector<int> ids;
    for (const auto& [key, request] : last_.requests)
        if (key.first == m.shop) ids.push_back(key.second);
    if (ids.empty()) return;
    const bool same = which % 4 != 0 && last_.requests.contains({m.shop, m.request});
    const Key key{m.shop, same ? m.request : of(ids, which / 2)};
    const std::string& change = of(kRivals, how);
    if (change.empty()) {
        const std::string values = std::to_string(ids.back() + 1) + "," + std::to_string(m.shop);
        company_.change("insert into mesRequesttoShopHeader (srhrequestid,srhshopid,srhrequestno,srhrequestdate,"
                        "srhtoShopid,SRHremarks,srhrecaddUser,srhNoofDetails,srhtype) values (" +
                        values + "," + goodsreq::quoted(nextNumber(last_, m.shop, company_.prefix(m.shop, m.screen))) +
                        ",'20260331',5,'a rival''s','Ann',1,'r');insert into mesRequesttoShopDetail values (" + values +
                        ",101,5,1,0,0)");
    } else if (finality(last_.at(key)).empty()) {
        company_.change("update mesRequesttoShop" + change + "shopid=" + std::to_string(key.first) + " and " +
                        change.substr(change.size() - 3) + "requestid=" + std::to_string(key.second));
    }
    last_ = company_.snapshot();
}

Broken Round::play(const Step& step, std::string& told) {
    Till& till = tills_[static_cast<std::size_t>(step.till)];
    Clerk& clerk = *till.clerk;
    const bool byOthers = step.verb == "rival" || step.verb == "setting";
    ++minute_;
    for (auto& other : tills_)
        if (&other != &till || byOthers) other.clerk->ownerRollsBack();
    if (step.verb == "rival") rival(clerk.memory, step.a, step.b);
    if (step.verb == "setting") company_.change(of(kSettings, step.a));
    if (byOthers) return {};
    if (step.verb == "fault" && static_cast<Fault>(step.a % kFaults) == Fault::rival) rivalNumber_ = step.c;
    const std::size_t boxes = clerk.desktop.messages.size();
    const bool wasDead = clerk.dead, wasInTransaction = clerk.inTransaction();
    View before = look(clerk);
    rivalCame_ = false;
    const bool done = clerk.play(step, {basic::dateOf(2026, 3, 31).days + minute_ / 1440});
    Happening h{done ? step.verb : "", clerk, std::move(before), look(clerk), std::move(last_), company_.snapshot()};
    told = h.after.form + " " + h.after.box;
    h.boxes.assign(clerk.desktop.messages.begin() + static_cast<long>(boxes), clerk.desktop.messages.end());
    h.dead = wasDead || clerk.dead;
    h.wasInTransaction = wasInTransaction;
    h.rivalCame = rivalCame_;
    last_ = h.storedAfter;
    if (h.storedBefore.requests != h.storedAfter.requests) othersSee(&clerk);
    remember(h, till);
    Broken broken = judged_ ? judge(h) : "";
    if (const std::string failed = Cases::takeFailure(); broken.empty() && !failed.empty())
        broken = "desktop: " + failed;
    // What the person has seen now is not new at the next step.
    Memory& m = clerk.memory;
    if (h.after.atForm("frmRequest") && !m.opening) m.opening = h.after.editor;
    if (m.command == 'N' && m.storedAs && !m.storedKey)
        for (const auto& [key, request] : h.storedAfter.requests)
            if (!h.storedBefore.requests.contains(key)) m.storedKey = key;
    clerk.recover();
    return broken;
}

void Round::remember(Happening& h, Till& till) {
    Memory& memory = till.clerk->memory;
    if (h.verb == "shows") {
        till.crippled.clear();
        memory.rightsRead = true;
    }
    h.crippled = till.crippled;
    for (const Report& report : h.clerk.reports)
        if (report.routine.starts_with("Form_Load") && (!h.clerk.strikes.empty() || h.dead || memory.badDate))
            h.crippled.insert(report.module);
    if (h.lostBox() || h.struck("cannot create ErrorHandler")) h.crippled.insert("unheard");
    till.crippled = h.crippled;
    if (h.after.waiting == Waiting::form)
        std::erase_if(till.crippled, [&](const std::string& form) {
            if (form == "frmRequest ") return !h.after.editor.shown;
            if (form == "frmRequestDetail ") return !h.after.entry.shown;
            return form != "frmMaster " && form != "unheard" && form != "basGRtoShop " &&
                   !form.starts_with(h.after.form);
        });
    if (h.struck("commit unheard") || h.struck("rollback refused") || (h.struck("commit") && h.dead))
        memory.unknown = true;
    if (h.storedAfter.audit.size() > h.storedBefore.audit.size()) memory.storedAs = h.before.editor;
    memory.boxes += static_cast<int>(h.boxes.size());
    if (memory.command == 0) {
        for (const Strike& strike : h.clerk.strikes)
            if (!strike.quiet && strike.text.find("GridSetting") == std::string::npos) memory.rightsRead = false;
        if (h.dead || memory.badDate) memory.rightsRead = false;
    }
    if (h.before.form == "frmcancelreason") memory.reason = h.before.top["txtcanreason"];
    const FormView &was = h.before.entry, &is = h.after.entry;
    const std::string quantity = is["txtQuantity"];
    const bool otherItem = was["cboItem.id"] != is["cboItem.id"] || !is.shown;
    if (was.shown && h.before.editor.rows != h.after.editor.rows) memory.typedLines = true;
    if (otherItem) memory.typedInto.clear();
    if (otherItem || was["txtQuantity"] != quantity) memory.packs = {"", -1};
    if (h.verb == "enters" && is.shown)
        for (const Row& pack : is.rows)
            if (pack[0] == "51" && !pack[2].empty()) memory.packs = {quantity, std::atof(pack[2].c_str())};
}

Broken Round::leave() {
    constexpr int kPatience = 25;
    for (auto& [clerk, crippled] : tills_)
        for (int act = 0; clerk->desktop.waiting() != Waiting::ended && clerk->desktop.waiting() != Waiting::nothing;
             ++act) {
            if (act == kPatience) return "leave: " + clerk->user.form() + " cannot be left";
            for (const char* verb : {"answers", "leaves", "frame"})
                if (clerk->play({0, verb}, clerk->desktop.time)) break;
        }
    if (company_.rest() != rest_) return "company: more than requests changed";
    const std::string failed = Cases::takeFailure();
    return failed.empty() ? "" : "desktop: " + failed;
}

Step madeUp(sandbox::Random& random, const Round& round, int& till) {
    if (!random.percent(80)) till = random.below(kTills);
    const Clerk& clerk = round.clerk(till);
    Step step{till, "fault", random.below(1000), random.below(1000), random.below(10000)};
    if (random.percent(9)) {
        using enum Fault;
        static constexpr Fault kinds[] = {statement,   statement,     statement,  dies,        commitRefused,
                                          commitStuck, commitUnheard, create,     create,      member,
                                          member,      member,        member,     memberStays, report,
                                          rival,       rival,         closeStays, missing};
        // What matters most is what fails over an open editor.
        static constexpr Fault atSaving[] = {commitRefused, commitRefused, commitStuck, commitUnheard,
                                             rival,         member,        memberStays};
        static constexpr Fault atDoubt[] = {statement, statement, rival, commitRefused};
        static constexpr int membersAtSaving[] = {2, 4, 8, 10, 18}; // of the audit, of lines, of the shop box, Close
        const bool saving = clerk.user.form() == "frmRequest" && random.percent(50);
        const Fault kind = clerk.memory.unknown ? of(atDoubt, step.a)
                           : saving             ? of(atSaving, step.a)
                                                : of(kinds, step.a);
        step.a = static_cast<int>(kind);
        if (saving) step.c = of(membersAtSaving, step.c);
        const bool counted = kind == statement || kind == dies || kind == rival;
        step.b = counted ? random.between(1, 20) : kind == create ? random.between(1, 4) : random.between(1, 3);
    } else if (random.percent(clerk.memory.unknown ? 15 : 3)) {
        step.verb = random.percent(75) ? "rival" : "setting";
    } else {
        step.verb = of(clerk.possible(), random.below(1000));
    }
    return step;
}

} // namespace

std::string ruleOf(Broken broken) {
    std::erase_if(broken, [](char c) { return (c >= '0' && c <= '9') || c == '.'; });
    return broken;
}

/// Plays what `next` gives until it gives nothing more. Each step is kept, as one that is not possible may move the
/// focus.
template <class Next> Outcome playAll(const std::string& script, const Next& next) {
    Cases::takeFailure();
    Outcome outcome{.script = script};
    Round round(script);
    while (outcome.broken.empty()) {
        const std::optional<Step> step = next(round, outcome.steps.size());
        if (!step) {
            outcome.broken = round.leave();
            return outcome;
        }
        outcome.steps.push_back(*step);
        outcome.broken = round.play(*step, outcome.told.emplace_back());
        outcome.strikes += static_cast<int>(round.clerk(step->till).strikes.size());
        outcome.saves = round.saves();
    }
    return outcome;
}

Outcome play(const Steps& steps, const std::string& script) {
    return playAll(script, [&](const Round&, std::size_t at) {
        return at < steps.size() ? std::optional(steps[at]) : std::nullopt;
    });
}

Outcome play(unsigned seed, std::size_t count, const std::string& script) {
    sandbox::Random random(seed);
    int till = 0;
    return playAll(script, [&](const Round& round, std::size_t at) {
        return at < count ? std::optional(madeUp(random, round, till)) : std::nullopt;
    });
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
            Outcome tried = play(fewer, best.script);
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
