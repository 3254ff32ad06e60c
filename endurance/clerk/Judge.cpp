// Rules on what is stored, and on who hears of failures.
#include "endurance/clerk/Judge.h"

#include "basic/Calendar.h"
#include "basic/Text.h"
#include "sandbox/database/Errors.h"

#include <algorithm>
#include <cmath>
#include <set>

namespace endurance::clerk {

bool Happening::said(const std::string& beginning) const {
    return std::any_of(boxes.begin(), boxes.end(), [&](const auto& box) { return box.text.starts_with(beginning); });
}

Broken judge(const Happening& h, Company& company) {
    for (const auto& rule : {judgeStored, judgeLines, judgeOpening, judgeRegister, judgeEntry, judgeReports})
        if (const Broken broken = rule(h, company); !broken.empty()) return broken;
    return {};
}

namespace {

std::string keyText(const Key& key) { return std::to_string(key.second) + " of shop " + std::to_string(key.first); }

/// What the editor's lines are in the tables.
std::vector<StoredLine> asStored(const EditorView& editor, int screen) {
    std::vector<StoredLine> lines;
    for (const auto& line : editor.lines)
        lines.push_back({std::atoi(line[5].c_str()), editor.shop, thousandths(line[3]), thousandths(line[4]),
                         screen == 1611 ? thousandths(line[6]) : 0});
    std::sort(lines.begin(), lines.end());
    return lines;
}

Broken judgeAudit(const Happening& h, const std::string& id, const std::string& number, char action,
                  const std::vector<AuditRecord>& added) {
    const Memory& m = h.memory;
    if (added.size() != 1) return "audit: " + std::to_string(added.size()) + " records of one save";
    const AuditRecord wanted{std::to_string(kCompanyId),
                             std::to_string(m.shop),
                             std::to_string(m.user),
                             std::to_string(m.screen),
                             id,
                             number,
                             std::string(1, action),
                             m.minute};
    const AuditRecord& is = added.front();
    if (is.minute != wanted.minute)
        return "audit: the time is " + std::to_string(wanted.minute - is.minute) + " minutes before the command began";
    if (is != wanted)
        return "audit: the record is of user " + is.user + ", shop " + is.shop + ", screen " + is.screen +
               ", document " + is.documentId + " " + is.documentNo + " " + is.action;
    return {};
}

Broken judgeHeader(const Header& is, const Header& wanted) {
    const struct {
        const char* name;
        std::string Header::*field;
    } fields[] = {
        {"number", &Header::number},      {"date", &Header::date},           {"supplying shop", &Header::toShop},
        {"remarks", &Header::remarks},    {"user", &Header::addedBy},        {"changing user", &Header::changedBy},
        {"confirmed", &Header::finished}, {"count", &Header::count},         {"type", &Header::type},
        {"used", &Header::used},          {"cancelled", &Header::cancelled}, {"reason", &Header::reason}};
    for (const auto& field : fields)
        if (is.*field.field != wanted.*field.field)
            return std::string("stored: the ") + field.name + " is \"" + is.*field.field + "\", not \"" +
                   wanted.*field.field + "\"";
    return {};
}

} // namespace

Broken judgeStored(const Happening& h, Company& company) {
    const Snapshot &was = h.storedBefore, &is = h.storedAfter;
    const Memory& m = h.memory;
    std::set<Key> changed;
    for (const auto& [key, header] : is.headers)
        if (const auto old = was.headers.find(key); old == was.headers.end() || old->second != header)
            changed.insert(key);
    for (const auto& [key, header] : was.headers)
        if (!is.headers.contains(key)) return "stored: the header of " + keyText(key) + " is gone";
    for (const auto* one : {&was, &is})
        for (const auto& [key, lines] : one->lines) {
            const Snapshot& other = one == &was ? is : was;
            if (const auto found = other.lines.find(key); found == other.lines.end() || found->second != lines)
                changed.insert(key);
        }
    const std::vector<AuditRecord> audit(
        is.audit.begin() + static_cast<long>(std::min(was.audit.size(), is.audit.size())), is.audit.end());
    if (changed.empty()) {
        if (audit.empty()) return {};
        if (m.command == 'D') return "final: a cancelled request was cancelled again";
        // An edit that changes nothing is a save all the same.
        if (m.command != 'E' || !h.before.editor.shown) return "audit: a record of a save that is none";
        return judgeAudit(h, std::to_string(m.request), m.number, 'E', audit);
    }
    if (changed.size() > 1) return "stored: two requests changed at once";
    const Key key = *changed.begin();
    if (key.first != m.shop) return "stored: a request of another shop changed, " + keyText(key);
    const Header& header = is.headers.at(key);
    const auto old = was.headers.find(key);
    const auto userName = company.masters().users.find({m.shop, m.user});
    const std::string user = userName == company.masters().users.end() ? "" : userName->second;
    const std::vector<StoredLine> lines = is.lines.contains(key) ? is.lines.at(key) : std::vector<StoredLine>{};

    if (m.command == 'D') {
        if (old == was.headers.end() || key.second != m.request) return "stored: a deletion changed " + keyText(key);
        if (old->second.finished == "1") return "final: a confirmed request was cancelled";
        if (old->second.used == "1") return "final: a used request was cancelled";
        if (old->second.cancelled == "1") return "final: a cancelled request was cancelled again";
        Header wanted = old->second;
        wanted.cancelled = "1";
        wanted.reason = basic::left(basic::trim(user), 20) + ":" + basic::left(basic::trim(m.reason), 230);
        if (const Broken broken = judgeHeader(header, wanted); !broken.empty()) return broken;
        if (!was.lines.contains(key) ? !lines.empty() : was.lines.at(key) != lines)
            return "stored: a deletion changed lines";
        return judgeAudit(h, std::to_string(key.second), header.number, 'D', audit);
    }
    if (!h.before.editor.shown || (m.command != 'N' && m.command != 'E')) return "stored: nobody saved " + keyText(key);
    const EditorView& editor = h.before.editor;
    Header wanted;
    if (m.command == 'N') {
        if (old != was.headers.end()) return "stored: a new request took the place of " + keyText(key);
        int highest = 0;
        for (const auto& [one, ignored] : was.headers)
            if (one.first == m.shop) highest = std::max(highest, one.second);
        if (key.second != highest + 1)
            return "numbers: the id is " + std::to_string(key.second) + ", not " + std::to_string(highest + 1);
        wanted.number = nextNumber(was, m.shop, company.prefix(m.shop, m.screen));
        wanted.date = std::to_string(m.typedDate.value_or(std::lround(basic::dateOf(2026, 3, 31).days * 1440)));
        wanted.toShop = std::to_string(editor.shop);
        wanted.addedBy = user;
        wanted.type = m.screen == 1611 ? "s" : "r";
        wanted.used = wanted.cancelled = "0";
        if (header.number != wanted.number) return "numbers: the number is " + header.number + ", not " + wanted.number;
    } else {
        if (old == was.headers.end() || key.second != m.request)
            return "stored: an edit changed " + keyText(key) + ", not " + std::to_string(m.request);
        if (old->second.finished == "1") return "final: an edit changed a confirmed request";
        if (old->second.used == "1") return "final: an edit changed a used request";
        if (old->second.cancelled == "1") return "final: an edit changed a cancelled request";
        wanted = old->second;
        wanted.changedBy = user;
    }
    wanted.remarks = editor.remarks;
    wanted.finished = editor.ticked ? "1" : "0";
    wanted.count = std::to_string(editor.lines.size());
    if (const Broken broken = judgeHeader(header, wanted); !broken.empty()) return broken;
    std::vector<StoredLine> shown = asStored(editor, m.screen);
    if (m.command == 'E')
        for (StoredLine& line : shown) line.toShop = std::atoi(header.toShop.c_str());
    if (shown != lines) return "stored: the lines are not those shown";
    return judgeAudit(h, std::to_string(key.second), header.number, m.command, audit);
}

namespace {

// The routines that report, letter for letter.
bool reportsAs(const Report& report) {
    static const std::map<std::string, std::set<std::string>> routines{
        {"frmMaster ",
         {"Form_Load ", "Form_Activate ", "flexMaster_RowColChange", "flexMaster_MouseMove", "flexMaster_MouseUp",
          "cboColNames_Click", "txtsearch_KeyUp", "cmdnew_Click ", "CmdEdit_Click ", "CmdDelete_Click ",
          "cmdPrev_Click", "mnurefresh_Click", "Form_KeyPress", "GridPopulate", "USerRights"}},
        {"frmRequest ",
         {"Form_Load ", "Form_Activate ", "Form_QueryUnload", "cmdOk_Click ", "cboShop_Click ",
          "txtrequestDate_LostFocus", "lvwrequest_DblClick", "lvwrequest_ItemClick", "lvwrequest_KeyDown ",
          "lvwrequest_KeyPress ", "lvwrequest_MouseDown", "mnuAdd_Click", "mnuEdit_Click ", "mnudel_Click "}},
        {"frmRequestDetail ",
         {"cmdOk_Click ",          "Form_Load ",           "Form_Activate ",           "Form_KeyDown",
          "cmdbarcode_KeyPress",   "cmdFirst_Click ",      "cmdPrev_Click ",           "cmdNext_Click ",
          "cmdLast_Click ",        "txtQuantity_KeyPress", "txtBadQuantity_KeyPress",  "txtsellingprice_KeyPress",
          "txtQuantity_MouseMove", "txtQuantity_MouseUp",  "txtBadQuantity_MouseMove", "txtBarcode_KeyPress ",
          "cboItem_Click ",        "cboItem_Validate",     "cmdbarcode_Click",         "QuickFetch",
          "fnGetDeptCurrID"}},
        {"frmscanBc ", {"txtBarcode_KeyPress ", "Form_Load "}},
        {"FrmFetch", {"Form_Load ", "Form_Activate ", "cmdOk_Click ", "txtFetch_KeyPress ", "txtFetch_KeyUp "}},
        {"frmcancelreason ", {"Form_Load ", "cmdOk_Click ", "Form_QueryUnload"}},
        {"frmPrint", {"cmdOK_Click"}},
        {"frmPrint ", {"Form_Load"}},
        {"basGRtoShop ",
         {"UpdateEditedRow", "LoadListViewLayout", "FillPackingTypes", "FillPackingQuantities", "fnGetSellingPrice",
          "fnGetUnitCode"}},
        {"basGoodsPurchase", {"FileCode "}},
    };
    const auto found = routines.find(report.module);
    return found != routines.end() && found->second.contains(report.routine);
}

} // namespace

Broken judgeReports(const Happening& h, Company& company) {
    const auto shownTimes = [&](const std::string& text) {
        return std::count_if(h.boxes.begin(), h.boxes.end(),
                             [&](const auto& box) { return box.text.find(text) != std::string::npos; });
    };
    for (const Strike& strike : h.strikes) {
        const auto times = shownTimes(strike.text);
        if (times > 1) return "reports: a failure is reported " + std::to_string(times) + " times, " + strike.text;
        // Where it cannot be told whether something changed, the question says enough.
        const bool asked = strike.text.starts_with("DataChanged") && h.said("Save Changes?");
        if (times == 0 && !strike.quiet && !asked && !h.lostBox)
            return "reports: nobody heard of a failure, " + strike.text;
    }
    const bool stuck =
        std::any_of(h.strikes.begin(), h.strikes.end(), [](const Strike& s) { return s.text.starts_with("rollback"); });
    const auto name = company.masters().users.find({h.memory.shop, h.memory.user});
    for (const Report& report : h.reports) {
        if (!report.user.empty() && (name == company.masters().users.end() || report.user != name->second))
            return "reports: by " + report.user;
        // Printing has routines of its own, which another proof holds.
        if (h.before.form != "frmPrint" && !reportsAs(report))
            return "reports: \"" + report.module + "\", \"" + report.routine + "\" is no routine";
        const bool ofStrike = std::any_of(h.strikes.begin(), h.strikes.end(),
                                          [&](const Strike& s) { return report.description == s.text; });
        const bool consequence = h.crippled.contains(report.module) || h.crippled.contains("unheard") ||
                                 (h.crippled.contains("frmMaster ") && report.module == "basGRtoShop ") ||
                                 (!h.crippled.empty() && report.number == 91);
        const bool stillOpen = h.wasInTransaction && report.number == sandbox::kTransactionInTransaction;
        // Where somebody else was quicker, what could not be taken back is in the way of another try.
        const bool tookOver =
            stuck && h.rivalCame &&
            (report.number == sandbox::kConstraintViolated || report.number == sandbox::kTransactionInTransaction);
        if (!ofStrike && !consequence && !stillOpen && !tookOver && !h.dead &&
            !(h.memory.badDate && (report.number == 5 || report.number == 6)))
            return "reports: without a failure, " + report.module + report.routine + ": " +
                   std::to_string(report.number) + " " + report.description;
    }
    if (h.openAtBegin) return "order: a record set is open while a transaction begins";
    const bool saved = h.before.form == "frmRequest" && h.after.waiting == support::Waiting::form;
    if (saved && !stuck && !h.wasInTransaction && !h.dead && h.clerk.connection->isOpen() &&
        h.clerk.connection->database().inTransaction())
        return "order: a save left its transaction open";
    return {};
}

} // namespace endurance::clerk
