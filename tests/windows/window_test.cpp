// The window of a form among those of its host: what the system and the host do to it, and what others ask of it.
#include "tests/windows/TestForms.h"
#include "win32/Dpi.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <functional>
#include <future>
#include <utility>
#include <vector>

using namespace forms;
using namespace support;
using namespace std::chrono_literals;

/// The program's own entry for the system's function, under the linker's name for it.
#ifdef _WIN64
extern "C" decltype(&ShowWindow) ownShowWindow asm("__imp_ShowWindow");
#else
extern "C" decltype(&ShowWindow) ownShowWindow asm("__imp__ShowWindow@8");
#endif

namespace {

/// As the first call does in a program that was started hidden.
BOOL WINAPI hide(HWND window, int) { return Exchanged<decltype(&ShowWindow)>::system(window, SW_HIDE); }

/// A window of the host, on the test's thread.
win32::OwnedWindow hostWindow(DWORD style, HWND owner = nullptr) {
    return win32::OwnedWindow(
        CreateWindowExW(0, L"STATIC", L"host", style, 10, 10, 300, 200, owner, nullptr, nullptr, nullptr));
}
bool enabled(const win32::OwnedWindow& window) { return IsWindowEnabled(window.get()); }

/// Hears what messages of this thread do, once a window has answered them, while it lives.
class Answers {
public:
    using Heard = std::function<void(const CWPRETSTRUCT&)>;
    explicit Answers(Heard heard) {
        current() = std::move(heard);
        hook_ = SetWindowsHookExW(WH_CALLWNDPROCRET, &procedure, nullptr, GetCurrentThreadId());
    }
    ~Answers() { UnhookWindowsHookEx(hook_); }
    Answers(const Answers&) = delete;
    Answers& operator=(const Answers&) = delete;

private:
    static Heard& current() {
        static Heard heard;
        return heard;
    }
    static LRESULT CALLBACK procedure(int code, WPARAM wParam, LPARAM lParam) {
        if (code == HC_ACTION) current()(*reinterpret_cast<const CWPRETSTRUCT*>(lParam));
        return CallNextHookEx(nullptr, code, wParam, lParam);
    }
    HHOOK hook_;
};

HWND topOf(const Control& control) { return GetAncestor(Person::windowOf(control), GA_ROOT); }

void paintNow(HWND window) { RedrawWindow(window, nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW | RDW_ALLCHILDREN); }

/// A list view's question for the text of a cell.
std::wstring_view askCell(HWND list, int row, int subItem, wchar_t* room, int size) {
    NMLVDISPINFOW asked{};
    asked.hdr = {list, 0, LVN_GETDISPINFOW};
    asked.item.mask = LVIF_TEXT;
    asked.item.iItem = row;
    asked.item.iSubItem = subItem;
    asked.item.pszText = room;
    asked.item.cchTextMax = size;
    SendMessageW(GetParent(list), WM_NOTIFY, 0, reinterpret_cast<LPARAM>(&asked));
    return asked.item.pszText;
}

/// What a row is painted in.
struct Colours {
    COLORREF text, ground;
    bool operator==(const Colours&) const = default;
};
std::ostream& operator<<(std::ostream& out, const Colours& colours) {
    return out << std::hex << colours.text << " on " << colours.ground;
}

Colours rowColours(HWND list, DWORD_PTR row) {
    NMLVCUSTOMDRAW drawing{};
    drawing.nmcd.hdr = {list, 0, NM_CUSTOMDRAW};
    drawing.nmcd.dwDrawStage = CDDS_ITEMPREPAINT;
    drawing.nmcd.dwItemSpec = row;
    SendMessageW(GetParent(list), WM_NOTIFY, 0, reinterpret_cast<LPARAM>(&drawing));
    return {drawing.clrText, drawing.clrTextBk};
}

class FormsWindow : public testing::Test, protected OnRealWindows {};

} // namespace

TEST_F(FormsWindow, SwitchesOffAHostWithoutACaptionToo) {
    const win32::OwnedWindow application = hostWindow(WS_OVERLAPPED);
    const win32::OwnedWindow host = hostWindow(WS_POPUP | WS_VISIBLE, application.get());
    const Exchanged startedHidden(ownShowWindow, &hide);
    sits([&](Person& person) {
        EXPECT_FALSE(enabled(host));
        person.look([&] {
            EXPECT_TRUE(IsWindowVisible(topOf(form->txtBarcode)));
            for (const bool works : {true, false}) {
                form->works = works;
                EXPECT_EQ(SendMessageW(topOf(form->txtBarcode), WM_QUERYENDSESSION, 0, 0), !works);
            }
        });
    });
    EXPECT_TRUE(enabled(host));
}

