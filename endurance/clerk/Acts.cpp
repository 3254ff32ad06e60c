// What clerks do at each screen, by keys and clicks.
#include "basic/Calendar.h"
#include "basic/Conversion.h"
#include "endurance/Endurance.h"
#include "endurance/clerk/Clerk.h"
#include "screens/fetch/FrmFetch.h"
#include "screens/lines/frmRequestDetail.h"
#include "screens/lines/frmscanBc.h"
#include "screens/register/frmMaster.h"

#include <cmath>

namespace endurance::clerk {

using support::Waiting;

namespace {

/// What is typed for a day, by locale, and the day that is meant.
const std::vector<std::pair<const char*, int>> kDates[] = {
    {{"15/02/2026", 20260215}, {"1/3/2026", 20260301}},
    {{"15/02/2026", 20260215}, {"28/02/2027", 20270228}},
    {{"15/01/30", 20300115}, {"15/02/26", 20260215}, {"1/3/49", 20490301}},
    {{"2026. 02. 15.", 20260215}, {"2026. 12. 01.", 20261201}},
};
constexpr const char* kNumbers[] = {"2", "1", "12", "2.5", "2,5", "0.125", "30", "7", "0", "1000"};
constexpr const char* kRemarks[] = {"", "urgent", "O'Neil's order", "zwölf Stück"};
constexpr const char* kReasons[] = {"", "entered twice", "  ", "it's wrong"};
constexpr const char* kSearches[] = {"", "nut", "O'Neil", "8", "no such"};
constexpr const char* kShortcuts[] = {"11", "12", "4711", "18", "99"};

/// A comma for the decimals; two digits for the year; the year first.
basic::Locale localeOf(int number) {
    basic::Locale locale;
    if (number % 2 == 1) {
        locale.decimalSeparator = ',';
        locale.groupSeparator = '.';
    }
    if (number == 2) locale.shortDate = "dd/MM/yy";
    if (number == 3) {
        locale.dateOrder = basic::DateOrder::yearMonthDay;
        locale.dateSeparator = '.';
        locale.shortDate = "yyyy. MM. dd.";
    }
    return locale;
}

bool shows(Clerk& c, const Step& step) {
    Memory& m = c.memory = {};
    m.user = of(kUsers, step.a);
    m.shop = of(kShops, step.b);
    m.screen = of(kScreens, step.b / 3);
    m.locale = step.c % 4;
    m.badDate = step.c / 4 % 12 == 5;
    c.commaIsTyped = step.c / 48 % 3 == 1;
    c.fetchHasProperties = step.c / 144 % 6 == 1;
    c.noneIsNull = step.c / 864 % 4 == 1;
    c.desktop.userLocale = localeOf(m.locale);
    c.component.intUserID = static_cast<std::int16_t>(m.user);
    c.component.intShopid = static_cast<std::int16_t>(m.shop);
    c.component.interfaceid = m.screen;
    c.component.dtProcessDate = m.badDate ? automation::Date{-700000} : basic::dateOf(2026, 3, 31);
    c.says("user " + std::to_string(m.user) + " in shop " + std::to_string(m.shop) + " opens " +
           std::to_string(m.screen) + ", habits " + std::to_string(step.c));
    c.opens();
    return true;
}

/// A component that kept a form reads it, or writes into its boxes, long after the form was closed.
bool actsLate(Clerk& c, const Step& step) {
    if (c.kept.empty()) return false;
    const auto& [name, form] = of(c.kept, step.a);
    const bool writes = step.b % 3 == 0 && !basic::cBool(form->get("Visible"));
    const auto act = [object = form, writes] {
        object->get("Caption");
        if (!writes) return;
        for (const automation::Value& control : object->elements())
            if (dynamic_cast<forms::TextBox*>(control.objectPtr().get())) control.object().put("Text", "late");
    };
    c.says("a component " + std::string(writes ? "writes into " : "reads ") + name);
    c.desktop.waiting() == Waiting::form ? c.desktop.perform(act) : c.desktop.start(act);
    return true;
}

bool switchesOn(Clerk& c, const Step& step) {
    if (c.user.grid("flexMaster").front()[0].empty()) return false;
    const char* button = of({"cmdnew", "CmdEdit", "CmdDelete", "cmdPrev"}, step.a);
    c.desktop.perform([&] { c.module.master().find(button)->setEnabled(true); });
    c.memory.switched = true;
    return c.says(std::string("a component switches ") + button + " on");
}

bool answers(Clerk& c, const Step& step) {
    using forms::Answer;
    Answer answer = Answer::ok;
    const auto buttons = c.desktop.message().buttons;
    if (buttons != forms::MessageButtons::ok) answer = step.a % 2 ? Answer::yes : Answer::no;
    if (buttons == forms::MessageButtons::yesNoCancel && step.a % 5 == 4) answer = Answer::cancel;
    c.says(std::string("answers ") + of({"OK", "Yes", "No", "Cancel"}, static_cast<int>(answer)) + " to \"" +
           c.desktop.message().text.substr(0, 90) + "\"");
    c.memory.answer = answer;
    if (c.desktop.message().text == "Save Changes?") c.memory.touched.insert("cmdOk"); // its handler comes next
    c.desktop.answer(answer);
    return true;
}

bool ok(Clerk& c, const Step&) { return c.clicksOn("cmdOk") || c.clicksOn("cmdOK"); }
bool cancels(Clerk& c, const Step&) {
    return c.clicksOn("cmdCancel") || c.clicksOn("CmdClose") || c.clicksOn("cmdClose");
}
bool closes(Clerk& c, const Step&) {
    c.says("closes " + c.user.form() + " by its frame");
    c.user.closesFrame();
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
    c.memory.typedPrice = c.memory.typedQuantity = true;
    const bool seeks = box->name() == "txtFetch";
    c.says("hostile text " + std::to_string(step.a % static_cast<int>(hostileTexts().size())) + " into " + box->name());
    if (step.b % 3 == 0) {
        c.desktop.perform([&] { c.desktop.handle([&] { box->setText(text); }); });
    } else {
        c.selectsAll();
        c.user.pastes(text.substr(0, 200));
    }
    if (seeks) c.memory.sought = box->text();
    return true;
}

/// A command of the register on one of its rows. Keys are tried whether or not the button is on.
bool commands(Clerk& c, const Step& step, char letter, const char* button, const char* key) {
    const auto grid = c.user.grid("flexMaster");
    if (grid.empty() || !c.comesTo("flexMaster")) return false;
    const int row = step.a % static_cast<int>(grid.size());
    if (letter != 'N') c.user.selectsRow("flexMaster", row + 1);
    if (c.desktop.waiting() != Waiting::form) return false;
    Command begun;
    begun.command = letter;
    begun.minute = std::lround(c.desktop.time.days * 1440);
    if (const auto& cells = grid[static_cast<std::size_t>(row)]; letter != 'N' && cells.size() > 4) {
        begun.request = std::atoi(cells[0].c_str());
        begun.number = cells[1];
        begun.rowCancelled = cells[4] == "Yes";
        c.says("on request " + cells[0]);
    }
    static_cast<Command&>(c.memory) = begun;
    c.memory.pressed = letter == 'R' ? 'E' : letter;
    if (letter == 'R') {
        c.user.rightClicks("flexMaster");
        if (c.desktop.waiting() != Waiting::menu) return false;
        c.user.choosesMenu("mnurefresh");
        return c.says("Refresh");
    }
    if (!*key || step.b % 3 == 0) return c.clicksOn(button);
    c.says(std::string(1, letter) + " by its key");
    if (letter == 'D')
        c.user.presses(forms::kKeyDelete);
    else if (letter == 'E' && step.b % 3 == 1)
        c.user.doubleClicks("flexMaster");
    else
        c.keys(key);
    return true;
}

bool picks(Clerk& c, const std::string& box, int which) {
    const auto entries = c.can(box) ? c.user.entries(box) : std::vector<std::string>{};
    if (entries.empty()) return false;
    c.memory.touched.insert(box);
    c.says("picks " + of(entries, which));
    c.user.picks(box, of(entries, which));
    return true;
}

bool sorts(Clerk& c, const Step& step) {
    if (step.b % 4 < 2) c.clicksOn(step.b % 2 ? "optDescend" : "optAscend");
    return picks(c, "cboColNames", step.a);
}
bool seeks(Clerk& c, const Step& step) {
    return picks(c, "cboSearch", step.a) && c.fills("txtsearch", step.b % 2 ? "GR/1" : "South");
}

bool addsLines(Clerk& c, const Step& step) {
    if (!c.comesTo("lvwrequest")) return false;
    c.says("adds lines");
    if (step.b % 3 != 0) return c.keys("\n"), true;
    c.user.rightClicks("lvwrequest");
    if (c.desktop.waiting() == Waiting::menu) c.user.choosesMenu(c.user.menu()[0].enabled ? "mnuAdd" : "mnuCancel");
    return true;
}
bool onLine(Clerk& c, const Step& step, std::int16_t key) {
    const int count = static_cast<int>(c.user.list("lvwrequest").size());
    if (count == 0 || !c.comesTo("lvwrequest")) return false;
    c.user.selectsRow("lvwrequest", step.a % count + 1);
    if (c.desktop.waiting() != Waiting::form) return true;
    c.says("key " + std::to_string(key) + " on line " + std::to_string(step.a % count + 1));
    key == forms::kKeyReturn ? c.keys("\r") : void(c.user.presses(key));
    return true;
}
bool date(Clerk& c, const Step& step) {
    const auto& [text, day] = of(kDates[c.memory.locale], step.a);
    if (!c.fills("txtrequestDate", text)) return false;
    if (c.user.text("txtrequestDate") == text)
        c.memory.typedDate = std::lround(basic::dateOf(day / 10000, day / 100 % 100, day % 100).days * 1440);
    return true;
}

bool scans(Clerk& c, const Step& step) {
    const Masters& m = c.company.masters();
    if (!c.comesTo("txtBarcode")) return false;
    std::string code = of(kShortcuts, step.a);
    const auto shortcut = [&](const std::string& number) {
        const auto found = m.itemOfShortcut.find({c.memory.shop, number});
        return found == m.itemOfShortcut.end() ? 0 : found->second;
    };
    c.memory.meant = {0, shortcut(code)};
    if (step.b % 4 != 3) {
        const auto& found = of(m.itemOfCode, step.a);
        code = found.first;
        c.memory.meant = {0, found.second};
        // What is no active barcode is a shortcut number by its first four digits.
        if (m.doubtful.contains(code)) c.memory.meant.push_back(shortcut(code.substr(0, 4)));
    }
    c.memory.typedPrice = c.memory.typedQuantity = false;
    c.says("scans " + code);
    c.keys(code + "\r"); // as a scanner does: over what is selected
    return true;
}
bool scansInDialog(Clerk& c, const Step& step) {
    return c.fills("txtBarcode", of(c.company.masters().itemOfCode, step.a).first + "\r");
}
bool types(Clerk& c, const char* box, const std::string& number) {
    if (!c.fills(box, number)) return false;
    c.memory.typed = number;
    return true;
}
bool pastes(Clerk& c, const Step& step) {
    if (!c.comesTo("txtQuantity")) return false;
    c.selectsAll();
    c.memory.typedQuantity = true;
    c.memory.typed = step.a % 2 == 0 || c.module.session.blnIntegerQuantity ? "3" : c.memory.locale % 2 ? "2,5" : "2.5";
    c.says("pastes " + c.memory.typed + " with blanks around it");
    c.user.pastes(" " + c.memory.typed + "\r\n");
    return true;
}
bool enters(Clerk& c, const char* box) {
    if (!c.comesTo(box)) return false;
    c.says(std::string("Enter in ") + box);
    c.keys("\r");
    return true;
}
bool opensDialog(Clerk& c, const Step& step) {
    if (c.user.focus().empty() || !c.can("cmdbarcode")) return false;
    const bool scan = step.a % 2;
    c.says(scan ? "opens the scan dialog" : "opens the item fetch dialog");
    forms::Form* opened = scan ? static_cast<forms::Form*>(&c.module.scanBarcode()) : &c.module.fetchItem();
    c.desktop.perform([&c, opened] { c.desktop.handle([&] { opened->showAfresh(&c.module.requestDetail()); }); });
    return true;
}

bool picksRow(Clerk& c, const Step& step) {
    const bool suite = c.user.form() == "FetchWindow";
    const char* list = suite ? "lvwItems" : "flexMaster";
    const int count = !c.can(list) ? 0 : static_cast<int>(suite ? c.user.list(list).size() : c.user.grid(list).size());
    if (count == 0) return false;
    c.says("picks row " + std::to_string(step.a % count + 1));
    c.user.selectsRow(list, step.a % count + 1);
    return true;
}
bool searches(Clerk& c, const Step& step) {
    if (!c.comesTo("txtFetch")) return false;
    if (step.b % 4 != 0)
        c.fills("txtFetch", of(kSearches, step.a));
    else if (!hostile(c, {0, "", step.a, 1, 0}))
        return false;
    if (c.desktop.waiting() != Waiting::form || c.user.focus() != "txtFetch") return true;
    c.memory.sought = c.user.text("txtFetch");
    return enters(c, "txtFetch");
}

} // namespace

const std::vector<Act> kActs = {
    {"nobody", "shows", 10, shows},
    {"nobody", "acts late", 1,
     [](Clerk& c, const Step& s) { return c.desktop.waiting() == Waiting::ended && actsLate(c, s); }},
    {"", "acts late", 1, actsLate},
    {"message", "answers", 1, answers},
    {"menu", "leaves", 1, [](Clerk& c, const Step&) { return c.user.dismissesMenu(), c.says("leaves the menu"); }},
    {"", "hostile", 2, hostile},
    {"", "ok", 4, ok},
    {"", "cancel", 2, cancels},
    {"", "frame", 1, closes},

    {"frmMaster", "adds", 20, [](Clerk& c, const Step& s) { return commands(c, s, 'N', "cmdnew", "\n"); }},
    {"frmMaster", "edits", 20, [](Clerk& c, const Step& s) { return commands(c, s, 'E', "CmdEdit", "\r"); }},
    {"frmMaster", "deletes", 5, [](Clerk& c, const Step& s) { return commands(c, s, 'D', "CmdDelete", "Del"); }},
    {"frmMaster", "prints", 2, [](Clerk& c, const Step& s) { return commands(c, s, 'P', "cmdPrev", ""); }},
    {"frmMaster", "refreshes", 1, [](Clerk& c, const Step& s) { return commands(c, s, 'R', "", ""); }},
    {"frmMaster", "switches", 1, switchesOn},
    {"frmMaster", "sorts", 2, sorts},
    {"frmMaster", "seeks", 1, seeks},

    {"frmRequest", "shop", 10, [](Clerk& c, const Step& s) { return picks(c, "cboShop", s.a); }},
    {"frmRequest", "adds", 14, addsLines},
    {"frmRequest", "changes", 6,
     [](Clerk& c, const Step& s) { return onLine(c, s, s.b % 2 ? forms::kKeyF10 : forms::kKeyReturn); }},
    {"frmRequest", "removes", 3, [](Clerk& c, const Step& s) { return onLine(c, s, forms::kKeyDelete); }},
    {"frmRequest", "remarks", 4, [](Clerk& c, const Step& s) { return c.fills("txtRemarks", of(kRemarks, s.a)); }},
    {"frmRequest", "date", 3, date},
    {"frmRequest", "ticks", 2, [](Clerk& c, const Step&) { return c.clicksOn("chkTransFinished"); }},
    {"frmRequest", "ok", 10, ok},

    {"frmRequestDetail", "scans", 18, scans},
    {"frmRequestDetail", "quantity", 12,
     [](Clerk& c, const Step& s) { return c.memory.typedQuantity = true, types(c, "txtQuantity", of(kNumbers, s.a)); }},
    {"frmRequestDetail", "bad", 3,
     [](Clerk& c, const Step& s) { return types(c, "txtBadQuantity", of(kNumbers, s.a)); }},
    {"frmRequestDetail", "price", 3,
     [](Clerk& c, const Step& s) {
         return c.memory.typedPrice = true, types(c, "txtsellingprice", of(kNumbers, s.a));
     }},
    {"frmRequestDetail", "enters", 8, [](Clerk& c, const Step&) { return enters(c, "txtQuantity"); }},
    {"frmRequestDetail", "walks", 3,
     [](Clerk& c, const Step& s) {
         return c.clicksOn(of({"cmdFirst", "cmdPrev", "cmdNext", "cmdLast"}, s.a));
     }},
    {"frmRequestDetail", "fetches", 4,
     [](Clerk& c, const Step&) { return c.user.presses(forms::kKeyF3), c.says("F3"); }},
    {"frmRequestDetail", "dialog", 4, opensDialog},
    {"frmRequestDetail", "pastes", 1, pastes},
    {"frmRequestDetail", "ok", 14, ok},
    {"frmRequestDetail", "cancel", 4, cancels},

    {"FetchWindow", "searches", 3, [](Clerk& c, const Step& s) { return c.fills("txtSearch", of(kSearches, s.a)); }},
    {"FetchWindow", "picks", 4, picksRow},
    {"FetchWindow", "column", 1, [](Clerk& c, const Step& s) { return picks(c, "cboColumn", s.a); }},

    {"FrmFetch", "searches", 5, searches},
    {"FrmFetch", "again", 2, [](Clerk& c, const Step&) { return enters(c, "txtFetch"); }},
    {"FrmFetch", "picks", 4, picksRow},
    {"FrmFetch", "column", 1, [](Clerk& c, const Step& s) { return picks(c, "cboFetch", s.a); }},

    {"frmscanBc", "scans", 5, scansInDialog},

    {"frmcancelreason", "reason", 3,
     [](Clerk& c, const Step& s) { return c.fills("txtcanreason", of(kReasons, s.a)); }},

    {"frmPrint", "option", 2,
     [](Clerk& c, const Step& s) {
         return c.clicksOn(of({"optScreen", "optPrint", "OptWindowsPrint"}, s.a));
     }},

};

} // namespace endurance::clerk
