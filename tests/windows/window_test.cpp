// The window of a form among those of its host: what the system and the host do to it, and what others ask of it.
#include "tests/windows/TestForms.h"
#include "win32/Dpi.h"

#include <gtest/gtest.h>

#include <algorithm>

using namespace forms;
using namespace support;

namespace {

/// A window of the host, on the test's thread.
win32::OwnedWindow hostWindow(DWORD style, HWND owner = nullptr) {
    return win32::OwnedWindow(
        CreateWindowExW(0, L"STATIC", L"host", style, 10, 10, 300, 200, owner, nullptr, nullptr, nullptr));
}
bool enabled(const win32::OwnedWindow& window) { return IsWindowEnabled(window.get()); }

using Heard = std::function<void(const CWPRETSTRUCT&)>;

/// Runs `body`, and hears of each message of this thread once a window has answered it.
void hearing(const Heard& heard, const std::function<void()>& body) {
    static const Heard* hears;
    hears = &heard;
    const auto procedure = [](int code, WPARAM wParam, LPARAM lParam) CALLBACK -> LRESULT {
        if (code == HC_ACTION) (*hears)(*reinterpret_cast<const CWPRETSTRUCT*>(lParam));
        return CallNextHookEx(nullptr, code, wParam, lParam);
    };
    HHOOK hook = SetWindowsHookExW(WH_CALLWNDPROCRET, procedure, nullptr, GetCurrentThreadId());
    body();
    UnhookWindowsHookEx(hook);
}

HWND topOf(const Control& control) { return GetAncestor(windowOf(control), GA_ROOT); }

void paintNow(HWND window) { RedrawWindow(window, nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW | RDW_ALLCHILDREN); }

/// What a row is painted in.
struct Colours {
    COLORREF text, ground;
    bool operator==(const Colours&) const = default;
};

Colours rowColours(HWND list, DWORD_PTR row) {
    NMLVCUSTOMDRAW drawing{};
    drawing.nmcd.hdr = {list, 0, NM_CUSTOMDRAW};
    drawing.nmcd.dwDrawStage = CDDS_ITEMPREPAINT;
    drawing.nmcd.dwItemSpec = row;
    ask(GetParent(list), WM_NOTIFY, 0, &drawing);
    return {drawing.clrText, drawing.clrTextBk};
}

class FormsWindow : public testing::Test, protected OnRealWindows {};

} // namespace

TEST(Resolution, TurnsTwipsIntoPixelsAndBack) {
    for (const auto& [dots, pixels] : {std::pair(96, 22), {120, 28}, {144, 33}, {192, 44}}) {
        const win32::Dpi dpi(dots);
        EXPECT_EQ(dpi.pixels(330), pixels);
        EXPECT_EQ(dpi.pixels(dpi.twips(pixels)), pixels); // as a width that a person dragged goes into the model
        // Neighbours touch.
        EXPECT_EQ(dpi.pixels(Rect{100, 0, 340, 10}).right, dpi.pixels(Rect{440, 0, 50, 10}).left);
    }
}

TEST_F(FormsWindow, SwitchesOffAHostWithoutACaptionToo) {
    const win32::OwnedWindow application = hostWindow(WS_OVERLAPPED);
    const win32::OwnedWindow host = hostWindow(WS_POPUP | WS_VISIBLE, application.get());
    int shows = 0; // by ShowWindow, which hides the first window of a program that was started hidden
    const auto heard = [&](const CWPRETSTRUCT& answer) {
        const bool isForm = GetAncestor(answer.hwnd, GA_ROOT) == answer.hwnd;
        shows += isForm && answer.message == WM_SHOWWINDOW && answer.wParam;
    };
    const auto look = [&] {
        EXPECT_FALSE(enabled(host));
        EXPECT_EQ(shows, 0);
        for (const bool works : {true, false}) {
            form->works = works;
            EXPECT_EQ(ask(topOf(form->txtBarcode), WM_QUERYENDSESSION), !works);
        }
    };
    hearing(heard, [&] { looks(*form, look); });
    EXPECT_TRUE(enabled(host));
}

TEST_F(FormsWindow, ShowsWhatWasSetBeforeItCame) {
    CheckBox done(*form, "chkDone");
    form->adds([&] { done.setValue(1); });
    desktop->setPointer(Pointer::hourglass);
    looks(*form, [&] {
        EXPECT_EQ(ask(done, BM_GETCHECK), BST_CHECKED);
        for (const Pointer pointer : {Pointer::hourglass, Pointer::normal}) {
            desktop->setPointer(pointer);
            SetCursor(nullptr);
            const auto window = reinterpret_cast<WPARAM>(topOf(done));
            ask(topOf(done), WM_SETCURSOR, window, MAKELPARAM(HTCLIENT, WM_MOUSEMOVE));
            EXPECT_EQ(GetCursor() == LoadCursorW(nullptr, IDC_WAIT), pointer == Pointer::hourglass);
        }
    });
}

