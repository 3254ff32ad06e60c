// What must hold after each step, by the rules of the screens and not by how they are made.
#include "endurance/clerk/Run.h"

#include "basic/Calendar.h"
#include "basic/Text.h"
#include "sandbox/database/Errors.h"
#include "screens/register/frmMaster.h"

#include <algorithm>
#include <cmath>

namespace endurance::clerk {
namespace {

using Lines = std::vector<Row>;
/// Columns of the editor's lines.
enum Column { kNumber, kCode, kDescription, kGood, kBad, kItem, kPrice, kUnit };

template <class Number> std::string text(Number number) { return std::to_string(number); }

/// What the editor's lines are in the tables.
Lines asStored(const FormView& editor, const std::string& toShop, bool priced) {
    Lines lines;
    for (const Row& line : editor.rows)
        lines.push_back(storedLine(line[kItem], toShop, line[kGood], line[kBad], priced ? line[kPrice] : "0"));
    std::sort(lines.begin(), lines.end());
    return lines;
}

Broken judgeStored(const Happening& h, const Memory& m) {
    const Snapshot &was = h.storedBefore, &is = h.storedAfter;
    const Company& company = h.clerk.company;
    std::set<Key> changed;
    for (const Snapshot* side : {&was, &is})
        for (const auto& [key, request] : side->requests)
            if (was.at(key) != is.at(key)) changed.insert(key);
    const auto records = is.audit.size() - was.audit.size();
    if (changed.empty() && records == 0) return {};
    if (changed.size() > 1) return "stored: two requests changed at once";

    // A new request that was stored while the editor stayed open is a stored one from then on.
    const bool adds = m.command == 'N' && !m.storedKey;
    const Key mine = m.storedKey.value_or(Key{m.shop, m.request});
    const Key key = changed.empty() ? mine : *changed.begin();
    const bool saves = m.command == 'N' || m.command == 'E';
    const FormView& editor = h.before.editor;
    const Request &old = was.at(key), &now = is.at(key);
    if (key.first != m.shop) return "stored: a request of another shop changed";
    if (now.header.empty()) return "stored: a header is gone";
    if (m.command != 'D' && !(saves && editor.shown)) return "stored: nobody saved that";
    if (!company.may(m.user, m.screen, m.command)) return std::string("rights: stored without ") + m.command;
    if (saves && m.screen == 1700) return "stored: by a screen that stores nothing";

    const std::string user = company.userName(m.user, m.shop);
    auto wanted = old.header;
    if (adds) {
        if (key.second != was.highestId(m.shop) + 1) return "numbers: the id is not the next one";
        wanted = {{"srhrequestno", nextNumber(was, m.shop, company.prefix(m.shop, m.screen))},
                  {"srhrecaddUser", user},
                  {"srhtype", m.screen == 1611 ? "s" : "r"},
                  {"srhused", "0"},
                  {"SRHcancelled", "0"}};
    } else {
        if (old.header.empty() || key != mine) return "stored: another request changed than the one in hand";
        if (const std::string final = finality(old); !final.empty())
            return std::string("final: ") + m.command + " changed a request with " + final;
        if (m.command == 'D') {
            wanted["SRHcancelled"] = "1";
            wanted["srhcancelledRemarks"] =
                basic::left(basic::trim(user), 20) + ":" + basic::left(basic::trim(m.reason), 230);
        } else {
            wanted["srhrecmoduser"] = user;
            if (wanted["updatetime"] = now.header.at("updatetime"); wanted["updatetime"].empty())
                return "stored: without the time of the change";
        }
    }
    if (m.command == 'N') {
        wanted["srhrequestdate"] = m.typedDate.empty() ? minutes(basic::dateOf(2026, 3, 31)) : m.typedDate;
        wanted["srhtoShopid"] = editor["cboShop.id"];
    }
    if (saves) {
        wanted["SRHremarks"] = editor["txtRemarks"];
        wanted["srhTransfinished"] = editor["chkTransFinished"];
        wanted["srhNoofDetails"] = text(editor.rows.size());
    }
    for (const auto& [name, value] : now.header)
        if (value != wanted[name]) return "stored: " + name + " is \"" + value + "\", not \"" + wanted[name] + "\"";
    if (now.lines != (saves ? asStored(editor, now.header.at("srhtoShopid"), m.screen == 1611) : old.lines))
        return "stored: the lines are not those shown";

    if (records != 1) return "audit: " + text(records) + " records of one save";
    const Row& record = is.audit.back();
    const std::string action = m.storedKey && record[6] == "E" ? "E" : std::string(1, m.command);
    if (record != Row{text(kCompanyId), text(m.shop), text(m.user), text(m.screen), text(key.second),
                      now.header.at("srhrequestno"), action, m.minute})
        return "audit: of " + record[6] + " " + record[4] + ", " + record[5] + " by " + record[2] + " is another one's";
    return {};
}

/// Without the right nothing opens and nothing is sent, whatever is pressed.
Broken judgeRights(const Happening& h, const Memory& m) {
    if (m.pressed == 0 || h.clerk.company.may(m.user, m.screen, m.pressed)) return {};
    const std::string without = std::string("rights: without ") + m.pressed;
    for (const std::string& sent : h.clerk.sent)
        if (sent.starts_with("BEGIN") || sent.starts_with("update")) return without + " was sent " + sent;
    if (h.after.waiting == Waiting::form && h.after.form != "frmMaster") return without + " came " + h.after.form;
    return {};
}

/// Whether there is a reason for the report.
bool explained(const Report& report, const Happening& h, const Memory& m) {
    using namespace sandbox;
    constexpr std::size_t kTooLong = 300; // digits, which a program alone can put there
    const auto& strikes = h.clerk.strikes;
    const FormView& entry = h.before.entry;
    const bool ofStrike =
        std::any_of(strikes.begin(), strikes.end(), [&](const Strike& one) { return report.description == one.text; });
    const bool consequence = h.crippled.contains(report.module) || h.crippled.contains("unheard") ||
                             (h.crippled.contains("frmMaster ") && report.module == "basGRtoShop ") ||
                             (!h.crippled.empty() && report.number == 91);
    const bool stillOpen = h.wasInTransaction && report.number == kTransactionInTransaction;
    // Where somebody else was quicker, what could not be taken back is in the way of another try.
    const bool inTheWay =
        h.struck("rollback") && (report.number == kConstraintViolated || report.number == kTransactionInTransaction);
    const bool tookOver = h.rivalCame && (report.number == kRowChanged || inTheWay);
    bool tooBig = false;
    for (const char* box : {"txtQuantity", "txtBadQuantity", "txtsellingprice"})
        tooBig = tooBig || (report.number == 6 && entry[box].size() > kTooLong);
    const bool badDate = m.badDate && (report.number == 5 || report.number == 6);
    return ofStrike || consequence || tooBig || stillOpen || tookOver || h.dead || badDate;
}

Broken judgeReports(const Happening& h, const Memory& m) {
    for (const Strike& strike : h.clerk.strikes) {
        const auto times = std::count_if(h.boxes.begin(), h.boxes.end(), [&](const auto& box) {
            return box.text.find(strike.text) != std::string::npos;
        });
        if (times > 1) return "reports: a failure is reported " + text(times) + " times, " + strike.text;
        // Where it cannot be told whether something changed, the question says enough.
        const bool asked =
            strike.text.starts_with("DataChanged") && !h.boxes.empty() && h.boxes.back().text == "Save Changes?";
        if (times == 0 && !strike.quiet && !asked && !h.lostBox())
            return "reports: nobody heard of a failure, " + strike.text;
    }
    for (const Report& report : h.clerk.reports) {
        if (!report.user.empty() && report.user != h.clerk.company.userName(m.user, m.shop))
            return "reports: by " + report.user;
        if (!explained(report, h, m))
            return "reports: without a failure, " + report.module + report.routine + ": " + text(report.number) + " " +
                   report.description;
    }
    for (const forms::Message& box : h.boxes)
        if (box.text.empty()) return "reports: a box without a text";
    if (h.clerk.openAtBegin) return "order: a record set is open while a transaction begins";
    const bool saved = h.before.form == "frmRequest" && h.after.waiting == Waiting::form;
    if (saved && !h.struck("rollback") && !h.wasInTransaction && !h.dead && h.clerk.inTransaction())
        return "order: a save left its transaction open";
    return {};
}

// What the screens show, and what becomes of typed lines.

/// The number in a box, with a "." before the decimals; a "," that is not the locale's ends it.
std::string plain(std::string typed, const Memory& m) {
    if (m.locale % 2 == 0) return typed.substr(0, typed.find(','));
    std::replace(typed.begin(), typed.end(), ',', '.');
    return typed;
}
double number(const std::string& text) { return std::atof(text.c_str()); }
bool differ(double a, double b, double most = 0.0005) { return std::fabs(a - b) > most; }

bool sameBoxes(const FormView& a, const FormView& b) {
    return a["txtRemarks"] == b["txtRemarks"] && a["txtrequestDate"] == b["txtrequestDate"] &&
           a["chkTransFinished"] == b["chkTransFinished"] && a["cboShop.id"] == b["cboShop.id"];
}

Broken judgeClosing(const Happening& h, const Memory& m) {
    const FormView& editor = h.before.editor;
    if (!m.typedLines && sameBoxes(editor, *m.opening))
        return {}; // a line that was only removed is asked about by nobody
    if (h.storedBefore.audit.size() != h.storedAfter.audit.size()) return {};
    if (h.before.box == "Save Changes?" && m.answer == forms::Answer::no) return {};
    if (!editor.can("cmdOk")) return {};                                         // said when it was switched off
    if (m.screen == 1700 && (m.answer || h.acts("frmRequest", "ok"))) return {}; // stores nothing, as this screen does
    if (m.storedAs && sameBoxes(editor, *m.storedAs) && editor.rows == m.storedAs->rows) return {};
    if (m.storedAs) return "lost: what was typed after a commit that nobody heard of";
    return "lost: the editor closed over what was typed, " +
           (h.before.box.empty() ? "without a question" : "said \"" + h.before.box + "\"");
}

Broken judgeLines(const Happening& h, const Memory& m) {
    const FormView &was = h.before.editor, &is = h.after.editor;
    if (!was.shown || !m.opening) return {};
    if (!is.shown) return judgeClosing(h, m);
    const auto said = [&](std::string_view question) {
        return m.answer == forms::Answer::yes && h.before.box.starts_with(question);
    };
    const std::string counts = text(was.rows.size()) + " to " + text(is.rows.size());
    // A line that is far too much is asked about before it is written.
    if (h.acts("frmRequestDetail", "ok") || said("Is the quantity")) {
        const std::size_t more = is.rows.size() - was.rows.size();
        if (more > 1) return "lines: by OK from " + counts;
        for (std::size_t i = 0; i < was.rows.size(); ++i)
            if (is.rows[i] != was.rows[i] && (more == 1 || static_cast<int>(i) + 1 != was.row))
                return "lines: OK changed another line";
    } else if (said("Are you sure you want to delete \r")) {
        Lines wanted = was.rows;
        if (was.row > 0) wanted.erase(wanted.begin() + was.row - 1);
        for (std::size_t i = 0; i < wanted.size(); ++i) wanted[i][kNumber] = text(i + 1);
        if (is.rows != wanted) return "lines: not just the one was removed";
    } else if (said("Already entered data")) {
        if (!is.rows.empty()) return "lines: they stay after the shop was changed";
    } else if (is.rows != was.rows) {
        return "lines: they changed by themselves, " + counts;
    }
    const std::string shop = is["cboShop.id"];
    if (h.after.waiting == Waiting::form && !shop.empty() && shop != h.after.shopInForce)
        return "shop: the box shows " + shop + ", in force is " + h.after.shopInForce;
    if (!h.boxes.empty() || h.lostBox() || !was.can("cmdOk")) return {};
    if (!is.can("cmdOk")) return "ok: the editor's went off, and nobody says why";
    if (h.acts("frmRequest", "ok") && h.after.atForm("frmRequest")) return "ok: the editor's does nothing";
    return {};
}

Broken judgeOpening(const Happening& h, const Memory& m) {
    const FormView& editor = h.after.editor;
    if (m.opening || !h.after.atForm("frmRequest")) return {};
    if (m.command == 'N') {
        static const char* const dates[] = {"31/03/2026", "31/03/2026", "31/03/26", "2026. 03. 31."};
        const std::string date = editor["txtrequestDate"], texts = editor["txtRemarks"] + editor["txtRequestNo"];
        if (!editor.rows.empty() || !texts.empty() || !editor["cboShop.id"].empty() ||
            editor["chkTransFinished"] != "0")
            return "opening: a new request is not empty";
        if (!m.badDate && date != dates[m.locale]) return "opening: the date is " + date;
        return editor.can("cmdOk") || !h.calm() ? "" : "opening: a new request cannot be saved";
    }
    if (m.command != 'E') return "opening: the editor came by itself";
    if (h.wasInTransaction) return {}; // a till reads what it could neither commit nor take back
    const Request& stored = h.storedAfter.at({m.shop, m.request});
    if (stored.header.empty()) return "opening: there is no such request";
    if (editor["txtRequestNo"] != stored.header.at("srhrequestno")) return "opening: the number is another one's";
    if (!editor.can("cmdOk")) {
        if (finality(stored).empty() && !m.rowCancelled && m.boxes == 0 && !h.lostBox())
            return "opening: OK is off, and nobody says why";
    } else {
        // That it was cancelled meanwhile is not looked up before the save.
        const std::string final = finality(stored);
        if (!m.rivalSince && (m.rowCancelled || (!final.empty() && final != "SRHcancelled")))
            return "opening: a request that is final may be changed";
        for (const Row& line : editor.rows)
            if (h.clerk.company.item(line[kItem]) != Row{line[kCode], line[kDescription], line[kUnit]})
                return "opening: a line's code, description or unit is not its item's";
        if (!m.rivalSince && asStored(editor, stored.header.at("srhtoShopid"), true) != stored.lines)
            return "opening: OK is on over lines that are not the stored ones";
    }
    return editor.can("txtrequestDate") ? "opening: the date of a stored request can be typed over" : "";
}

Broken judgeRegister(const Happening& h, const Memory& m) {
    const FormView& is = h.after.master;
    if (!h.after.atForm("frmMaster")) return {};
    const bool any = is.row >= 1 && is.row <= static_cast<int>(is.rows.size());
    const Row row = any ? is.rows[static_cast<std::size_t>(is.row) - 1] : Row(9);
    const bool has = !row.empty() && !row[0].empty();
    for (const auto& [letter, button] : {std::pair('N', "cmdnew"), std::pair('E', "CmdEdit"),
                                         std::pair('D', "CmdDelete"), std::pair('P', "cmdPrev")}) {
        const bool wanted = h.clerk.company.may(m.user, m.screen, letter) && (letter == 'N' || has) &&
                            (letter != 'D' || (row.size() > 4 && row[4] == "No"));
        const bool on = is.can(button);
        if (on && !wanted) return std::string("rights: on is ") + letter;
        if (!on && wanted && m.rightsRead) return std::string("rights: off is ") + letter;
    }
    if (!h.calm()) return {};
    // A till lists what it could neither commit nor take back.
    if (h.verb == "shows" && !h.rivalCame && !h.wasInTransaction) {
        Row wanted, shown;
        for (const auto& [key, request] : h.storedAfter.requests)
            if (key.first == m.shop && request.header.at("srhtype") == (m.screen == 1611 ? "s" : "r"))
                wanted.push_back(text(key.second));
        if (wanted.empty()) wanted.push_back("");
        for (const Row& one : is.rows) shown.push_back(one.empty() ? "" : one[0]);
        // A company that was closed later than the request hides it; new ones are of the processing date.
        if (!m.badDate && shown != wanted) return "register: it does not list this session's requests";
    }
    for (const auto& [key, request] : h.storedAfter.requests) {
        const auto& header = request.header;
        if (key.first != m.shop || h.storedBefore.at(key).header == header) continue;
        const auto found =
            std::find_if(is.rows.begin(), is.rows.end(), [&](const Row& one) { return one[0] == text(key.second); });
        if (found == is.rows.end())
            return m.command == 'N' && header.at("srhrequestdate") < "66400000"
                       ? ""
                       : "register: the saved request is not in it";
        const auto yes = [&](const char* flag) { return header.at(flag) == "1" ? "Yes" : "No"; };
        using namespace goodsreq;
        const Row shown{(*found)[kColNumber], (*found)[kColRemarks], (*found)[kColCancelled], (*found)[kColConfirmed]};
        if (shown != Row{header.at("srhrequestno"), basic::trim(header.at("SRHremarks")), yes("SRHcancelled"),
                         yes("srhTransfinished")})
            return "register: the row of the saved request is not up to date";
    }
    return {};
}

/// The line that OK wrote from what line entry showed.
Broken judgeWritten(const Happening& h, const Memory& m) {
    const FormView& entry = h.before.entry;
    const Lines &was = h.before.editor.rows, &is = h.after.editor.rows;
    const bool added = is.size() > was.size();
    std::size_t at = added ? is.size() - 1 : 0;
    while (!added && at < is.size() && is[at] == was[at]) ++at;
    if (at >= is.size()) return {};
    const Row& line = is[at];
    const Row item = h.clerk.company.item(line[kItem]);
    if (item.empty() || line[kItem] != entry["cboItem.id"]) return "line: its item is not the one shown";
    // Where the unit could not be read, the line stands without it.
    if (item != Row{line[kCode], line[kDescription], line[kUnit].empty() ? item[2] : line[kUnit]})
        return "line: code " + line[kCode] + " or unit " + line[kUnit] + " beside " + line[kDescription];
    for (const auto& [box, column] :
         {std::pair("txtQuantity", kGood), std::pair("txtBadQuantity", kBad), std::pair("txtsellingprice", kPrice)})
        if (const auto typed = thousandths(plain(entry[box], m)); typed >= 0 && typed != thousandths(line[column]))
            return "quantity: " + entry[box] + " became " + line[column];
    if (m.packs.first == entry["txtQuantity"] && differ(m.packs.second, number(line[kGood]), 0.006))
        return "quantity: packs read " + text(m.packs.second) + ", the line has " + line[kGood];
    if (m.screen == 1507 && added && !line[kPrice].empty()) return "price: a line without prices got " + line[kPrice];
    return {};
}

/// Texts that are sought go to the server with their apostrophes doubled; it takes two other characters for some.
Broken judgeSearch(const Happening& h, const Memory& m) {
    const bool again = h.acts("FrmFetch", "again");
    if (!again && !h.acts("FrmFetch", "searches")) return {};
    const std::string sought = again && h.before.top["txtFetch"].empty() ? "" : basic::trim(m.sought);
    std::string doubled = sought;
    for (const char* one : {"'", "\xCA\xBC", "\xEF\xBC\x87"}) doubled = basic::replaceAll(doubled, one, "''");
    for (const std::string& statement : h.clerk.sent)
        if (const auto at = statement.find(" like '%");
            at != std::string::npos && !statement.substr(at).starts_with(" like '%" + doubled + "%'"))
            return "search: " + sought + " is sought as " + statement.substr(at);
    return {};
}

Broken judgeEntry(const Happening& h, const Memory& m) {
    const FormView &was = h.before.entry, &is = h.after.entry;
    const std::string id = is["cboItem.id"], shown = is["cboItem"], quantity = is["txtQuantity"];
    if (h.acts("frmRequestDetail", "ok") && h.after.editor.shown) {
        if (const Broken broken = judgeWritten(h, m); !broken.empty()) return broken;
        const bool nothing = h.after.atForm("frmRequestDetail") && h.boxes.empty() && !h.lostBox() &&
                             h.before.editor.rows == h.after.editor.rows && was["txtQuantity"] == quantity &&
                             was["cboItem.id"] == id && h.before.editor.row == h.after.editor.row;
        if (nothing) return "ok: line entry's does nothing";
    }
    if (!h.after.atForm("frmRequestDetail")) return {};
    const Company& company = h.clerk.company;
    const Row item = company.item(id);
    const bool priced = m.screen == 1611, newLine = is.can("txtBarcode");
    const std::string price =
        priced && newLine && !m.typedInto.contains("txtsellingprice") ? is["txtsellingprice"] : "";
    if (!id.empty()) {
        if (item.empty() || shown != item[1]) return "item: " + shown + " is not the description of " + id;
        for (const Row& pack : is.rows)
            if (company.packSize(id, pack[0]).empty()) return "packs: they are another item's";
        if (number(price) != 0 && differ(number(price), number(company.price(id, m.shop, m.screen))))
            return "price: " + price + " beside " + shown;
    } else if (newLine && shown.empty()) {
        if (!is.rows.empty()) return "packs: of no item";
        if (number(price) != 0) return "price: " + price + " beside no item";
        if (!m.typedInto.contains("txtQuantity") && !quantity.empty())
            return "quantity: " + quantity + " beside no item";
    }
    if (!m.meant.empty() && std::find(m.meant.begin(), m.meant.end(), id) == m.meant.end())
        return "item: the scanned code named " + m.meant.back() + ", shown is " + id;
    const auto& [typed, box] = m.typed;
    const bool known = m.locale % 2 == 1 || typed.find(',') == std::string::npos; // the filter may keep a "," out
    if (!plain(typed, m).empty() && known && h.boxes.empty() && h.calm() &&
        differ(number(plain(is[box], m)), number(plain(typed, m))))
        return "quantity: typed " + typed + ", the box has " + is[box];
    if (h.verb == "enters" && h.calm() && !item.empty() && thousandths(quantity) > 0)
        for (const Row& pack : is.rows)
            if (!pack[2].empty() &&
                differ(number(pack[2]), number(quantity) / number(company.packSize(id, pack[0])), 0.006))
                return "packs: " + pack[2] + " of " + quantity;
    if (is.texts.contains("txtsellingprice") != priced)
        return priced ? "price: not shown" : "price: shown on a screen without prices";
    return {};
}

} // namespace

bool Happening::struck(std::string_view what) const {
    return std::any_of(clerk.strikes.begin(), clerk.strikes.end(),
                       [&](const Strike& one) { return one.text.starts_with(what); });
}

Broken judge(const Happening& h) {
    for (const auto& rule :
         {judgeStored, judgeRights, judgeLines, judgeOpening, judgeRegister, judgeSearch, judgeEntry, judgeReports})
        if (const Broken broken = rule(h, h.clerk.memory); !broken.empty()) return broken;
    return {};
}

} // namespace endurance::clerk
