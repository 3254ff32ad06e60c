#include "forms/ListView.h"

#include "basic/Conversion.h"
#include "forms/Desktop.h"
#include "forms/Form.h"

namespace forms {

using automation::Arguments;
using automation::Members;
using automation::Value;

namespace {

constexpr int kMostTexts = 10'000; ///< of a line
const std::string kNoText;

const std::string& textAt(const std::vector<std::string>& texts, int index) {
    const auto at = static_cast<std::size_t>(index);
    return at < texts.size() ? texts[at] : kNoText;
}

void setTextAt(std::vector<std::string>& texts, int index, std::string text) {
    if (index >= kMostTexts) automation::raise(automation::kInvalidCall);
    const auto at = static_cast<std::size_t>(index);
    if (at >= texts.size()) texts.resize(at + 1);
    texts[at] = std::move(text);
}

} // namespace

void ListItem::setText(std::string text) {
    text_ = std::move(text);
    if (list_) list_->itemChanged();
}

const std::string& ListItem::subItem(int index) const {
    if (index < 1) automation::raise(automation::kInvalidCall);
    return textAt(subItems_, index - 1);
}

void ListItem::setSubItem(int index, std::string text) {
    if (index < 1) automation::raise(automation::kInvalidCall);
    if (text != subItem(index) && !toolTip(index).empty()) setToolTip(index, ""); // it told of what stood there
    setTextAt(subItems_, index - 1, std::move(text));
    if (list_) list_->itemChanged();
}

const std::string& ListItem::toolTip(int column) const {
    if (column < 0) automation::raise(automation::kInvalidCall);
    return textAt(toolTips_, column);
}

void ListItem::setToolTip(int column, std::string text) {
    if (column < 0) automation::raise(automation::kInvalidCall);
    setTextAt(toolTips_, column, std::move(text));
}

int ListItem::index() const { return list_ ? list_->indexOf(this) : 0; }

bool ListItem::selected() const { return list_ && list_->selectedItem() == this; }

const Members<ListItem>& ListItem::members() {
    static const Members<ListItem> table = [] {
        const auto textOf = [](const ListItem& item, const Value& value) {
            return item.list_ ? basic::cStr(value, item.list_->form().desktop().locale()) : basic::cStr(value);
        };
        Members<ListItem> m;
        for (const char* name : {"Text", ""})
            m.property(
                name, [](ListItem& i) { return Value(i.text()); },
                [textOf](ListItem& i, const Value& v) { i.setText(textOf(i, v)); });
        m.indexed(
            "SubItems", 1, [](ListItem& i, Arguments a) { return Value(i.subItem(basic::cLng(a[0]))); },
            [textOf](ListItem& i, Arguments a) {
                i.setSubItem(basic::cLng(a[0]), textOf(i, a[1]));
                return Value();
            });
        m.property(
            "Selected", [](ListItem& i) { return Value(i.selected()); },
            [](ListItem& i, const Value& v) {
                const bool select = basic::cBool(v);
                if (i.list_ && select != i.selected()) i.list_->select(select ? i.index() : 0);
            });
        m.readOnly("Index", [](ListItem& i) { return Value(std::int32_t{i.index()}); });
        m.property(
            "Key", [](ListItem& i) { return Value(i.key()); },
            [textOf](ListItem& i, const Value& v) { i.setKey(textOf(i, v)); });
        m.property(
            "Tag", [](ListItem& i) { return Value(i.tag_); },
            [textOf](ListItem& i, const Value& v) { i.tag_ = textOf(i, v); });
        m.property(
            "ToolTipText", [](ListItem& i) { return Value(i.toolTip(0)); },
            [textOf](ListItem& i, const Value& v) { i.setToolTip(0, textOf(i, v)); });
        return m;
    }();
    return table;
}

} // namespace forms
