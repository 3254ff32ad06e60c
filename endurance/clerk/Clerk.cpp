// A clerk's hands, and what is likely to be done next.
#include "endurance/clerk/Clerk.h"

#include "basic/Text.h"

namespace endurance::clerk {

using support::Waiting;

Clerk::Clerk(Company& where)
    : Shop(where.file(), {}, [this](automation::ObjectFactory inner) { return around(std::move(inner)); }),
      company(where) {
    component.intCompanyID = kCompanyId;
    listen();
    die = [this] {
        connection->kill();
        dead = diedNow = true;
    };
    commit = [this] { connection->database().commit(); };
    inTransaction = [this] { return connection->isOpen() && connection->database().inTransaction(); };
    failBoxes = [this](int count) { desktop.refusals += count; };
}

Clerk::~Clerk() {
    disarm();
    desktop.abandon();
    kept.clear();
}

void Clerk::listen() {
    connection->failOn([this](std::string_view text) {
        statement(text);
        return false;
    });
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
    if (desktop.waiting() != Waiting::form || !desktop.topForm()) return false;
    const forms::Control* control = desktop.topForm()->find(name);
    return control && control->visible() && control->enabled();
}

bool Clerk::says(const std::string& what) {
    memory.said += (memory.said.empty() ? "" : ", ") + what;
    for (char& c : memory.said)
        if (c == '\r' || c == '\n') c = ' ';
    return true;
}

bool Clerk::clicksOn(const std::string& control) {
    if (!can(control)) return false;
    says("clicks " + control);
    user.clicks(control);
    return true;
}

bool Clerk::comesTo(const std::string& control) {
    if (!can(control) || !desktop.topForm()->find(control)->canTakeFocus()) return false;
    if (user.focus() != control) user.focuses(control);
    return desktop.waiting() == Waiting::form && user.focus() == control;
}

void Clerk::selectsAll() {
    desktop.perform([this] {
        if (auto* box = dynamic_cast<forms::TextBox*>(desktop.topForm()->activeControl()))
            box->selectionMoved(0, basic::len(box->text()));
    });
}

void Clerk::keys(const std::string& text) {
    const std::string form = user.form();
    for (std::size_t i = 0; i < text.size();) {
        std::size_t length = 1;
        while (i + length < text.size() && (text[i + length] & 0xC0) == 0x80) ++length;
        if (desktop.waiting() != Waiting::form || user.form() != form || user.focus().empty()) return;
        user.types(text.substr(i, length));
        i += length;
    }
}

bool Clerk::fills(const std::string& box, const std::string& text) {
    if (!comesTo(box)) return false;
    selectsAll();
    says("types \"" + text + "\" into " + box);
    keys(text.empty() ? "\b" : text);
    return true;
}

bool Clerk::play(const Step& step, long minute) {
    desktop.time.days = static_cast<double>(minute) / 1440;
    memory.pressed = 0;
    memory.said.clear();
    memory.typed.clear();
    memory.meant.clear();
    memory.answer.reset();
    if (step.verb == "fault") {
        arm(static_cast<Fault>(step.a % kFaults), step.b, step.c);
        return says("fault " + std::to_string(step.a % kFaults) + " in " + std::to_string(step.b) + " of " +
                    of(kMembers, step.c).name);
    }
    const std::string here = place();
    if (here != "message" && here != "menu") memory.doing = here + ":" + std::string(step.verb);
    for (const Act& act : kActs)
        if (act.verb == step.verb && (act.place == here || (act.place.empty() && desktop.waiting() == Waiting::form)))
            return act.does(*this, step);
    return false;
}

std::vector<std::string_view> Clerk::possible() const {
    std::vector<std::string_view> verbs;
    const std::string here = place();
    for (const Act& act : kActs)
        if (act.place == here || (act.place.empty() && desktop.waiting() == Waiting::form))
            verbs.insert(verbs.end(), static_cast<std::size_t>(act.weight), act.verb);
    return verbs;
}

void Clerk::ownerRollsBack() {
    if (dead || !inTransaction() || !holdsRows()) return;
    connection->failOn(nullptr);
    connection->call("RollbackTrans");
    listen();
}

void Clerk::recover() {
    if (diedNow) deadFor_ = 4;
    diedNow = false;
    if (dead && --deadFor_ == 0) {
        connection->call("Close");
        connection->call("Open");
        dead = false;
    }
}

} // namespace endurance::clerk
