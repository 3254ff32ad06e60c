// The grid: sorting, searching order, the current row and what comes with it.
#include "tests/forms/SampleForm.h"
#include "tests/support/ScriptedDesktop.h"

#include <gtest/gtest.h>

using namespace forms;
using support::ScriptedDesktop;

namespace {

class GridRows : public testing::Test {
protected:
    ScriptedDesktop desktop;
    std::shared_ptr<SampleForm> form = std::make_shared<SampleForm>(desktop);
    Grid& grid = touch(*form).flexRows;

    /// Fills column 0 with `texts` and column 1 with their numbers, from 1.
    void fill(const std::vector<std::string>& texts) {
        grid.setCols(2);
        std::vector<std::vector<std::string>> data;
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
    struct Case {
        SortOrder order;
        std::vector<std::string> texts;
        const char* sorted;
        const char* origins;
    };
    const Case cases[] = {
        {SortOrder::none, {"b", "a"}, "b|a", "1|2"},
        {SortOrder::genericAscending, {"10", "9", "x", "-1", "9.0", ""}, "-1|9|9.0|10||x", "4|2|5|1|6|3"},
        {SortOrder::genericDescending, {"10", "9", "x", "-1", "9.0"}, "x|10|9|9.0|-1", "3|1|2|5|4"},
        {SortOrder::stringAscending, {"b", "A", "a", "B", "a", "_"}, "A|a|a|B|b|_", "2|3|5|4|1|6"},
        {SortOrder::stringDescending, {"b", "A", "a", "B", "a"}, "b|B|a|a|A", "1|4|3|5|2"},
        {SortOrder::stringAscending, {"10", "9", "GR/2", "GR/10"}, "10|9|GR/10|GR/2", "1|2|4|3"},
        {SortOrder::stringAscending,
         {"\xC3\xA9t\xC3\xA9", "Eve", "\xC3\x89T\xC3\x89"},
         "Eve|\xC3\x89T\xC3\x89|\xC3\xA9t\xC3\xA9",
         "2|3|1"},
        {SortOrder::stringAscending, {}, "", ""},
    };
    for (const Case& c : cases) {
        fill(c.texts);
        grid.sort(0, c.order);
        EXPECT_EQ(column(0), c.sorted);
        EXPECT_EQ(column(1), c.origins) << c.sorted;
    }
}

TEST_F(GridRows, NumbersSortByValueHoweverTheyAreWritten) {
    fill({"1,000", "-0.5", "9", "&H10", "00012.50", "123456789012345678", "1e3", "(7)", " 8 ", "999999999999999.5",
          ".25"});
    grid.sort(0, SortOrder::genericAscending);
    EXPECT_EQ(column(1), "8|2|11|9|3|5|4|1|7|10|6");
}

TEST_F(GridRows, RowsThatStandInTheOrderAskedForAreLeftAlone) {
    class Count : public ControlView {
    public:
        void changed(Control&, Aspect aspect) override { count += aspect == Aspect::items; }
        int count = 0;
    } layouts;
    struct Case {
        const char* change;
        std::function<void(Grid&)> act;
        bool sortsAgain;
    };
    const Case cases[] = {
        {"nothing", [](Grid&) {}, false},
        {"another current row", [](Grid& g) { g.selectRow(2); }, false},
        {"another column's text", [](Grid& g) { g.setCell(1, 1, "9"); }, false},
        {"the heading", [](Grid& g) { g.setCell(0, 0, "zz"); }, false},
        {"a row less", [](Grid& g) { g.removeItem(2); }, false},
        {"a colour", [](Grid& g) { g.setRowColour(1, 255); }, false},
        {"the column's text", [](Grid& g) { g.setCell(1, 0, "zz"); }, true},
        {"a new row", [](Grid& g) { g.addItem("a"); }, true},
        {"empty rows", [](Grid& g) { g.setRows(g.rows() + 1); }, true},
        {"another order", [](Grid& g) { g.sort(0, SortOrder::stringDescending); }, true},
        {"another column", [](Grid& g) { g.sort(1, SortOrder::stringAscending); }, true},
        {"data rows", [](Grid& g) { g.setDataRows({}); }, true},
        {"fewer heading rows", [](Grid& g) { g.setFixedRows(0); }, true},
    };
    for (const Case& c : cases) {
        grid.reset();
        grid.setFixedCols(0);
        fill({"b", "c", "a"});
        grid.sort(0, SortOrder::stringAscending);
        c.act(grid);
        grid.attach(&layouts);
        layouts.count = 0;
        grid.sort(0, SortOrder::stringAscending);
        grid.attach(nullptr);
        EXPECT_EQ(layouts.count > 0, c.sortsAgain) << c.change;
        for (int row = grid.fixedRows() + 1; row < grid.rows(); ++row)
            EXPECT_LE(compareText(grid.cell(row - 1, 0), grid.cell(row, 0)), 0) << c.change;
    }
}

TEST_F(GridRows, SortKeepsHeaderAndCurrentRowAndTakesColoursAlong) {
    fill({"c", "a", "b"});
    grid.setCell(0, 0, "Zz header");
    grid.setRowColour(1, 255);
    grid.selectRow(2);
    int moves = 0;
    grid.onRowColChange = [&] { ++moves; };
    EXPECT_EQ(grid.sort(0, SortOrder::stringAscending), 1) << "where the current row went";
    EXPECT_EQ(grid.sort(0, SortOrder::stringAscending), 2) << "nothing moved";
    EXPECT_EQ(grid.cell(0, 0), "Zz header");
    EXPECT_EQ(grid.rowColour(3), 255);
    EXPECT_EQ(grid.rowColour(1), kSystemColour);
    EXPECT_EQ(grid.row(), 2);
    EXPECT_EQ(moves, 0);
}

TEST_F(GridRows, RowColChangeComesOnlyWhenTheCurrentCellMoves) {
    fill({"a", "b", "c"});
    grid.selectRow(1);
    int moves = 0;
    grid.onRowColChange = [&] { ++moves; };
    grid.selectRow(1);
    EXPECT_EQ(moves, 0);
    grid.selectRow(3);
    EXPECT_EQ(moves, 1);
    EXPECT_EQ(grid.colSel(), 1);
    grid.setCurrent(3, 1);
    EXPECT_EQ(moves, 2);
    EXPECT_THROW(grid.selectRow(4), automation::RunTimeError);
    EXPECT_THROW(grid.setCol(2), automation::RunTimeError);
    EXPECT_EQ(grid.row(), 3);
    EXPECT_EQ(moves, 2);
}

TEST_F(GridRows, TheCurrentRowStaysInsideWhenRowsGo) {
    fill({"a", "b", "c", "d"});
    grid.selectRow(4);
    grid.setTopRow(4);
    grid.removeItem(2);
    EXPECT_EQ(column(0), "a|c|d");
    EXPECT_EQ(grid.row(), 3);
    EXPECT_EQ(grid.topRow(), 3);
    grid.setRows(2);
    EXPECT_EQ(grid.row(), 1);
    grid.setTopRow(99);
    EXPECT_EQ(grid.topRow(), 1);
    EXPECT_THROW(grid.removeItem(0), automation::RunTimeError);
    grid.setCols(1);
    EXPECT_EQ(grid.colSel(), 0);
}

TEST_F(GridRows, CellsAreEmptyUntilSetAndAddedRowsSplitAtTabs) {
    grid.setFixedCols(0);
    grid.setCols(3);
    EXPECT_EQ(grid.cell(1, 2), "");
    grid.addItem("17\tGR/1");
    grid.addItem("18\tb\tc\td");
    EXPECT_EQ(column(0), "|17|18");
    EXPECT_EQ(column(1), "|GR/1|b");
    EXPECT_EQ(column(2), "||c");
    grid.setCols(4);
    EXPECT_EQ(column(3), "||") << "a cell too many is gone";
    grid.setCols(3);
    grid.clear();
    EXPECT_EQ(column(0), "||");
    EXPECT_EQ(grid.rows(), 4);

    // A clip goes where something stood; its last cell may be empty.
    for (const char* clip : {"1\ta\tx\r2\tb\ty\r3\tc\tz\r", "1\t\tx\r2\tb\t\r\r4\td"}) {
        grid.setRow(1);
        grid.setCol(0);
        grid.setRowSel(3);
        grid.setColSel(2);
        grid.setClip(clip);
    }
    EXPECT_EQ(column(0), "1|2|");
    EXPECT_EQ(column(1), "|b|c");
    EXPECT_EQ(column(2), "x||z");
    EXPECT_THROW(grid.setDataRows({{"1", "2", "3", "4"}}), automation::RunTimeError);
}
