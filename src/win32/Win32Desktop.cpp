#include "win32/Win32Desktop.h"

#include "basic/Calendar.h"
#include "forms/Form.h"
#include "win32/Dialogs.h"
#include "win32/Environment.h"
#include "win32/FormWindow.h"
#include "win32/InputGate.h"
#include "win32/MessageLoop.h"
#include "win32/OwnModule.h"
#include "win32/Owned.h"
#include "win32/WindowLog.h"

#include <algorithm>

namespace win32 {
namespace {

class Win32Desktop : public forms::Desktop {
public:
    forms::Answer messageBox(const forms::Message& message) override { return showMessage(owner(), message); }

    void setPointer(forms::Pointer pointer) override {
        hourglass_ = pointer == forms::Pointer::hourglass;
        SetCursor(LoadCursorW(nullptr, hourglass_ ? IDC_WAIT : IDC_ARROW));
    }

    void startProgram(const std::string& program, const std::string& arguments, forms::WindowStyle style) override {
        win32::startProgram(program, arguments, style == forms::WindowStyle::maximised);
    }

    automation::Date now() override {
        SYSTEMTIME t{};
        GetLocalTime(&t);
        return basic::dateOf(t.wYear, t.wMonth, t.wDay, t.wHour, t.wMinute, t.wSecond);
    }

    const basic::Locale& locale() override { return userLocale(); }

protected:
    void runModal(forms::Form& form, forms::Form* owner, const std::function<void()>& shown) override {
        const int showing = form.showing();
        const VisualStyles styles;
        userLocaleChanged(); // perhaps, while no window was there to be told
        HWND behind = owner ? windowOf(*owner) : nullptr;
        if (!behind) behind = topWindow();
        {
            FormWindow window(form, behind, behind ? behind : hostsWindow(), hourglass_);
            windows_.push_back(&window);
            window.show();
            shown();
            window.announce();
            serve([&] { return form.showing() == showing && window.alive(); });
            windows_.erase(std::remove(windows_.begin(), windows_.end(), &window), windows_.end());
        }
        if (!windows_.empty()) return;
        forgetKeptKeys();
        logWindow("alive", alive().text());
    }

    std::optional<std::size_t> chooseFromMenu(forms::Form& form, const forms::Menu& menu) override {
        HWND window = windowOf(form);
        return showMenu(window ? window : owner(), menu);
    }

private:
    HWND windowOf(const forms::Form& form) const {
        for (const FormWindow* window : windows_)
            if (&window->form() == &form && window->alive()) return window->handle();
        return nullptr;
    }

    /// Of our forms.
    HWND topWindow() const {
        for (auto window = windows_.rbegin(); window != windows_.rend(); ++window)
            if ((*window)->alive()) return (*window)->handle();
        return nullptr;
    }
    static HWND hostsWindow() {
        HWND active = GetActiveWindow();
        return active ? GetAncestor(active, GA_ROOT) : nullptr;
    }
    /// The window that a box or a menu stands before: our topmost, else the host's.
    HWND owner() const {
        HWND top = topWindow();
        return top ? top : hostsWindow();
    }

    std::vector<FormWindow*> windows_;
    bool hourglass_ = false;
};

} // namespace

std::unique_ptr<forms::Desktop> makeDesktop() {
    const VisualStyles styles;
    INITCOMMONCONTROLSEX classes{sizeof classes, ICC_LISTVIEW_CLASSES | ICC_STANDARD_CLASSES | ICC_WIN95_CLASSES};
    InitCommonControlsEx(&classes);
    return std::make_unique<Win32Desktop>();
}

} // namespace win32
