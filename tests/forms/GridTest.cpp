// The grid: sorting, searching order, the current row and what comes with it.
#include "tests/forms/FormTest.h"

using namespace forms;
using automation::RunTimeError;

namespace {

class GridRows : public FormTest {
protected:
    Grid& grid = touch(*form).flexRows;

    /// Fills column 0 with `texts` and column 1 with their numbers, from 1.
    void fill(const Texts& texts) {
        grid.setCols(2);
        std::vector<Texts> data;
        for (const std::string& text : texts) data.push_back({text, std::to_string(data.size() + 1)});
        grid.setDataRows(std::move(data));
    }
    std::string column(int col) const {
        std::string all;
        for (int row = grid.fixedRows(); row < grid.rows(); ++row)
            all.append(row > 1 ? "|" : "").append(grid.cell(row, col));
        return all;
    }
};

} // namespace

TEST_F(GridRows, SortIsStableInEachOrder) {
    const std::tuple<SortOrder, Texts, const char*> cases[] = {
        // clang-format off
        {SortOrder::none, {"b", "a"}, "1|2"},
        {SortOrder::genericAscending, {"10", "9", "x", "-1", "9.0", ""}, "4|2|5|1|6|3"},
        {SortOrder::genericDescending, {"10", "9", "x", "-1", "9.0"}, "3|1|2|5|4"},
        {SortOrder::genericAscending, {"1,000", "-0.5", "9", "&H10", "00012.50", "123456789012345678", "1e3", "(7)",
                                       " 8 ", "999999999999999.5", ".25"}, "8|2|11|9|3|5|4|1|7|10|6"},
        {SortOrder::stringAscending, {"b", "A", "a", "B", "a", "_"}, "2|3|5|4|1|6"},
        {SortOrder::stringDescending, {"b", "A", "a", "B", "a"}, "1|4|3|5|2"},
        {SortOrder::stringAscending, {"10", "9", "GR/2", "GR/10"}, "1|2|4|3"},
        {SortOrder::stringAscending, {"\u00e9t\u00e9", "Eve", "\u00c9T\u00c9"}, "2|3|1"},
        {SortOrder::stringAscending, {}, ""},
        // clang-format on
    };
    for (const auto& [order, texts, origins] : cases) {
        fill(texts);
        grid.sort(0, order);
        EXPECT_EQ(column(1), origins);
        for (int row = 1; row < grid.rows(); ++row)
            EXPECT_EQ(grid.cell(row, 0), texts.at(std::stoul(std::string(grid.cell(row, 1))) - 1)) << origins;
    }
}

TEST_F(GridRows, RowsThatStandInTheOrderAskedForAreLeftAlone) {
    struct : ControlView {
        void changed(Control&, Aspect aspect) override { count += aspect == Aspect::items; }
        int count = 0;
    } layouts;
    const std::tuple<const char*, std::function<void()>, bool> cases[] = {
        {"nothing", [] {}, false},
        {"another current row", [&] { grid.selectRow(2); }, false},
        {"another column's text", [&] { grid.setCell(1, 1, "9"); }, false},
        {"the heading", [&] { grid.setCell(0, 0, "zz"); }, false},
        {"a row less", [&] { grid.removeItem(2); }, false},
        {"a colour", [&] { grid.setRowColour(1, 255); }, false},
        {"the column's text", [&] { grid.setCell(1, 0, "zz"); }, true},
        {"a new row", [&] { grid.addItem("a"); }, true},
        {"empty rows", [&] { grid.setRows(grid.rows() + 1); }, true},
        {"another order", [&] { grid.sort(0, SortOrder::stringDescending); }, true},
        {"another column", [&] { grid.sort(1, SortOrder::stringAscending); }, true},
        {"data rows", [&] { grid.setDataRows({}); }, true},
        {"fewer heading rows", [&] { grid.setFixedRows(0); }, true},
    };
    for (const auto& [change, act, sortsAgain] : cases) {
        grid.reset();
        grid.setFixedCols(0);
        fill({"b", "c", "a"});
        grid.sort(0, SortOrder::stringAscending);
        act();
        grid.attach(&layouts);
        layouts.count = 0;
        grid.sort(0, SortOrder::stringAscending);
        grid.attach(nullptr);
        EXPECT_EQ(layouts.count > 0, sortsAgain) << change;
        for (int row = grid.fixedRows() + 1; row < grid.rows(); ++row)
            EXPECT_LE(compareText(grid.cell(row - 1, 0), grid.cell(row, 0)), 0) << change;
    }
}

