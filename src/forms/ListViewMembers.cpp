// The members by which a component reaches a list, its lines and its columns.
#include "basic/Conversion.h"
#include "forms/Desktop.h"
#include "forms/Form.h"
#include "forms/ListView.h"

namespace forms {

using automation::Access;
using automation::Arguments;
using automation::Array;
using automation::Members;
using automation::ObjectPtr;
using automation::Value;

namespace {

/// An object that belongs to a list and keeps it alive.
class PartOfList : public automation::Object {
public:
    explicit PartOfList(ListView& list) : list_(list), alive_(list.self()) {}
    ListView& list() const { return list_; }
    std::string text(const Value& value) const { return basic::cStr(value, list_.form().desktop().locale()); }

private:
    ListView& list_;
    ObjectPtr alive_;
};

class ListItems : public automation::WithMembers<ListItems, PartOfList> {
public:
    using WithMembers::WithMembers;
    static const Members<ListItems>& members();
    std::string className() const override { return "ListItems"; }
    Array elements() override {
        Array all;
        for (int i = 1; i <= list().count(); ++i) all.emplace_back(list().itemPtr(i));
        return all;
    }

private:
    /// By number, or by key when `which` is text. Error 9 for one that is not there.
    int indexOf(const Value& which) const {
        const auto* key = which.as<std::string>();
        if (!key) return basic::cLng(which);
        for (int i = 1; i <= list().count(); ++i)
            if (!key->empty() && list().item(i).key() == *key) return i;
        automation::raise(automation::kSubscriptOutOfRange);
    }
    Value add(Arguments a) const {
        const auto given = [&](std::size_t at) { return a.size() > at && !a[at].isMissing() && !a[at].isEmpty(); };
        const int at = given(0) ? basic::cLng(a[0]) : list().count() + 1;
        ListItem& item = list().insert(at, given(2) ? text(a[2]) : std::string());
        if (given(1)) item.setKey(text(a[1]));
        return list().itemPtr(at);
    }
};

const Members<ListItems>& ListItems::members() {
    static const Members<ListItems> table = [] {
        Members<ListItems> m;
        m.readOnly("Count", [](ListItems& l) { return Value(std::int32_t{l.list().count()}); });
        for (const char* name : {"Item", ""})
            m.method(name, 1, 1, [](ListItems& l, Arguments a) { return Value(l.list().itemPtr(l.indexOf(a[0]))); });
        m.method("Add", 0, 5, [](ListItems& l, Arguments a) { return l.add(a); });
        m.method("Remove", 1, 1, [](ListItems& l, Arguments a) {
            l.list().remove(l.indexOf(a[0]));
            return Value();
        });
        m.method("Clear", 0, 0, [](ListItems& l, Arguments) {
            l.list().clear();
            return Value();
        });
        return m;
    }();
    return table;
}

class ColumnHeader : public automation::WithMembers<ColumnHeader, PartOfList> {
public:
    ColumnHeader(ListView& list, int index) : WithMembers(list), index_(index) {}
    static const Members<ColumnHeader>& members();
    std::string className() const override { return "ColumnHeader"; }

private:
    const ListColumn& column() const {
        if (index_ > static_cast<int>(list().columns().size())) automation::raise(automation::kSubscriptOutOfRange);
        return list().columns()[static_cast<std::size_t>(index_ - 1)];
    }

    int index_;
};

const Members<ColumnHeader>& ColumnHeader::members() {
    static const Members<ColumnHeader> table = [] {
        Members<ColumnHeader> m;
        for (const char* name : {"Text", ""})
            m.property(
                name, [](ColumnHeader& c) { return Value(c.column().text); },
                [](ColumnHeader& c, const Value& v) { c.list().setColumnText(c.index_, c.text(v)); });
        m.property(
            "Width", [](ColumnHeader& c) { return Value(std::int32_t{c.column().width}); },
            [](ColumnHeader& c, const Value& v) { c.list().setColumnWidth(c.index_, basic::cLng(v)); });
        m.property(
            "Alignment",
            [](ColumnHeader& c) { return Value(std::int32_t{static_cast<std::int16_t>(c.column().alignment)}); },
            [](ColumnHeader& c, const Value& v) { c.list().setColumnAlignment(c.index_, basic::cLng(v)); });
        m.readOnly("Index", [](ColumnHeader& c) { return Value(std::int32_t{c.index_}); });
        return m;
    }();
    return table;
}

class ColumnHeaders : public automation::WithMembers<ColumnHeaders, PartOfList> {
public:
    using WithMembers::WithMembers;
    static const Members<ColumnHeaders>& members();
    std::string className() const override { return "ColumnHeaders"; }
    Array elements() override {
        Array all;
        for (int i = 1; i <= count(); ++i) all.push_back(header(i));
        return all;
    }

private:
    int count() const { return static_cast<int>(list().columns().size()); }
    Value header(int index) const {
        if (index < 1 || index > count()) automation::raise(automation::kSubscriptOutOfRange);
        return std::make_shared<ColumnHeader>(list(), index);
    }
};

const Members<ColumnHeaders>& ColumnHeaders::members() {
    static const Members<ColumnHeaders> table = [] {
        Members<ColumnHeaders> m;
        m.readOnly("Count", [](ColumnHeaders& c) { return Value(std::int32_t{c.count()}); });
        for (const char* name : {"Item", ""})
            m.method(name, 1, 1, [](ColumnHeaders& c, Arguments a) { return c.header(basic::cLng(a[0])); });
        return m;
    }();
    return table;
}

/// The collection, or with an argument its element: the language lets the default member go unsaid.
template <class Collection> Value collection(ListView& list, Arguments arguments) {
    const auto all = std::make_shared<Collection>(list);
    return arguments.empty() ? Value(all) : all->invoke(Access::get, "Item", arguments);
}

} // namespace

const Members<ListView>& ListView::members() {
    static const Members<ListView> table = [] {
        Members<ListView> m;
        m.method("ListItems", 0, 1, [](ListView& l, Arguments a) { return collection<ListItems>(l, a); });
        m.method("ColumnHeaders", 0, 1, [](ListView& l, Arguments a) { return collection<ColumnHeaders>(l, a); });
        m.property(
            "SelectedItem",
            [](ListView& l) {
                return l.selectedIndex() == 0 ? Value(ObjectPtr()) : Value(l.itemPtr(l.selectedIndex()));
            },
            [](ListView& l, const Value& v) {
                const ObjectPtr line = v.objectPtr();
                const int index = line ? l.indexOf(dynamic_cast<ListItem*>(line.get())) : 0;
                if (line && index == 0) automation::raise(automation::kTypeMismatch);
                l.select(index);
            });
        return m;
    }();
    return table;
}

} // namespace forms
