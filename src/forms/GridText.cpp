// Headings and cells of a grid that come as one text.
#include "forms/Grid.h"

#include <algorithm>

namespace forms {
namespace {

// What the dialog font takes for them, about: a heading is as wide as its text, which is why callers pad it with
// blanks.
constexpr int kTwipsPerBlank = 42;
constexpr int kTwipsPerLetter = 90;
constexpr int kCellMargins = 240;

/// Takes the text before the first `separator` off `rest`, and the separator with it.
std::string_view takePart(std::string_view& rest, char separator) {
    const std::size_t end = rest.find(separator);
    const std::string_view part = rest.substr(0, end);
    rest.remove_prefix(end == std::string_view::npos ? rest.size() : end + 1);
    return part;
}

int widthOf(std::string_view heading) {
    if (heading.empty()) return 0;
    heading = heading.substr(0, kFarthestTwips); // each letter is wider than a twip
    const auto blanks = static_cast<int>(std::count(heading.begin(), heading.end(), ' '));
    return kCellMargins + blanks * kTwipsPerBlank + (static_cast<int>(heading.size()) - blanks) * kTwipsPerLetter;
}

} // namespace

void Grid::setFormat(std::string_view format) {
    const auto headings = static_cast<int>(std::count(format.begin(), format.end(), '|')) + 1;
    if (headings > cols()) setCols(headings);
    for (int col = 0; col < headings; ++col) {
        std::string_view heading = takePart(format, '|');
        if (!heading.empty() && (heading.front() == '<' || heading.front() == '^' || heading.front() == '>'))
            heading.remove_prefix(1);
        setColWidth(col, widthOf(heading));
        const std::size_t end = heading.find_last_not_of(' ');
        setCell(0, col, heading.substr(0, end == std::string_view::npos ? 0 : end + 1));
    }
}

void Grid::setClip(std::string_view text) {
    const int lastRow = std::max(row_, rowSel_);
    const int firstCol = std::min(col_, colSel_);
    const int lastCol = std::max(col_, colSel_);
    for (int row = std::min(row_, rowSel_); row <= lastRow && !text.empty(); ++row) {
        std::string_view cells = takePart(text, '\r');
        bool more = true; // An empty text after the last tab is a cell too.
        for (int col = firstCol; col <= lastCol && more; ++col) {
            more = cells.find('\t') != std::string_view::npos;
            put(rowAt(row), col, takePart(cells, '\t'));
        }
    }
    orderLost();
    notify(Aspect::items);
}

} // namespace forms