TEST_F(FormsWindow, PaintsWhatCanBeReadAlsoInDarkColours) {
    constexpr COLORREF kRed = 0x0000FF;
    rows->fills({{"1", "R1"}, {"2", "R2"}});
    const auto paints = [&](bool dark) {
        looks(*rows, [&] {
            rows->grid.setRowColour(2, kRed);
            HWND list = windowOf(rows->grid);
            const Colours chosen{GetSysColor(COLOR_HIGHLIGHTTEXT), GetSysColor(COLOR_HIGHLIGHT)};
            for (const bool focused : {true, false}) {
                SCOPED_TRACE(focused);
                if (!focused) rows->cmdOk.setFocus();
                rows->grid.selectRow(1);
                EXPECT_EQ(rowColours(list, 0) == chosen, focused || dark);
                EXPECT_EQ(rowColours(list, 1).text, kRed);
                rows->grid.selectRow(2); // It is red still.
                const Colours red = rowColours(list, 1);
                EXPECT_TRUE(dark ? red == chosen : (focused ? red.ground : red.text) == kRed);
            }
        });
        looks(*form, [&] {
            form->txtQuantity.setLocked(true);
            HDC dc = GetDC(nullptr);
            const auto paper = reinterpret_cast<WPARAM>(dc);
            ask(topOf(form->txtQuantity), WM_CTLCOLORSTATIC, paper, windowOf(form->txtQuantity));
            EXPECT_EQ((Colours{GetTextColor(dc), GetBkColor(dc)}),
                      (Colours{GetSysColor(COLOR_BTNTEXT), GetSysColor(COLOR_BTNFACE)}));
            form->setBackColor(kRed); // as the suite colours forms
            ask(topOf(form->cmdOk), WM_CTLCOLORBTN, paper, windowOf(form->cmdOk));
            EXPECT_EQ(GetBkColor(dc), dark ? GetSysColor(COLOR_BTNFACE) : kRed);
            ReleaseDC(nullptr, dc);
        });
    };
    paints(false);
    constexpr int kNames[] = {COLOR_WINDOW,  COLOR_WINDOWTEXT, COLOR_BTNFACE,
                              COLOR_BTNTEXT, COLOR_HIGHLIGHT,  COLOR_HIGHLIGHTTEXT};
    constexpr COLORREF kDark[] = {0x000000, 0xFFFFFF, 0x202020, 0xE0E0E0, 0x00FFFF, 0x000001};
    COLORREF before[std::size(kNames)];
    std::transform(std::begin(kNames), std::end(kNames), before, GetSysColor);
    SetSysColors(std::size(kNames), kNames, kDark);
    paints(true);
    SetSysColors(std::size(kNames), kNames, before);
}

TEST_F(FormsWindow, ShowsBothLinesOfALabelInALargeFont) {
    NONCLIENTMETRICSW metrics{};
    metrics.cbSize = sizeof metrics;
    SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, sizeof metrics, &metrics, 0);
    NONCLIENTMETRICSW large = metrics;
    large.lfMessageFont.lfHeight = -14;
    SystemParametersInfoW(SPI_SETNONCLIENTMETRICS, sizeof large, &large, 0);
    Label note(*form, "lblNote");
    form->adds([&] {
        note.place({120, 2000, 3000, 420});
        note.setText("Not carried by\r\nthe other shop");
    });
    looks(*form, [&] {
        RECT area{};
        GetClientRect(windowOf(note), &area);
        EXPECT_GE(area.bottom, 2 * win32::DialogFont(win32::Dpi()).lineHeight());
        EXPECT_FALSE(GetWindowLongPtrW(windowOf(note), GWL_STYLE) & SS_CENTERIMAGE);
    });
    SystemParametersInfoW(SPI_SETNONCLIENTMETRICS, sizeof metrics, &metrics, 0);
}

