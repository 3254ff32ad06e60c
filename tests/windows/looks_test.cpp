// Every screen of the DLL on the screen that the machine has: no text is cut, nothing lies over or outside.
// It runs at several resolutions.
#include "tests/support/Scratch.h"
#include "tests/windows/Session.h"
#include "win32/Dpi.h"
#include "win32/FormWindow.h"
#include "win32/Text.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <vector>

namespace {

struct Seen {
    std::string name; ///< class and text
    std::wstring windowClass;
    HWND window;
    RECT area; ///< within the form
};

std::vector<Seen> controlsOf(HWND form) {
    std::vector<Seen> all;
    for (HWND child = GetWindow(form, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT)) {
        if (!IsWindowVisible(child)) continue;
        wchar_t name[64] = L"";
        wchar_t text[200] = L"";
        GetClassNameW(child, name, 64);
        SendMessageW(child, WM_GETTEXT, 200, reinterpret_cast<LPARAM>(text));
        RECT area{};
        GetWindowRect(child, &area);
        MapWindowPoints(nullptr, form, reinterpret_cast<POINT*>(&area), 2);
        all.push_back({win32::narrow(std::wstring(name) + L" \"" + text + L"\""), name, child, area});
    }
    return all;
}

/// The room that the control's caption has, in pixels; the rest is border, or the box of a check or an option.
SIZE roomFor(const Seen& control, win32::Dpi dpi) {
    RECT inside{};
    GetClientRect(control.window, &inside);
    SIZE room{inside.right, inside.bottom};
    if (control.windowClass != L"Button") return room;
    const LONG_PTR kind = GetWindowLongPtrW(control.window, GWL_STYLE) & BS_TYPEMASK;
    const bool marked =
        kind == BS_AUTOCHECKBOX || kind == BS_CHECKBOX || kind == BS_AUTORADIOBUTTON || kind == BS_RADIOBUTTON;
    room.cx -= MulDiv(marked ? 17 : 6, dpi.value(), 96);
    return room;
}

SIZE sizeOfCaption(HWND window) {
    HDC dc = GetDC(window);
    HGDIOBJ former = SelectObject(dc, reinterpret_cast<HGDIOBJ>(SendMessageW(window, WM_GETFONT, 0, 0)));
    RECT needed{};
    wchar_t text[200] = L"";
    SendMessageW(window, WM_GETTEXT, 200, reinterpret_cast<LPARAM>(text));
    DrawTextW(dc, text, -1, &needed, DT_CALCRECT | DT_SINGLELINE);
    SelectObject(dc, former);
    ReleaseDC(window, dc);
    return {needed.right, needed.bottom};
}

bool isFrame(const Seen& control) {
    return control.windowClass == L"Button" &&
           (GetWindowLongPtrW(control.window, GWL_STYLE) & BS_TYPEMASK) == BS_GROUPBOX;
}

void expectWhole(HWND form) {
    SCOPED_TRACE(win32::narrow(win32::windowText(form)));
    const win32::Dpi dpi = win32::Dpi::of(form);
    if (const char* dots = std::getenv("EXPECTED_DPI")) {
        EXPECT_EQ(dpi.value(), std::atoi(dots));
    }
    RECT inside{};
    GetClientRect(form, &inside);
    RECT whole = inside; // The frame of a maximised window lies outside the screen.
    if (!IsZoomed(form)) GetWindowRect(form, &whole);
    const RECT work = win32::workAreaOf(form);
    EXPECT_LE(whole.right - whole.left, work.right - work.left);
    EXPECT_LE(whole.bottom - whole.top, work.bottom - work.top);
    const std::vector<Seen> controls = controlsOf(form);
    EXPECT_GT(controls.size(), 1u);
    for (std::size_t i = 0; i < controls.size(); ++i) {
        const Seen& one = controls[i];
        SCOPED_TRACE(one.name);
        EXPECT_GE(one.area.left, 0);
        EXPECT_GE(one.area.top, 0);
        EXPECT_LE(one.area.right, inside.right);
        EXPECT_LE(one.area.bottom, inside.bottom);
        if (isFrame(one)) continue;
        if (one.windowClass == L"Button" || one.windowClass == L"Static") {
            const SIZE room = roomFor(one, dpi);
            const SIZE needed = sizeOfCaption(one.window);
            EXPECT_LE(needed.cx, room.cx);
            EXPECT_LE(needed.cy, room.cy);
        }
        for (std::size_t other = i + 1; other < controls.size(); ++other) {
            RECT common{};
            if (isFrame(controls[other]) || one.windowClass == L"Static" || controls[other].windowClass == L"Static")
                continue;
            EXPECT_FALSE(IntersectRect(&common, &one.area, &controls[other].area))
                << "lies over " << controls[other].name;
        }
    }
}

/// From the register to every screen that opens from it.
void lookAround(support::Person& clerk) {
    const auto look = [&] { expectWhole(clerk.window()); };
    if (!clerk.awaits("active frmMaster")) return;
    look();
    ShowWindow(clerk.window(), SW_MAXIMIZE);
    look();
    ShowWindow(clerk.window(), SW_RESTORE);
    if (!support::beginsRequest(clerk)) return;
    look();
    if (!support::beginsLines(clerk)) return;
    look();
    clerk.sendsAlt('l');
    clerk.awaits("unloaded frmRequestDetail");
    clerk.sendsKey(VK_ESCAPE);
    clerk.answers("Save Changes?", IDNO);
    clerk.awaits("unloaded frmRequest");
    clerk.sendsAlt('p');
    if (!clerk.awaits("active frmPrint")) return;
    look();
    clerk.sendsText("\x1b");
    clerk.awaits("unloaded frmPrint");
    support::closesRegister(clerk);
}

TEST(Looks, NothingIsCutOrLiesOver) {
    const automation::ObjectPtr connection = support::openConnection(support::sampleCompany("looks.db"));
    for (const std::int32_t interfaceId : {1507, 1611}) {
        SCOPED_TRACE(interfaceId);
        const automation::ObjectPtr module = support::makeModule(connection, 1, interfaceId);
        support::writeAll(support::printSettings(), "printtoscreen :=1\r\nwindowsprint :=1\r\n");
        support::Person::sits([&] { module->call("Show"); }, lookAround);
        std::filesystem::remove(support::printSettings());
    }
}

} // namespace
