// The desktop of real windows: what a person's keys, clicks and pasted text do there.
#include "automation/OutsideCall.h"
#include "forms/UserInput.h"
#include "tests/support/EventOrder.h"
#include "tests/windows/TestForms.h"
#include "win32/Dpi.h"
#include "win32/Text.h"

#include <gtest/gtest.h>

#include <oleauto.h>

#include <algorithm>
#include <utility>

using namespace forms;
using namespace support;

namespace {

constexpr auto kNone = static_cast<WPARAM>(-1); ///< the entry or row that a search begins after

void take(RealUser& user, EventOrderForm& form, const EventStep& step) {
    switch (step.kind) {
    case EventStep::Kind::types: return user.types(step.text);
    case EventStep::Kind::tabs: return user.presses(VK_TAB);
    case EventStep::Kind::backTab: return user.presses(VK_TAB, VK_SHIFT);
    case EventStep::Kind::escape: return user.presses(VK_ESCAPE);
    case EventStep::Kind::clicks: return user.clicks(*form.find(step.control));
    case EventStep::Kind::picks:
        return user.look([&] {
            HWND combo = windowOf(*form.find(step.control));
            SetFocus(combo);
            ask(combo, CB_SHOWDROPDOWN, TRUE);
            ask(combo, CB_SELECTSTRING, kNone, win32::wide(step.text).c_str());
            ask(GetParent(combo), WM_COMMAND, MAKEWPARAM(0, CBN_SELENDOK), combo);
            ask(combo, CB_SHOWDROPDOWN, FALSE);
        });
    case EventStep::Kind::disables: return user.look([&] { form.find(step.control)->setEnabled(false); });
    }
}

class RealWindows : public testing::Test, protected OnRealWindows {};

} // namespace

TEST_F(RealWindows, KeepTheOrderOfEvents) {
    for (const EventCase& c : eventOrder()) {
        SCOPED_TRACE(c.name);
        std::vector<std::string> log;
        const auto ordered = std::make_shared<EventOrderForm>(*desktop, log);
        sits(*ordered, [&](RealUser& user) {
            user.look([&] { log.clear(); });
            for (const EventStep& step : c.steps) take(user, *ordered, step);
            user.sees(c.name, [&] { return log.size() >= c.events.size(); });
            user.look([&] {
                EXPECT_EQ(log, c.events);
                ASSERT_TRUE(ordered->activeControl());
                EXPECT_EQ(ordered->activeControl()->name(), c.focus);
                EXPECT_EQ(GetFocus(), windowOf(*ordered->activeControl()));
                EXPECT_EQ(shownText(ordered->txtFirst), c.first);
                EXPECT_EQ(shownText(ordered->txtSecond), c.second);
                EXPECT_EQ(ordered->txtFirst.text(), c.first);
            });
        });
    }
}

TEST_F(RealWindows, ChooseInAnOpenListOnlyWhatIsAccepted) {
    std::vector<std::string> log;
    const auto ordered = std::make_shared<EventOrderForm>(*desktop, log);
    ComboBox& box = ordered->cboChoice;
    bool asks = false;
    box.onClick = [&, restore = box.onClick] {
        restore();
        const bool asked = std::exchange(asks, false);
        if (asked && desktop->messageBox({"Sure?", "", MessageIcon::question, MessageButtons::yesNo}) == Answer::no)
            box.setListIndex(0);
    };
    const struct {
        const char* name;
        int downs, key, withKey, clicks, index;
        bool asks = false;
    } cases[] = {
        // clang-format off
        {"Escape", 2, VK_ESCAPE, 0, 0, 0},      {"Enter", 2, VK_RETURN, 0, 1, 2},     {"Tab", 2, VK_TAB, 0, 1, 2},
        {"F4", 2, VK_F4, 0, 1, 2},              {"Alt+Up", 2, VK_UP, VK_MENU, 1, 2},  {"the same", 0, VK_RETURN, 0, 1, 0},
        {"taken back", 1, VK_RETURN, 0, 2, 0},  {"asked", 2, VK_RETURN, 0, 2, 0, true},
        // clang-format on
    };
    sits(*ordered, [&](RealUser& user) {
        const auto entry = [&] { return static_cast<int>(ask(box, CB_GETCURSEL)); };
        const auto clicks = [&] {
            return std::count_if(log.begin(), log.end(), [](auto& line) { return line.ends_with("_Click"); });
        };
        for (const auto& c : cases) {
            SCOPED_TRACE(c.name);
            user.look([&] {
                box.setListIndex(0);
                box.setFocus();
                log.clear();
                asks = c.asks;
            });
            user.presses(VK_F4);
            for (int i = 0; i < c.downs; ++i) user.presses(VK_DOWN);
            user.sees("the entry", [&] { return ask(box, CB_GETDROPPEDSTATE) && entry() == c.downs && !clicks(); });
            user.presses(c.key, c.withKey);
            if (c.asks) user.answers(IDNO);
            user.sees("the list closed", [&] { return !ask(box, CB_GETDROPPEDSTATE) && clicks() == c.clicks; });
            user.sees("the choice", [&] { return entry() == c.index && box.listIndex() == c.index; });
        }
        // Nor does the wheel choose, which was meant for what lies below.
        user.look([&] {
            ask(box, WM_MOUSEWHEEL, MAKEWPARAM(0, -WHEEL_DELTA));
            EXPECT_EQ(entry(), 0);
        });
    });
}

