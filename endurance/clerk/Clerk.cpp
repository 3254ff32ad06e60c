// A clerk's eyes and hands, and what is likely to be done next.
#include "endurance/clerk/Clerk.h"

#include "basic/Text.h"
#include "screens/lines/frmRequestDetail.h"
#include "screens/register/frmMaster.h"
#include "screens/request/frmRequest.h"

namespace endurance::clerk {
std::string FormView::operator[](std::string_view control) const {
    const auto found = texts.find(control);
    return found == texts.end() ? std::string() : found->second;
}

FormView lookAt(const forms::Form& form) {
    FormView view;
    view.shown = form.visible();
    if (!view.shown) return view;
    for (forms::Control* control : form.controls()) {
        if (!control->visible()) continue;
        const std::string& name = control->name();
        std::string& text = view.texts[name] = control->text();
        const auto* box = dynamic_cast<forms::TextBox*>(control);
        if (control->enabled() && !(box && box->locked())) view.on.insert(name);
        if (const auto* tick = dynamic_cast<forms::CheckBox*>(control)) text = std::to_string(tick->value());
        if (const auto* option = dynamic_cast<forms::OptionButton*>(control)) text = option->value() ? "1" : "0";
        if (const auto* combo = dynamic_cast<forms::ComboBox*>(control); combo && combo->hasSelection())
            view.texts[name + ".id"] = std::to_string(combo->selectedData());
        if (const auto* grid = dynamic_cast<forms::Grid*>(control)) {
            view.rows = support::rowsOf(*grid);
            view.row = grid->row();
        }
        if (const auto* list = dynamic_cast<forms::ListView*>(control)) {
            view.rows = support::rowsOf(*list);
            view.row = list->selectedIndex();
        }
    }
    return view;
}

View look(support::Till& till) {
    View view;
    view.waiting = till.desktop.waiting();
    view.form = till.user.form();
    if (view.waiting == Waiting::message) view.box = till.desktop.message().text;
    if (view.waiting == Waiting::nothing || view.waiting == Waiting::ended) return view;
    view.master = lookAt(till.module.master());
    view.editor = lookAt(till.module.request());
    view.entry = lookAt(till.module.requestDetail());
    if (till.desktop.topForm()) view.top = lookAt(*till.desktop.topForm());
    view.shopInForce = std::to_string(till.module.session.lngOtherShopID);
    return view;
}

Clerk::Clerk(Company& where)
    : Till(where.file(), {}, [this](automation::ObjectFactory inner) { return around(std::move(inner)); }),
      company(where) {
    component.intCompanyID = kCompanyId;
    till = this;
    listen();
}

Clerk::~Clerk() {
    disarm();
    desktop.abandon();
}

void Clerk::listen() {
    connection->failOn([this](std::string_view text) { return statement(text), false; });
}

std::string Clerk::place() const {
    switch (desktop.waiting()) {
    case Waiting::form: return user.form();
    case Waiting::message: return "message";
    case Waiting::menu: return "menu";
    default: return "nobody";
    }
}

bool Clerk::can(const std::string& name) const {
    if (!atForm() || !desktop.topForm()) return false;
    const forms::Control* control = desktop.topForm()->find(name);
    return control && control->visible() && control->enabled();
}

bool Clerk::clicksOn(const std::string& control) {
    if (!can(control)) return false;
    user.clicks(control);
    return true;
}

bool Clerk::comesTo(const std::string& control) {
    if (!can(control) || !desktop.topForm()->find(control)->canTakeFocus()) return false;
    if (user.focus() != control) user.focuses(control);
    return atForm() && user.focus() == control;
}

void Clerk::selectsAll() {
    desktop.perform([this] {
        if (auto* box = dynamic_cast<forms::TextBox*>(desktop.topForm()->activeControl()))
            box->selectionMoved(0, basic::len(box->text()));
    });
}

void Clerk::keys(const std::string& text) {
    const std::string form = user.form();
    for (int i = 1; i <= basic::len(text) && atForm() && user.form() == form && !user.focus().empty(); ++i)
        user.types(basic::mid(text, i, 1));
}

bool Clerk::fills(const std::string& box, const std::string& text) {
    if (!comesTo(box)) return false;
    selectsAll();
    memory.typedInto.insert(box);
    memory.typed = {text, box};
    keys(text.empty() ? "\b" : text);
    return true;
}

bool Clerk::picksRow(const std::string& list, int which) {
    const int count = static_cast<int>(can(list) ? sees().rows.size() : 0);
    if (count == 0 || !comesTo(list)) return false;
    user.selectsRow(list, which % count + 1);
    return true;
}

bool Clerk::play(const Step& step, automation::Date time) {
    desktop.time = time;
    static_cast<Now&>(memory) = {};
    static_cast<Troubles&>(*this) = {};
    if (step.verb == "fault") {
        arm(static_cast<Fault>(step.a % kFaults), step.b, step.c);
        return true;
    }
    const std::string here = place();
    for (const Act& act : kActs)
        if (act.verb == step.verb && (act.place == here || (act.place.empty() && atForm())))
            return act.does(*this, step);
    return false;
}

std::vector<std::string_view> Clerk::possible() const {
    std::vector<std::string_view> verbs;
    const std::string here = place();
    for (const Act& act : kActs)
        if (act.place == here || (act.place.empty() && atForm()))
            verbs.insert(verbs.end(), static_cast<std::size_t>(act.weight), act.verb);
    return verbs;
}

void Clerk::ownerRollsBack() {
    if (dead || !inTransaction() || !(holdsRows() || place() == "frmMaster")) return;
    connection->failOn(nullptr);
    connection->call("RollbackTrans");
    listen();
}

void Clerk::recover() {
    if (std::exchange(diedNow, false)) deadFor_ = 4;
    if (!dead || --deadFor_ > 0) return;
    connection->call("Close");
    connection->call("Open");
    dead = false;
}

} // namespace endurance::clerk
