#include "sandbox/suite/FetchWindow.h"

#include "basic/Text.h"

#include <algorithm>

namespace sandbox {

namespace {

constexpr int kMargin = 150;
constexpr int kBoxHeight = 330;
constexpr int kLabelHeight = 255;
constexpr int kLabelDrop = 45; ///< puts a label's text on the line of the box beside it
constexpr int kButtonWidth = 1300;
constexpr int kButtonHeight = 390;
constexpr int kWidth = 12600;
constexpr int kHeight = 7500;
/// Lines that Page Up and Page Down move by.
constexpr int kPage = 15;

} // namespace

FetchWindow::FetchWindow(forms::Desktop& desktop, Content content, Search search)
    : Form(desktop, "FetchWindow"), content_(std::move(content)), search_(std::move(search)) {
    const auto isShown = [&](std::size_t column) {
        return column < content_.columns.size() && content_.columns[column].width > 0;
    };
    if (!isShown(search_.column)) {
        search_.column = 0;
        while (search_.column + 1 < content_.columns.size() && !isShown(search_.column)) ++search_.column;
    }
}

void FetchWindow::design() {
    setCaption(content_.caption);
    setSize(kWidth, kHeight);
    setResizable(true);

    lblSearch.place({kMargin, kMargin + kLabelDrop, 700, kLabelHeight});
    lblSearch.setText("&Find:");
    txtSearch.place({850, kMargin, 4200, kBoxHeight});
    lblColumn.place({5300, kMargin + kLabelDrop, 400, kLabelHeight});
    lblColumn.setText("&in:");
    cboColumn.place({5700, kMargin, 3000, kBoxHeight});
    lblCount.place({8900, kMargin + kLabelDrop, kWidth - 8900 - kMargin, kLabelHeight}, {true, true, true, false});

    const int listTop = kMargin + kBoxHeight + kMargin;
    const int buttonTop = kHeight - kMargin - kButtonHeight;
    lvwItems.place({kMargin, listTop, kWidth - 2 * kMargin, buttonTop - kMargin - listTop}, {true, true, true, true});
    std::vector<forms::ListColumn> columns;
    for (const Column& column : content_.columns) columns.push_back({column.caption, column.width});
    lvwItems.setColumns(std::move(columns));

    const forms::Anchor corner{false, false, true, true};
    cmdOk.place({kWidth - kMargin - 2 * kButtonWidth - kMargin, buttonTop, kButtonWidth, kButtonHeight}, corner);
    cmdOk.setText("&OK");
    cmdCancel.place({kWidth - kMargin - kButtonWidth, buttonTop, kButtonWidth, kButtonHeight}, corner);
    cmdCancel.setText("Cancel");
    cmdCancel.setCancel(true);

    txtSearch.onChange = [this] {
        search_.text = txtSearch.text();
        filter();
    };
    txtSearch.onKeyDown = [this](std::int16_t& key, std::int16_t) {
        const int lines = key == forms::kKeyDown       ? 1
                          : key == forms::kKeyUp       ? -1
                          : key == forms::kKeyPageDown ? kPage
                          : key == forms::kKeyPageUp   ? -kPage
                                                       : 0;
        if (lines == 0) return;
        moveSelection(lines);
        key = 0;
    };
    const auto enterPicks = [this](std::int16_t& character) {
        if (character != forms::kKeyReturn) return;
        character = 0;
        pick();
    };
    txtSearch.onKeyPress = enterPicks;
    lvwItems.onKeyPress = enterPicks;
    lvwItems.onDblClick = [this] { pick(); };
    cboColumn.onClick = [this] {
        search_.column = static_cast<std::size_t>(cboColumn.selectedData());
        filter();
    };
    cmdOk.onClick = [this] { pick(); };
    cmdCancel.onClick = [this] { unload(); };
}

void FetchWindow::onLoad() {
    for (std::size_t i = 0; i < content_.columns.size(); ++i)
        if (content_.columns[i].width > 0) cboColumn.addItem(content_.columns[i].caption, static_cast<std::int32_t>(i));
    txtSearch.setText(search_.text);
    for (int i = 0; i < cboColumn.listCount(); ++i)
        if (cboColumn.itemData(i) == static_cast<std::int32_t>(search_.column)) cboColumn.setListIndex(i);
    filter();
}

void FetchWindow::onActivate() {
    txtSearch.setFocus();
    txtSearch.selectAll();
}

void FetchWindow::filter() {
    const std::string sought = basic::trim(search_.text);
    listed_.clear();
    for (std::size_t row = 0; row < content_.rows.size(); ++row)
        if (sought.empty() || basic::containsNoCase(content_.rows[row][search_.column], sought)) listed_.push_back(row);

    lvwItems.clear();
    for (const std::size_t row : listed_) {
        const std::vector<std::string>& cells = content_.rows[row];
        forms::ListItem& line = lvwItems.add(cells.front());
        for (std::size_t column = 1; column < cells.size(); ++column)
            line.setSubItem(static_cast<int>(column), cells[column]);
    }
    lvwItems.select(0); // What a scanner types is no choice.
    const std::size_t all = content_.rows.size();
    lblCount.setText(listed_.size() == all ? std::to_string(all) + " items"
                                           : std::to_string(listed_.size()) + " of " + std::to_string(all) + " items");
    cmdOk.setEnabled(!listed_.empty());
}

void FetchWindow::moveSelection(int lines) {
    if (listed_.empty()) return;
    lvwItems.select(std::clamp(lvwItems.selectedIndex() + lines, 1, lvwItems.count()));
}

void FetchWindow::pick() {
    const int line = lvwItems.selectedIndex();
    if (line < 1) return lblCount.setText("Choose an item with the arrow keys.");
    chosen_ = listed_[static_cast<std::size_t>(line - 1)];
    unload();
}

} // namespace sandbox
