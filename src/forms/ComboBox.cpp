#include "forms/ComboBox.h"

#include "basic/Conversion.h"
#include "forms/Desktop.h"
#include "forms/Form.h"

#include <algorithm>

namespace forms {

using automation::Arguments;
using automation::Members;
using automation::Value;

namespace {

std::string textOf(ComboBox& combo, const Value& value) { return basic::cStr(value, combo.form().desktop().locale()); }

Members<ComboBox> comboMembers() {
    Members<ComboBox> m;
    for (const char* name : {"Text", ""})
        m.property(
            name, [](ComboBox& c) { return Value(c.text()); },
            [](ComboBox& c, const Value& v) { c.setText(textOf(c, v)); });
    m.method("AddItem", 1, 2, [](ComboBox& c, Arguments a) {
        if (a.size() > 1 && !a[1].isMissing())
            c.insertItem(basic::cLng(a[1]), textOf(c, a[0]));
        else
            c.addItem(textOf(c, a[0]));
        return Value();
    });
    m.method("RemoveItem", 1, 1, [](ComboBox& c, Arguments a) {
        c.removeItem(basic::cLng(a[0]));
        return Value();
    });
    m.method("Clear", 0, 0, [](ComboBox& c, Arguments) {
        c.clear();
        return Value();
    });
    m.readOnly("ListCount", [](ComboBox& c) { return Value(std::int32_t{c.listCount()}); });
    m.readOnly("NewIndex", [](ComboBox& c) { return Value(std::int32_t{c.newIndex()}); });
    m.property(
        "ListIndex", [](ComboBox& c) { return Value(std::int32_t{c.listIndex()}); },
        [](ComboBox& c, const Value& v) { c.setListIndex(basic::cLng(v)); });
    m.indexed(
        "List", 1,
        [](ComboBox& c, Arguments a) {
            // Past the end there is no entry, which reads as empty text.
            const int index = basic::cLng(a[0]);
            const bool there = index >= 0 && index < c.listCount();
            return there ? Value(c.entries()[static_cast<std::size_t>(index)].text) : Value("");
        },
        nullptr);
    m.indexed(
        "ItemData", 1, [](ComboBox& c, Arguments a) { return Value(c.itemData(basic::cLng(a[0]))); },
        [](ComboBox& c, Arguments a) {
            c.setItemData(basic::cLng(a[0]), basic::cLng(a[1]));
            return Value();
        });
    return m;
}

} // namespace

const Members<ComboBox>& ComboBox::members() {
    static const Members<ComboBox> table = comboMembers();
    return table;
}

void ComboBox::clear() {
    entries_.clear();
    listIndex_ = -1;
    newIndex_ = -1;
    textStorage().clear();
    notify(Aspect::items);
}

void ComboBox::addItem(std::string text, std::int32_t itemData) { insertItem(listCount(), std::move(text), itemData); }

void ComboBox::insertItem(int index, std::string text, std::int32_t itemData) {
    if (index < 0 || index > listCount()) automation::raise(automation::kSubscriptOutOfRange);
    entries_.insert(entries_.begin() + index, Entry{std::move(text), itemData});
    newIndex_ = index;
    if (listIndex_ >= index) ++listIndex_;
    notify(Aspect::items);
}

void ComboBox::removeItem(int index) {
    entries_.erase(entries_.begin() + static_cast<std::ptrdiff_t>(checked(index)));
    newIndex_ = -1;
    if (listIndex_ == index) {
        listIndex_ = -1;
        textStorage().clear();
    } else if (listIndex_ > index) {
        --listIndex_;
    }
    notify(Aspect::items);
}

void ComboBox::setListIndex(int index) {
    if (index < -1) automation::raise(automation::kSubscriptOutOfRange);
    const std::string text = index < 0 ? std::string() : entries_[checked(index)].text;
    if (index == listIndex_ && text == this->text()) return;
    listIndex_ = index;
    textStorage() = text;
    notify(Aspect::selection);
    if (index >= 0) fire(onClick);
}

std::int32_t ComboBox::itemData(int index) const { return entries_[checked(index)].itemData; }

void ComboBox::setItemData(int index, std::int32_t value) { entries_[checked(index)].itemData = value; }

void ComboBox::setText(std::string text) {
    if (style_ == Style::editable) {
        if (text == this->text()) return;
        takeText(std::move(text));
        notify(Aspect::text);
        fire(onChange);
        return;
    }
    if (text.empty()) return setListIndex(-1);
    const auto found = std::find_if(entries_.begin(), entries_.end(), [&](const Entry& e) { return e.text == text; });
    if (found == entries_.end()) throw automation::RunTimeError(383, "'Text' property is read-only");
    setListIndex(static_cast<int>(found - entries_.begin()));
}

void ComboBox::edited(std::string text) {
    if (text == this->text()) return;
    takeText(std::move(text));
    fire(onChange);
}

void ComboBox::takeText(std::string text) {
    const auto found = std::find_if(entries_.begin(), entries_.end(), [&](const Entry& e) { return e.text == text; });
    listIndex_ = found == entries_.end() ? -1 : static_cast<int>(found - entries_.begin());
    textStorage() = std::move(text);
}

void ComboBox::reset() {
    Control::reset();
    entries_.clear();
    listIndex_ = -1;
    newIndex_ = -1;
}

std::size_t ComboBox::checked(int index) const {
    if (index < 0 || index >= listCount()) automation::raise(automation::kSubscriptOutOfRange);
    return static_cast<std::size_t>(index);
}

} // namespace forms
