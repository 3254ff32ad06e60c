#include "endurance/clerk/Judge.h"

#include "basic/Calendar.h"
#include "basic/Text.h"
#include "sandbox/database/Errors.h"

#include <algorithm>
#include <cmath>

namespace endurance::clerk {

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
        if (m.command == 'N') {
            const long today = std::lround(basic::dateOf(2026, 3, 31).days * 1440);
            wanted["date"] = std::to_string(m.typedDate.value_or(today));
            wanted["supplying shop"] = std::to_string(editor.shop);
        }
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

// What the screens show, and what becomes of typed lines.

using Lines = std::vector<std::vector<std::string>>;

constexpr const char* kTypedOver = "opening: the date of a stored request can be typed over";

/// The number in a box, with a "." before the decimals; a "," that is not the locale's ends it.
std::string plain(std::string typed, const Memory& m) {
    if (m.locale % 2 == 0) return typed.substr(0, typed.find(','));
    std::replace(typed.begin(), typed.end(), ',', '.');
    return typed;
}
double number(const std::string& text) { return std::atof(text.c_str()); }
bool differ(double a, double b, double most = 0.0005) { return std::fabs(a - b) > most; }

const Item* itemOf(const Happening& h, int id) {
    const auto& items = h.clerk.company.masters().items;
    const auto found = items.find(id);
    return found == items.end() ? nullptr : &found->second;
}

Broken judgeClosing(const Happening& h) {
    const EditorView& editor = h.before.editor;
    const Memory& m = h.memory;
    EditorView typed = editor; // a line that was only removed is asked about by nobody
    typed.lines = m.opening->lines;
    if (!m.typedLines && typed.content() == m.opening->content()) return {};
    if (h.storedBefore.audit.size() != h.storedAfter.audit.size()) return {};
    if (h.before.box == "Save Changes?" && m.answer == forms::Answer::no) return {};
    if (!editor.ok) return {};                                                   // said when it was switched off
    if (m.screen == 1700 && (m.answer || h.acts("frmRequest", "ok"))) return {}; // stores nothing, as this screen does
    if (m.storedAs && m.storedAs->content() == editor.content()) return {};
    if (m.storedAs) return "lost: what was typed after a commit that nobody heard of";
    return "lost: the editor closed over what was typed, " +
           (h.before.box.empty() ? "without a question" : "said \"" + h.before.box + "\"");
}

Broken judgeLines(const Happening& h) {
    const EditorView &was = h.before.editor, &is = h.after.editor;
    if (!was.shown || !h.memory.opening) return {};
    if (!is.shown) return judgeClosing(h);
    const bool yes = h.memory.answer == forms::Answer::yes;
    // A line that is far too much is asked about before it is written.
    if (h.acts("frmRequestDetail", "ok") || (yes && h.before.box.starts_with("Is the quantity"))) {
        const std::size_t more = is.lines.size() - was.lines.size();
        if (is.lines.size() < was.lines.size() || more > 1)
            return "lines: OK made " + std::to_string(is.lines.size()) + " of " + std::to_string(was.lines.size());
        for (std::size_t i = 0; i < was.lines.size(); ++i)
            if (is.lines[i] != was.lines[i] && (more == 1 || static_cast<int>(i) + 1 != was.selected))
                return "lines: OK changed another line";
    } else if (yes && h.before.box.starts_with("Are you sure you want to delete \r")) {
        Lines wanted = was.lines;
        if (was.selected > 0) wanted.erase(wanted.begin() + was.selected - 1);
        for (std::size_t i = 0; i < wanted.size(); ++i) wanted[i][0] = std::to_string(i + 1);
        if (is.lines != wanted) return "lines: not just the one was removed";
    } else if (yes && h.before.box.starts_with("Already entered data")) {
        if (!is.lines.empty()) return "lines: they stay after the shop was changed";
    } else if (is.lines != was.lines) {
        return "lines: they changed by themselves, " + std::to_string(was.lines.size()) + " to " +
               std::to_string(is.lines.size());
    }
    if (h.after.waiting == support::Waiting::form && is.shop != -1 && is.shop != h.after.shopInForce)
        return "shop: the box shows " + std::to_string(is.shop) + ", in force is " +
               std::to_string(h.after.shopInForce);
    for (std::size_t i = 0; i < is.lines.size(); ++i) {
        std::string tip = is.tips[i];
        std::erase(tip, ',');
        if (!tip.empty() && thousandths(tip) != thousandths(is.lines[i][3])) return "tip: of a line's former quantity";
    }
    if (h.boxes.empty() && !h.lostBox() && was.ok) {
        if (!is.ok) return "ok: the editor's went off, and nobody says why";
        if (h.acts("frmRequest", "ok") && h.after.atForm("frmRequest")) return "ok: the editor's does nothing";
    }
    return {};
}

Broken judgeOpening(const Happening& h) {
    const EditorView& editor = h.after.editor;
    const Memory& m = h.memory;
    if (m.opening || !h.after.atForm("frmRequest")) return {};
    if (m.command == 'N') {
        static const char* const dates[] = {"31/03/2026", "31/03/2026", "31/03/26", "2026. 03. 31."};
        if (!editor.lines.empty()) return "opening: a new request has lines";
        if (!editor.remarks.empty() || editor.ticked || editor.shop != -1 || !editor.number.empty())
            return "opening: a new request is not empty";
        if (!m.badDate && editor.date != dates[m.locale]) return "opening: the date is " + editor.date;
        if (!editor.ok && h.calm()) return "opening: a new request cannot be saved";
        return {};
    }
    if (m.command != 'E') return "opening: the editor came by itself";
    if (h.wasInTransaction) return {}; // a till reads what it could neither commit nor take back
    const Key key{m.shop, m.request};
    const auto stored = h.storedAfter.headers.find(key);
    if (stored == h.storedAfter.headers.end()) return "opening: there is no request " + std::to_string(m.request);
    if (editor.number != stored->second.at("number"))
        return "opening: the number is " + editor.number + ", not " + stored->second.at("number");
    if (!editor.ok) {
        if (finality(stored->second).empty() && !m.rowCancelled && m.boxes == 0 && !h.lostBox())
            return "opening: OK is off, and nobody says why";
        return editor.dateLocked ? "" : kTypedOver;
    }
    // That it was cancelled meanwhile is not looked up before the save.
    if (!m.rivalSince && (stored->second.at("confirmed") == "1" || stored->second.at("used") == "1" || m.rowCancelled))
        return "opening: a request that is final may be changed";
    const auto lines = h.storedAfter.lines.find(key);
    std::vector<StoredLine> shown;
    for (const auto& line : editor.lines) {
        const Item* item = itemOf(h, std::atoi(line[5].c_str()));
        if (!item || line[1] != item->code || line[2] != item->description || line[7] != item->unit)
            return "opening: a line's code, description or unit is not its item's";
        shown.push_back({std::atoi(line[5].c_str()), std::atoi(stored->second.at("supplying shop").c_str()),
                         thousandths(line[3]), thousandths(line[4]), thousandths(line[6])});
    }
    std::sort(shown.begin(), shown.end());
    if (!m.rivalSince && shown != (lines == h.storedAfter.lines.end() ? std::vector<StoredLine>{} : lines->second))
        return "opening: OK is on over lines that are not the stored ones";
    return editor.dateLocked ? "" : kTypedOver;
}

Broken judgeRegister(const Happening& h) {
    const RegisterView& is = h.after.master;
    const Memory& m = h.memory;
    if (!is.shown || !h.after.atForm("frmMaster")) return {};
    const bool any = is.row >= 1 && is.row <= static_cast<int>(is.rows.size());
    const auto row = any ? is.rows[static_cast<std::size_t>(is.row) - 1] : Row(9);
    const bool has = !row.empty() && !row[0].empty();
    for (const char letter : {'N', 'E', 'D', 'P'}) {
        const bool wanted = h.clerk.company.may(m.user, m.screen, letter) && (letter == 'N' || has) &&
                            (letter != 'D' || (row.size() > 4 && row[4] == "No"));
        const bool on = is.on.find(letter) != std::string::npos;
        if (on && !wanted && !m.switched) return std::string("rights: on is ") + letter;
        if (!on && wanted && m.rightsRead) return std::string("rights: off is ") + letter;
    }
    // A till lists what it could neither commit nor take back.
    if (h.verb == "shows" && h.calm() && !h.rivalCame && !h.wasInTransaction) {
        std::vector<std::string> wanted, shown;
        for (const auto& [key, header] : h.storedAfter.headers)
            if (key.first == m.shop && header.at("type") == (m.screen == 1611 ? "s" : "r"))
                wanted.push_back(std::to_string(key.second));
        if (wanted.empty()) wanted.push_back("");
        for (const auto& one : is.rows) shown.push_back(one.empty() ? "" : one[0]);
        // A company that was closed later than the request hides it; new ones are of the processing date.
        if (!m.badDate && shown != wanted) return "register: it does not list this session's requests";
        if ((m.screen == 1611) != (is.caption == "Inter Division Sales Request"))
            return "register: the caption is " + is.caption;
    }
    if (h.storedBefore.headers != h.storedAfter.headers && h.calm()) {
        for (const auto& [key, header] : h.storedAfter.headers) {
            const auto old = h.storedBefore.headers.find(key);
            if (key.first != m.shop || (old != h.storedBefore.headers.end() && old->second == header)) continue;
            const auto found = std::find_if(is.rows.begin(), is.rows.end(),
                                            [&](const auto& one) { return one[0] == std::to_string(key.second); });
            if (found == is.rows.end())
                return m.command == 'N' && header.at("date") < "66400000" ? ""
                                                                          : "register: the saved request is not in it";
            if ((*found)[1] != header.at("number") || (*found)[5] != basic::trim(header.at("remarks")) ||
                ((*found)[4] == "Yes") != (header.at("cancelled") == "1") ||
                ((*found)[7] == "Yes") != (header.at("confirmed") == "1"))
                return "register: the row of the saved request is not up to date";
        }
    }
    if (h.acts("frmMaster", "sorts") && h.calm() && m.said.ends_with("picks Request Date")) {
        // By the ids, which rise with the dates.
        const double sign = is.descends ? -1 : 1;
        for (std::size_t i = 1; i < is.rows.size(); ++i)
            if (sign * number(is.rows[i - 1][0]) > sign * number(is.rows[i][0]))
                return "register: it is not sorted as asked";
    }
    return {};
}

/// The line that OK wrote from what line entry showed.
Broken judgeWritten(const Happening& h) {
    const Memory& m = h.memory;
    const EntryView& entry = h.before.entry;
    const Lines &was = h.before.editor.lines, &is = h.after.editor.lines;
    const bool added = is.size() > was.size();
    std::size_t at = added ? is.size() - 1 : 0;
    while (!added && at < is.size() && is[at] == was[at]) ++at;
    if (at >= is.size()) return {};
    const auto& line = is[at];
    const Item* item = itemOf(h, entry.item);
    if (!item || line[5] != std::to_string(entry.item)) return "line: its item is not the one shown";
    if (line[1] != item->code || line[2] != item->description) return "line: code " + line[1] + " beside " + line[2];
    // Where the unit could not be read, the line stands without it.
    if (!line[7].empty() && line[7] != item->unit) return "line: its unit is not its item's";
    const std::pair<std::string, std::size_t> boxes[] = {
        {entry.quantity, 3}, {entry.bad, 4}, {m.screen == 1611 ? entry.price : "", 6}};
    for (const auto& [box, column] : boxes)
        if (const auto typed = thousandths(plain(box, m)); typed >= 0 && typed != thousandths(line[column]))
            return "quantity: " + box + " became " + line[column];
    if (m.packs.first == entry.quantity && differ(m.packs.second, number(line[3]), 0.006))
        return "quantity: packs read " + std::to_string(m.packs.second) + ", the line has " + line[3];
    if (m.screen == 1507 && added && !line[6].empty()) return "price: a line without prices got " + line[6];
    return {};
}

Broken judgeEntry(const Happening& h) {
    const EntryView& is = h.after.entry;
    const Memory& m = h.memory;
    if (h.acts("frmRequestDetail", "ok") && h.after.editor.shown) {
        if (const Broken broken = judgeWritten(h); !broken.empty()) return broken;
        const EntryView& was = h.before.entry;
        const bool nothing = h.after.atForm("frmRequestDetail") && h.boxes.empty() && !h.lostBox() &&
                             h.before.editor.lines == h.after.editor.lines && was.quantity == is.quantity &&
                             was.item == is.item && h.before.editor.selected == h.after.editor.selected;
        if (nothing) return "ok: line entry's does nothing";
    }
    const bool again = h.acts("FrmFetch", "again");
    if (again || h.acts("FrmFetch", "searches")) {
        const std::string sought = again && h.before.searchText.empty() ? "" : basic::trim(m.sought);
        std::string text = sought; // the server takes two other characters for apostrophes
        for (const char* apostrophe : {"'", "\xCA\xBC", "\xEF\xBC\x87"})
            text = basic::replaceAll(text, apostrophe, "''");
        text = " like '%" + text + "%'";
        for (const std::string& statement : h.clerk.sent)
            if (const auto at = statement.find(" like '%");
                at != std::string::npos && !statement.substr(at).starts_with(text))
                return "search: " + sought + " is sought as " + statement.substr(at);
    }
    if (!is.shown || h.after.waiting != support::Waiting::form || h.after.form != "frmRequestDetail") return {};
    const Item* item = itemOf(h, is.item);
    if (is.item != 0) {
        if (!item || is.text != item->description)
            return "item: " + is.text + " is not the description of " + std::to_string(is.item);
        for (const auto& [id, quantity] : is.packs)
            if (!item->packs.contains(id)) return "packs: they are another item's";
        const double price = number(is.price), wanted = number(h.clerk.company.price(is.item, m.shop, m.screen));
        if (m.screen == 1611 && is.newLine && !m.typedPrice && price != 0 && differ(price, wanted))
            return "price: " + is.price + " beside " + is.text;
    } else if (is.newLine && is.text.empty()) {
        if (!is.packs.empty()) return "packs: of no item";
        if (!m.typedPrice && number(is.price) != 0 && m.screen == 1611) return "price: " + is.price + " beside no item";
        if (!m.typedQuantity && !is.quantity.empty()) return "quantity: " + is.quantity + " beside no item";
    }
    if (!m.meant.empty() && std::find(m.meant.begin(), m.meant.end(), is.item) == m.meant.end())
        return "item: the scanned code named " + std::to_string(m.meant.back()) + ", shown is " +
               std::to_string(is.item);
    const bool known = m.locale % 2 == 1 || m.typed.find(',') == std::string::npos; // the filter may keep a "," out
    if (const std::string typed = plain(m.typed, m); !typed.empty() && known && h.boxes.empty() && h.calm()) {
        const std::string& box = h.verb == "bad" ? is.bad : h.verb == "price" ? is.price : is.quantity;
        if (differ(number(plain(box, m)), number(typed))) return "quantity: typed " + typed + ", the box has " + box;
    }
    if (h.verb == "enters" && h.calm() && item && thousandths(is.quantity) > 0)
        for (const auto& [id, quantity] : is.packs)
            if (!quantity.empty() && differ(number(quantity), number(is.quantity) / item->packs.at(id), 0.006))
                return "packs: " + quantity + " of " + is.quantity;
    if (is.priceShown != (m.screen == 1611))
        return is.priceShown ? "price: shown on a screen without prices" : "price: not shown";
    return {};
}

} // namespace

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

} // namespace endurance::clerk
