// Every screen of the DLL on the screen that the machine has: no text is cut, nothing lies over or outside.
// CTest runs this at several resolutions.
#include "tests/support/Scratch.h"
#include "tests/windows/Session.h"
#include "tests/windows/TopWindow.h"
#include "win32/Dpi.h"
#include "win32/FormWindow.h"
#include "win32/Text.h"

#include <gtest/gtest.h>

namespace {

struct Seen {
    HWND window;
    std::wstring windowClass, text;
    LONG_PTR kind; ///< of a button
    RECT area;     ///< within the form

    bool isButton() const { return windowClass == L"Button"; }
    bool isFrame() const { return isButton() && kind == BS_GROUPBOX; }
    bool isLabel() const { return windowClass == L"Static"; }
    std::string name() const { return win32::narrow(windowClass + L" \"" + text + L"\""); }
};

std::vector<Seen> controlsOf(HWND form) {
    std::vector<Seen> all;
    for (HWND child = GetWindow(form, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT)) {
        if (!IsWindowVisible(child)) continue;
        RECT area{};
        GetWindowRect(child, &area);
        MapWindowPoints(nullptr, form, reinterpret_cast<POINT*>(&area), 2);
        all.push_back({child, support::classOf(child), win32::windowText(child),
                       GetWindowLongPtrW(child, GWL_STYLE) & BS_TYPEMASK, area});
    }
    return all;
}

/// The room that the control's caption has, in pixels; the rest is border, or the box of a check or an option.
SIZE roomFor(const Seen& control, win32::Dpi dpi) {
    RECT inside{};
    GetClientRect(control.window, &inside);
    if (!control.isButton()) return {inside.right, inside.bottom};
    const LONG_PTR kind = control.kind;
    const bool marked =
        kind == BS_AUTOCHECKBOX || kind == BS_CHECKBOX || kind == BS_AUTORADIOBUTTON || kind == BS_RADIOBUTTON;
    return {inside.right - MulDiv(marked ? 17 : 6, dpi.value(), 96), inside.bottom};
}

SIZE sizeOfCaption(const Seen& control) {
    HDC dc = GetDC(control.window);
    HGDIOBJ former = SelectObject(dc, reinterpret_cast<HGDIOBJ>(SendMessageW(control.window, WM_GETFONT, 0, 0)));
    RECT needed{};
    DrawTextW(dc, control.text.c_str(), -1, &needed, DT_CALCRECT | DT_SINGLELINE);
    SelectObject(dc, former);
    ReleaseDC(control.window, dc);
    return {needed.right, needed.bottom};
}

void expectWithin(const RECT& area, const RECT& room) {
    EXPECT_GE(area.left, room.left);
    EXPECT_GE(area.top, room.top);
    EXPECT_LE(area.right, room.right);
    EXPECT_LE(area.bottom, room.bottom);
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
    for (auto one = controls.begin(); one != controls.end(); ++one) {
        SCOPED_TRACE(one->name());
        expectWithin(one->area, inside);
        if (one->isFrame()) continue;
        if (one->isButton() || one->isLabel()) {
            const SIZE room = roomFor(*one, dpi), needed = sizeOfCaption(*one);
            EXPECT_LE(needed.cx, room.cx);
            EXPECT_LE(needed.cy, room.cy);
        }
        for (auto other = one + 1; other != controls.end(); ++other) {
            RECT common{};
            if (other->isFrame() || one->isLabel() || other->isLabel()) continue;
            EXPECT_FALSE(IntersectRect(&common, &one->area, &other->area)) << "lies over " << other->name();
        }
    }
}

/// From the register to every screen that opens from it.
void lookAround(support::RealUser& user, bool deletes) {
    const auto look = [&] { expectWhole(user.window()); };
    if (!user.awaits("active frmMaster")) return;
    look();
    ShowWindow(user.window(), SW_MAXIMIZE);
    EXPECT_TRUE(IsZoomed(user.window()));
    look();
    ShowWindow(user.window(), SW_RESTORE);
    if (deletes) {
        user.sendsKey(VK_DELETE);
        if (!user.answers("Are you sure you want to Delete  - GR/1 ?", IDYES)) return;
        if (!user.awaits("active frmcancelreason")) return;
        look();
        user.sendsText("twice");
        user.sendsAlt('o');
        user.awaits("unloaded frmcancelreason");
    }
    if (!support::beginsRequest(user)) return;
    look();
    if (!support::beginsLines(user)) return;
    look();
    user.sendsKey(VK_F3);
    if (!user.awaits("active FetchWindow")) return;
    look();
    user.sendsKey(VK_ESCAPE);
    user.awaits("unloaded FetchWindow");
    user.sendsAlt('l');
    user.awaits("unloaded frmRequestDetail");
    user.sendsKey(VK_ESCAPE);
    user.answers("Save Changes?", IDNO);
    user.awaits("unloaded frmRequest");
    user.sendsAlt('p');
    if (!user.awaits("active frmPrint")) return;
    look();
    user.sendsText("\x1b");
    user.awaits("unloaded frmPrint");
    support::closesRegister(user);
}

TEST(Looks, NothingIsCutOrLiesOver) {
    const automation::ObjectPtr connection = support::openConnection(support::sampleCompany("looks.db"));
    for (const std::int32_t interfaceId : {1507, 1611}) {
        SCOPED_TRACE(interfaceId);
        const automation::ObjectPtr module = support::makeModule(connection, 1, interfaceId);
        support::writeAll(support::printSettings(), "printtoscreen :=1\r\nwindowsprint :=1\r\n");
        support::RealUser::sits([&] { module->call("Show"); },
                                [&](support::RealUser& user) { lookAround(user, interfaceId == 1507); });
        std::filesystem::remove(support::printSettings());
    }
}

} // namespace