TEST_F(GridRows, RowColChangeComesOnlyWhenTheCurrentCellMoves) {
    int moves = 0;
    grid.onRowColChange = [&] { ++moves; };
    const auto expectCurrent = [&](int row, int col, int movesUntilThen) {
        EXPECT_EQ(std::tuple(grid.row(), grid.col(), moves), std::tuple(row, col, movesUntilThen));
    };
    fill({"c", "a", "b"});
    grid.selectRow(2);
    expectCurrent(2, 0, 1);
    grid.selectRow(2);
    expectCurrent(2, 0, 1);
    // A sort keeps the heading and the current row, and takes colours along.
    grid.setCell(0, 0, "Zz header");
    grid.setRowColour(1, 255);
    EXPECT_EQ(grid.sort(0, SortOrder::stringAscending), 1) << "where the current row went";
    EXPECT_EQ(grid.sort(0, SortOrder::stringAscending), 2) << "nothing moved";
    EXPECT_EQ(grid.cell(0, 0), "Zz header");
    EXPECT_EQ(grid.rowColour(3), 255);
    EXPECT_EQ(grid.rowColour(1), kSystemColour);
    expectCurrent(2, 0, 1);
    grid.selectRow(3);
    EXPECT_EQ(grid.colSel(), 1);
    grid.setCurrent(3, 1);
    EXPECT_THROW(grid.selectRow(4), RunTimeError);
    EXPECT_THROW(grid.setCol(2), RunTimeError);
    expectCurrent(3, 1, 3);
}

TEST_F(GridRows, TheCurrentRowStaysInsideWhenRowsGo) {
    fill({"a", "b", "c", "d"});
    const auto expectCurrent = [&](int row, int topRow) {
        EXPECT_EQ(grid.row(), row);
        EXPECT_EQ(grid.topRow(), topRow);
    };
    grid.selectRow(4);
    grid.setTopRow(4);
    grid.removeItem(2);
    EXPECT_EQ(column(0), "a|c|d");
    expectCurrent(3, 3);
    grid.setRows(2);
    grid.setTopRow(99);
    expectCurrent(1, 1);
    EXPECT_THROW(grid.removeItem(0), RunTimeError);
    grid.setCols(1);
    EXPECT_EQ(grid.colSel(), 0);
}

TEST_F(GridRows, CellsAreEmptyUntilSetAndAddedRowsSplitAtTabs) {
    const auto columns = [&] {
        std::string all = column(0);
        for (int col = 1; col < grid.cols(); ++col) all += ";" + column(col);
        return all;
    };
    grid.setFixedCols(0);
    grid.setCols(3);
    grid.addItem("17\tGR/1");
    grid.addItem("18\tb\tc\td");
    EXPECT_EQ(columns(), "|17|18;|GR/1|b;||c");
    grid.setCols(4);
    EXPECT_EQ(column(3), "||") << "a cell too many is gone";
    grid.setCols(3);
    grid.clear();
    EXPECT_EQ(columns(), "||;||;||");
    // A clip goes where something stood; its last cell may be empty.
    for (const char* clip : {"1\ta\tx\r2\tb\ty\r3\tc\tz\r", "1\t\tx\r2\tb\t\r\r4\td"}) {
        grid.setCurrent(1, 0);
        grid.setRowSel(3);
        grid.setColSel(2);
        grid.setClip(clip);
    }
    EXPECT_EQ(columns(), "1|2|;|b|c;x||z");
    EXPECT_THROW(grid.setDataRows({{"1", "2", "3", "4"}}), RunTimeError);
}
