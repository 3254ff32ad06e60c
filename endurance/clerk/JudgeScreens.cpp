// Rules on what the screens show, and on what becomes of typed lines.
#include "endurance/clerk/Judge.h"

#include "basic/Text.h"

#include <algorithm>
#include <cmath>

namespace endurance::clerk {
namespace {

using Lines = std::vector<std::vector<std::string>>;

constexpr const char* kTypedOver = "opening: the date of a stored request can be typed over";

/// What was typed, with a "." before the decimals, where the person's locale may have a ",".
std::string plain(std::string typed, const Memory& m) {
    if (m.locale % 2 == 1) std::replace(typed.begin(), typed.end(), ',', '.');
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

} // namespace

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
    const auto may = [&](char right) { return h.clerk.company.may(m.user, m.screen, right); };
    static const std::vector<std::string> nothing(9);
    const auto& row = is.row >= 1 && is.row <= static_cast<int>(is.rows.size())
                          ? is.rows[static_cast<std::size_t>(is.row) - 1]
                          : nothing;
    const bool has = !row.empty() && !row[0].empty();
    const struct {
        const char* name;
        bool enabled, wanted;
    } buttons[] = {{"New", is.adds, may('N')},
                   {"Edit", is.edits, has && may('E')},
                   {"Delete", is.deletes, has && may('D') && row.size() > 4 && row[4] == "No"},
                   {"Print", is.prints, has && may('P')}};
    for (const auto& button : buttons) {
        if (button.enabled && !button.wanted && !m.switched) return std::string("rights: ") + button.name + " is on";
        if (!button.enabled && button.wanted && m.rightsRead) return std::string("rights: ") + button.name + " is off";
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
    if (h.acts("frmMaster", "sorts") && h.calm() && m.said.ends_with("picks Id")) {
        const double sign = is.descends ? -1 : 1;
        for (std::size_t i = 1; i < is.rows.size(); ++i)
            if (sign * number(is.rows[i - 1][0]) > sign * number(is.rows[i][0]))
                return "register: it is not sorted as asked";
    }
    return {};
}

namespace {

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

} // namespace

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
    if (const std::string typed = plain(m.typed, m);
        !typed.empty() && h.boxes.empty() && h.calm() && typed.find(',') == std::string::npos) {
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

} // namespace endurance::clerk
