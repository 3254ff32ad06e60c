// A clerk's hands, the world around the till, and what is likely to be done next.
#include "endurance/clerk/Clerk.h"

#include "basic/Calendar.h"
#include "basic/Text.h"

namespace endurance::clerk {

using support::Waiting;

const char* const kVerbNames[kVerbs] = {
    "shows",  "fault",    "rival",       "setting",     "readsLate",   "answers", "menu",      "ok",
    "cancel", "frame",    "adds",        "edits",       "deletes",     "prints",  "refreshes", "sorts",
    "seeks",  "shop",     "addsLines",   "changesLine", "removesLine", "remarks", "date",      "ticks",
    "scans",  "quantity", "badQuantity", "price",       "enters",      "walks",   "fetches",   "dialog",
    "pastes", "searches", "again",       "picks",       "column",      "reason",  "option"};

namespace {

basic::Locale localeOf(int number) {
    basic::Locale locale;
    if (number == 1) {
        locale.decimalSeparator = ',';
        locale.groupSeparator = '.';
    }
    if (number == 2) locale.shortDate = "dd/MM/yy";
    if (number == 3) {
        locale.dateOrder = basic::DateOrder::yearMonthDay;
        locale.dateSeparator = '.';
        locale.shortDate = "yyyy. MM. dd.";
        locale.decimalSeparator = ',';
        locale.groupSeparator = '.';
    }
    return locale;
}

} // namespace

std::string asCode(const Step& step) {
    return "{" + std::to_string(step.till) + ", Verb::" + kVerbNames[static_cast<int>(step.verb)] + ", " +
           std::to_string(step.a) + ", " + std::to_string(step.b) + ", " + std::to_string(step.c) + "},";
}

Clerk::Clerk(Company& company)
    : Shop(company.file(), {}, [this](automation::ObjectFactory inner) { return around(std::move(inner)); }),
      company_(company) {
    component.intCompanyID = kCompanyId;
    connection->failOn([this](std::string_view text) {
        statement(text);
        return false;
    });
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

bool Clerk::can(const std::string& name) const {
    if (desktop.waiting() != Waiting::form || !desktop.topForm()) return false;
    const forms::Control* control = desktop.topForm()->find(name);
    return control && control->visible() && control->enabled();
}

bool Clerk::says(const std::string& what) {
    memory.said += (memory.said.empty() ? "" : ", ") + what;
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
    memory.said.clear();
    memory.typed.clear();
    memory.meant.clear();
    switch (step.verb) {
    case Verb::shows: return showsRegister(step);
    case Verb::readsLate: return readsLate(step.a);
    case Verb::fault:
        arm(static_cast<Fault>(step.a % kFaults), step.b, step.c);
        return says("fault " + std::to_string(step.a % kFaults) + " in " + std::to_string(step.b) +
                    (step.a % kFaults >= 6 ? std::string(" of ") + of(kMembers, step.c).name : std::string()));
    default: break;
    }
    if (step.verb == Verb::answers || step.verb == Verb::menu) return anywhere(step);
    if (desktop.waiting() != Waiting::form) return false;
    const std::string form = user.form();
    if (form == "frmMaster" && atRegister(step, minute)) return true;
    if (form == "frmRequest" && atEditor(step)) return true;
    if (form == "frmRequestDetail" && atEntry(step)) return true;
    return atDialogs(step) || anywhere(step);
}

bool Clerk::showsRegister(const Step& step) {
    if (desktop.waiting() != Waiting::nothing && desktop.waiting() != Waiting::ended) return false;
    Memory fresh;
    fresh.user = of(kUsers, step.a);
    fresh.shop = of(kShops, step.b);
    fresh.screen = of(kScreens, step.b / 3);
    fresh.locale = step.c % 4;
    fresh.badDate = step.c / 4 % 12 == 5;
    memory = fresh;
    commaIsTyped = step.c / 48 % 3 == 1;
    fetchHasProperties = step.c / 144 % 6 == 1;
    noneIsNull = step.c / 864 % 4 == 1;
    desktop.userLocale = localeOf(memory.locale);
    component.intUserID = static_cast<std::int16_t>(memory.user);
    component.intShopid = static_cast<std::int16_t>(memory.shop);
    component.interfaceid = memory.screen;
    component.dtProcessDate = memory.badDate ? automation::Date{-700000} : basic::dateOf(2026, 3, 31);
    says("user " + std::to_string(memory.user) + " in shop " + std::to_string(memory.shop) + " opens " +
         std::to_string(memory.screen) + ", locale " + std::to_string(memory.locale) +
         (memory.badDate ? ", with a date that cannot be written" : "") + (commaIsTyped ? ", commas pass" : "") +
         (fetchHasProperties ? ", fetch has properties" : "") + (noneIsNull ? ", none is Null" : ""));
    opens();
    return true;
}

bool Clerk::readsLate(int which) {
    if (kept.empty()) return false;
    const auto form = std::next(kept.begin(), which % static_cast<int>(kept.size()));
    const auto read = [object = form->second] { object->get("Caption"); };
    if (desktop.waiting() == Waiting::form)
        desktop.perform(read);
    else if (desktop.waiting() == Waiting::ended)
        desktop.start(read);
    else
        return false;
    return says("a component reads the caption of " + form->first);
}

bool Clerk::anywhere(const Step& step) {
    switch (step.verb) {
    case Verb::answers: {
        if (desktop.waiting() != Waiting::message) return false;
        using forms::Answer;
        Answer answer = Answer::ok;
        const auto buttons = desktop.message().buttons;
        if (buttons != forms::MessageButtons::ok) answer = step.a % 2 ? Answer::yes : Answer::no;
        if (buttons == forms::MessageButtons::yesNoCancel && step.a % 5 == 4) answer = Answer::cancel;
        says(std::string("answers ") + of({"OK", "Yes", "No", "Cancel"}, static_cast<int>(answer)) + " to \"" +
             desktop.message().text.substr(0, 90) + "\"");
        desktop.answer(answer);
        return true;
    }
    case Verb::menu:
        if (desktop.waiting() != Waiting::menu) return false;
        user.dismissesMenu();
        return says("leaves the menu");
    case Verb::ok: return clicksOn("cmdOk") || clicksOn("cmdOK");
    case Verb::cancel: return clicksOn("cmdCancel") || clicksOn("CmdClose") || clicksOn("cmdClose");
    case Verb::frame: user.closesFrame(); return says("closes " + user.form() + " by its frame");
    default: return false;
    }
}

std::vector<Verb> Clerk::possible() const {
    std::vector<Verb> verbs;
    const auto add = [&](Verb verb, int weight) { verbs.insert(verbs.end(), static_cast<std::size_t>(weight), verb); };
    if (desktop.waiting() == Waiting::nothing || desktop.waiting() == Waiting::ended) {
        add(Verb::shows, 10);
        if (desktop.waiting() == Waiting::ended) add(Verb::readsLate, 1);
        return verbs;
    }
    if (desktop.waiting() == Waiting::message) return {Verb::answers};
    if (desktop.waiting() == Waiting::menu) return {Verb::menu};
    const std::string form = user.form();
    struct Likely {
        const char* form;
        std::initializer_list<std::pair<Verb, int>> verbs;
    };
    static const Likely table[] = {
        {"frmMaster",
         {{Verb::adds, 20},
          {Verb::edits, 20},
          {Verb::deletes, 5},
          {Verb::prints, 2},
          {Verb::refreshes, 1},
          {Verb::sorts, 2},
          {Verb::seeks, 1},
          {Verb::cancel, 3},
          {Verb::frame, 1}}},
        {"frmRequest",
         {{Verb::shop, 10},
          {Verb::addsLines, 14},
          {Verb::changesLine, 6},
          {Verb::removesLine, 3},
          {Verb::remarks, 4},
          {Verb::date, 3},
          {Verb::ticks, 2},
          {Verb::ok, 14},
          {Verb::cancel, 2},
          {Verb::frame, 2}}},
        {"frmRequestDetail",
         {{Verb::scans, 18},
          {Verb::quantity, 12},
          {Verb::badQuantity, 3},
          {Verb::price, 3},
          {Verb::enters, 4},
          {Verb::walks, 3},
          {Verb::fetches, 4},
          {Verb::dialog, 4},
          {Verb::pastes, 1},
          {Verb::ok, 18},
          {Verb::cancel, 6},
          {Verb::frame, 2}}},
        {"FetchWindow", {{Verb::searches, 3}, {Verb::picks, 4}, {Verb::column, 1}, {Verb::ok, 5}, {Verb::cancel, 2}}},
        {"FrmFetch",
         {{Verb::searches, 5},
          {Verb::again, 2},
          {Verb::picks, 4},
          {Verb::column, 1},
          {Verb::ok, 4},
          {Verb::cancel, 2}}},
        {"frmscanBc", {{Verb::scans, 5}, {Verb::cancel, 1}, {Verb::frame, 1}}},
        {"frmcancelreason", {{Verb::reason, 3}, {Verb::ok, 3}, {Verb::frame, 1}}},
        {"frmPrint", {{Verb::option, 2}, {Verb::ok, 3}, {Verb::cancel, 2}}},
    };
    for (const Likely& likely : table)
        if (form == likely.form)
            for (const auto& [verb, weight] : likely.verbs) add(verb, weight);
    if (verbs.empty()) add(Verb::cancel, 1), add(Verb::frame, 1);
    return verbs;
}

void Clerk::ownerRollsBack() {
    if (dead || !inTransaction() || !holdsRows()) return;
    connection->failOn(nullptr);
    connection->call("RollbackTrans");
    connection->failOn([this](std::string_view text) {
        statement(text);
        return false;
    });
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
