// The members by which a component reaches a form and its controls.
#include "basic/Conversion.h"
#include "forms/Desktop.h"
#include "forms/Form.h"

namespace forms {

using automation::Access;
using automation::Arguments;
using automation::Array;
using automation::Members;
using automation::Value;

namespace {

/// The form's controls as a collection, counted from 0.
class FormControls : public automation::WithMembers<FormControls> {
public:
    explicit FormControls(std::shared_ptr<Form> form) : form_(std::move(form)) {}

    static const Members<FormControls>& members();
    std::string className() const override { return "Controls"; }
    Array elements() override { return form_->elements(); }

private:
    Value item(const Value& which) const;

    std::shared_ptr<Form> form_;
};

const Members<FormControls>& FormControls::members() {
    static const Members<FormControls> table = [] {
        Members<FormControls> m;
        m.readOnly("Count",
                   [](FormControls& c) { return Value(static_cast<std::int32_t>(c.form_->controls().size())); });
        for (const char* name : {"Item", ""})
            m.method(name, 1, 1, [](FormControls& c, Arguments a) { return c.item(a[0]); });
        return m;
    }();
    return table;
}

Value FormControls::item(const Value& which) const {
    if (const auto* name = which.as<std::string>()) {
        Control* control = form_->find(*name);
        if (!control) throw automation::RunTimeError(730, "Control '" + *name + "' not found");
        return control->self();
    }
    const int index = basic::cLng(which);
    if (index < 0 || index >= static_cast<int>(form_->controls().size()))
        automation::raise(automation::kSubscriptOutOfRange);
    return form_->controls()[static_cast<std::size_t>(index)]->self();
}

const Members<Form>& formMembers() {
    static const Members<Form> table = [] {
        Members<Form> m;
        m.readOnly("Name", [](Form& f) { return Value(f.name()); });
        m.property(
            "Caption", [](Form& f) { return Value(f.caption()); },
            [](Form& f, const Value& v) { f.setCaption(basic::cStr(v, f.desktop().locale())); });
        m.property(
            "BackColor", [](Form& f) { return Value(f.backColor()); },
            [](Form& f, const Value& v) { f.setBackColor(basic::cLng(v)); });
        m.property(
            "Width", [](Form& f) { return Value(std::int32_t{f.width()}); },
            [](Form& f, const Value& v) { f.setSize(basic::cLng(v), f.height()); });
        m.property(
            "Height", [](Form& f) { return Value(std::int32_t{f.height()}); },
            [](Form& f, const Value& v) { f.setSize(f.width(), basic::cLng(v)); });
        m.property(
            "Tag", [](Form& f) { return Value(f.tag()); },
            [](Form& f, const Value& v) { f.setTag(basic::cStr(v, f.desktop().locale())); });
        m.readOnly("Visible", [](Form& f) { return Value(f.visible()); });
        m.readOnly("ActiveControl", [](Form& f) {
            return Value(f.activeControl() ? f.activeControl()->self() : automation::ObjectPtr());
        });
        for (const char* name : {"Controls", ""})
            m.method(name, 0, 1, [](Form& f, Arguments a) {
                auto controls = std::make_shared<FormControls>(f.shared_from_this());
                return a.empty() ? Value(controls) : controls->invoke(Access::get, "Item", a);
            });
        return m;
    }();
    return table;
}

} // namespace

Value Form::invoke(Access access, std::string_view member, Arguments arguments) {
    ensureDesigned();
    if (formMembers().has(member)) return formMembers().invoke(*this, access, member, arguments);
    Control* control = find(member);
    if (!control) automation::raise(automation::kNoSuchMember);
    if (access == Access::get && arguments.empty()) return control->self();
    return control->invoke(access, "", arguments); // The control's own default member takes it.
}

bool Form::has(std::string_view member) const { return formMembers().has(member) || find(member); }

Array Form::elements() {
    ensureDesigned();
    Array all;
    for (Control* control : controls_) all.emplace_back(control->self());
    return all;
}

} // namespace forms
