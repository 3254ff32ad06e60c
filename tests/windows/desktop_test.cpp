// The desktop of real windows: what a person's keys, clicks and pasted text do there.
#include "automation/OutsideCall.h"
#include "forms/UserInput.h"
#include "tests/support/EventOrder.h"
#include "tests/windows/Person.h"
#include "tests/windows/TestForms.h"
#include "win32/Dpi.h"
#include "win32/Text.h"
#include "win32/Win32Desktop.h"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <future>

using namespace forms;
using namespace support;
using namespace std::chrono_literals;

namespace {

/// The Shift key of a real keyboard is a key of its own, pressed and let go; the table speaks of the key that it goes
/// with.
std::vector<std::string> withoutShift(std::vector<std::string> log) {
    std::erase_if(log,
                  [](const std::string& line) { return line.ends_with("_KeyDown 16") || line.ends_with("_KeyUp 16"); });
    return log;
}

void take(Person& person, EventOrderForm& form, const EventStep& step) {
    switch (step.kind) {
    case EventStep::Kind::types: return person.types(step.text);
    case EventStep::Kind::tabs: return person.presses(VK_TAB);
    case EventStep::Kind::backTab: return person.presses(VK_TAB, VK_SHIFT);
    case EventStep::Kind::escape: return person.presses(VK_ESCAPE);
    case EventStep::Kind::clicks: return person.clicks(*form.find(step.control));
    case EventStep::Kind::picks:
        return person.look([&] {
            HWND combo = Person::windowOf(*form.find(step.control));
            SetFocus(combo);
            SendMessageW(combo, CB_SHOWDROPDOWN, TRUE, 0);
            SendMessageW(combo, CB_SELECTSTRING, static_cast<WPARAM>(-1),
                         reinterpret_cast<LPARAM>(win32::wide(step.text).c_str()));
            SendMessageW(GetParent(combo), WM_COMMAND, MAKEWPARAM(0, CBN_SELENDOK), reinterpret_cast<LPARAM>(combo));
            SendMessageW(combo, CB_SHOWDROPDOWN, FALSE, 0);
        });
    case EventStep::Kind::disables: return person.look([&] { form.find(step.control)->setEnabled(false); });
    }
}

} // namespace

/// The program's own entry for the system's function, under the linker's name for it.
#ifdef _WIN64
extern "C" decltype(&TranslateMessage) ownTranslateMessage asm("__imp_TranslateMessage");
#else
extern "C" decltype(&TranslateMessage) ownTranslateMessage asm("__imp__TranslateMessage@4");
#endif

namespace {

/// Where Alt and the keypad make no character, as under Wine: while this lives, Alt makes an "a" when it is let go.
class KeyedByNumber {
public:
    KeyedByNumber() { enter(&translate); }
    ~KeyedByNumber() { enter(system()); }
    KeyedByNumber(const KeyedByNumber&) = delete;
    KeyedByNumber& operator=(const KeyedByNumber&) = delete;

private:
    using Translate = decltype(&TranslateMessage);
    static Translate system() {
        static const Translate found = ownTranslateMessage;
        return found;
    }
    static void enter(Translate function) {
        system();
        DWORD protection = 0;
        VirtualProtect(&ownTranslateMessage, sizeof function, PAGE_READWRITE, &protection);
        ownTranslateMessage = function;
        VirtualProtect(&ownTranslateMessage, sizeof function, protection, &protection);
    }
    static BOOL WINAPI translate(const MSG* message) {
        const bool up = message->message == WM_KEYUP || message->message == WM_SYSKEYUP;
        if (up && message->wParam == VK_MENU) return PostMessageW(message->hwnd, WM_CHAR, L'a', 1);
        return system()(message);
    }
};

} // namespace

TEST(RealWindows, KeepTheOrderOfEvents) {
    for (const EventCase& c : eventOrder()) {
        SCOPED_TRACE(c.name);
        std::vector<std::string> log;
        const auto desktop = win32::makeDesktop();
        const auto form = std::make_shared<EventOrderForm>(*desktop, log);
        Person::sits(
            *desktop, [&] { form->showModal(nullptr); },
            [&](Person& person) {
                person.seesForm("frmEventOrder");
                person.look([&] { log.clear(); });
                for (const EventStep& step : c.steps) take(person, *form, step);
                person.sees(c.name, [&] { return withoutShift(log).size() >= c.events.size(); });
                person.look([&] {
                    EXPECT_EQ(withoutShift(log), c.events);
                    ASSERT_TRUE(form->activeControl());
                    EXPECT_EQ(form->activeControl()->name(), c.focus);
                    EXPECT_EQ(GetFocus(), Person::windowOf(*form->activeControl()));
                    EXPECT_EQ(Person::shownText(form->txtFirst), c.first);
                    EXPECT_EQ(Person::shownText(form->txtSecond), c.second);
                    EXPECT_EQ(form->txtFirst.text(), c.first);
                });
            });
    }
}

