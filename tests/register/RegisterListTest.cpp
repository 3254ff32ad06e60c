// What the register shows, and how a person finds a request in it.
#include "tests/register/Register.h"

#include "basic/Calendar.h"
#include "basic/Format.h"

namespace {

using namespace goodsreq;
using support::Register;
using support::Request;
using support::Texts;

using RegisterList = Register;

TEST_F(RegisterList, ShowsThePeriodSinceTheLaterOfBackDaysAndDayClose) {
    struct Case {
        int backDays;
        const char* closed;
        const char* from;
        const char* dayBefore;
    };
    for (const Case& c : {Case{30, "'20240320'", "20240320", "20240319"},
                          {30, "'20240201'", "20240301", "20240229"},
                          {30, nullptr, "20240301", "20240229"},
                          {0, nullptr, "20240331", "20240330"},
                          {0, "'20240402'", "20240402", "20240401"}}) {
        SCOPED_TRACE(c.from);
        has({{1, "outside", c.dayBefore}, {2, "inside", c.from}});
        company.change("update LOsSettings set sNoofBackDays = " + std::to_string(c.backDays) +
                       " where ShopID = 1; delete losShopDayClose where shopid = 1");
        if (c.closed)
            company.change("insert into losShopDayClose (shopid,closedate) values (1," + std::string(c.closed) + ")");
        shop.emplace(company);
        shop->component.dtProcessDate = basic::dateOf(2024, 3, 31);
        shop->opens();
        EXPECT_EQ(basic::format(session().fromDate, "yyyymmdd"), c.from);
        EXPECT_EQ(column(kColRemarks), Texts{"inside"});
    }
}

TEST_F(RegisterList, ListsEachKindUnderItsOwnCaption) {
    has({{1, "shop request"}, {2, "sale", "20260320", false, false, false, 's'}});
    struct Case {
        int screen;
        const char* caption;
        const char* shown;
    };
    for (const Case& c : {Case{1507, "Goods Request To Shop", "shop request"},
                          {1611, "Inter Division Sales Request", "sale"},
                          {42, "Goods Request To Shop", "shop request"}}) {
        opens({.screenId = c.screen});
        EXPECT_EQ(user().caption(), c.caption);
        EXPECT_EQ(column(kColRemarks), Texts{c.shown}) << c.screen;
    }
}

TEST_F(RegisterList, ShowsARequestAsThePersonReadsIt) {
    has({{10, "  for the weekend", "20260305"},
         {9, "", "20260306", true, true},
         {11, "x ", "20260307", false, false, true}});
    company.change("update mesRequesttoShopHeader set SRHremarks = null where srhrequestid = 9");
    const std::string supplier = company.value("select shopname from aShops where shopid = 2");
    opens();
    EXPECT_EQ(user().grid("flexMaster"),
              (support::Rows{{"9", "GR/9", "06/03/2026", supplier, "No", "", "True", "Yes", "2"},
                             {"10", "GR/10", "05/03/2026", supplier, "No", "for the weekend", "False", "No", "2"},
                             {"11", "GR/11", "07/03/2026", supplier, "Yes", "x", "False", "No", "2"}}));
    expectSelected(1);
    constexpr std::int32_t kRed = 255;
    EXPECT_NE(grid().rowColour(1), kRed);
    EXPECT_NE(grid().rowColour(2), kRed);
    EXPECT_EQ(grid().rowColour(3), kRed);
    EXPECT_EQ(shop->desktop.pointers, (std::vector{forms::Pointer::hourglass, forms::Pointer::normal}));
    user().clicks("CmdClose");
    shop->desktop.userLocale = {basic::DateOrder::monthDayYear, '/', "M/d/yyyy"};
    shop->opens();
    EXPECT_EQ(column(kColDate), (Texts{"3/6/2026", "3/5/2026", "3/7/2026"}));
}

TEST_F(RegisterList, HeadersComeFromTheCatalogueWithTheSitesWordForAShop) {
    company.change("update atablecolumns set ColumnHeader = 'To godown of shop' where columnno = 7");
    struct Case {
        int alias;
        int screen;
        const char* caption;
        const char* shopHeader;
        const char* usedHeader;
    };
    for (const Case& c : {Case{0, 1507, "Goods Request To Shop", "Shop Name", "To godown of shop"},
                          {1, 1507, "Goods Request To Outlet", "Outlet Name", "To Outlet of Outlet"},
                          {1, 1611, "Inter Division Sales Request", "Outlet Name", "To Outlet of Outlet"}}) {
        company.change("update aPAckageSettings set alias = " + std::to_string(c.alias));
        opens({.screenId = c.screen});
        EXPECT_EQ(user().caption(), c.caption);
        const Texts headers{"Request No", "Request Date", c.shopHeader, "Cancelled",
                            "Remarks",    c.usedHeader,   "Confirmed",  c.alias ? "Outlet Id" : "Shop Id"};
        EXPECT_EQ(user().entries("cboColNames"), headers);
        EXPECT_EQ(user().entries("cboSearch"), headers);
        for (int col = 1; col < grid().cols(); ++col)
            EXPECT_EQ(grid().cell(0, col), headers[static_cast<std::size_t>(col - 1)]);
        EXPECT_EQ(grid().cell(0, 0), "");
    }
    EXPECT_EQ(shop->errors(), Texts{});
}

TEST_F(RegisterList, ColumnsAreAsWideAsTheirTextsAndFillTheGrid) {
    for (const std::string& remarks : {std::string("short"), std::string(250, 'm')}) {
        has({{1, remarks}});
        opens();
        EXPECT_EQ(grid().colWidth(kColId), 0);
        EXPECT_EQ(grid().colWidth(kColShopId), 0);
        EXPECT_LE(grid().colWidth(kColRemarks), 4000);
        EXPECT_GE(grid().colWidth(kColDate), 12 * 130); // "Request Date"
        int sum = 0;
        for (int col = 0; col < grid().cols(); ++col) sum += grid().colWidth(col);
        EXPECT_NEAR(sum, grid().bounds().width, 350) << remarks.size();
    }
    EXPECT_EQ(grid().colWidth(kColRemarks), 4000);
    std::vector<int> widths;
    for (const char* letter : {"e", "\xC3\xA9"}) { // as many characters, more bytes
        std::string remarks;
        for (int i = 0; i < 20; ++i) remarks += letter;
        has({{1, remarks}});
        opens();
        widths.push_back(grid().colWidth(kColRemarks));
    }
    EXPECT_EQ(widths[0], widths[1]);
    company.change("insert into aMasterGridSettings (UserID,CompanyID,GridName,ColumnNo,ColumnWidth) values"
                   " (1,1,'flexMaster',3,5555)");
    opens();
    EXPECT_EQ(grid().colWidth(kColShop), 5555);
    opens({.userId = 2});
    EXPECT_NE(grid().colWidth(kColShop), 5555);
}

TEST_F(RegisterList, AnEmptyRegisterKeepsOneEmptyRowAndOffersNew) {
    has({});
    opens();
    EXPECT_EQ(column(kColId), Texts{""});
    for (const char* button : {"CmdEdit", "CmdDelete", "cmdPrev"}) EXPECT_FALSE(user().enabled(button)) << button;
    EXPECT_TRUE(user().enabled("cmdnew"));
    user().rightClicks("flexMaster");
    EXPECT_TRUE(user().menu().empty());
    user().enters("txtsearch", "5");
    EXPECT_EQ(column(kColId), Texts{""});
}

TEST_F(RegisterList, SortsTheChosenColumnByWhatStandsInTheCurrentRow) {
    // By date goes by id, which follows it.
    has({{9, "beans", "20260303"}, {10, "10", "20260301"}, {11, "9", "20260302"}, {12, "Apples", "20260302"}});
    struct Case {
        const char* direction;
        const char* column;
        int currentRow;
        Texts ids;
    };
    for (const Case& c : {Case{"optAscend", "Remarks", 2, {"11", "10", "12", "9"}},
                          {"optDescend", "Remarks", 2, {"9", "12", "10", "11"}},
                          {"optAscend", "Remarks", 1, {"10", "11", "12", "9"}},
                          {"optDescend", "Remarks", 1, {"9", "12", "11", "10"}},
                          {"optAscend", "Request No", 1, {"10", "11", "12", "9"}},
                          {"optDescend", "Request Date", 1, {"12", "11", "10", "9"}},
                          {"optAscend", "Request Date", 1, {"9", "10", "11", "12"}}}) {
        SCOPED_TRACE(std::string(c.direction) + " " + c.column);
        opens();
        user().selectsRow("flexMaster", c.currentRow);
        shop->desktop.pointers.clear();
        user().clicks(c.direction);
        user().picks("cboColNames", c.column);
        EXPECT_EQ(column(kColId), c.ids);
        EXPECT_EQ(shop->desktop.pointers, (std::vector{forms::Pointer::hourglass, forms::Pointer::normal}));
        // A click on a direction, chosen already or not, only clears the column.
        for (const char* direction : {c.direction, "optAscend", "optDescend"}) {
            user().picks("cboColNames", c.column);
            const Texts ids = column(kColId);
            user().clicks(direction);
            EXPECT_EQ(user().control<forms::ComboBox>("cboColNames")->listIndex(), -1);
            EXPECT_EQ(column(kColId), ids);
        }
    }
}

TEST_F(RegisterList, TheSelectionStaysOnItsRequestWhateverSortsTheList) {
    has({{1, "b"}, {2, "a", "20260320", false, false, true}});
    opens();
    const auto expectCurrent = [&](int row, const char* id) {
        EXPECT_EQ(grid().row(), row);
        EXPECT_EQ(column(kColId).at(static_cast<std::size_t>(row - 1)), id);
        EXPECT_EQ(grid().topRow(), row);
        EXPECT_EQ(user().enabled("CmdDelete"), std::string(id) == "1") << "the other one is cancelled";
    };
    expectCurrent(1, "1");
    user().picks("cboColNames", "Remarks");
    expectCurrent(2, "1");
    user().clicks("optDescend");
    user().picks("cboColNames", "Remarks");
    expectCurrent(1, "1");
    user().picks("cboSearch", "Remarks");
    user().enters("txtsearch", "nothing");
    expectCurrent(2, "1");
    EXPECT_EQ(user().text("cboColNames"), "") << "the search has sorted otherwise";
    user().enters("txtsearch", "a");
    expectCurrent(1, "2");
}

TEST_F(RegisterList, SearchGoesToTheFirstRequestThatBeginsSo) {
    const std::vector<Request> words{
        {1, "pears"}, {2, "Apricots"}, {3, "apples"}, {4, "Bananas"}, {5, "apples, green"}};
    const std::vector<Request> alike{{1, "2"}, {2, "1.00"}, {3, "1"}, {4, "1.0"}, {5, "01"}};
    const std::vector<Request> numbers{{1, "7"}, {2, "12"}, {3, "1"}, {4, "35"}, {5, "120"}};
    struct Case {
        const std::vector<Request>& requests;
        const char* typed;
        const char* found; ///< the current row's remarks
    };
    // Where nothing is found the request that was current before stays so.
    for (const Case& c : {Case{words, "ap", "apples"},
                          {words, "APR", "Apricots"},
                          {words, "p", "pears"},
                          {words, "apples,", "apples, green"},
                          {words, "zz", "pears"},
                          {words, "ap ", "pears"}, // compared by as many characters as were typed
                          {numbers, "7", "7"},
                          {numbers, "12", "12"},
                          {numbers, "1", "1"},
                          {numbers, "120", "120"},
                          {numbers, "99", "7"},
                          {alike, "1.0", "01"}}) {
        SCOPED_TRACE(c.typed);
        has(c.requests);
        opens();
        user().picks("cboSearch", "Remarks");
        user().focuses("txtsearch");
        // The text comes at once, so that no search for its beginning moves the row.
        user().pastes(c.typed);
        EXPECT_EQ(grid().row(), 1);
        user().presses(forms::kKeyEnd);
        EXPECT_EQ(column(kColRemarks).at(static_cast<std::size_t>(grid().row() - 1)), c.found);
        expectSelected(grid().row());
        EXPECT_EQ(grid().topRow(), grid().row());
    }
}

TEST_F(RegisterList, SearchNeedsAColumnAndAText) {
    has({{1, "b"}, {2, "a"}});
    opens();
    user().enters("txtsearch", "a");
    EXPECT_EQ(column(kColId), (Texts{"1", "2"}));
    user().picks("cboSearch", "Remarks");
    user().enters("txtsearch", "  ");
    EXPECT_EQ(column(kColId), (Texts{"1", "2"}));
    user().enters("txtsearch", "b");
    EXPECT_EQ(column(kColId), (Texts{"2", "1"}));
    expectSelected(2);
}

TEST_F(RegisterList, TheSearchBoxIsTypedOverWhenOneComesBackToIt) {
    has({{1, "apples"}, {2, "pears"}});
    opens();
    user().picks("cboSearch", "Remarks");
    user().enters("txtsearch", "app");
    user().types("\r"); // on to New
    user().tabs(true);
    ASSERT_EQ(user().focus(), "txtsearch");
    user().types("p");
    EXPECT_EQ(user().text("txtsearch"), "p");
    EXPECT_EQ(grid().row(), 2);
}

TEST_F(RegisterList, EnterMovesOnBelowTheGrid) {
    has({{1, "a"}});
    opens();
    user().focuses("cboColNames");
    for (const char* next : {"optAscend", "cboSearch", "txtsearch", "cmdnew"}) {
        user().types("\r");
        EXPECT_EQ(user().focus(), next);
    }
    user().clicks("optDescend");
    user().types("\r");
    EXPECT_EQ(user().focus(), "cboSearch");
}

TEST_F(RegisterList, KeysAndDoubleClickDoWhatTheButtonsDo) {
    has({{1, "a"}, {2, "b"}});
    struct Case {
        const char* name;
        std::function<void(support::User&)> act;
        const char* form;
    };
    for (const Case& c : {Case{"double-click", [](auto& u) { u.doubleClicks("flexMaster"); }, "frmRequest"},
                          {"Enter", [](auto& u) { u.types("\r"); }, "frmRequest"},
                          {"Ctrl+Enter", [](auto& u) { u.types("\n"); }, "frmRequest"},
                          {"Delete", [](auto& u) { u.presses(forms::kKeyDelete); }, "frmMaster"}}) {
        SCOPED_TRACE(c.name);
        opens();
        user().focuses("flexMaster");
        c.act(user());
        const bool deletes = std::string(c.name) == "Delete";
        EXPECT_EQ(user().message().has_value(), deletes);
        EXPECT_EQ(user().form(), c.form);
        if (deletes)
            user().answers("Are you sure you want to Delete  - GR/1 ?", forms::Answer::no);
        else
            EXPECT_EQ(session().editMode, std::string(c.name) == "Ctrl+Enter" ? "N" : "E");
    }
    user().focuses("txtsearch");
    user().presses('D', forms::kControl);
    expectSelected(2);
    EXPECT_EQ(grid().topRow(), 2);
}

TEST_F(RegisterList, TheToolTipShowsTheCellUnderThePointer) {
    has({{1, "a long remark"}});
    opens();
    grid().pointedAt(1, kColRemarks);
    user().movesOver("flexMaster");
    EXPECT_EQ(grid().toolTip(), "a long remark");
    grid().pointedAt(0, kColNumber);
    user().movesOver("flexMaster");
    EXPECT_EQ(grid().toolTip(), "Request No");
    grid().pointedAt(-1, -1);
    user().movesOver("flexMaster");
    EXPECT_EQ(grid().toolTip(), "");
}

} // namespace