TEST_F(FormsWindow, PaintsWhatCanBeReadAlsoInDarkColours) {
    constexpr COLORREF kRed = 0x0000FF;
    const auto looks = [&](bool dark) {
        sits(*rows, [&](Person& person) {
            person.look([&] {
                rows->grid.setDataRows({{"1", "R1"}, {"2", "R2"}});
                rows->grid.setRowColour(2, kRed);
                HWND list = Person::windowOf(rows->grid);
                for (const bool focused : {true, false}) {
                    SCOPED_TRACE(focused);
                    if (!focused) rows->cmdRefresh.setFocus();
                    const Colours chosen{GetSysColor(COLOR_HIGHLIGHTTEXT), GetSysColor(COLOR_HIGHLIGHT)};
                    rows->grid.selectRow(1);
                    EXPECT_EQ(rowColours(list, 0) == chosen, focused || dark) << rowColours(list, 0);
                    EXPECT_EQ(rowColours(list, 1).text, kRed);
                    rows->grid.selectRow(2); // It is red still.
                    const Colours red = rowColours(list, 1);
                    EXPECT_EQ(dark ? red == chosen : (focused ? red.ground : red.text) == kRed, true) << red;
                }
            });
        });
        sits([&](Person& person) {
            person.look([&] {
                form->txtQuantity.setLocked(true);
                HDC dc = GetDC(nullptr);
                SendMessageW(topOf(form->txtQuantity), WM_CTLCOLORSTATIC, reinterpret_cast<WPARAM>(dc),
                             reinterpret_cast<LPARAM>(Person::windowOf(form->txtQuantity)));
                EXPECT_EQ((Colours{GetTextColor(dc), GetBkColor(dc)}),
                          (Colours{GetSysColor(COLOR_BTNTEXT), GetSysColor(COLOR_BTNFACE)}));
                ReleaseDC(nullptr, dc);
            });
        });
    };
    looks(false);
    constexpr int kNames[] = {COLOR_WINDOW,  COLOR_WINDOWTEXT, COLOR_BTNFACE,
                              COLOR_BTNTEXT, COLOR_HIGHLIGHT,  COLOR_HIGHLIGHTTEXT};
    constexpr COLORREF kDark[] = {0x000000, 0xFFFFFF, 0x202020, 0xE0E0E0, 0x00FFFF, 0x000001};
    COLORREF before[std::size(kNames)];
    std::transform(std::begin(kNames), std::end(kNames), before, GetSysColor);
    SetSysColors(std::size(kNames), kNames, kDark);
    looks(true);
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
    form->describe = [&, describe = form->describe] {
        describe();
        note.place({120, 2000, 3000, 420});
        note.setText("Not carried by\r\nthe other shop");
    };
    sits([&](Person& person) {
        person.look([&] {
            RECT area{};
            GetClientRect(Person::windowOf(note), &area);
            EXPECT_GE(area.bottom, 2 * win32::DialogFont(win32::Dpi()).lineHeight());
            EXPECT_FALSE(GetWindowLongPtrW(Person::windowOf(note), GWL_STYLE) & SS_CENTERIMAGE);
        });
    });
    SystemParametersInfoW(SPI_SETNONCLIENTMETRICS, sizeof metrics, &metrics, 0);
}

TEST_F(FormsWindow, OutlivesTheWindowsOfItsHostAndComesBeforeThem) {
    form->txtBarcode.onKeyPress = [&](std::int16_t&) { rows->showModal(form.get()); };
    const win32::OwnedWindow other = hostWindow(WS_OVERLAPPEDWINDOW | WS_VISIBLE);
    win32::OwnedWindow application = hostWindow(WS_OVERLAPPEDWINDOW | WS_VISIBLE),
                       splash = hostWindow(WS_POPUP | WS_VISIBLE);
    SetActiveWindow(splash.get());
    sits([&](Person& person) {
        person.types("x");
        person.seesForm("frmRows");
        EXPECT_FALSE(enabled(application) || enabled(splash) || enabled(other));
        person.look([&] {
            rows->grid.setDataRows({{"1", "R1", "5", ""}});
            splash = {};
            application = {};
        });
        // A window that is switched off is chosen, with another program in front and then with this one.
        for (const bool ofAnother : {false, true}) {
            person.look([&] {
                if (ofAnother) SetActiveWindow(nullptr);
                SetActiveWindow(other.get());
                for (HWND window : {topOf(form->txtBarcode), topOf(rows->grid)})
                    if (ofAnother) SendMessageW(window, WM_ACTIVATEAPP, TRUE, 0);
            });
            person.seesForm("frmRows");
        }
        person.look([&] {
            EXPECT_EQ(GetActiveWindow(), topOf(rows->grid));
            EXPECT_EQ(rows->grid.cell(1, 1), "R1");
            EXPECT_TRUE(form->visible());
        });
    });
    EXPECT_TRUE(enabled(other));
    EXPECT_EQ(GetActiveWindow(), other.get());
}

