// What a till shows, read between two steps.
#pragma once

#include "tests/support/Shop.h"

#include <tuple>

namespace endurance::clerk {

struct EditorView {
    bool shown = false;
    std::string number, date, remarks;
    int shop = -1; ///< the box's choice; -1 for none
    bool ticked = false, ok = false, dateLocked = false;
    std::vector<std::vector<std::string>> lines; ///< text and sub-items 1 to 7
    std::vector<std::string> tips;               ///< of each line's quantity
    int selected = 0;

    /// What a person has made of it.
    auto content() const { return std::tie(lines, remarks, date, shop, ticked); }
};
struct EntryView {
    bool shown = false;
    int item = 0; ///< the box's choice; 0 for none
    std::string text, quantity, bad, price;
    bool priceShown = false, newLine = false;
    std::vector<std::pair<std::string, std::string>> packs; ///< id and quantity
};
struct RegisterView {
    bool shown = false;
    std::string caption;
    std::vector<std::vector<std::string>> rows;
    int row = 0;
    bool adds = false, edits = false, deletes = false, prints = false;
};
struct View {
    support::Waiting waiting = support::Waiting::nothing;
    std::string form; ///< the top one
    std::string box;  ///< text of the box that is up
    RegisterView master;
    EditorView editor;
    EntryView entry;
    std::string reason, searchText; ///< what stands in the boxes of those dialogs
    int shopInForce = -1;

    bool atForm(const char* name) const { return waiting == support::Waiting::form && form == name; }
};

View look(support::Shop& till);

} // namespace endurance::clerk
