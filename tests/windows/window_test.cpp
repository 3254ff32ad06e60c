// The window of a form among those of its host: what the system and the host do to it, and what others ask of it.
#include "forms/Grid.h"
#include "tests/windows/Person.h"
#include "tests/windows/TestForms.h"
#include "win32/Dpi.h"
#include "win32/Win32Desktop.h"

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

namespace {

/// A window of the host, on the test's thread.
class HostWindow {
public:
    explicit HostWindow(DWORD style, HWND owner = nullptr)
        : window_(CreateWindowExW(0, L"STATIC", L"host", style, 10, 10, 300, 200, owner, nullptr, nullptr, nullptr)) {}
    ~HostWindow() { destroy(); }
    HostWindow(const HostWindow&) = delete;
    HostWindow& operator=(const HostWindow&) = delete;

    void destroy() {
        if (window_) DestroyWindow(std::exchange(window_, nullptr));
    }
    HWND get() const { return window_; }
    bool enabled() const { return IsWindowEnabled(window_) != FALSE; }

private:
    HWND window_;
};

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

class RowsForm : public PlainForm {
public:
    explicit RowsForm(Desktop& desktop) : PlainForm(desktop, "frmRows") {
        describe = [this] {
            grid.place({120, 120, 6960, 4000});
            grid.setRows(1);
            grid.setFixedRows(1);
            grid.setFixedCols(0);
            grid.setCols(4);
            grid.setColWidth(0, 0);
        };
    }
    void fill(const std::vector<std::vector<std::string>>& rows) {
        grid.setRows(1 + static_cast<int>(rows.size()));
        for (std::size_t row = 0; row < rows.size(); ++row)
            for (std::size_t column = 0; column < rows[row].size(); ++column)
                grid.setCell(1 + static_cast<int>(row), static_cast<int>(column), rows[row][column]);
    }
    Grid grid{*this, "flexRows"};
};

} // namespace

TEST(FormsWindow, SwitchesOffAHostWithoutACaptionToo) {
    const HostWindow application(WS_OVERLAPPED);
    const HostWindow host(WS_POPUP | WS_VISIBLE, application.get());
    const auto desktop = win32::makeDesktop();
    const auto form = std::make_shared<CounterForm>(*desktop);
    Person::sits(
        *desktop, [&] { form->showModal(nullptr); },
        [&](Person& person) {
            person.seesForm("frmCounter");
            EXPECT_FALSE(host.enabled());
        });
    EXPECT_TRUE(host.enabled());
}

TEST(FormsWindow, OutlivesTheWindowsOfItsHostAndComesBeforeThem) {
    const auto desktop = win32::makeDesktop();
    const auto form = std::make_shared<CounterForm>(*desktop);
    const auto above = std::make_shared<RowsForm>(*desktop);
    form->txtBarcode.onKeyPress = [&](std::int16_t&) { above->showModal(form.get()); };
    const HostWindow other(WS_OVERLAPPEDWINDOW | WS_VISIBLE);
    HostWindow application(WS_OVERLAPPEDWINDOW | WS_VISIBLE), splash(WS_POPUP | WS_VISIBLE);
    SetActiveWindow(splash.get());
    Person::sits(
        *desktop, [&] { form->showModal(nullptr); },
        [&](Person& person) {
            person.seesForm("frmCounter");
            person.types("x");
            person.seesForm("frmRows");
            EXPECT_FALSE(application.enabled() || splash.enabled() || other.enabled());
            person.look([&] {
                above->fill({{"1", "R1", "5", ""}});
                splash.destroy();
                application.destroy();
            });
            // The program is activated by a window that is switched off.
            person.look([&] {
                SetActiveWindow(other.get());
                SendMessageW(topOf(form->txtBarcode), WM_ACTIVATEAPP, TRUE, 0);
                SendMessageW(topOf(above->grid), WM_ACTIVATEAPP, TRUE, 0);
            });
            person.seesForm("frmRows");
            person.look([&] {
                EXPECT_EQ(GetActiveWindow(), topOf(above->grid));
                EXPECT_EQ(above->grid.cell(1, 1), "R1");
                EXPECT_TRUE(form->visible());
            });
        });
    EXPECT_TRUE(other.enabled());
    EXPECT_EQ(GetActiveWindow(), other.get());
}

TEST(FormsWindow, EndsWhenItIsDestroyed) {
    const auto desktop = win32::makeDesktop();
    const auto form = std::make_shared<CounterForm>(*desktop);
    const auto above = std::make_shared<RowsForm>(*desktop);
    form->txtBarcode.onKeyPress = [&](std::int16_t&) { above->showModal(form.get()); };
    const HostWindow other(WS_OVERLAPPEDWINDOW | WS_VISIBLE);
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
                EXPECT_FALSE(other.enabled());
                person.look([&] {
                    DestroyWindow(topOf(form->txtBarcode));
                    form->txtBarcode.setText("5"); // Handlers that still run find no window.
                });
                if (end.get_future().wait_for(10s) == std::future_status::ready) return;
                ADD_FAILURE() << "A form still waits";
                person.look([&] {
                    above->unload();
                    form->unload();
                    PostThreadMessageW(GetCurrentThreadId(), WM_NULL, 0, 0);
                });
            });
        EXPECT_TRUE(other.enabled());
        EXPECT_FALSE(form->visible() || above->visible());
        EXPECT_EQ(form->txtBarcode.text(), "");
    }
}