TEST(RealWindows, ShowARestoredChoiceOfAComboBox) {
    std::vector<std::string> log;
    const auto desktop = win32::makeDesktop();
    const auto form = std::make_shared<EventOrderForm>(*desktop, log);
    Person::sits(
        *desktop, [&] { form->showModal(nullptr); },
        [&](Person& person) {
            person.seesForm("frmEventOrder");
            take(person, *form, {EventStep::Kind::picks, "cboChoice", "Two"});
            person.sees("the first entry again", [&] { return Person::shownText(form->cboChoice) == "One"; });
            // An open list is closed by Escape; the form's cancel button is not meant.
            person.look([&] { SendMessageW(Person::windowOf(form->cboChoice), CB_SHOWDROPDOWN, TRUE, 0); });
            person.look([&] { log.clear(); });
            person.presses(VK_ESCAPE);
            person.sees("the list closed", [&] {
                return !SendMessageW(Person::windowOf(form->cboChoice), CB_GETDROPPEDSTATE, 0, 0) && !log.empty();
            });
            person.look([&] { EXPECT_EQ(log, std::vector<std::string>{"cboChoice_KeyUp 27"}); });
        });
}

TEST(RealWindows, LoseNoKeyOfAScannerThatQueuesThemAll) {
    const auto desktop = win32::makeDesktop();
    const auto form = std::make_shared<CounterForm>(*desktop);
    std::vector<std::string> lines;
    form->txtQuantity.onGotFocus = [&] { desktop->sendKeys("{Home}+{End}"); };
    form->txtBarcode.onKeyPress = [&](std::int16_t& c) {
        if (c == kKeyReturn) desktop->sendKeys("{TAB}");
    };
    form->txtQuantity.onKeyPress = [&](std::int16_t& c) {
        if (c != kKeyReturn) return;
        lines.push_back(form->txtBarcode.text() + "x" + form->txtQuantity.text());
        form->txtBarcode.setText("");
        form->txtBarcode.setFocus();
    };
    std::string keys;
    std::vector<std::string> expected;
    for (int i = 0; i < 10; ++i) {
        const std::string code = "400123456789" + std::to_string(i);
        keys += code + "\r" + std::to_string(i + 11) + "\r";
        expected.push_back(code + "x" + std::to_string(i + 11));
    }
    Person::sits(
        *desktop, [&] { form->showModal(nullptr); },
        [&](Person& person) {
            person.seesForm("frmCounter");
            person.types(keys);
            person.sees("ten lines", [&] { return lines.size() == expected.size(); });
            person.look([&] { EXPECT_EQ(lines, expected); });
        });
}

TEST(RealWindows, TakeNoCommandWhileACallHasLeftTheModule) {
    const auto desktop = win32::makeDesktop();
    const auto form = std::make_shared<CounterForm>(*desktop);
    std::atomic<bool> waits = false, goesOn = false;
    std::atomic<int> keysServed = 0;
    int clicks = 0;
    form->cmdOk.onClick = [&] { ++clicks; };
    form->txtQuantity.onKeyPress = [&](std::int16_t& c) {
        if (c != kKeyReturn) return;
        // A component that serves the thread's messages until it is ready.
        const automation::OutsideCall outside;
        waits = true;
        while (!goesOn)
            for (MSG message; PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE);) {
                TranslateMessage(&message);
                DispatchMessageW(&message);
                if (message.message == WM_KEYDOWN) ++keysServed;
            }
        EXPECT_EQ(form->txtQuantity.text(), "1");
        EXPECT_EQ(clicks, 0);
        form->txtBarcode.setFocus();
    };
    Person::sits(
        *desktop, [&] { form->showModal(nullptr); },
        [&](Person& person) {
            person.seesForm("frmCounter");
            person.clicks(form->txtQuantity);
            person.sees("the quantity", [&] { return GetFocus() == Person::windowOf(form->txtQuantity); });
            person.types("1\r");
            person.sees("the component at work", [&] { return waits.load(); });
            person.clicks(form->cmdOk);
            person.look([&] { PostMessageW(GetAncestor(GetFocus(), GA_ROOT), WM_CLOSE, 0, 0); });
            person.types("23Ab?");
            person.sees("five keys and two of Shift", [&] { return keysServed == 7; });
            goesOn = true;
            person.sees("what was typed meanwhile", [&] { return form->txtBarcode.text() == "23Ab?"; });
            EXPECT_EQ(clicks, 0);
            EXPECT_TRUE(form->visible());
        });
}