TEST_F(FormsWindow, OutlivesTheWindowsOfItsHostAndComesBeforeThem) {
    form->txtBarcode.onKeyPress = [&](std::int16_t&) { rows->showModal(form.get()); };
    const win32::OwnedWindow other = hostWindow(WS_OVERLAPPEDWINDOW | WS_VISIBLE);
    win32::OwnedWindow application = hostWindow(WS_OVERLAPPEDWINDOW | WS_VISIBLE),
                       splash = hostWindow(WS_POPUP | WS_VISIBLE);
    SetActiveWindow(splash.get());
    rows->fills({{"1", "R1", "5", ""}});
    sits([&](RealUser& user) {
        user.types("x");
        user.seesForm("frmRows");
        EXPECT_FALSE(enabled(application) || enabled(splash) || enabled(other));
        user.look([&] {
            splash = {};
            application = {};
        });
        // A window that is switched off is chosen, with another program in front and then with this one.
        for (const bool ofAnother : {false, true}) {
            user.look([&] {
                if (ofAnother) SetActiveWindow(nullptr);
                SetActiveWindow(other.get());
                for (HWND window : {topOf(form->txtBarcode), topOf(rows->grid)})
                    if (ofAnother) ask(window, WM_ACTIVATEAPP, TRUE);
            });
            user.seesForm("frmRows");
        }
        user.look([&] {
            EXPECT_EQ(GetActiveWindow(), topOf(rows->grid));
            EXPECT_EQ(rows->grid.cell(1, 1), "R1");
            EXPECT_TRUE(form->visible());
        });
    });
    EXPECT_TRUE(enabled(other));
    EXPECT_EQ(GetActiveWindow(), other.get());
}