TEST(FormsWindow, KeepsTheSizeThatAnotherResolutionGivesIt) {
    constexpr UINT kDpiChanged = 0x02E0; // WM_DPICHANGED
    const auto desktop = win32::makeDesktop();
    const auto form = std::make_shared<CounterForm>(*desktop);
    form->describe = [&form = *form] {
        form.setResizable(true);
        form.txtBarcode.place({120, 120, 6960, 330}, {true, true, true, false});
    };
    struct Case {
        WORD dpi;
        int width, height; ///< pixels of the whole window
    };
    // Larger than designed, then less than the design takes at the resolution before.
    const Case cases[] = {{144, 1000, 700}, {96, 600, 420}, {120, 900, 600}};
    Person::sits(
        *desktop, [&] { form->showModal(nullptr); },
        [&](Person& person) {
            person.seesForm("frmCounter");
            person.look([&] {
                HWND window = topOf(form->txtBarcode);
                for (const Case& c : cases) {
                    SCOPED_TRACE(c.dpi);
                    const win32::Dpi dpi(c.dpi);
                    RECT suggested{5, 5, 5 + c.width, 5 + c.height};
                    SendMessageW(window, kDpiChanged, MAKEWPARAM(c.dpi, c.dpi), reinterpret_cast<LPARAM>(&suggested));
                    RECT now{};
                    GetWindowRect(window, &now);
                    EXPECT_EQ(now.right - now.left, c.width);
                    EXPECT_EQ(now.bottom - now.top, c.height);
                    RECT inside{};
                    GetClientRect(window, &inside);
                    EXPECT_EQ(form->width(), dpi.twips(inside.right));
                    EXPECT_EQ(form->txtBarcode.bounds().width, form->width() - 240);
                    MINMAXINFO limits{};
                    SendMessageW(window, WM_GETMINMAXINFO, 0, reinterpret_cast<LPARAM>(&limits));
                    const SIZE least = win32::outerSize(
                        {dpi.pixels(7200), dpi.pixels(4800)}, static_cast<DWORD>(GetWindowLongPtrW(window, GWL_STYLE)),
                        static_cast<DWORD>(GetWindowLongPtrW(window, GWL_EXSTYLE)), dpi);
                    EXPECT_EQ(limits.ptMinTrackSize.x, least.cx);
                    EXPECT_EQ(limits.ptMinTrackSize.y, least.cy);
                }
            });
        });
}

TEST(FormsWindow, TellsItsControlsOfTheSystemsNewColours) {
    const auto desktop = win32::makeDesktop();
    const auto form = std::make_shared<CounterForm>(*desktop);
    Person::sits(
        *desktop, [&] { form->showModal(nullptr); },
        [&](Person& person) {
            person.seesForm("frmCounter");
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

TEST(FormsWindow, SaysAWholeRowToScreenReadersAndPaintsNothingOfThat) {
    const auto desktop = win32::makeDesktop();
    const auto form = std::make_shared<RowsForm>(*desktop);
    form->describe = [describe = form->describe, &form = *form] {
        describe();
        form.fill({{"1", "R1", "", "open"}, {"2", "R2", "5.50", "M\xC3\xBCller"}});
    };
    Person::sits(
        *desktop, [&] { form->showModal(nullptr); },
        [&](Person& person) {
            person.seesForm("frmRows");
            person.look([&] {
                HWND list = Person::windowOf(form->grid);
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

TEST(FormsWindow, LeavesTheTextsOfCellsWithWhoAskedForThem) {
    const auto desktop = win32::makeDesktop();
    const auto form = std::make_shared<RowsForm>(*desktop);
    form->describe = [describe = form->describe, &form = *form] {
        describe();
        form.fill({{"1", "R1", "abcdefgh", ""}});
    };
    struct Case {
        int row, subItem, size;
        const wchar_t* text;
    };
    const Case cases[] = {{0, 1, 8, L"R1"}, {0, 2, 8, L"abcdefg"}, {0, 2, 1, L""},  {0, 0, 5, L"R1, "},
                          {0, 3, 8, L""},   {0, 4, 8, L""},        {-1, 1, 8, L""}, {1, 1, 8, L""}};
    Person::sits(
        *desktop, [&] { form->showModal(nullptr); },
        [&](Person& person) {
            person.seesForm("frmRows");
            person.look([&] {
                HWND list = Person::windowOf(form->grid);
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