TEST(RealWindows, GiveTheFocusBackAfterAMessageBox) {
    const auto desktop = win32::makeDesktop();
    const auto form = std::make_shared<CounterForm>(*desktop);
    std::vector<Answer> answers;
    form->txtQuantity.onKeyPress = [&](std::int16_t& c) {
        if (c != kKeyReturn) return;
        answers.push_back(desktop->messageBox(
            {"Save Changes?", "Request", MessageIcon::question, MessageButtons::yesNo, Answer::no}));
    };
    Person::sits(
        *desktop, [&] { form->showModal(nullptr); },
        [&](Person& person) {
            person.seesForm("frmCounter");
            person.clicks(form->txtQuantity);
            for (const int button : {IDYES, IDNO, IDCANCEL}) { // The last is what Escape sends.
                person.sees("the quantity", [&] { return GetFocus() == Person::windowOf(form->txtQuantity); });
                person.types("1\r");
                person.answers(button);
            }
            person.sees("the box again", [&] { return GetFocus() == Person::windowOf(form->txtQuantity); });
            person.types("2");
            person.sees("what was typed", [&] { return form->txtQuantity.text() == "1112"; });
            EXPECT_EQ(answers, (std::vector<Answer>{Answer::yes, Answer::no, Answer::no}));
        });
}

TEST(RealWindows, TakePastedTextWholeOrNotAtAll) {
    const auto desktop = win32::makeDesktop();
    const auto form = std::make_shared<CounterForm>(*desktop);
    TextBox& box = form->txtBarcode;
    box.acceptsWhole = [](const std::string& whole) { return whole.find('\'') == std::string::npos; };
    int changes = 0;
    box.onChange = [&] { ++changes; };
    struct Case {
        const char* pasted;
        const char* text;
    };
    // The text stands as "ab" with the "b" selected before each of them.
    const Case cases[] = {{"12", "a12"}, {"1'2", "ab"}, {"'", "ab"}, {"\xC3\xA4", "a\xC3\xA4"}, {"1\r\n'2", "a1"}};
    Person::sits(
        *desktop, [&] { form->showModal(nullptr); },
        [&](Person& person) {
            person.seesForm("frmCounter");
            person.look([&] {
                HWND window = Person::windowOf(box);
                const auto prepare = [&] {
                    box.setText("ab");
                    box.select(1, 1);
                    changes = 0;
                };
                const auto expect = [&](const Case& c) {
                    EXPECT_EQ(box.text(), c.text);
                    EXPECT_EQ(Person::shownText(box), c.text);
                    EXPECT_EQ(changes, box.text() == "ab" ? 0 : 1);
                };
                for (const Case& c : cases) {
                    SCOPED_TRACE(c.pasted);
                    prepare();
                    copyToClipboard(c.pasted);
                    SendMessageW(window, WM_PASTE, 0, 0);
                    expect(c);
                }
                for (const Case& c : {cases[0], cases[1]}) {
                    SCOPED_TRACE(std::string("set by an input method: ") + c.pasted);
                    prepare();
                    const std::wstring text = win32::wide(c.pasted);
                    SendMessageW(window, EM_REPLACESEL, TRUE, reinterpret_cast<LPARAM>(text.c_str()));
                    expect(c);
                }
                prepare();
                SetWindowTextW(window, L"it's");
                EXPECT_EQ(Person::shownText(box), "ab");
                SetWindowTextW(window, L"its");
                EXPECT_EQ(box.text(), "its");
            });
        });
}