TEST_F(RealWindows, TakeNoCommandWhileACallHasLeftTheModule) {
    std::atomic<bool> waits = false;
    int clicks = 0;
    bool closes = false;
    form->cmdOk.onClick = [&] { ++clicks; };
    form->txtQuantity.onKeyPress = [&](std::int16_t& c) {
        if (c != kKeyReturn) return;
        // A component that serves the thread's messages until five keys and two of Shift have come.
        const automation::OutsideCall outside;
        waits = true;
        int keys = 0;
        for (const ULONGLONG end = GetTickCount64() + 10000; keys < 7 && GetTickCount64() < end;)
            for (MSG message; PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE);) {
                TranslateMessage(&message);
                DispatchMessageW(&message);
                keys += message.message == WM_KEYDOWN;
            }
        EXPECT_EQ(form->txtQuantity.text(), "1");
        EXPECT_EQ(clicks, 0);
        if (closes)
            form->unload();
        else
            form->txtBarcode.setFocus();
        waits = false;
    };
    const auto typesMeanwhile = [&](RealUser& user) {
        user.clicks(form->txtQuantity);
        user.seesFocus(form->txtQuantity);
        user.types("1\r");
        user.sees("the component at work", [&] { return waits.load(); });
        user.clicks(form->cmdOk);
        user.look([&] { PostMessageW(GetAncestor(GetFocus(), GA_ROOT), WM_CLOSE, 0, 0); });
        user.types("23Ab?");
        while (waits) Sleep(5);
    };
    sits([&](RealUser& user) {
        typesMeanwhile(user);
        user.sees("what was typed meanwhile", [&] { return form->txtBarcode.text() == "23Ab?"; });
        EXPECT_EQ(clicks, 0);
        EXPECT_TRUE(form->visible());
    });
    // What was typed at a form that is gone is not the next one's.
    closes = true;
    sits(typesMeanwhile);
    sits([&](RealUser& user) {
        user.types("x");
        user.sees("a key", [&] { return form->txtBarcode.text().ends_with("x"); });
        EXPECT_EQ(form->txtBarcode.text(), "x");
    });
}

TEST_F(RealWindows, GiveTheFocusBackAfterAMessageBox) {
    std::vector<Answer> answers;
    form->txtQuantity.onKeyPress = [&](std::int16_t& c) {
        if (c != kKeyReturn) return;
        answers.push_back(desktop->messageBox(
            {"Save Changes?", "Request", MessageIcon::question, MessageButtons::yesNo, Answer::no}));
    };
    sits([&](RealUser& user) {
        user.clicks(form->txtQuantity);
        for (const int button : {IDYES, IDNO, IDCANCEL}) { // The last is what Escape sends.
            user.seesFocus(form->txtQuantity);
            user.types("1\r");
            user.answers(button);
        }
        // A scanner's Enter takes the default, whatever letters come before it; with Alt they answer.
        for (const bool scans : {true, false}) {
            user.seesFocus(form->txtQuantity);
            user.types("1\r");
            user.sees("the box", [] { return GetActiveWindow() == FindWindowW(L"#32770", nullptr); });
            scans ? user.types("DY1032\r") : user.presses('Y', VK_MENU);
        }
        user.seesFocus(form->txtQuantity);
        user.types("2");
        user.sees("what was typed", [&] { return form->txtQuantity.text() == "111112"; });
        EXPECT_EQ(answers, (std::vector<Answer>{Answer::yes, Answer::no, Answer::no, Answer::no, Answer::yes}));
    });
}

