// Rules on what is stored, on rights, and on who hears of failures.
#include "endurance/clerk/Judge.h"

#include "basic/Calendar.h"
#include "basic/Text.h"
#include "sandbox/database/Errors.h"

#include <algorithm>
#include <cmath>

namespace endurance::clerk {

bool Happening::struck(std::string_view what) const {
    return std::any_of(clerk.strikes.begin(), clerk.strikes.end(),
                       [&](const Strike& one) { return one.text.starts_with(what); });
}

Broken judge(const Happening& h) {
    for (const auto& rule :
         {judgeStored, judgeRights, judgeLines, judgeOpening, judgeRegister, judgeEntry, judgeReports})
        if (const Broken broken = rule(h); !broken.empty()) return broken;
    return {};
}

namespace {

std::string keyText(const Key& key) { return std::to_string(key.second) + " of shop " + std::to_string(key.first); }

template <class Rows> void addChanged(const Rows& was, const Rows& is, std::set<Key>& changed) {
    for (const auto& [key, row] : is)
        if (const auto old = was.find(key); old == was.end() || old->second != row) changed.insert(key);
    for (const auto& [key, row] : was)
        if (!is.contains(key)) changed.insert(key);
}

/// What the editor's lines are in the tables.
std::vector<StoredLine> asStored(const EditorView& editor, int toShop, bool priced) {
    std::vector<StoredLine> lines;
    for (const auto& line : editor.lines)
        lines.push_back({std::atoi(line[5].c_str()), toShop, thousandths(line[3]), thousandths(line[4]),
                         priced ? thousandths(line[6]) : 0});
    std::sort(lines.begin(), lines.end());
    return lines;
}

std::vector<StoredLine> linesOf(const Snapshot& stored, const Key& key) {
    const auto found = stored.lines.find(key);
    return found == stored.lines.end() ? std::vector<StoredLine>{} : found->second;
}

} // namespace

Broken judgeStored(const Happening& h) {
    const Snapshot &was = h.storedBefore, &is = h.storedAfter;
    const Memory& m = h.memory;
    Company& company = h.clerk.company;
    std::set<Key> changed;
    addChanged(was.headers, is.headers, changed);
    addChanged(was.lines, is.lines, changed);
    const auto records = is.audit.size() - was.audit.size();
    if (changed.empty() && records == 0) return {};
    if (changed.size() > 1) return "stored: two requests changed at once";

    // A new request that was stored while the editor stayed open is a stored one from then on.
    const bool adds = m.command == 'N' && !m.storedKey;
    const Key mine = m.storedKey.value_or(Key{m.shop, m.request});
    const Key key = changed.empty() ? mine : *changed.begin();
    const bool saves = m.command == 'N' || m.command == 'E';
    if (key.first != m.shop) return "stored: a request of another shop changed, " + keyText(key);
    if (!is.headers.contains(key)) return "stored: the header of " + keyText(key) + " is gone";
    if (m.command != 'D' && !(saves && h.before.editor.shown)) return "stored: nobody saved " + keyText(key);
    if (!company.may(m.user, m.screen, m.command)) return std::string("rights: stored without ") + m.command;
    if (saves && m.screen == 1700) return "stored: by a screen that stores nothing";

    const Header& header = is.headers.at(key);
    const auto old = was.headers.find(key);
    const auto userName = company.masters().users.find({m.shop, m.user});
    const std::string user = userName == company.masters().users.end() ? "" : userName->second;
    const EditorView& editor = h.before.editor;
    Header wanted;
    if (adds) {
        if (old != was.headers.end()) return "stored: a new request took the place of " + keyText(key);
        int highest = 0;
        for (const auto& [one, ignored] : was.headers)
            if (one.first == m.shop) highest = std::max(highest, one.second);
        if (key.second != highest + 1)
            return "numbers: the id is " + std::to_string(key.second) + ", not " + std::to_string(highest + 1);
        wanted = {{"number", nextNumber(was, m.shop, company.prefix(m.shop, m.screen))},
                  {"date", std::to_string(m.typedDate.value_or(std::lround(basic::dateOf(2026, 3, 31).days * 1440)))},
                  {"supplying shop", std::to_string(editor.shop)},
                  {"user", user},
                  {"type", m.screen == 1611 ? "s" : "r"},
                  {"used", "0"},
                  {"cancelled", "0"}};
    } else {
        if (old == was.headers.end() || key != mine)
            return "stored: " + keyText(key) + " changed, not " + keyText(mine);
        if (const std::string final = finality(old->second); !final.empty())
            return std::string("final: ") + m.command + " changed a request that is " + final;
        wanted = old->second;
        if (m.command == 'D') {
            wanted["cancelled"] = "1";
            wanted["reason"] = basic::left(basic::trim(user), 20) + ":" + basic::left(basic::trim(m.reason), 230);
        } else {
            wanted["changing user"] = user;
            wanted["changed at"] = header.at("changed at").empty() ? "some time" : header.at("changed at");
        }
    }
    if (saves) {
        wanted["remarks"] = editor.remarks;
        wanted["confirmed"] = editor.ticked ? "1" : "0";
        wanted["count"] = std::to_string(editor.lines.size());
    }
    for (const auto& [name, value] : header)
        if (value != wanted[name]) return "stored: the " + name + " is \"" + value + "\", not \"" + wanted[name] + "\"";
    const auto lines =
        saves ? asStored(editor, std::atoi(header.at("supplying shop").c_str()), m.screen == 1611) : linesOf(was, key);
    if (linesOf(is, key) != lines) return "stored: the lines are not those shown";

    if (records != 1) return "audit: " + std::to_string(records) + " records of one save";
    const Row& record = is.audit.back();
    const std::string action = m.storedKey && record[6] == "E" ? "E" : std::string(1, m.command);
    const Row due = {std::to_string(kCompanyId),
                     std::to_string(m.shop),
                     std::to_string(m.user),
                     std::to_string(m.screen),
                     std::to_string(key.second),
                     header.at("number"),
                     action,
                     std::to_string(m.minute)};
    for (std::size_t i = 0; i < due.size(); ++i)
        if (record[i] != due[i]) return "audit: the record has " + record[i] + " for " + due[i];
    return {};
}

/// Without the right nothing opens and nothing is sent, whatever is pressed.
Broken judgeRights(const Happening& h) {
    const Memory& m = h.memory;
    if (m.pressed == 0 || h.clerk.company.may(m.user, m.screen, m.pressed)) return {};
    for (const std::string& text : h.clerk.sent)
        if (text.starts_with("BEGIN") || text.starts_with("update"))
            return std::string("rights: without ") + m.pressed + " was sent " + text;
    if (h.after.waiting == support::Waiting::form && h.after.form != "frmMaster")
        return std::string("rights: without ") + m.pressed + " came " + h.after.form;
    return {};
}

namespace {

/// Whether the routine is of a control that the act touched, or of one whose handler waits below. Each letter of the
/// names is another proof's.
bool reportsAs(const Report& report, const Happening& h) {
    static const std::set<std::string> always{"Form", "GridPopulate", "USerRights", "QuickFetch", "fnGetDeptCurrID"};
    static const std::map<char, const char*> commands{{'N', "cmdnew"},  {'E', "CmdEdit"},    {'D', "CmdDelete"},
                                                      {'P', "cmdPrev"}, {'R', "mnurefresh"}, {0, ""}};
    const std::string control = report.routine.substr(0, report.routine.find_first_of("_ "));
    const Memory& m = h.memory;
    const bool waits = control == commands.at(m.command) || control == "flexMaster" ||
                       ((control == "lvwrequest" || control.starts_with("mnu")) && h.before.editor.shown) ||
                       ((control == "cboItem" || control == "cmdbarcode") && h.before.entry.shown) ||
                       (control == "cboItem" && h.after.entry.shown);
    // Printing has routines of its own.
    return waits || always.contains(control) || m.touched.contains(control) || report.module == "basGRtoShop " ||
           m.command == 'P';
}

} // namespace

Broken judgeReports(const Happening& h) {
    const Memory& m = h.memory;
    const bool stuck = h.struck("rollback");
    for (const Strike& strike : h.clerk.strikes) {
        const auto times = std::count_if(h.boxes.begin(), h.boxes.end(), [&](const auto& box) {
            return box.text.find(strike.text) != std::string::npos;
        });
        if (times > 1) return "reports: a failure is reported " + std::to_string(times) + " times, " + strike.text;
        // Where it cannot be told whether something changed, the question says enough.
        const bool asked =
            strike.text.starts_with("DataChanged") && !h.boxes.empty() && h.boxes.back().text == "Save Changes?";
        if (times == 0 && !strike.quiet && !asked && !h.lostBox())
            return "reports: nobody heard of a failure, " + strike.text;
    }
    const auto name = h.clerk.company.masters().users.find({m.shop, m.user});
    for (const Report& report : h.clerk.reports) {
        if (!report.user.empty() && (name == h.clerk.company.masters().users.end() || report.user != name->second))
            return "reports: by " + report.user;
        if (!reportsAs(report, h))
            return "reports: \"" + report.module + "\", \"" + report.routine + "\" after " + m.said;
        const bool ofStrike = std::any_of(h.clerk.strikes.begin(), h.clerk.strikes.end(),
                                          [&](const Strike& s) { return report.description == s.text; });
        const bool consequence = h.crippled.contains(report.module) || h.crippled.contains("unheard") ||
                                 (h.crippled.contains("frmMaster ") && report.module == "basGRtoShop ") ||
                                 (!h.crippled.empty() && report.number == 91);
        const bool stillOpen = h.wasInTransaction && report.number == sandbox::kTransactionInTransaction;
        // Where somebody else was quicker, what could not be taken back is in the way of another try.
        const bool tookOver = h.rivalCame && (report.number == sandbox::kRowChanged ||
                                              (stuck && (report.number == sandbox::kConstraintViolated ||
                                                         report.number == sandbox::kTransactionInTransaction)));
        constexpr std::size_t kTooLong = 300; // digits, which a program alone can put there
        const EntryView& entry = h.before.entry;
        const bool tooBig =
            report.number == 6 && std::max({entry.quantity.size(), entry.bad.size(), entry.price.size()}) > kTooLong;
        if (!ofStrike && !consequence && !tooBig && !stillOpen && !tookOver && !h.dead &&
            !(m.badDate && (report.number == 5 || report.number == 6)))
            return "reports: without a failure, " + report.module + report.routine + ": " +
                   std::to_string(report.number) + " " + report.description;
    }
    for (const forms::Message& box : h.boxes)
        if (box.text.empty()) return "reports: a box without a text";
    if (h.clerk.openAtBegin) return "order: a record set is open while a transaction begins";
    const bool saved = h.before.form == "frmRequest" && h.after.waiting == support::Waiting::form;
    if (saved && !stuck && !h.wasInTransaction && !h.dead && h.clerk.inTransaction())
        return "order: a save left its transaction open";
    return {};
}

} // namespace endurance::clerk