TEST(RealWindows, MakeOneChangeOfACharacterOfTwoUnits) {
    const auto desktop = win32::makeDesktop();
    const auto form = std::make_shared<CounterForm>(*desktop);
    std::vector<std::string> texts;
    form->txtBarcode.onChange = [&] { texts.push_back(form->txtBarcode.text()); };
    Person::sits(
        *desktop, [&] { form->showModal(nullptr); },
        [&](Person& person) {
            person.seesForm("frmCounter");
            person.look([&] {
                for (const wchar_t unit : {L'\xD83D', L'\xDE00', L'x'})
                    SendMessageW(Person::windowOf(form->txtBarcode), WM_CHAR, unit, 1);
                EXPECT_EQ(texts, (std::vector<std::string>{"\xF0\x9F\x98\x80", "\xF0\x9F\x98\x80x"}));
                EXPECT_EQ(form->txtBarcode.selStart(), 2);
            });
        });
}

TEST(RealWindows, GiveF10AndMnemonicsToTheForm) {
    const auto desktop = win32::makeDesktop();
    const auto form = std::make_shared<CounterForm>(*desktop);
    std::vector<std::string> log;
    form->onKeyDown = [&](std::int16_t& code, std::int16_t) {
        if (code == kKeyF10) log.push_back("F10");
    };
    form->onKeyPress = [&](std::int16_t& c) {
        if (c == kKeyLineFeed) log.push_back("Ctrl+Enter");
    };
    form->cmdOk.onClick = [&] { log.push_back("OK"); };
    Person::sits(
        *desktop, [&] { form->showModal(nullptr); },
        [&](Person& person) {
            person.seesForm("frmCounter");
            person.presses(VK_F10);
            person.presses(VK_MENU); // Alt alone starts no menu either, so the next key arrives.
            person.types("7");
            person.presses(VK_RETURN, VK_CONTROL);
            person.presses('O', VK_MENU);
            person.sees("OK", [&] { return log.size() == 3; });
            EXPECT_EQ(log, (std::vector<std::string>{"F10", "Ctrl+Enter", "OK"}));
            EXPECT_EQ(form->txtBarcode.text(), "7");
        });
}

TEST(RealWindows, TakeACharacterKeyedByItsNumber) {
    const KeyedByNumber keyed;
    const auto desktop = win32::makeDesktop();
    const auto form = std::make_shared<CounterForm>(*desktop);
    std::vector<std::string> log;
    form->txtBarcode.onKeyUp = [&](std::int16_t& code, std::int16_t) { log.push_back("up " + std::to_string(code)); };
    form->txtBarcode.onKeyPress = [&](std::int16_t& c) { log.push_back("press " + std::to_string(c)); };
    Person::sits(
        *desktop, [&] { form->showModal(nullptr); },
        [&](Person& person) {
            person.seesForm("frmCounter");
            person.presses(VK_NUMPAD9, VK_MENU);
            person.presses(VK_F2);
            person.sees("the last key", [&] { return !log.empty() && log.back() == "up 113"; });
            EXPECT_EQ(log, (std::vector<std::string>{"up 105", "up 18", "press 97", "up 113"}));
            EXPECT_EQ(form->txtBarcode.text(), "a");
        });
}

TEST(RealWindows, ScrollFiftyThousandRowsAtOnce) {
    constexpr int kRows = 50000;
    const auto desktop = win32::makeDesktop();
    const auto form = std::make_shared<PlainForm>(*desktop, "frmMaster");
    Grid grid(*form, "flexMaster");
    int rowChanges = 0;
    grid.onRowColChange = [&] { ++rowChanges; };
    form->describe = [&] {
        grid.place({120, 120, 6960, 4000});
        grid.setRows(2);
        grid.setFixedRows(1);
        grid.setFixedCols(0);
        grid.setCols(4);
        for (int column = 0; column < 4; ++column) grid.setCell(0, column, "Column " + std::to_string(column));
        grid.setColWidth(0, 0);
        grid.setColWidth(3, 0);
    };
    Person::sits(
        *desktop, [&] { form->showModal(nullptr); },
        [&](Person& person) {
            person.seesForm("frmMaster");
            const ULONGLONG before = GetTickCount64();
            person.look([&] {
                std::vector<std::vector<std::string>> rows;
                for (int i = 1; i <= kRows; ++i)
                    rows.push_back({std::to_string(i), "R" + std::to_string(i), "2024", "5"});
                grid.setDataRows(std::move(rows));
                grid.selectRow(1);
            });
            HWND list = nullptr;
            person.look([&] { list = Person::windowOf(grid); });
            person.sees("all rows", [&] { return SendMessageW(list, LVM_GETITEMCOUNT, 0, 0) == kRows; });
            person.presses(VK_END);
            person.sees("the last row", [&] { return grid.row() == kRows; });
            for (int page = 0; page < 20; ++page) person.presses(VK_PRIOR);
            person.presses(VK_UP);
            person.sees("pages up", [&] { return grid.row() < kRows - 100; });
            EXPECT_LT(GetTickCount64() - before, 5000u);
            person.look([&] {
                EXPECT_GT(rowChanges, 3);
                EXPECT_EQ(SendMessageW(list, LVM_GETNEXTITEM, static_cast<WPARAM>(-1), LVNI_SELECTED), grid.row() - 1);
                EXPECT_EQ(SendMessageW(list, LVM_GETTOPINDEX, 0, 0), grid.topRow() - 1);
                // Hidden columns have no header that a person could drag open.
                HWND header = reinterpret_cast<HWND>(SendMessageW(list, LVM_GETHEADER, 0, 0));
                int shown = 0;
                for (int i = 0; i < Header_GetItemCount(header); ++i)
                    if (SendMessageW(list, LVM_GETCOLUMNWIDTH, i, 0) > 0) ++shown;
                EXPECT_EQ(shown, 2);
                grid.selectRow(100);
                grid.setTopRow(95);
            });
            person.sees("row 95 on top", [&] { return SendMessageW(list, LVM_GETTOPINDEX, 0, 0) == 94; });
            person.clicksAt(grid, 20, 60);
            person.sees("the row under the pointer", [&] { return grid.row() != 100 && grid.row() >= 95; });
            person.look([&] { EXPECT_LT(grid.row(), 99); });
        });
}