TEST_F(RealWindows, TakePastedTextWholeOrNotAtAll) {
    TextBox& box = form->txtBarcode;
    box.acceptsWhole = [](const std::string& whole) { return whole.find('\'') == std::string::npos; };
    int changes = 0;
    box.onChange = [&] { ++changes; };
    // The text stands as "ab" with the "b" selected before each of them.
    const struct {
        const char *pasted, *text;
        bool byInputMethod = false;
    } cases[] = {{"12", "a12"},     {"1'2", "ab"},       {"'", "ab"},         {"\xC3\xA4", "a\xC3\xA4"},
                 {"1\r\n'2", "a1"}, {"12", "a12", true}, {"1'2", "ab", true}, {"1\r\n'2", "ab", true}};
    looks(*form, [&] {
        HWND window = windowOf(box);
        for (const auto& c : cases) {
            SCOPED_TRACE(c.pasted);
            box.setText("ab");
            box.select(1, 1);
            changes = 0;
            copyToClipboard(c.pasted);
            if (c.byInputMethod)
                ask(window, EM_REPLACESEL, TRUE, win32::wide(c.pasted).c_str());
            else
                ask(window, WM_PASTE);
            EXPECT_EQ(box.text(), c.text);
            EXPECT_EQ(shownText(box), c.text);
            EXPECT_EQ(changes, box.text() != "ab");
        }
        SetWindowTextW(window, L"it's");
        EXPECT_EQ(shownText(box), "ab");
        SetWindowTextW(window, L"its");
        EXPECT_EQ(box.text(), "its");
        box.setText("it's"); // code may write what a person may not
        EXPECT_EQ(shownText(box), "it's");
    });
}

TEST_F(RealWindows, MakeOneChangeOfACharacterOfTwoUnits) {
    TextBox& box = form->txtBarcode;
    std::vector<std::string> texts;
    box.onChange = [&] { texts.push_back(box.text()); };
    looks(*form, [&] {
        for (const wchar_t unit : {L'\xD83D', L'\xDE00', L'x', L'y'}) {
            ask(box, WM_CHAR, unit, LPARAM{1});
            if (unit == L'x') box.select(1, 0);
        }
        EXPECT_EQ(texts, (std::vector<std::string>{"\U0001F600", "\U0001F600x", "\U0001F600yx"}));
        EXPECT_EQ(box.selStart(), 2);
        // The keypad's decimal key is a point in a number, whatever sign is on it.
        form->txtQuantity.keypadPoint = true;
        for (const LPARAM key : {0x53, 0x33}) ask(form->txtQuantity, WM_CHAR, L',', key << 16 | 1);
        EXPECT_EQ(form->txtQuantity.text(), ".,");
    });
}

TEST_F(RealWindows, GiveF10AndMnemonicsToTheForm) {
    std::string log;
    form->onKeyDown = [&](std::int16_t& code, std::int16_t) {
        if (code == kKeyF10) log += "F10 ";
    };
    form->cmdOk.onClick = [&] { log += "OK"; };
    sits([&](RealUser& user) {
        user.presses(VK_F10);
        user.presses(VK_MENU); // Alt alone starts no menu either, so the next key arrives.
        user.types("7");
        user.presses('O', VK_MENU);
        user.sees("F10 and OK", [&] { return log == "F10 OK"; });
        EXPECT_EQ(form->txtBarcode.text(), "7");
    });
}

/// The program's own entry for the system's function, under the linker's name for it.
#ifdef _WIN64
extern "C" decltype(&TranslateMessage) ownTranslateMessage asm("__imp_TranslateMessage");
#else
extern "C" decltype(&TranslateMessage) ownTranslateMessage asm("__imp__TranslateMessage@4");
#endif