TEST_F(FormsWindow, EndsWhenItIsDestroyed) {
    form->txtBarcode.onKeyPress = [&](std::int16_t&) { rows->showModal(form.get()); };
    const win32::OwnedWindow other = hostWindow(WS_OVERLAPPEDWINDOW | WS_VISIBLE);
    for (const int forms : {1, 2, 1}) { // The same forms can be shown again.
        SCOPED_TRACE(forms);
        std::promise<void> end;
        Person::sits(
            *desktop,
            [&] {
                form->showModal(nullptr);
                end.set_value();
            },
            [&](Person& person) {
                person.seesForm("frmCounter");
                if (forms == 2) {
                    person.types("x");
                    person.seesForm("frmRows");
                }
                EXPECT_FALSE(enabled(other));
                person.look([&] {
                    DestroyWindow(topOf(form->txtBarcode));
                    form->txtBarcode.setText("5"); // Handlers that still run find no window.
                });
                if (end.get_future().wait_for(10s) == std::future_status::ready) return;
                ADD_FAILURE() << "A form still waits";
                person.look([&] {
                    rows->unload();
                    form->unload();
                    PostThreadMessageW(GetCurrentThreadId(), WM_NULL, 0, 0);
                });
            });
        EXPECT_TRUE(enabled(other));
        EXPECT_FALSE(form->visible() || rows->visible());
        EXPECT_EQ(form->txtBarcode.text(), "");
    }
}

TEST_F(FormsWindow, KeepsTheSizeThatAnotherResolutionGivesIt) {
    constexpr UINT kDpiChanged = 0x02E0; // WM_DPICHANGED
    form->describe = [&form = *form] {
        form.setResizable(true);
        form.txtBarcode.place({120, 120, 6960, 330}, {true, true, true, false});
    };
    struct Case {
        WORD dpi;
        int width, height; ///< pixels of the whole window
    };
    // Larger than designed, then less than the design takes at the resolution before.
    // The last one is larger than the screen.
    const Case cases[] = {{144, 1000, 700}, {96, 600, 420}, {120, 900, 600}, {96, 9000, 9000}};
    RECT work{};
    SystemParametersInfoW(SPI_GETWORKAREA, 0, &work, 0);
    sits([&](Person& person) {
        person.look([&] {
            HWND window = topOf(form->txtBarcode);
            for (const Case& c : cases) {
                SCOPED_TRACE(c.dpi);
                const win32::Dpi dpi(c.dpi);
                RECT suggested{5, 5, 5 + c.width, 5 + c.height};
                SendMessageW(window, kDpiChanged, MAKEWPARAM(c.dpi, c.dpi), reinterpret_cast<LPARAM>(&suggested));
                RECT now{};
                GetWindowRect(window, &now);
                EXPECT_EQ(now.right - now.left, std::min<LONG>(c.width, work.right - work.left));
                EXPECT_EQ(now.bottom - now.top, std::min<LONG>(c.height, work.bottom - work.top));
                EXPECT_LE(now.bottom, work.bottom);
                RECT inside{};
                GetClientRect(window, &inside);
                EXPECT_EQ(form->width(), dpi.twips(inside.right));
                EXPECT_EQ(form->txtBarcode.bounds().width, form->width() - 240);
                MINMAXINFO limits{};
                SendMessageW(window, WM_GETMINMAXINFO, 0, reinterpret_cast<LPARAM>(&limits));
                const SIZE least = win32::outerSize({dpi.pixels(7200), dpi.pixels(4800)},
                                                    static_cast<DWORD>(GetWindowLongPtrW(window, GWL_STYLE)),
                                                    static_cast<DWORD>(GetWindowLongPtrW(window, GWL_EXSTYLE)), dpi);
                EXPECT_EQ(limits.ptMinTrackSize.x, least.cx);
                EXPECT_EQ(limits.ptMinTrackSize.y, least.cy);
            }
        });
    });
}