TEST(RealWindows, DisableTheFormBelowAndComeBackToItsFocus) {
    const auto desktop = win32::makeDesktop();
    const auto below = std::make_shared<CounterForm>(*desktop);
    const auto above = std::make_shared<PlainForm>(*desktop, "frmAbove");
    TextBox box(*above, "txtAbove");
    above->describe = [&] { box.place({120, 120, 2000, 330}); };
    // It leaves inside its own handler and is loaded and shown once more from there.
    int showings = 0;
    box.onKeyPress = [&](std::int16_t& c) {
        if (c != kKeyReturn) return;
        above->unload();
        if (++showings == 1) above->showModal(below.get());
    };
    below->txtQuantity.onKeyPress = [&](std::int16_t& c) {
        if (c == kKeyReturn) above->showModal(below.get());
    };
    Person::sits(
        *desktop, [&] { below->showModal(nullptr); },
        [&](Person& person) {
            person.seesForm("frmCounter");
            person.clicks(below->txtQuantity);
            person.sees("the quantity", [&] { return GetFocus() == Person::windowOf(below->txtQuantity); });
            HWND first = nullptr;
            person.look([&] { first = GetAncestor(GetFocus(), GA_ROOT); });
            person.types("\r");
            person.seesForm("frmAbove");
            EXPECT_FALSE(IsWindowEnabled(first));
            person.types("x\r");
            person.sees("the second showing", [&] { return showings == 1 && box.text().empty() && box.view(); });
            person.seesForm("frmAbove");
            EXPECT_FALSE(IsWindowEnabled(first));
            person.types("\r");
            person.seesForm("frmCounter");
            EXPECT_TRUE(IsWindowEnabled(first));
            person.types("5");
            person.sees("the box below", [&] { return below->txtQuantity.text() == "5"; });
        });
}

TEST(RealWindows, LeaveARequestToQuitToTheHost) {
    const auto desktop = win32::makeDesktop();
    const auto form = std::make_shared<CounterForm>(*desktop);
    const auto above = std::make_shared<PlainForm>(*desktop, "frmAbove");
    form->txtBarcode.onKeyPress = [&](std::int16_t&) {
        PostQuitMessage(3);
        above->showModal(form.get());
    };
    for (const bool fromACharacter : {false, true}) {
        SCOPED_TRACE(fromACharacter ? "beneath a second form, opened by a character" : "beneath one form");
        MSG left{};
        std::promise<void> end;
        Person::sits(
            *desktop,
            [&] {
                form->showModal(nullptr);
                end.set_value();
                EXPECT_TRUE(PeekMessageW(&left, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE));
            },
            [&](Person& person) {
                person.seesForm("frmCounter");
                if (fromACharacter)
                    person.types("x");
                else
                    person.look([] { PostQuitMessage(3); });
                EXPECT_EQ(end.get_future().wait_for(10s), std::future_status::ready) << "not all forms have ended";
            });
        EXPECT_EQ(left.wParam, 3u);
        EXPECT_FALSE(form->visible());
    }
}
