#include "forms/ListView.h"

#include <algorithm>

namespace forms {

ListView::~ListView() {
    for (const auto& item : items_) item->detach(); // Components may hold lines longer than their list lives.
}

void ListView::setColumns(std::vector<ListColumn> columns) {
    columns_ = std::move(columns);
    for (ListColumn& column : columns_) column.width = withinTwips(column.width);
    notify(Aspect::columns);
}

ListColumn& ListView::columnAt(int column) {
    if (column < 1 || column > static_cast<int>(columns_.size())) automation::raise(automation::kSubscriptOutOfRange);
    return columns_[static_cast<std::size_t>(column - 1)];
}

void ListView::setColumnText(int column, std::string text) {
    columnAt(column).text = std::move(text);
    notify(Aspect::columns);
}

void ListView::setColumnWidth(int column, int twips) {
    columnAt(column).width = std::max(withinTwips(twips), 0);
    notify(Aspect::columns);
}

void ListView::setColumnAlignment(int column, int alignment) {
    ListColumn& changed = columnAt(column);
    if (alignment < 0 || alignment > 2) throw automation::RunTimeError(380, "Invalid property value");
    changed.alignment = static_cast<ColumnAlignment>(alignment);
    notify(Aspect::columns);
}

ListItem& ListView::item(int index) const { return *itemPtr(index); }

std::shared_ptr<ListItem> ListView::itemPtr(int index) const {
    if (index < 1 || index > count()) automation::raise(automation::kSubscriptOutOfRange);
    return items_[static_cast<std::size_t>(index - 1)];
}

ListItem& ListView::add(std::string text) { return insert(count() + 1, std::move(text)); }

ListItem& ListView::insert(int index, std::string text) {
    if (index < 1 || index > count() + 1) automation::raise(automation::kSubscriptOutOfRange);
    const auto added = std::make_shared<ListItem>(this, std::move(text));
    items_.insert(items_.begin() + (index - 1), added);
    if (items_.size() == 1)
        selected_ = 1;
    else if (selected_ >= index)
        ++selected_;
    notify(Aspect::items);
    return *added;
}

void ListView::remove(int index) {
    itemPtr(index)->detach();
    items_.erase(items_.begin() + (index - 1));
    selected_ = items_.empty() ? 0 : 1;
    revealed_ = 0;
    notify(Aspect::items);
}

void ListView::clear() {
    for (const auto& item : items_) item->detach();
    items_.clear();
    selected_ = revealed_ = 0;
    notify(Aspect::items);
}

ListItem* ListView::selectedItem() const { return selected_ == 0 ? nullptr : &item(selected_); }

void ListView::select(int index) {
    if (index != 0) itemPtr(index);
    if (index == selected_) return;
    selected_ = index;
    notify(Aspect::selection);
}

void ListView::reveal(int index) {
    itemPtr(index);
    revealed_ = index;
    notify(Aspect::selection);
}

int ListView::indexOf(const ListItem* item) const {
    const auto found =
        std::find_if(items_.begin(), items_.end(), [item](const auto& held) { return held.get() == item; });
    return found == items_.end() ? 0 : static_cast<int>(found - items_.begin()) + 1;
}

void ListView::reset() {
    Control::reset();
    for (const auto& item : items_) item->detach();
    items_.clear();
    columns_.clear();
    selected_ = revealed_ = 0;
}

} // namespace forms
