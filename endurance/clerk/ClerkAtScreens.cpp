// What a clerk does at each screen, by keys and clicks.
#include "basic/Calendar.h"
#include "endurance/clerk/Clerk.h"
#include "screens/fetch/FrmFetch.h"
#include "screens/lines/frmRequestDetail.h"
#include "screens/lines/frmscanBc.h"
#include "screens/register/frmMaster.h"

#include <cmath>

namespace endurance::clerk {

using support::Waiting;

namespace {

struct TypedDate {
    const char* text;
    int year, month, day;
};
const std::vector<std::string> kNumbers = {"2", "1", "12", "2.5", "2,5", "0.125", "30", "7", "0", "1000"};
const std::vector<std::vector<TypedDate>> kDates = {
    {{"15/02/2026", 2026, 2, 15}, {"1/3/2026", 2026, 3, 1}},
    {{"15/02/2026", 2026, 2, 15}, {"28/02/2027", 2027, 2, 28}},
    {{"15/01/30", 2030, 1, 15}, {"15/02/26", 2026, 2, 15}, {"1/3/49", 2049, 3, 1}},
    {{"2026. 02. 15.", 2026, 2, 15}, {"2026. 12. 01.", 2026, 12, 1}},
};

constexpr const char* kRemarks[] = {"", "urgent", "O'Neil's order", "zwölf Stück"};
constexpr const char* kReasons[] = {"", "entered twice", "  ", "it's wrong"};
constexpr const char* kSearches[] = {"", "nut", "O'Neil", "8", "no such"};

} // namespace

bool Clerk::atRegister(const Step& step, long minute) {
    const auto grid = user.grid("flexMaster");
    const int row = grid.empty() ? 0 : step.a % static_cast<int>(grid.size()) + 1;
    const auto goesTo = [&] {
        if (row == 0 || !comesTo("flexMaster")) return false;
        user.selectsRow("flexMaster", row);
        return desktop.waiting() == Waiting::form;
    };
    const auto begins = [&](char command) {
        const auto& cells = grid[static_cast<std::size_t>(row) - 1];
        memory.command = command;
        memory.request = command == 'N' || cells[0].empty() ? 0 : std::stoi(cells[0]);
        memory.number = command == 'N' || cells.size() < 2 ? "" : cells[1];
        memory.rowCancelled = cells.size() > 4 && cells[4] == "Yes";
        memory.minute = minute;
        memory.typedLines = false;
        memory.typedDate.reset();
        memory.opened = false;
        memory.stored = memory.unknown = false;
        memory.reason.clear();
        memory.boxes = 0;
        if (command != 'N') says("on request " + cells[0]);
    };
    switch (step.verb) {
    case Verb::adds:
        if (!can("cmdnew")) return false;
        if (grid.empty()) return false;
        begins('N');
        if (step.b % 3 != 0 || !comesTo("flexMaster")) return clicksOn("cmdnew");
        keys("\n");
        return says("New by Ctrl+Enter");
    case Verb::edits:
        if (!goesTo() || !can("CmdEdit")) return false;
        begins('E');
        if (step.b % 3 == 1) return keys("\r"), says("Edit by Enter");
        if (step.b % 3 == 2) return user.doubleClicks("flexMaster"), says("Edit by a double click");
        return clicksOn("CmdEdit");
    case Verb::deletes:
        if (!goesTo() || !can("CmdDelete")) return false;
        begins('D');
        if (step.b % 2 == 1) return user.presses(forms::kKeyDelete), says("Delete by its key");
        return clicksOn("CmdDelete");
    case Verb::prints:
        if (!goesTo() || !can("cmdPrev")) return false;
        memory.command = 'P';
        return clicksOn("cmdPrev");
    case Verb::refreshes:
        if (!goesTo()) return false;
        user.rightClicks("flexMaster");
        if (desktop.waiting() != Waiting::menu) return false;
        user.choosesMenu("mnurefresh");
        return says("Refresh");
    case Verb::sorts: {
        const auto columns = user.entries("cboColNames");
        if (columns.empty() || !can("cboColNames")) return false;
        if (step.b % 4 < 2) clicksOn(step.b % 2 ? "optDescend" : "optAscend");
        if (!can("cboColNames")) return true;
        user.picks("cboColNames", of(columns, step.a));
        return says("sorts by " + of(columns, step.a));
    }
    case Verb::seeks: {
        const auto columns = user.entries("cboSearch");
        if (columns.empty() || !can("cboSearch")) return false;
        user.picks("cboSearch", of(columns, step.a));
        return fills("txtsearch", step.b % 2 ? "GR/1" : "South");
    }
    case Verb::cancel: return clicksOn("CmdClose");
    default: return false;
    }
}

bool Clerk::atEditor(const Step& step) {
    const int count = static_cast<int>(user.list("lvwrequest").size());
    const auto goesTo = [&] {
        if (count == 0 || !comesTo("lvwrequest")) return false;
        user.selectsRow("lvwrequest", step.a % count + 1);
        return desktop.waiting() == Waiting::form;
    };
    switch (step.verb) {
    case Verb::shop: {
        const auto shops = user.entries("cboShop");
        if (shops.empty() || !can("cboShop")) return false;
        user.picks("cboShop", of(shops, step.a));
        return says("picks shop " + of(shops, step.a));
    }
    case Verb::addsLines:
        if (!comesTo("lvwrequest")) return false;
        if (step.b % 3 != 0) return keys("\n"), says("adds lines");
        user.rightClicks("lvwrequest");
        if (desktop.waiting() == Waiting::menu) user.choosesMenu(user.menu()[0].enabled ? "mnuAdd" : "mnuCancel");
        return says("adds lines by the menu");
    case Verb::changesLine:
        if (!goesTo()) return false;
        if (step.b % 2) return user.presses(forms::kKeyF10), says("F10 on a line");
        return keys("\r"), says("changes line " + std::to_string(step.a % count + 1));
    case Verb::removesLine:
        if (!goesTo()) return false;
        user.presses(forms::kKeyDelete);
        return says("removes line " + std::to_string(step.a % count + 1));
    case Verb::remarks: return fills("txtRemarks", of(kRemarks, step.a));
    case Verb::date: {
        const auto& dates = kDates[static_cast<std::size_t>(memory.locale)];
        const TypedDate& date = of(dates, step.a);
        if (!fills("txtrequestDate", date.text)) return false;
        if (user.text("txtrequestDate") == date.text)
            memory.typedDate = std::lround(basic::dateOf(date.year, date.month, date.day).days * 1440);
        return true;
    }
    case Verb::ticks: return clicksOn("chkTransFinished");
    default: return false;
    }
}

bool Clerk::atEntry(const Step& step) {
    switch (step.verb) {
    case Verb::scans: {
        const Masters& m = company_.masters();
        if (!can("txtBarcode")) return false;
        std::string code;
        if (step.b % 4 == 3) {
            code = of(std::vector<std::string>{"11", "12", "4711", "18", "99"}, step.a);
            const auto found = m.itemOfShortcut.find({memory.shop, code});
            memory.meant = {0, found == m.itemOfShortcut.end() ? 0 : found->second};
        } else {
            const auto found = std::next(m.itemOfCode.begin(), step.a % static_cast<int>(m.itemOfCode.size()));
            code = found->first;
            memory.meant = {0, found->second};
            // What is no active barcode is a shortcut number by its first four digits.
            if (const auto first = m.itemOfShortcut.find({memory.shop, code.substr(0, 4)});
                m.doubtful.contains(code) && first != m.itemOfShortcut.end())
                memory.meant.push_back(first->second);
        }
        if (!comesTo("txtBarcode")) return false;
        memory.typedPrice = memory.typedQuantity = false;
        says("scans " + code);
        keys(code + "\r"); // as a scanner does: over what is selected
        return true;
    }
    case Verb::quantity:
    case Verb::badQuantity:
    case Verb::price: {
        const char* box = step.verb == Verb::quantity ? "txtQuantity"
                          : step.verb == Verb::price  ? "txtsellingprice"
                                                      : "txtBadQuantity";
        const std::string& number = of(kNumbers, step.a);
        if (!fills(box, number)) return false;
        memory.typed = number;
        if (step.verb == Verb::quantity) memory.typedQuantity = true;
        if (step.verb == Verb::price) memory.typedPrice = true;
        return true;
    }
    case Verb::pastes:
        if (!comesTo("txtQuantity")) return false;
        selectsAll();
        memory.typed = step.a % 2 && !module.session.blnIntegerQuantity ? "2.5" : "3";
        user.pastes(" " + memory.typed + "\r\n");
        memory.typedQuantity = true;
        return says("pastes a number with blanks around it");
    case Verb::enters:
        if (!comesTo("txtQuantity")) return false;
        keys("\r");
        return says("Enter in the quantity");
    case Verb::walks: return clicksOn(of({"cmdFirst", "cmdPrev", "cmdNext", "cmdLast"}, step.a));
    case Verb::fetches:
        if (user.focus().empty()) return false;
        user.presses(forms::kKeyF3);
        return says("F3");
    case Verb::dialog: {
        if (user.focus().empty() || !can("cmdbarcode")) return false;
        const bool scan = step.a % 2;
        says(scan ? "opens the scan dialog" : "opens the item fetch dialog");
        forms::Form* opened = scan ? static_cast<forms::Form*>(&module.scanBarcode()) : &module.fetchItem();
        desktop.perform([this, opened] { desktop.handle([&] { opened->showModal(&module.requestDetail()); }); });
        return true;
    }
    default: return false;
    }
}

bool Clerk::atDialogs(const Step& step) {
    const std::string form = user.form();
    const bool fetch = form == "FrmFetch";
    const bool suite = form == "FetchWindow";
    switch (step.verb) {
    case Verb::scans:
        if (form != "frmscanBc") return false;
        return fills("txtBarcode", std::next(company_.masters().itemOfCode.begin(),
                                             step.a % static_cast<int>(company_.masters().itemOfCode.size()))
                                           ->first +
                                       "\r");
    case Verb::searches:
        if (suite) return fills("txtSearch", of(kSearches, step.a));
        if (!fetch) return false;
        memory.sought = of(kSearches, step.a);
        return fills("txtFetch", (memory.sought.empty() ? "\b" : memory.sought) + "\r");
    case Verb::again:
        if (!fetch || !comesTo("txtFetch")) return false;
        keys("\r");
        return says("Enter in the search box");
    case Verb::picks: {
        const char* list = suite ? "lvwItems" : "flexMaster";
        if (!(suite || fetch) || !can(list)) return false;
        const int count = static_cast<int>(suite ? user.list(list).size() : user.grid(list).size());
        if (count == 0) return false;
        user.selectsRow(list, step.a % count + 1);
        return says("picks row " + std::to_string(step.a % count + 1));
    }
    case Verb::column: {
        const char* box = suite ? "cboColumn" : "cboFetch";
        if (!(suite || fetch) || !can(box)) return false;
        const auto entries = user.entries(box);
        if (entries.empty()) return false;
        user.picks(box, of(entries, step.a));
        return says("searches in " + of(entries, step.a));
    }
    case Verb::reason: return form == "frmcancelreason" && fills("txtcanreason", of(kReasons, step.a));
    case Verb::option: return form == "frmPrint" && clicksOn(of({"optScreen", "optPrint", "OptWindowsPrint"}, step.a));
    default: return false;
    }
}

} // namespace endurance::clerk
