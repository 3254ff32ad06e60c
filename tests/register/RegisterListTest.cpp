// What the register shows, and how a person finds a request in it.
#include "tests/register/RegisterTest.h"

#include "basic/Calendar.h"
#include "basic/Format.h"
#include "basic/Text.h"
#include "sandbox/data/SchemaText.h"

namespace {

using namespace goodsreq;
using support::RegisterTest;
using support::Request;
using support::Texts;

using RegisterList = RegisterTest;

TEST_F(RegisterList, ShowsThePeriodSinceTheLaterOfBackDaysAndDayClose) {
    for (const auto& [backDays, closed, from, dayBefore] : {std::tuple("30", "'20240320'", "20240320", "20240319"),
                                                            {"30", "'20240201'", "20240301", "20240229"},
                                                            {"30", "", "20240301", "20240229"},
                                                            {"0", "", "20240331", "20240330"},
                                                            {"0", "'20240402'", "20240402", "20240401"}}) {
        SCOPED_TRACE(from);
        has({{1, "outside", dayBefore}, {2, "inside", from}});
        company.change("update LOsSettings set sNoofBackDays = " + std::string(backDays) +
                       " where ShopID = 1; delete losShopDayClose where shopid = 1");
        if (*closed)
            company.change("insert into losShopDayClose (shopid,closedate) values (1," + std::string(closed) + ")");
        till.emplace(company);
        till->component.dtProcessDate = basic::dateOf(2024, 3, 31);
        till->opens();
        EXPECT_EQ(basic::format(session().fromDate, "yyyymmdd"), from);
        EXPECT_EQ(column(kColRemarks), Texts{"inside"});
    }
    company.change("delete losShopDayClose where shopid = 1; update LOsSettings set sNoofBackDays = 30");
    for (const char* none : {"null", "''"}) { // of a site's own view
        const support::CompanyFile own(basic::replaceAll(sandbox::schemaText(), "max(closedate) as closedate",
                                                         std::string(none) + " as closedate"));
        till.emplace(own);
        till->opens();
    }
}

TEST_F(RegisterList, ShowsARequestAsThePersonReadsIt) {
    has({{10, "  for the weekend", "20260305"},
         {9, "", "20260306", "used confirmed"},
         {11, "x ", "20260307", "cancelled"}});
    company.change("update mesRequesttoShopHeader set SRHremarks = null where srhrequestid = 9");
    const std::string supplier = company.value("select shopname from aShops where shopid = 2");
    opens();
    EXPECT_EQ(user().rows("flexMaster"),
              (support::Rows{{"9", "GR/9", "06/03/2026", supplier, "No", "", "True", "Yes", "2"},
                             {"10", "GR/10", "05/03/2026", supplier, "No", "for the weekend", "False", "No", "2"},
                             {"11", "GR/11", "07/03/2026", supplier, "Yes", "x", "False", "No", "2"}}));
    expectSelected(1);
    EXPECT_EQ(session().userName, "Margaret Ellis");
    for (const int row : {1, 2, 3}) EXPECT_EQ(grid().rowColour(row) == 255, row == 3) << row;
    EXPECT_EQ(till->desktop.pointers, (std::vector{forms::Pointer::hourglass, forms::Pointer::normal}));
    user().clicks("CmdClose");
    till->desktop.userLocale = {basic::DateOrder::monthDayYear, '/', "M/d/yyyy"};
    till->opens();
    EXPECT_EQ(column(kColDate), (Texts{"3/6/2026", "3/5/2026", "3/7/2026"}));
}

TEST_F(RegisterList, CaptionAndHeadersComeFromTheCatalogueWithTheSitesWordForAShop) {
    has({{1, "shop request"}, {2, "sale", "20260320", "sale"}});
    company.change("update atablecolumns set ColumnHeader = 'To godown of shop' where columnno = 7");
    const std::tuple<int, int, const char*, const char*> cases[] = {
        {0, 1507, "Goods Request To Shop", "shop request"},
        {0, 42, "Goods Request To Shop", "shop request"},
        {1, 1507, "Goods Request To Outlet", "shop request"},
        {1, 1611, "Inter Division Sales Request", "sale"}};
    for (const auto& [alias, screen, caption, shown] : cases) {
        company.change("update aPAckageSettings set alias = " + std::to_string(alias));
        opens({.screenId = screen});
        EXPECT_EQ(user().caption(), caption);
        EXPECT_EQ(column(kColRemarks), Texts{shown});
        const std::string outlet = alias ? "Outlet" : "Shop";
        EXPECT_EQ(user().entries("cboSearch"),
                  (Texts{"Request No", "Request Date", outlet + " Name", "Cancelled", "Remarks",
                         alias ? "To Outlet of Outlet" : "To godown of shop", "Confirmed", outlet + " Id"}));
    }
    company.change("update aalias set Alias = 'Branch' where aliasid = 1"); // read again with each return
    user().clicks("CmdClose");
    opens().clicks("cmdnew");
    company.change("update aalias set Alias = 'Depot' where aliasid = 1");
    EXPECT_EQ(user().clicks("cmdCancel").caption(), "Goods Request To Depot");
}

TEST_F(RegisterList, ColumnsAreAsWideAsTheirTextsAndFillTheGrid) {
    std::string accented; // as many characters as the letters before it, more bytes
    for (int i = 0; i < 20; ++i) accented += "\u00e9";
    std::vector<int> widths;
    for (const std::string& remarks : {std::string(20, 'e'), accented, std::string(250, 'm')}) {
        opensWith({{1, remarks}});
        EXPECT_EQ(grid().colWidth(kColId) + grid().colWidth(kColShopId), 0);
        EXPECT_GE(grid().colWidth(kColDate), 12 * 130); // "Request Date"
        int sum = 0;
        for (int col = 0; col < grid().cols(); ++col) sum += grid().colWidth(col);
        EXPECT_NEAR(sum, grid().bounds().width, 350) << remarks.size();
        widths.push_back(grid().colWidth(kColRemarks));
    }
    EXPECT_EQ(widths[0], widths[1]);
    EXPECT_LT(widths[1], widths[2]);
    EXPECT_EQ(widths[2], 4000);
    company.change("insert into aMasterGridSettings (UserID,CompanyID,GridName,ColumnNo,ColumnWidth) values"
                   " (1,1,'flexMaster',3,5555)");
    for (const std::int16_t userId : {1, 2}) {
        opens({.userId = userId});
        EXPECT_EQ(grid().colWidth(kColShop) == 5555, userId == 1);
    }
}

TEST_F(RegisterList, AnEmptyRegisterKeepsOneEmptyRowAndOffersNew) {
    for (const int none : {0, -1}) {
        opensWith({{none, "no id"}}).rightClicks("flexMaster");
        EXPECT_TRUE(user().menu().empty());
    }
    opensWith({});
    EXPECT_EQ(column(kColId), Texts{""});
    EXPECT_EQ(commands(), "N");
    user().rightClicks("flexMaster");
    EXPECT_TRUE(user().menu().empty());
    user().enters("txtsearch", "5");
    EXPECT_EQ(column(kColId), Texts{""});
}

TEST_F(RegisterList, SortsTheChosenColumnByWhatStandsInTheCurrentRow) {
    // By date goes by id, which follows it.
    has({{9, "beans", "20260303"}, {10, "10", "20260301"}, {11, "9", "20260302"}, {12, "Apples", "20260302"}});
    company.change("update atablecolumns set ColumnHeader = 'UPDATED' where columnno = 3");
    const std::tuple<const char*, const char*, int, Texts> cases[] = {
        {"optAscend", "Remarks", 2, {"11", "10", "12", "9"}},    {"optDescend", "Remarks", 2, {"9", "12", "10", "11"}},
        {"optAscend", "Remarks", 1, {"10", "11", "12", "9"}},    {"optDescend", "Remarks", 1, {"9", "12", "11", "10"}},
        {"optAscend", "Request No", 1, {"10", "11", "12", "9"}}, {"optDescend", "UPDATED", 1, {"12", "11", "10", "9"}},
        {"optAscend", "UPDATED", 1, {"9", "10", "11", "12"}}};
    for (const auto& [direction, by, currentRow, ids] : cases) {
        SCOPED_TRACE(std::string(direction) + " " + by);
        opens();
        user().selectsRow("flexMaster", currentRow);
        till->desktop.pointers.clear();
        user().clicks(direction).picks("cboColNames", by);
        EXPECT_EQ(column(kColId), ids);
        EXPECT_EQ(till->desktop.pointers, (std::vector{forms::Pointer::hourglass, forms::Pointer::normal}));
        // A click on a direction, chosen already or not, only clears the column.
        for (const char* button : {direction, "optAscend", "optDescend"}) {
            user().picks("cboColNames", by);
            const Texts before = column(kColId);
            user().clicks(button);
            EXPECT_EQ(user().control<forms::ComboBox>("cboColNames")->listIndex(), -1);
            EXPECT_EQ(column(kColId), before);
        }
    }
}

TEST_F(RegisterList, TheSelectionStaysOnItsRequestWhateverSortsTheList) {
    opensWith({{1, "b"}, {2, "a", "20260320", "cancelled"}});
    const auto expectCurrent = [&](int row, const char* id) {
        EXPECT_EQ(grid().row(), row);
        EXPECT_EQ(current(kColId), id);
        EXPECT_EQ(grid().topRow(), row);
        EXPECT_EQ(user().enabled("CmdDelete"), std::string(id) == "1") << "the other one is cancelled";
    };
    expectCurrent(1, "1");
    user().picks("cboColNames", "Remarks");
    expectCurrent(2, "1");
    user().clicks("optDescend").picks("cboColNames", "Remarks");
    expectCurrent(1, "1");
    user().picks("cboSearch", "Remarks").enters("txtsearch", "nothing");
    expectCurrent(2, "1");
    EXPECT_EQ(user().text("cboColNames"), "") << "the search has sorted otherwise";
    user().enters("txtsearch", "a");
    expectCurrent(1, "2");
}

TEST_F(RegisterList, SearchGoesToTheFirstRequestThatBeginsSo) {
    using Requests = std::vector<Request>;
    const Requests words{{1, "pears"}, {2, "Apricots"}, {3, "apples"}, {4, "Bananas"}, {5, "apples, green"}};
    const Requests alike{{1, "2"}, {2, "1.00"}, {3, "1"}, {4, "1.0"}, {5, "01"}};
    const Requests numbers{{1, "7"}, {2, "12"}, {3, "1"}, {4, "35"}, {5, "120"}};
    const Requests mixed{{1, "x"}, {2, "1"}}; // numbers where the first row, in order, is one
    const struct {
        const Requests& requests;
        const char *typed, *found; ///< the current row's remarks
    } cases[] = {
        // clang-format off
        {words, "ap", "apples"}, {words, "APR", "Apricots"}, {words, "p", "pears"}, {words, "apples,", "apples, green"},
        {numbers, "7", "7"}, {numbers, "12", "12"}, {numbers, "1", "1"}, {numbers, "120", "120"}, {alike, "1.0", "01"},
        {mixed, "1.00", "1"}, {Requests{{1, "b"}, {2, "ap"}}, "ap ", "ap"},
        // Where nothing is found the request that was current before stays so.
        {words, "zz", "pears"}, {numbers, "99", "7"},
        {words, "ap ", "pears"}, // compared by as many characters as were typed
        // clang-format on
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.typed);
        opensWith(c.requests);
        user().picks("cboSearch", "Remarks").focuses("txtsearch");
        // The text comes at once, so that no search for its beginning moves the row.
        user().pastes(c.typed);
        EXPECT_EQ(grid().row(), 1);
        user().presses(forms::kKeyEnd);
        EXPECT_EQ(current(kColRemarks), c.found);
        expectSelected(grid().row());
        EXPECT_EQ(grid().topRow(), grid().row());
    }
}

