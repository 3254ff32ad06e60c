#include "forms/Desktop.h"

#include "automation/Members.h"
#include "forms/Form.h"
#include "forms/TextBox.h"

#include <exception>

namespace forms {
namespace {

constexpr const char* kTab = "{TAB}";
constexpr const char* kBackTab = "+{TAB}";
constexpr const char* kSelectAll = "{HOME}+{END}";

void report(Desktop& desktop, const std::string& text, const std::string& title) {
    try {
        desktop.messageBox({text, title, MessageIcon::critical, MessageButtons::ok, Answer::ok});
    } catch (...) {
        // Nothing is left to report with; the handler's caller must go on.
    }
}

/// Runs `body`; what it throws is shown and goes no further.
void guard(Desktop& desktop, const std::function<void()>& body) {
    try {
        body();
    } catch (const automation::RunTimeError& error) {
        report(desktop, error.description(), error.source());
    } catch (const std::exception& error) {
        report(desktop, error.what(), "goodsreq");
    } catch (...) {
        report(desktop, "Unexpected error", "goodsreq");
    }
}

} // namespace

void Desktop::popupMenu(Form& form, const Menu& menu) {
    const std::optional<std::size_t> choice = chooseFromMenu(form, menu);
    if (!choice || *choice >= menu.items.size()) return;
    const MenuItem& item = *menu.items[*choice];
    if (item.enabled && item.onClick) handle(item.onClick);
}

void Desktop::sendKeys(std::string_view keys) {
    Level& level = levels_.empty() ? ground_ : levels_.back();
    std::vector<std::string> sent;
    while (!keys.empty()) {
        const char* known = nullptr;
        for (const char* candidate : {kTab, kBackTab, kSelectAll})
            if (automation::sameName(keys.substr(0, std::string_view(candidate).size()), candidate)) known = candidate;
        if (!known) automation::raise(automation::kInvalidCall);
        sent.emplace_back(known);
        keys.remove_prefix(sent.back().size());
    }
    level.keys.insert(level.keys.end(), sent.begin(), sent.end());
    if (level.depth == 0) handle([] {}); // No handler runs that they would have to wait for.
}

void Desktop::handle(const std::function<void()>& handler) {
    // Levels above come and go while the handler runs; this one keeps its place.
    const std::size_t at = levels_.size();
    const auto level = [&]() -> Level& { return at == 0 ? ground_ : levels_[at - 1]; };
    ++level().depth;
    guard(*this, handler);
    if (level().depth == 1) guard(*this, [this] { playKeys(); });
    --level().depth;
}

void Desktop::show(Form& form, Form* owner) {
    const int showing = form.showing();
    levels_.push_back(Level{&form, 0, {}});
    const auto shown = [this, &form] { handle([&form] { form.activate(); }); };
    guard(*this, [&] { runModal(form, owner, shown); });
    levels_.pop_back();
    // A desktop that ends before its time leaves the form standing.
    if (form.showing() == showing) form.drop();
    Form* below = topForm();
    if (below && below->visible()) below->activate();
}

void Desktop::playKeys() {
    const auto queue = [this]() -> std::vector<std::string>& {
        return levels_.empty() ? ground_.keys : levels_.back().keys;
    };
    while (!queue().empty()) {
        const std::string key = queue().front();
        queue().erase(queue().begin());
        Form* form = topForm();
        if (!form || !form->visible()) continue;
        if (key == kTab || key == kBackTab)
            form->tab(key == kBackTab);
        else if (auto* box = dynamic_cast<TextBox*>(form->activeControl()))
            box->selectAll();
    }
}

} // namespace forms
