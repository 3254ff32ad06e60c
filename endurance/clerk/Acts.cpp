// What clerks do at each screen, by keys and clicks.
#include "basic/Calendar.h"
#include "basic/Conversion.h"
#include "endurance/Endurance.h"
#include "endurance/clerk/Clerk.h"
#include "screens/fetch/FrmFetch.h"
#include "screens/lines/frmRequestDetail.h"
#include "screens/lines/frmscanBc.h"
#include "screens/register/frmMaster.h"

namespace endurance::clerk {
namespace {

using Does = std::function<bool(Clerk&, const Step&)>;
using Texts = std::vector<std::string>;

/// What is typed for a day, by locale, and the day that is meant.
const std::vector<std::pair<const char*, int>> kDates[] = {
    {{"15/02/2026", 20260215}, {"1/3/2026", 20260301}},
    {{"15/02/2026", 20260215}, {"28/02/2027", 20270228}},
    {{"15/01/30", 20300115}, {"15/02/26", 20260215}, {"1/3/49", 20490301}},
    {{"2026. 02. 15.", 20260215}, {"2026. 12. 01.", 20261201}},
};
const Texts kNumbers{"2", "1", "12", "2.5", "2,5", "0.125", "30", "7", "0", "1000"};
const Texts kSearches{"", "nut", "O'Neil", "8", "no such"};
const Texts kShortcuts{"11", "12", "4711", "18", "99"};

/// A comma for the decimals; two digits for the year; the year first.
const basic::Locale kLocales[] = {{},
                                  {.decimalSeparator = ','},
                                  {.shortDate = "dd/MM/yy"},
                                  {basic::DateOrder::yearMonthDay, '.', "yyyy. MM. dd.", ',', '.'}};

// Acts that differ only in what they are done to.

Does clicksOneOf(const Texts& buttons) {
    return [buttons](Clerk& c, const Step& step) { return c.clicksOn(of(buttons, step.a)); };
}
Does clicksFirstOf(const Texts& buttons) {
    return [buttons](Clerk& c, const Step&) {
        return std::any_of(buttons.begin(), buttons.end(), [&](const auto& button) { return c.clicksOn(button); });
    };
}
Does fills(const char* box, const Texts& texts) {
    return [box, texts](Clerk& c, const Step& step) { return c.fills(box, of(texts, step.a)); };
}
Does enters(const char* box) {
    return [box](Clerk& c, const Step&) {
        if (!c.comesTo(box)) return false;
        c.keys("\r");
        return true;
    };
}
Does picks(const char* box) {
    return [box](Clerk& c, const Step& step) {
        const Texts entries = c.can(box) ? c.user.entries(box) : Texts{};
        if (entries.empty()) return false;
        c.user.picks(box, of(entries, step.a));
        return true;
    };
}
Does picksRow(const char* list) {
    return [list](Clerk& c, const Step& step) { return c.picksRow(list, step.a); };
}
/// One of two keys on one of the editor's lines.
Does onLine(std::int16_t key, std::int16_t otherKey) {
    return [=](Clerk& c, const Step& step) {
        if (!c.picksRow("lvwrequest", step.a)) return false;
        if (c.atForm()) c.user.presses(step.b % 2 ? key : otherKey);
        return true;
    };
}
/// A command of the register on one of its rows. Keys are tried whether or not the button is on.
Does commands(char letter, const char* button, const char* key) {
    return [=](Clerk& c, const Step& step) {
        const std::vector<Row> rows = c.sees().rows;
        if (letter == 'N' ? !c.comesTo("flexMaster") : !c.picksRow("flexMaster", step.a)) return false;
        if (rows.empty() || !c.atForm()) return false;
        const Row& cells = of(rows, step.a);
        Command begun;
        begun.command = letter;
        begun.minute = minutes(c.desktop.time);
        if (letter != 'N' && cells.size() > 4) {
            begun.request = std::atoi(cells[0].c_str());
            begun.rowCancelled = cells[4] == "Yes";
        }
        static_cast<Command&>(c.memory) = begun;
        c.memory.pressed = letter == 'R' ? 'E' : letter;
        if (letter == 'R') {
            c.user.rightClicks("flexMaster");
            if (c.desktop.waiting() != Waiting::menu) return false;
            c.user.choosesMenu("mnurefresh");
            return true;
        }
        if (!*key || step.b % 3 == 0) return c.clicksOn(button);
        if (letter == 'D')
            c.user.presses(forms::kKeyDelete);
        else if (letter == 'E' && step.b % 3 == 1)
            c.user.doubleClicks("flexMaster");
        else
            c.keys(key);
        return true;
    };
}

// Those that are like no other.

bool shows(Clerk& c, const Step& step) {
    Memory& m = c.memory = {};
    m.user = of(kUsers, step.a);
    m.shop = of(kShops, step.b);
    m.screen = of(kScreens, step.b / 3);
    m.locale = step.c % 4;
    m.badDate = step.c / 4 % 12 == 5;
    c.commaIsTyped = step.c / 48 % 3 == 1;
    c.desktop.userLocale = kLocales[m.locale];
    c.component.intUserID = static_cast<std::int16_t>(m.user);
    c.component.intShopid = static_cast<std::int16_t>(m.shop);
    c.component.interfaceid = m.screen;
    c.component.dtProcessDate = m.badDate ? automation::Date{-700000} : basic::dateOf(2026, 3, 31);
    c.opens();
    return true;
}

bool answers(Clerk& c, const Step& step) {
    using forms::Answer;
    const forms::Message& box = c.desktop.message();
    Answer answer = box.buttons == forms::MessageButtons::ok ? Answer::ok : step.a % 2 ? Answer::yes : Answer::no;
    if (box.buttons == forms::MessageButtons::yesNoCancel && step.a % 5 == 4) answer = Answer::cancel;
    c.memory.answer = answer;
    c.desktop.answer(answer);
    return true;
}

/// Text that means something to a database or a program, into a box of the form; past the box's limits by a program.
bool hostile(Clerk& c, const Step& step) {
    std::vector<forms::TextBox*> boxes;
    for (forms::Control* control : c.desktop.topForm()->controls())
        if (auto* box = dynamic_cast<forms::TextBox*>(control); box && !box->locked() && c.can(box->name()))
            boxes.push_back(box);
    if (boxes.empty()) return false;
    forms::TextBox* box = of(boxes, step.c);
    if (!c.comesTo(box->name())) return false;
    const std::string& text = of(hostileTexts(), step.a);
    c.memory.typedInto.insert(box->name());
    if (step.b % 3 == 0) {
        c.desktop.perform([&] { c.desktop.handle([&] { box->setText(text); }); });
    } else {
        c.selectsAll();
        c.user.pastes(text.substr(0, 200));
    }
    if (box->name() == "txtFetch") c.memory.sought = box->text();
    return true;
}

bool sorts(Clerk& c, const Step& step) {
    if (step.b % 4 < 2) c.clicksOn(step.b % 2 ? "optDescend" : "optAscend");
    return picks("cboColNames")(c, step);
}

bool seeks(Clerk& c, const Step& step) {
    return picks("cboSearch")(c, step) && c.fills("txtsearch", step.b % 2 ? "GR/1" : "South");
}

bool addsLines(Clerk& c, const Step& step) {
    if (!c.comesTo("lvwrequest")) return false;
    if (step.b % 3 != 0) return c.keys("\n"), true;
    c.user.rightClicks("lvwrequest");
    if (c.desktop.waiting() == Waiting::menu) c.user.choosesMenu(c.user.menu()[0].enabled ? "mnuAdd" : "mnuCancel");
    return true;
}

bool date(Clerk& c, const Step& step) {
    const auto& [text, day] = of(kDates[c.memory.locale], step.a);
    if (!c.fills("txtrequestDate", text)) return false;
    if (c.user.text("txtrequestDate") == text)
        c.memory.typedDate = minutes(basic::dateOf(day / 10000, day / 100 % 100, day % 100));
    return true;
}

bool scans(Clerk& c, const Step& step) {
    if (!c.comesTo("txtBarcode")) return false;
    const bool shortcut = step.b % 4 == 3;
    const std::vector<Row> codes = c.company.codes();
    const Row named = shortcut ? Row{of(kShortcuts, step.a), ""} : of(codes, step.a);
    const std::string& code = named[0];
    c.memory.meant = {"", named[1]};
    // What is no active barcode is a shortcut number by its first four digits.
    if (std::isdigit(static_cast<unsigned char>(code[0])) && !c.company.isActive(code))
        c.memory.meant.push_back(c.company.value("select itemid from ashopitemdetail where shopid=? and shortcutno=?",
                                                 {c.memory.shop, std::stoi(code.substr(0, 4))}));
    c.memory.typedInto.clear();
    c.keys(code + "\r"); // as a scanner does: over what is selected
    return true;
}

bool scansInDialog(Clerk& c, const Step& step) {
    if (!c.comesTo("txtBarcode")) return false;
    c.selectsAll();
    const std::vector<Row> codes = c.company.codes();
    c.keys(of(codes, step.a)[0] + "\r");
    return true;
}

bool pastes(Clerk& c, const Step& step) {
    if (!c.comesTo("txtQuantity")) return false;
    c.selectsAll();
    const bool whole = step.a % 2 == 0 || c.module.session.blnIntegerQuantity;
    c.memory.typed = {whole ? "3" : c.memory.locale % 2 ? "2,5" : "2.5", "txtQuantity"};
    c.memory.typedInto.insert("txtQuantity");
    c.user.pastes(" " + c.memory.typed.first + "\r\n");
    return true;
}

bool opensDialog(Clerk& c, const Step& step) {
    if (c.user.focus().empty() || !c.can("cmdbarcode")) return false;
    forms::Form* opened = step.a % 2 ? static_cast<forms::Form*>(&c.module.scanBarcode()) : &c.module.fetchItem();
    c.desktop.perform([&c, opened] { c.desktop.handle([&] { opened->showAfresh(&c.module.requestDetail()); }); });
    return true;
}

bool searches(Clerk& c, const Step& step) {
    if (!c.comesTo("txtFetch")) return false;
    if (step.b % 4 != 0)
        c.fills("txtFetch", of(kSearches, step.a));
    else if (!hostile(c, {0, "", step.a, 1, 0}))
        return false;
    if (!c.atForm() || c.user.focus() != "txtFetch") return true;
    c.memory.sought = c.user.text("txtFetch");
    return enters("txtFetch")(c, step);
}

} // namespace

const std::vector<Act> kActs = {
    {"nobody", "shows", 10, shows},
    {"message", "answers", 1, answers},
    {"menu", "leaves", 1, [](Clerk& c, const Step&) { return c.user.dismissesMenu(), true; }},
    {"", "hostile", 2, hostile},
    {"", "ok", 4, clicksFirstOf({"cmdOk", "cmdOK"})},
    {"", "cancel", 2, clicksFirstOf({"cmdCancel", "CmdClose", "cmdClose"})},
    {"", "frame", 1, [](Clerk& c, const Step&) { return c.user.closesFrame(), true; }},

    {"frmMaster", "adds", 20, commands('N', "cmdnew", "\n")},
    {"frmMaster", "edits", 20, commands('E', "CmdEdit", "\r")},
    {"frmMaster", "deletes", 5, commands('D', "CmdDelete", "Del")},
    {"frmMaster", "prints", 2, commands('P', "cmdPrev", "")},
    {"frmMaster", "refreshes", 1, commands('R', "", "")},
    {"frmMaster", "sorts", 2, sorts},
    {"frmMaster", "seeks", 1, seeks},

    {"frmRequest", "shop", 10, picks("cboShop")},
    {"frmRequest", "adds", 14, addsLines},
    {"frmRequest", "changes", 6, onLine(forms::kKeyF10, forms::kKeyReturn)},
    {"frmRequest", "removes", 3, onLine(forms::kKeyDelete, forms::kKeyDelete)},
    {"frmRequest", "remarks", 4, fills("txtRemarks", {"", "urgent", "O'Neil's order", "zwölf Stück"})},
    {"frmRequest", "date", 3, date},
    {"frmRequest", "ticks", 2, clicksFirstOf({"chkTransFinished"})},
    {"frmRequest", "ok", 10, clicksFirstOf({"cmdOk"})},

    {"frmRequestDetail", "scans", 18, scans},
    {"frmRequestDetail", "quantity", 12, fills("txtQuantity", kNumbers)},
    {"frmRequestDetail", "bad", 3, fills("txtBadQuantity", kNumbers)},
    {"frmRequestDetail", "price", 3, fills("txtsellingprice", kNumbers)},
    {"frmRequestDetail", "enters", 8, enters("txtQuantity")},
    {"frmRequestDetail", "walks", 3, clicksOneOf({"cmdFirst", "cmdPrev", "cmdNext", "cmdLast"})},
    {"frmRequestDetail", "fetches", 4, [](Clerk& c, const Step&) { return c.user.presses(forms::kKeyF3), true; }},
    {"frmRequestDetail", "dialog", 4, opensDialog},
    {"frmRequestDetail", "pastes", 1, pastes},
    {"frmRequestDetail", "ok", 14, clicksFirstOf({"cmdOk"})},
    {"frmRequestDetail", "cancel", 4, clicksFirstOf({"cmdCancel"})},

    {"FetchWindow", "searches", 3, fills("txtSearch", kSearches)},
    {"FetchWindow", "picks", 4, picksRow("lvwItems")},
    {"FetchWindow", "column", 1, picks("cboColumn")},

    {"FrmFetch", "searches", 5, searches},
    {"FrmFetch", "again", 2, enters("txtFetch")},
    {"FrmFetch", "picks", 4, picksRow("flexMaster")},
    {"FrmFetch", "column", 1, picks("cboFetch")},

    {"frmscanBc", "scans", 5, scansInDialog},
    {"frmcancelreason", "reason", 3, fills("txtcanreason", {"", "entered twice", "  ", "it's wrong"})},
    {"frmPrint", "option", 2, clicksOneOf({"optScreen", "optPrint", "OptWindowsPrint"})},
};

} // namespace endurance::clerk