TEST_F(RealWindows, TakeACharacterKeyedByItsNumber) {
    // Under Wine, Alt and the keypad make no character: here Alt makes an "a" when it is let go.
    static const auto translates = ownTranslateMessage;
    DWORD protection = 0;
    VirtualProtect(&ownTranslateMessage, sizeof ownTranslateMessage, PAGE_READWRITE, &protection);
    ownTranslateMessage = [](const MSG* message) WINAPI -> BOOL {
        const bool up = message->message == WM_KEYUP || message->message == WM_SYSKEYUP;
        if (up && message->wParam == VK_MENU) return PostMessageW(message->hwnd, WM_CHAR, L'a', 1);
        return translates(message);
    };
    std::vector<std::string> log;
    form->txtBarcode.onKeyUp = [&](std::int16_t& code, std::int16_t) { log.push_back("up " + std::to_string(code)); };
    form->txtBarcode.onKeyPress = [&](std::int16_t& c) { log.push_back("press " + std::to_string(c)); };
    sits([&](RealUser& user) {
        user.presses(VK_NUMPAD9, VK_MENU);
        user.presses(VK_F2);
        user.sees("the last key", [&] { return !log.empty() && log.back() == "up 113"; });
        EXPECT_EQ(log, (std::vector<std::string>{"up 105", "up 18", "press 97", "up 113"}));
        EXPECT_EQ(form->txtBarcode.text(), "a");
    });
    ownTranslateMessage = translates;
}

TEST_F(RealWindows, ScrollManyRows) {
    constexpr int kRows = 1000;
    Grid& grid = rows->grid;
    int rowChanges = 0;
    grid.onRowColChange = [&] { ++rowChanges; };
    rows->fills({kRows, {"1", "R1", "2024"}});
    rows->adds([&] { grid.setColWidth(3, 0); });
    sits(*rows, [&](RealUser& user) {
        user.sees("all rows", [&] { return ask(grid, LVM_GETITEMCOUNT) == kRows; });
        user.presses(VK_END);
        user.sees("the last row", [&] { return grid.row() == kRows; });
        for (int page = 0; page < 10; ++page) user.presses(VK_PRIOR);
        user.presses(VK_UP);
        user.sees("pages up", [&] { return grid.row() < kRows - 100; });
        user.look([&] {
            EXPECT_GT(rowChanges, 3);
            EXPECT_EQ(ask(grid, LVM_GETNEXTITEM, kNone, LPARAM{LVNI_SELECTED}), grid.row() - 1);
            EXPECT_EQ(ask(grid, LVM_GETTOPINDEX), grid.topRow() - 1);
            // Beside the two that are shown the list has one of no width, and the keyboard does not widen it.
            ask(grid, LVM_SETCOLUMNWIDTH, 0, LPARAM{50});
            EXPECT_EQ(ask(grid, LVM_GETCOLUMNWIDTH), 0);
            EXPECT_EQ(Header_GetItemCount(reinterpret_cast<HWND>(ask(grid, LVM_GETHEADER))), 3);
            grid.selectRow(100);
            grid.setTopRow(95);
        });
        user.sees("row 95 on top", [&] { return ask(grid, LVM_GETTOPINDEX) == 94; });
        user.clicks(grid, 20, 60);
        user.sees("the row under the pointer", [&] { return grid.row() >= 95 && grid.row() < 99; });
    });
}

