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

bool isButton(HWND control) { return support::classOf(control) == L"Button"; }
bool isLabel(HWND control) { return support::classOf(control) == L"Static"; }
LONG_PTR buttonKind(HWND control) { return GetWindowLongPtrW(control, GWL_STYLE) & BS_TYPEMASK; }
bool isFrame(HWND control) { return isButton(control) && buttonKind(control) == BS_GROUPBOX; }

/// Those of a form that can be seen.
std::vector<HWND> controlsOf(HWND form) {
    std::vector<HWND> all;
    for (HWND child = GetWindow(form, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT))
        if (IsWindowVisible(child)) all.push_back(child);
    return all;
}

RECT areaIn(HWND form, HWND control) {
    RECT area{};
    GetWindowRect(control, &area);
    MapWindowPoints(nullptr, form, reinterpret_cast<POINT*>(&area), 2);
    return area;
}

void expectWholeCaption(HWND control, win32::Dpi dpi) {
    RECT room{}, needed{};
    GetClientRect(control, &room);
    if (isButton(control)) { // The rest is border, or the box of a check or an option.
        const bool push = buttonKind(control) == BS_PUSHBUTTON || buttonKind(control) == BS_DEFPUSHBUTTON;
        room.right -= MulDiv(push ? 6 : 17, dpi.value(), 96);
    }
    HDC dc = GetDC(control);
    HGDIOBJ former = SelectObject(dc, reinterpret_cast<HGDIOBJ>(SendMessageW(control, WM_GETFONT, 0, 0)));
    DrawTextW(dc, win32::windowText(control).c_str(), -1, &needed, DT_CALCRECT | DT_SINGLELINE);
    SelectObject(dc, former);
    ReleaseDC(control, dc);
    EXPECT_LE(needed.right, room.right);
    EXPECT_LE(needed.bottom, room.bottom);
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
    const std::vector<HWND> controls = controlsOf(form);
    EXPECT_GT(controls.size(), 1u);
    for (HWND one : controls) {
        SCOPED_TRACE(win32::narrow(win32::windowText(one)));
        const RECT area = areaIn(form, one);
        RECT common{};
        EXPECT_TRUE(UnionRect(&common, &inside, &area) && EqualRect(&common, &inside)) << "lies outside";
        if (isFrame(one)) continue;
        if (isButton(one) || isLabel(one)) expectWholeCaption(one, dpi);
        for (HWND other : controls) {
            if (other == one || isFrame(other) || isLabel(one) || isLabel(other)) continue;
            const RECT others = areaIn(form, other);
            EXPECT_FALSE(IntersectRect(&common, &area, &others)) << win32::narrow(win32::windowText(other));
        }
    }
}

/// From the register to every screen that opens from it.
void lookAround(support::RealUser& user, bool deletes) {
    const auto look = [&] { expectWhole(user.window()); };
    user.awaits("active frmMaster");
    look();
    ShowWindow(user.window(), SW_MAXIMIZE);
    EXPECT_TRUE(IsZoomed(user.window()));
    look();
    ShowWindow(user.window(), SW_RESTORE);
    if (deletes) {
        user.sendsKey(VK_DELETE);
        user.answers("Are you sure you want to Delete  - GR/1 ?", IDYES);
        user.awaits("active frmcancelreason");
        look();
        user.sendsText("twice");
        user.sendsAlt('o', "unloaded frmcancelreason");
    }
    support::beginsRequest(user);
    look();
    support::beginsLines(user);
    look();
    user.sendsAlt('l', "unloaded frmRequestDetail");
    user.sendsKey(VK_ESCAPE);
    user.answers("Save Changes?", IDNO);
    user.awaits("unloaded frmRequest");
    user.sendsAlt('p', "active frmPrint");
    look();
    user.sendsText("\x1b", "unloaded frmPrint");
    support::closesRegister(user);
}

TEST(Looks, NothingIsCutOrLiesOver) {
    const automation::ObjectPtr connection = support::openConnection(support::sampleCompany("looks.db"));
    wchar_t program[MAX_PATH];
    GetModuleFileNameW(nullptr, program, MAX_PATH);
    const auto settings = std::filesystem::path(program).replace_filename("ShopSetting.txt"); // beside the DLL
    for (const std::int32_t interfaceId : {1507, 1611}) {
        SCOPED_TRACE(interfaceId);
        const automation::ObjectPtr module = support::makeModule(connection, 1, interfaceId);
        // Both ways to print are offered.
        support::writeAll(settings, "printtoscreen :=1\r\nwindowsprint :=1\r\n");
        support::RealUser::sits([&] { module->call("Show"); },
                                [&](support::RealUser& user) { lookAround(user, interfaceId == 1507); });
        std::filesystem::remove(settings);
    }
}

} // namespace