TEST_F(RegisterList, SearchNeedsAColumnAndAText) {
    opensWith({{1, "b"}, {2, "a"}});
    user().enters("txtsearch", "a");
    EXPECT_EQ(column(kColId), (Texts{"1", "2"}));
    user().picks("cboSearch", "Remarks").enters("txtsearch", "  ");
    EXPECT_EQ(column(kColId), (Texts{"1", "2"}));
    user().enters("txtsearch", "b");
    EXPECT_EQ(column(kColId), (Texts{"2", "1"}));
    expectSelected(2);
    // Who comes back to the box types over what stands in it.
    user().types("\r"); // on to New
    user().tabs(true);
    ASSERT_EQ(user().focus(), "txtsearch");
    user().types("a");
    EXPECT_EQ(user().text("txtsearch"), "a");
    expectSelected(1);
}

TEST_F(RegisterList, KeysAndDoubleClickDoWhatTheButtonsDo) {
    has({{1, "a"}, {2, "b"}});
    for (const std::string keys : {"", "\r", "\n"}) {
        opens().focuses("flexMaster");
        keys.empty() ? user().doubleClicks("flexMaster") : user().types(keys);
        EXPECT_EQ(user().form(), "frmRequest");
        EXPECT_EQ(session().editMode, keys == "\n" ? "N" : "E");
    }
    opens().focuses("flexMaster").presses(forms::kKeyDelete);
    user().answers("Are you sure you want to Delete  - GR/1 ?", forms::Answer::no);
    user().clicks("flexMaster");
    EXPECT_TRUE(user().menu().empty());
    user().focuses("cboColNames"); // Enter moves on below the grid
    for (const char* next : {"optAscend", "cboSearch", "txtsearch", "cmdnew"}) {
        user().types("\r");
        EXPECT_EQ(user().focus(), next);
    }
    user().clicks("optDescend").types("\r");
    EXPECT_EQ(user().focus(), "cboSearch");
    user().focuses("txtsearch").presses('D', forms::kControl);
    expectSelected(2);
    EXPECT_EQ(grid().topRow(), 2);
    // The tool tip shows the cell under the pointer.
    for (const auto& [row, col, tip] :
         {std::tuple(1, int{kColRemarks}, "a"), {0, kColNumber, "Request No"}, {-1, -1, ""}}) {
        grid().pointedAt(row, col);
        user().movesOver("flexMaster");
        EXPECT_EQ(grid().toolTip(), tip);
    }
}

} // namespace

// A site's columns may be open to null where the sample's are not.
TEST(Flags, WithoutAValueAreNeitherTrueNorFalse) {
    struct Flag : goodsreq::ModuleForm {
        using ModuleForm::isFalse;
        using ModuleForm::isTrue;
    };
    using automation::Value;
    for (const auto& [flag, isTrue, isFalse] : std::initializer_list<std::tuple<Value, bool, bool>>{
             {true, true, false}, {0, false, true}, {automation::Null(), false, false}, {Value(), false, false}}) {
        EXPECT_EQ(Flag::isTrue(flag), isTrue);
        EXPECT_EQ(Flag::isFalse(flag), isFalse);
    }
}