TEST_F(RealWindows, TellTheCellUnderThePointerAndWidthsThatAreDragged) {
    Grid& grid = rows->grid;
    int pressed = 0;
    grid.onMouseDown = [&](const MouseEvent& event) { pressed += event.button == MouseButton::right; };
    rows->fills({{"1", "R1", "a"}, {"2", "R2", "b"}});
    rows->adds([&] {
        grid.setColWidth(0, 600);
        grid.setColWidth(2, 0);
    });
    looks(*rows, [&] {
        HWND header = reinterpret_cast<HWND>(ask(grid, LVM_GETHEADER));
        const auto at = [](const RECT& area) { return MAKELPARAM(area.right - 2, (area.top + area.bottom) / 2); };
        const auto pointed = [&] { return std::pair(grid.mouseRow(), grid.mouseCol()); };
        // The list's own first column is empty, and what is hidden has none.
        for (const auto& [place, col] : {std::pair(1, 0), {2, 1}, {3, 3}}) {
            RECT cell{LVIR_BOUNDS, place}, heading{};
            ask(grid, LVM_GETSUBITEMRECT, 1, &cell);
            const LPARAM beside = MAKELPARAM(255, HIWORD(at(cell)));
            ask(grid, WM_MOUSEMOVE, 0, at(cell));
            EXPECT_EQ(pointed(), std::pair(2, col));
            ask(header, HDM_GETITEMRECT, static_cast<WPARAM>(place), &heading);
            ask(header, WM_MOUSEMOVE, 0, at(heading));
            EXPECT_EQ(pointed(), std::pair(0, col));
            // Beside the columns there is nothing, nor is a menu's row.
            ask(grid, WM_MOUSEMOVE, 0, beside);
            EXPECT_EQ(pointed(), std::pair(-1, -1));
            grid.selectRow(1);
            ask(grid, WM_RBUTTONDOWN, MK_RBUTTON, beside);
            EXPECT_EQ(grid.row(), 1);
            ask(grid, WM_RBUTTONDOWN, MK_RBUTTON, at(cell));
            EXPECT_EQ(std::pair(grid.row(), grid.col()), std::pair(2, 0));
            ask(grid, LVM_SETCOLUMNWIDTH, static_cast<WPARAM>(place), LPARAM{77} + col);
            EXPECT_EQ(win32::Dpi::of(header).pixels(grid.colWidth(col)), 77 + col);
        }
        EXPECT_EQ(pressed, 6);
    });
}

TEST_F(RealWindows, OpenTheMenuOfTheCurrentRowByKey) {
    MenuItem item;
    item.caption = "Refresh";
    const Menu menu{"mnuRows", {&item}};
    std::vector<int> pressed;
    Grid& grid = rows->grid;
    grid.onMouseUp = [&](const MouseEvent& event) {
        if (event.button != MouseButton::right) return;
        pressed.push_back(grid.row());
        desktop->popupMenu(*rows, menu);
    };
    rows->fills({{"1", "R1"}, {"2", "R2"}, {"3", "R3"}});
    sits(*rows, [&](RealUser& user) {
        for (const int withKey : {0, VK_SHIFT}) {
            user.presses(VK_DOWN);
            user.presses(withKey ? VK_F10 : VK_APPS, withKey);
            user.sees("the menu in its row", [&] {
                HWND popup = FindWindowW(L"#32768", nullptr);
                RECT row{LVIR_BOUNDS}, inside{};
                ask(grid, LVM_GETITEMRECT, static_cast<WPARAM>(grid.row() - 1), &row);
                MapWindowPoints(windowOf(grid), nullptr, reinterpret_cast<POINT*>(&row), 2);
                return popup && IsWindowVisible(popup) && GetWindowRect(popup, &inside) &&
                       PtInRect(&row, {inside.left, inside.top});
            });
            user.presses(VK_ESCAPE);
            user.sees("no menu", [&] { return !FindWindowW(L"#32768", nullptr); });
        }
        EXPECT_EQ(pressed, (std::vector<int>{2, 3}));
    });
}

TEST_F(RealWindows, LeaveARequestToQuitToTheHost) {
    form->txtBarcode.onKeyPress = [&](std::int16_t&) {
        PostQuitMessage(3);
        rows->showModal(form.get());
    };
    // Beneath one form, then beneath a second one that a character opens.
    for (const bool fromACharacter : {false, true}) {
        MSG left{};
        const auto module = [&] {
            form->showModal(nullptr);
            EXPECT_TRUE(PeekMessageW(&left, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE));
        };
        const auto quits = [&](RealUser& user) {
            user.seesForm("frmCounter");
            fromACharacter ? user.types("x") : user.look([] { PostQuitMessage(3); });
            user.seesTheEnd();
        };
        RealUser::sits(module, quits, desktop.get());
        EXPECT_EQ(left.wParam, 3u) << fromACharacter;
        EXPECT_FALSE(form->visible());
    }
}

TEST_F(RealWindows, TellTheMachinesTime) {
    SYSTEMTIME time{};
    double days = 0;
    GetLocalTime(&time);
    SystemTimeToVariantTime(&time, &days);
    EXPECT_NEAR(desktop->now().days, days, 2.0 / 86400);
}
