// A drop-down box: entries that carry a number, and the choice among them.
#pragma once

#include "forms/Control.h"

#include <vector>

namespace forms {

class ComboBox : public automation::WithMembers<ComboBox, Control> {
public:
    enum class Style {
        list,     ///< one of the entries or none
        editable, ///< free text as well
    };
    struct Entry {
        std::string text;
        std::int32_t itemData = 0;
    };

    ComboBox(Form& form, std::string name, Style style = Style::list)
        : WithMembers(form, std::move(name), ControlKind::comboBox), style_(style) {}

    Style style() const { return style_; }
    const std::vector<Entry>& entries() const { return entries_; }
    void clear();
    /// Appends an entry; its index becomes newIndex().
    void addItem(std::string text, std::int32_t itemData = 0);
    /// Puts an entry before the one at `index`; the choice stays on its entry. Error 9 out of range.
    void insertItem(int index, std::string text, std::int32_t itemData = 0);
    /// Takes an entry away, and the choice with it when it was the chosen one. Raises nothing. Error 9 out of range.
    void removeItem(int index);
    int newIndex() const { return newIndex_; }
    int listCount() const { return static_cast<int>(entries_.size()); }

    int listIndex() const { return listIndex_; } ///< -1 for none
    bool hasSelection() const { return listIndex_ >= 0; }
    /// Chooses an entry, or none with -1, and raises Click when the choice changes to an entry. Error 9 out of range.
    void setListIndex(int index);
    std::int32_t itemData(int index) const; ///< error 9 out of range
    void setItemData(int index, std::int32_t value);
    std::int32_t selectedData() const { return itemData(listIndex_); }

    /// Of an editable box: free text, which ends the choice unless it is an entry's; raises Change. Of a list: chooses
    /// the entry of that text, none for "". Error 383 when the list has no such entry.
    void setText(std::string text) override;
    /// What the person typed into an editable box.
    void edited(std::string text);

    void reset() override;
    static const automation::Members<ComboBox>& members();

private:
    std::size_t checked(int index) const;
    void takeText(std::string text);

    Style style_;
    std::vector<Entry> entries_;
    int listIndex_ = -1;
    int newIndex_ = -1;
};

} // namespace forms