TEST_F(FormsWindow, EndsHoweverItsWindowGoes) {
    form->txtBarcode.onKeyPress = [&](std::int16_t&) { rows->showModal(form.get()); };
    const win32::OwnedWindow other = hostWindow(WS_OVERLAPPEDWINDOW | WS_VISIBLE),
                             next = hostWindow(WS_OVERLAPPEDWINDOW | WS_VISIBLE);
    // The same forms can be shown again.
    for (const auto& [forms, destroyed] : {std::pair(2, true), std::pair(1, true), std::pair(1, false)}) {
        SCOPED_TRACE(testing::Message() << forms << (destroyed ? " destroyed" : " unloaded"));
        SetActiveWindow(other.get());
        sits([&](RealUser& user) {
            if (forms == 2) {
                user.types("x");
                user.seesForm("frmRows");
            } else {
                PostMessageW(topOf(form->txtBarcode), WM_SYSCOMMAND, SC_MOVE, 0);
                user.sees("the move", [] { return GetCapture() != nullptr; });
            }
            EXPECT_FALSE(enabled(other));
            user.look([&] {
                SetWindowPos(next.get(), topOf(form->txtBarcode), 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
                if (!destroyed) return void(form->unload());
                DestroyWindow(topOf(form->txtBarcode));
                form->txtBarcode.setText("5"); // Handlers that still run find no window.
            });
            user.seesTheEnd();
        });
        EXPECT_TRUE(enabled(other));
        EXPECT_TRUE(destroyed || GetActiveWindow() == other.get());
        EXPECT_FALSE(form->visible() || rows->visible());
        EXPECT_FALSE(form->view() || form->txtBarcode.view());
        EXPECT_EQ(form->txtBarcode.text(), "");
    }
}

TEST_F(FormsWindow, KeepsTheSizeThatAnotherResolutionGivesIt) {
    constexpr UINT kDpiChanged = 0x02E0; // WM_DPICHANGED
    form->adds([&form = *form] {
        form.setResizable(true);
        form.txtBarcode.place({120, 120, 6960, 330}, {true, true, true, false});
    });
    // The whole window in pixels: larger than designed, then less than the design takes at the resolution before, at
    // last larger than the screen.
    const struct {
        WORD dpi;
        int width, height;
    } cases[] = {{144, 1000, 700}, {96, 600, 420}, {120, 900, 600}, {96, 9000, 9000}};
    RECT work{};
    SystemParametersInfoW(SPI_GETWORKAREA, 0, &work, 0);
    looks(*form, [&] {
        HWND window = topOf(form->txtBarcode);
        for (const auto& c : cases) {
            SCOPED_TRACE(c.dpi);
            const win32::Dpi dpi(c.dpi);
            RECT suggested{5, 5, 5 + c.width, 5 + c.height}, now{}, inside{};
            ask(window, kDpiChanged, MAKEWPARAM(c.dpi, c.dpi), &suggested);
            GetWindowRect(window, &now);
            EXPECT_EQ(now.right - now.left, std::min<LONG>(c.width, work.right - work.left));
            EXPECT_EQ(now.bottom - now.top, std::min<LONG>(c.height, work.bottom - work.top));
            EXPECT_LE(now.bottom, work.bottom);
            GetClientRect(window, &inside);
            EXPECT_EQ(form->width(), dpi.twips(inside.right));
            EXPECT_EQ(form->txtBarcode.bounds().width, form->width() - 240);
            MINMAXINFO limits{};
            ask(window, WM_GETMINMAXINFO, 0, &limits);
            const SIZE least = win32::outerSize({dpi.pixels(7200), dpi.pixels(4800)},
                                                static_cast<DWORD>(GetWindowLongPtrW(window, GWL_STYLE)),
                                                static_cast<DWORD>(GetWindowLongPtrW(window, GWL_EXSTYLE)), dpi);
            EXPECT_EQ(limits.ptMinTrackSize.x, least.cx);
            EXPECT_EQ(limits.ptMinTrackSize.y, least.cy);
        }
    });
    looks(*rows, [&] {
        RECT suggested{5, 5, 700, 500};
        ask(topOf(rows->grid), kDpiChanged, MAKEWPARAM(144, 144), &suggested);
        EXPECT_EQ(ask(rows->grid, WM_GETFONT), ask(rows->cmdOk, WM_GETFONT));
    });
}

TEST_F(FormsWindow, TellsItsControlsOfTheSystemsNewColours) {
    looks(*form, [&] {
        HWND window = topOf(form->txtBarcode);
        paintNow(window);
        std::vector<HWND> told;
        const auto heard = [&](const CWPRETSTRUCT& answer) {
            if (answer.message == WM_SYSCOLORCHANGE) told.push_back(answer.hwnd);
        };
        hearing(heard, [&] { ask(window, WM_SYSCOLORCHANGE); });
        for (HWND shown : {window, windowOf(form->txtBarcode), windowOf(form->txtQuantity), windowOf(form->cmdOk)}) {
            EXPECT_EQ(std::count(told.begin(), told.end(), shown), 1);
            EXPECT_TRUE(GetUpdateRect(shown, nullptr, FALSE));
        }
    });
}

TEST_F(FormsWindow, AnswersForCellsAndForWholeRowsAndPaintsTheCells) {
    rows->fills({{"1", "R1", "abcdefgh", ""}, {"2", "R2", "5.50", "M\xC3\xBCller"}});
    rows->adds([&] { rows->grid.setReadAs("Requests"); });
    const struct {
        int row, subItem, size;
        std::wstring text;
    } cases[] = {
        // clang-format off
        {0, 1, 8, L"R1"}, {0, 2, 8, L"abcdefg"}, {0, 2, 1, L""}, {0, 3, 8, L""}, {0, 4, 8, L""}, {-1, 1, 8, L""},
        {2, 1, 8, L""},
        // The list's own first column says the row to screen readers.
        {0, 0, 5, L"R1, "}, {0, 0, 30, L"R1, abcdefgh"}, {1, 0, 30, L"R2, 5.50, M\xFCller"},
        // clang-format on
    };
    looks(*rows, [&] {
        EXPECT_TRUE(FindWindowExW(topOf(rows->grid), nullptr, L"Static", L"Requests"));
        HWND list = windowOf(rows->grid);
        for (const auto& c : cases) {
            SCOPED_TRACE(&c - cases);
            wchar_t room[] = L"##############################";
            NMLVDISPINFOW asked{};
            asked.hdr = {list, 0, LVN_GETDISPINFOW};
            asked.item = {LVIF_TEXT, c.row, c.subItem, 0, 0, room, c.size};
            ask(GetParent(list), WM_NOTIFY, 0, &asked);
            EXPECT_EQ(asked.item.pszText, room); // the asker's own
            EXPECT_EQ(room, c.text);
            EXPECT_EQ(room[c.text.size() + 1], L'#');
        }
        std::vector<std::wstring> ofRow, ofCells;
        const auto heard = [&](const CWPRETSTRUCT& answer) {
            const auto* asked = reinterpret_cast<const NMLVDISPINFOW*>(answer.lParam);
            if (answer.message != WM_NOTIFY || asked->hdr.code != LVN_GETDISPINFOW) return;
            if (asked->item.mask & LVIF_TEXT)
                (asked->item.iSubItem == 0 ? ofRow : ofCells).emplace_back(asked->item.pszText);
        };
        hearing(heard, [&] { paintNow(list); });
        EXPECT_EQ(std::count(ofCells.begin(), ofCells.end(), L"R2"), 1);
        EXPECT_EQ(std::count(ofRow.begin(), ofRow.end(), L""), std::ssize(ofRow));
    });
}
