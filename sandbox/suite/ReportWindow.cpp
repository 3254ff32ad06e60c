#include "sandbox/suite/ReportWindow.h"

#include "basic/Text.h"
#include "forms/Desktop.h"

#include <algorithm>

namespace sandbox {
namespace {

constexpr int kMargin = 150;
constexpr int kWidth = 13800;
constexpr int kHeight = 9600;
constexpr int kBarHeight = 390;
constexpr int kStepWidth = 600;
constexpr int kButtonWidth = 1100;
constexpr int kZooms[] = {50, 75, 100, 125, 150, 200};
constexpr int kUsualZoom = 100;

} // namespace

ReportWindow::ReportWindow(forms::Desktop& desktop, Content content)
    : Form(desktop, "ReportWindow"), content_(std::move(content)) {
    cmdFirst.onClick = [this] { show(0); };
    cmdPrevious.onClick = [this] { show(page_ - 1); };
    cmdNext.onClick = [this] { show(page_ + 1); };
    cmdLast.onClick = [this] { show(content_.pages.size() - 1); };
    cboZoom.onClick = [this] { txtPage.setFixedPitch(cboZoom.selectedData()); };
    txtSearch.onKeyPress = [this](std::int16_t& character) {
        if (character != forms::kKeyReturn) return;
        character = 0;
        search();
    };
    cmdRefresh.onClick = [this] {
        content_.pages = content_.refresh();
        show(std::min(page_, content_.pages.size() - 1));
    };
    cmdPrint.onClick = [this] {
        std::string text;
        for (const std::string& page : content_.pages) text += (text.empty() ? "" : "\f") + page;
        const std::string where = content_.print(text);
        this->desktop().messageBox(
            {where, content_.caption, forms::MessageIcon::information, forms::MessageButtons::ok, forms::Answer::ok});
    };
    cmdClose.onClick = [this] { unload(); };
}

void ReportWindow::design() {
    setCaption(content_.caption);
    setSize(kWidth, kHeight);
    setResizable(true);
    int left = kMargin;
    const auto put = [&](forms::Control& control, const char* caption, int width, int drop = 0) {
        control.place({left, kMargin + drop, width, drop > 0 ? 255 : kBarHeight});
        control.setText(caption);
        left += width + 75;
    };
    put(cmdFirst, "|<", kStepWidth);
    put(cmdPrevious, "<", kStepWidth);
    put(lblPage, "", 1100, 75);
    put(cmdNext, ">", kStepWidth);
    put(cmdLast, ">|", kStepWidth);
    left += kMargin;
    if (content_.hasZoom) put(lblZoom, "&Zoom:", 650, 75);
    cboZoom.place({left, kMargin + 30, 1100, 330});
    left += content_.hasZoom ? 1100 + 2 * kMargin : 0;
    if (content_.hasSearch) put(lblSearch, "&Find:", 550, 75);
    txtSearch.place({left, kMargin + 30, 1200, 330}); // so that all stand side by side on 800 pixels
    lblZoom.setVisible(content_.hasZoom);
    cboZoom.setVisible(content_.hasZoom);
    lblSearch.setVisible(content_.hasSearch);
    txtSearch.setVisible(content_.hasSearch);
    cmdRefresh.setVisible(content_.hasRefresh);
    const forms::Anchor corner{false, true, true, false};
    left = kWidth - kMargin - 3 * kButtonWidth - 2 * 75;
    for (const auto& [button, caption] :
         {std::pair{&cmdRefresh, "&Refresh"}, {&cmdPrint, "&Print"}, {&cmdClose, "&Close"}}) {
        button->place({left, kMargin, kButtonWidth, kBarHeight}, corner);
        button->setText(caption);
        left += kButtonWidth + 75;
    }
    cmdClose.setCancel(true);
    const int top = 2 * kMargin + kBarHeight;
    txtPage.place({kMargin, top, kWidth - 2 * kMargin, kHeight - top - kMargin}, {true, true, true, true});
    txtPage.setMultiLine(true);
    txtPage.setLocked(true);
    txtPage.setFixedPitch(kUsualZoom);
}

void ReportWindow::onLoad() {
    for (const int zoom : kZooms) cboZoom.addItem(std::to_string(zoom) + " %", zoom);
    for (int i = 0; i < cboZoom.listCount(); ++i)
        if (cboZoom.itemData(i) == kUsualZoom) cboZoom.setListIndex(i);
    show(0);
}

void ReportWindow::show(std::size_t page) {
    const std::size_t count = content_.pages.size();
    page_ = std::min(page, count - 1);
    txtPage.setText(content_.pages[page_]);
    lblPage.setText(std::to_string(page_ + 1) + " of " + std::to_string(count));
    for (forms::CommandButton* back : {&cmdFirst, &cmdPrevious}) back->setEnabled(page_ > 0);
    for (forms::CommandButton* on : {&cmdNext, &cmdLast}) on->setEnabled(page_ + 1 < count);
}

void ReportWindow::search() {
    const std::string sought = basic::ucase(txtSearch.text());
    if (sought.empty()) return;
    const std::size_t count = content_.pages.size();
    // The page again at the end, for places before the selected one.
    int start = txtPage.selStart() + (txtPage.selLength() > 0 ? 2 : 1);
    for (std::size_t step = 0; step <= count; ++step, start = 1) {
        const std::size_t page = (page_ + step) % count;
        const int at = basic::instr(basic::ucase(content_.pages[page]), sought, start);
        if (at == 0) continue;
        show(page);
        txtPage.select(at - 1, basic::len(sought));
        return;
    }
    desktop().messageBox({"The text was not found.", content_.caption, forms::MessageIcon::information,
                          forms::MessageButtons::ok, forms::Answer::ok});
}

} // namespace sandbox
