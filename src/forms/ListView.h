// A list of lines with columns: the first column is the line's text, the others its sub-items.
#pragma once

#include "forms/Control.h"

#include <memory>
#include <utility>
#include <vector>

namespace forms {

class ListView;

/// One line of a list; components reach it as an object with Text, SubItems, Selected, Index and Tag.
class ListItem : public automation::WithMembers<ListItem> {
public:
    ListItem(ListView* list, std::string text) : list_(list), text_(std::move(text)) {}

    const std::string& text() const { return text_; }
    /// The name under which a collection finds the line; empty for none.
    const std::string& key() const { return key_; }
    void setKey(std::string key) { key_ = std::move(key); }
    void setText(std::string text);
    /// Sub-items count from 1; one that was never set is empty. Error 5 for an index below 1 or
    /// beyond 10,000.
    const std::string& subItem(int index) const;
    void setSubItem(int index, std::string text);
    /// Tool tip of a cell; 0 is the line's own text.
    const std::string& toolTip(int column) const;
    void setToolTip(int column, std::string text);
    int index() const; ///< from 1; 0 once the line is out of its list
    bool selected() const;
    void detach() { list_ = nullptr; }

    static const automation::Members<ListItem>& members();
    std::string className() const override { return "ListItem"; }

private:
    ListView* list_;
    std::string text_;
    std::string key_;
    std::string tag_;
    std::vector<std::string> subItems_;
    std::vector<std::string> toolTips_;
};

enum class ColumnAlignment : std::int16_t { left = 0, right = 1, centre = 2 };

struct ListColumn {
    std::string text;
    int width = 1440; ///< twips
    ColumnAlignment alignment = ColumnAlignment::left;
};

class ListView : public automation::WithMembers<ListView, Control> {
public:
    ListView(Form& form, std::string name) : WithMembers(form, std::move(name), ControlKind::listView) {}
    ~ListView() override;

    const std::vector<ListColumn>& columns() const { return columns_; }
    void setColumns(std::vector<ListColumn> columns);
    /// Columns count from 1. Error 9 for one that is not there.
    void setColumnText(int column, std::string text);
    void setColumnWidth(int column, int twips);
    /// Error 380 for a number that is no ColumnAlignment.
    void setColumnAlignment(int column, int alignment);

    int count() const { return static_cast<int>(items_.size()); }
    /// Lines count from 1. Error 9 for one that is not there.
    ListItem& item(int index) const;
    std::shared_ptr<ListItem> itemPtr(int index) const;
    /// Adds a line at the end. The first line of an empty list becomes the selected one.
    ListItem& add(std::string text);
    /// Puts a line before the one at `index` (count() + 1: at the end); the selection stays on its line.
    ListItem& insert(int index, std::string text);
    /// Takes a line away; then the first line is the selected one.
    void remove(int index);
    void clear();

    int selectedIndex() const { return selected_; } ///< from 1; 0 for none
    ListItem* selectedItem() const;
    void select(int index); ///< 0 for none; raises nothing
    /// Scrolls a line into view.
    void reveal(int index);
    /// The line that is still to be scrolled into view, once; 0 for none.
    int takeRevealed() { return std::exchange(revealed_, 0); }

    int indexOf(const ListItem* item) const;
    void itemChanged() { notify(Aspect::items); }

    std::function<void(ListItem&)> onItemClick;

    void reset() override;
    static const automation::Members<ListView>& members();

private:
    ListColumn& columnAt(int column);

    std::vector<ListColumn> columns_;
    std::vector<std::shared_ptr<ListItem>> items_;
    int selected_ = 0;
    int revealed_ = 0;
};

} // namespace forms