TEST_F(FormsWindow, TellsItsControlsOfTheSystemsNewColours) {
    sits([&](Person& person) {
        person.look([&] {
            HWND window = topOf(form->txtBarcode);
            paintNow(window);
            std::vector<HWND> told;
            const Answers answers([&](const CWPRETSTRUCT& answer) {
                if (answer.message == WM_SYSCOLORCHANGE) told.push_back(answer.hwnd);
            });
            SendMessageW(window, WM_SYSCOLORCHANGE, 0, 0);
            EXPECT_TRUE(GetUpdateRect(window, nullptr, FALSE));
            for (const Control* control : form->controls()) {
                SCOPED_TRACE(control->name());
                HWND shown = Person::windowOf(*control);
                EXPECT_EQ(std::count(told.begin(), told.end(), shown), 1);
                EXPECT_TRUE(GetUpdateRect(shown, nullptr, FALSE));
            }
        });
    });
}

TEST_F(FormsWindow, SaysAWholeRowToScreenReadersAndPaintsNothingOfThat) {
    rows->describe = [this, describe = rows->describe] {
        describe();
        rows->grid.setDataRows({{"1", "R1", "", "open"}, {"2", "R2", "5.50", "M\xC3\xBCller"}});
    };
    sits(*rows, [&](Person& person) {
        person.look([&] {
            HWND list = Person::windowOf(rows->grid);
            const auto shown = [&](int row, int subItem) {
                wchar_t text[100] = L"none";
                LVITEMW item{};
                item.iSubItem = subItem;
                item.pszText = text;
                item.cchTextMax = 100;
                SendMessageW(list, LVM_GETITEMTEXTW, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&item));
                return std::wstring(item.pszText);
            };
            EXPECT_EQ(shown(0, 0), L"R1, open");
            EXPECT_EQ(shown(1, 0), L"R2, 5.50, M\xFCller");
            EXPECT_EQ(shown(1, 2), L"5.50");
            std::vector<std::wstring> ofRow, ofCells;
            const Answers answers([&](const CWPRETSTRUCT& answer) {
                const auto* asked = reinterpret_cast<const NMLVDISPINFOW*>(answer.lParam);
                if (answer.message != WM_NOTIFY || asked->hdr.code != LVN_GETDISPINFOW) return;
                if (asked->item.mask & LVIF_TEXT)
                    (asked->item.iSubItem == 0 ? ofRow : ofCells).emplace_back(asked->item.pszText);
            });
            paintNow(list);
            EXPECT_EQ(std::count(ofCells.begin(), ofCells.end(), L"R2"), 1);
            EXPECT_EQ(std::count(ofRow.begin(), ofRow.end(), L""), std::ssize(ofRow));
        });
    });
}

TEST_F(FormsWindow, LeavesTheTextsOfCellsWithWhoAskedForThem) {
    rows->describe = [this, describe = rows->describe] {
        describe();
        rows->grid.setDataRows({{"1", "R1", "abcdefgh", ""}});
    };
    struct Case {
        int row, subItem, size;
        const wchar_t* text;
    };
    const Case cases[] = {{0, 1, 8, L"R1"}, {0, 2, 8, L"abcdefg"}, {0, 2, 1, L""},  {0, 0, 5, L"R1, "},
                          {0, 3, 8, L""},   {0, 4, 8, L""},        {-1, 1, 8, L""}, {1, 1, 8, L""}};
    sits(*rows, [&](Person& person) {
        person.look([&] {
            HWND list = Person::windowOf(rows->grid);
            std::vector<std::wstring> rooms(std::size(cases), std::wstring(10, L'#'));
            std::vector<std::wstring_view> answers;
            for (std::size_t i = 0; i < std::size(cases); ++i)
                answers.push_back(askCell(list, cases[i].row, cases[i].subItem, rooms[i].data(), cases[i].size));
            for (std::size_t i = 0; i < std::size(cases); ++i) {
                SCOPED_TRACE(i);
                EXPECT_EQ(answers[i].data(), rooms[i].data());
                EXPECT_STREQ(rooms[i].c_str(), cases[i].text);
                EXPECT_EQ(rooms[i].find_last_not_of(L'#') + 1, std::wcslen(cases[i].text) + 1);
            }
        });
    });
}
