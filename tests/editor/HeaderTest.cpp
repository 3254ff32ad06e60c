// The head of a request: whom it can be sent to, its number, opening and closing.
#include "screens/lines/frmRequestDetail.h"
#include "screens/request/frmRequest.h"
#include "tests/editor/Till.h"

namespace {

using namespace editor;

class Header : public EditorTest<3> {
protected:
    /// Remarks, tick and date of the request shown cannot be changed.
    static void expectLocked(Till& till) {
        const Names shown = till.texts({"txtRemarks", "txtrequestDate"});
        till.user.enters("txtRemarks", "too late").enters("txtrequestDate", "01/01/2020");
        EXPECT_EQ(till.texts({"txtRemarks", "txtrequestDate"}), shown);
        EXPECT_FALSE(till.user.enabled("chkTransFinished") || till.user.enabled("cmdOk"));
    }
};

TEST_F(Header, EnterMovesOnThroughTheBoxes) {
    Till till(company);
    till.newRequest().user.enters("txtRemarks", "kept").focuses("txtrequestDate").types("30/03/2026");
    EXPECT_EQ(till.user.text("txtrequestDate"), "30/03/2026") << "a box is typed over";
    for (const char* next : {"cboShop", "txtRemarks", "lvwrequest"}) {
        EXPECT_EQ(till.user.types("\r").focus(), next);
        if (till.user.focus() == "txtRemarks") till.user.types("!");
    }
    EXPECT_EQ(till.user.text("txtRemarks"), "kept!") << "and remarks are gone on with";
    EXPECT_EQ(till.user.control("cboShop")->tag().substr(0, 10), "Brackenway");
    EXPECT_EQ(till.user.focuses("chkTransFinished").types("\r").focus(), "cmdOk");
}

TEST_F(Header, AChangeOfShopAsksOnlyWhenLinesWouldBeLost) {
    Till till(company);
    till.newRequest(0).picksShop(3);
    till.picksShop(kSupplier);
    EXPECT_EQ(till.said(), Names{});
    till.enters(items);
    for (const Answer answer : {Answer::no, Answer::yes}) {
        const bool changes = answer == Answer::yes;
        till.picksShop(4);
        till.isAsked("Already entered data will be cleared. Do you want to change shop?", Answer::no, answer);
        EXPECT_EQ(till.user.text("cboShop"), changes ? "Brackenway Market Square" : "Brackenway Station Road");
        EXPECT_EQ(till.lines().count(), changes ? 0 : 3);
        EXPECT_EQ(till.module.session.lngOtherShopID, changes ? 4 : kSupplier);
        EXPECT_FALSE(till.user.message());
    }
}

TEST_F(Header, NumbersFollowTheHighestOfTheirPrefix) {
    for (const auto& [what, numbers, prefix, next] :
         Table<Text, Names, Text, Text>{{"no request yet", {}, "GR/", "GR/1"},
                                        {"of its own", {"GR/9", "GR/10", "GR/X1", "GR24/80"}, "GR/", "GR/11"},
                                        {"no row of prefixes", {}, nullptr, "1"},
                                        {"a blank in the prefix", {"GR 3"}, "GR ", "GR 4"},
                                        {"plain numbers go on", {"8", "GR/30"}, nullptr, "9"},
                                        {"an apostrophe in the prefix", {"O''B/3"}, "O''B/", "O'B/4"},
                                        {"the last one that fits", {"GR/32766"}, "GR/", "GR/32767"}}) {
        SCOPED_TRACE(what);
        std::string script = "delete mesRequesttoShopDetail where srdshopid = 1;"
                             "delete mesRequesttoShopHeader where srhshopid = 1;"
                             "delete aPrefix where shopid = 1 and InterfaceID = 1507";
        if (prefix) script += std::string(";insert into aPrefix values (1507, 2, 1, '") + prefix + "')";
        int id = 0;
        for (const std::string& number : numbers)
            script += ";insert into mesRequesttoShopHeader (srhrequestid,srhshopid,srhrequestno,srhrequestdate,"
                      "srhtoShopid,srhtype) values (" +
                      std::to_string(++id) + ",1,'" + number + "','20260301',2,'r')";
        company.change(script);
        Till till(company);
        till.newRequest().enters({item}).saves();
        EXPECT_EQ(newest(company, "srhrequestno"), next);
    }
    // Past it there is one report, and nothing is stored until there is another prefix.
    Till till(company);
    till.newRequest().enters(items).user.clicks("cmdOk");
    till.readsReport("Error 6: Overflow. The request numbers that begin with \"GR/\" end at 32767");
    EXPECT_EQ(till.lines().count(), 3);
    EXPECT_EQ(till.user.text("txtRequestNo"), "");
    EXPECT_EQ(newest(company, "srhrequestno"), "GR/32767");
    company.change("update aPrefix set Prefix = 'GS/' where Prefix = 'GR/'");
    till.saves();
    EXPECT_EQ(newest(company, "srhrequestno"), "GS/1");
}

TEST_F(Header, ANumberWithAnApostropheIsLookedUpAsItStands) {
    Till till(company);
    till.newRequest().enters({item}).puts("txtRequestNo", "it's \u2032 or").saves();
    EXPECT_EQ(
        till.statements("select SRHrequestID from mesRequesttoShopHeader where srhrequestno='it''s '' or'").size(), 1u);
}

TEST_F(Header, CaptionsGoByTheScreenAndTheSitesWordForAShop) {
    constexpr const char *kGoods = "Goods Request To Shop", *kSales = "Inter Division Sales Request",
                         *kOutlet = "Goods Request To Outlet";
    for (const auto& [screen, alias, caption, label, lineCaption, refusal] :
         Table<std::int32_t, bool, Text, Text, Text, Text>{
             {1507, false, kGoods, "&Shop :", kGoods, "Select Shop"},
             {1611, false, kSales, "&Shop :", kSales, "Select Shop"},
             {1507, true, kOutlet, "Outlet : ", kOutlet, "Select Outlet"},
             {1611, true, kOutlet, "Outlet : ", kSales, "Select Outlet"},
             {1700, false, kSales, "&Shop :", kGoods, "Select Shop"},
             {1700, true, kOutlet, "Outlet : ", kOutlet, "Select Outlet"}}) {
        company.change(std::string("update aPAckageSettings set alias = ") + (alias ? "1" : "0"));
        Till till(company, {.screenId = screen});
        EXPECT_EQ(till.newRequest(0).user.caption(), caption);
        EXPECT_EQ(till.user.text("Label1"), label);
        EXPECT_EQ(till.lines().columns().at(6).width > 0, screen == 1700); // prices
        EXPECT_EQ(till.oksAndReads(refusal).addsLines().user.caption(), lineCaption);
        for (const char* price : {"txtsellingprice", "lblsellingprice"})
            EXPECT_EQ(till.user.visible(price), screen == 1611);
        if (!alias || screen != 1507) continue;
        // The next session has no word for a shop when it begins, and one that is not read later.
        till.user.clicks("cmdCancel").clicks("cmdCancel").clicks("CmdClose");
        company.change("update aPAckageSettings set alias = 0");
        till.component.interfaceid = 1611;
        till.newRequest(0);
        company.change("update aPAckageSettings set alias = 1");
        EXPECT_EQ(till.user.clicks("cmdCancel").clicks("cmdnew").caption(), kSales);
        EXPECT_EQ(till.user.text("Label1"), "&Shop :");
        till.oksAndReads("Select Shop");
    }
}

TEST_F(Header, ARequestThatIsFinalOpensToBeReadOnly) {
    for (const auto& [change, locked, finished, said] : Table<std::string, bool, bool, Names>{
             {"srhused = 0", false, false, {}},
             {"srhused = 1", true, false, {}},
             {"srhTransfinished = 1", true, true, {"Request is confirmed, You can't edit"}},
             {"SRHcancelled = 1", true, false, {}}}) {
        SCOPED_TRACE(change);
        CompanyFile file;
        storeRequest(file, items, "update mesRequesttoShopHeader set " + change + kOfStored);
        Till till(file);
        till.editRequest(kStored);
        if (till.user.message()) till.user.answers(Answer::ok);
        ASSERT_EQ(till.user.form(), "frmRequest");
        EXPECT_EQ(till.said(), said);
        EXPECT_EQ(till.texts({"cboShop", "txtRemarks"}), (Names{"Brackenway Station Road", "as agreed"}));
        EXPECT_EQ(till.user.rows("lvwrequest").at(1),
                  (Names{"2", other.code, other.description, "5.500", "0.500", other.id, "0.000", other.unit}));
        EXPECT_EQ(till.lines().selectedIndex(), 1);
        EXPECT_EQ(till.user.enabled("cmdOk"), !locked);
        EXPECT_EQ(till.user.checked("chkTransFinished"), finished);
        EXPECT_EQ(till.user.enabled("chkTransFinished"), !locked);
        // A component switches the shop on: a stored request keeps its own.
        till.user.happens([&] { till.module.request().cboShop.setEnabled(true); });
        till.picksShop(3);
        EXPECT_EQ(till.user.text("cboShop"), "Brackenway Station Road");
        EXPECT_EQ(till.module.session.lngOtherShopID, kSupplier);
        if (!locked) continue;
        till.user.selectsRow("lvwrequest", 2).types("\r\n").presses(forms::kKeyF10).presses(forms::kKeyDelete);
        till.user.doubleClicks("lvwrequest").rightClicks("lvwrequest");
        const auto menu = till.user.menu();
        ASSERT_EQ(menu.size(), 4u);
        for (std::size_t i = 0; i < 3; ++i) EXPECT_FALSE(menu[i].enabled) << menu[i].name;
        EXPECT_EQ(till.user.dismissesMenu().form(), "frmRequest");
        EXPECT_EQ(till.lines().count(), 3);
        expectLocked(till);
        EXPECT_EQ(till.user.clicks("cmdCancel").form(), "frmMaster");
        // Nothing of it is left to the next request.
        till.user.clicks("cmdnew").enters("txtRemarks", "free").enters("txtrequestDate", "30/03/2026");
        EXPECT_EQ(till.texts({"txtRemarks", "txtrequestDate"}), (Names{"free", "30/03/2026"}));
        EXPECT_TRUE(till.user.enabled("chkTransFinished"));
        EXPECT_EQ(till.user.tabs().tabs(true).focus(), "txtrequestDate");
    }
}

TEST_F(Header, ClosingAsksWhatToDoWithChanges) {
    const auto looksAtALine = [](Till& till) { till.changesLine(3).backToEditor(); };
    const auto remarks = [](Till& till) { till.user.enters("txtRemarks", "urgent"); };
    const auto both = [&](Till& till) { remarks(till), looksAtALine(till); };
    const auto enters = [](const char* quantity) {
        return [=](Till& till) {
            till.changesLine(3).user.enters("txtQuantity", quantity);
            const bool other = till.user.text("txtQuantity") != "6";
            till.user.happens([&] { EXPECT_EQ(forms::input::holdsWork(till.module.requestDetail()), other); });
            till.user.clicks("cmdOk");
        };
    };
    // Nothing is asked where there is no answer. Stored are then remarks, and quantity of the third line.
    for (const auto& [change, answer, stored] :
         Table<std::function<void(Till&)>, std::optional<Answer>, Text>{{looksAtALine, {}, "as agreed 6"},
                                                                        {remarks, Answer::cancel, "as agreed 6"},
                                                                        {both, Answer::yes, "urgent 6"},
                                                                        {enters("6"), {}, "as agreed 6"},
                                                                        {enters("77"), Answer::cancel, "as agreed 6"},
                                                                        {enters("77"), Answer::no, "as agreed 6"},
                                                                        {enters("77"), Answer::yes, "as agreed 77"}})
        for (const bool frame : {false, true}) {
            CompanyFile file;
            storeRequest(file, items);
            Till till(file);
            change(till.editRequest(kStored));
            till.user.happens([&] { EXPECT_EQ(forms::input::holdsWork(till.module.request()), answer.has_value()); });
            frame ? till.user.closesFrame() : till.user.clicks("cmdCancel");
            if (answer) till.isAsked("Save Changes?", Answer::yes, *answer);
            ASSERT_FALSE(till.user.message());
            EXPECT_EQ(till.user.form(), answer == Answer::cancel ? "frmRequest" : "frmMaster");
            EXPECT_EQ(file.value(std::string("select SRHremarks from mesRequesttoShopHeader") + kOfStored) + " " +
                          file.value("select max(srdgoodqty) from mesRequesttoShopDetail where srdshopid = 1 and"
                                     " srdrequestid = 900"),
                      stored);
        }
}

TEST_F(Header, AnEditorWhoseChangesNobodyCanTellIsLeftByTheClerksOwnAnswer) {
    Till till(company);
    till.newRequest().user.enters("txtRemarks", "typed");
    till.breaks("clsUserAuditing.DataChanged");
    till.user.clicks("cmdCancel");
    EXPECT_EQ(till.readsReport("frmRequest , Form_QueryUnload").user.form(), "frmRequest");
    for (const Answer answer : {Answer::cancel, Answer::no}) {
        till.user.closesFrame().answers(Answer::ok).answers("Save Changes?", answer); // after the report
        EXPECT_EQ(till.user.form(), answer == Answer::no ? "frmMaster" : "frmRequest");
    }
    till.user.clicks("cmdnew").clicks("cmdCancel"); // where it is a first time again
    EXPECT_EQ(till.readsReport().user.form(), "frmRequest");
    till.breaks("");
    till.desktop.refusals = 1; // a question that cannot be shown is not answered
    till.user.enters("txtRemarks", "typed").clicks("cmdCancel");
    EXPECT_EQ(till.readsReport().user.form(), "frmRequest");
}

TEST_F(Header, LinesThatCannotBeLoadedWholeKeepOkDisabled) {
    constexpr const char* kNotAll =
        "Not all lines of this request could be read. It can be looked at, but not changed.";
    storeRequest(company, items, "delete aitem where itemid = " + other.id);
    Till till(company);
    till.editRequest(kStored).user.answers(kNotAll, Answer::ok);
    EXPECT_EQ(till.lines().count(), 2);
    expectLocked(till);
    // Not even where a component switches OK on.
    const auto switchesOn = [&] { till.module.request().cmdOk.setEnabled(true); };
    till.puts("txtRemarks", "changed").user.happens(switchesOn);
    EXPECT_EQ(till.oksAndReads(kNotAll).user.form(), "frmRequest");
    till.user.happens(switchesOn).clicks("cmdCancel");
    till.user.answers("Save Changes?", Answer::yes).answers(kNotAll, Answer::ok);
    EXPECT_EQ(till.statements("BEGIN"), Names{});
    EXPECT_EQ(till.user.clicks("cmdCancel").answers("Save Changes?", Answer::no).form(), "frmMaster");
}

TEST_F(Header, ARequestOfWhichNobodyKnowsWhetherItIsFinalIsNotChanged) {
    storeRequest(company, items);
    for (const char* lookUp : {"select srhused", "select srhTransfinished"}) {
        SCOPED_TRACE(lookUp);
        Till till(company);
        till.breaks(lookUp);
        till.editRequest(kStored).readsReport("frmRequest , Form_Activate");
        EXPECT_EQ(till.lines().count(), 3);
        expectLocked(till);
        EXPECT_EQ(till.user.clicks("cmdCancel").form(), "frmMaster");
        // A shop that is chosen in a closed editor is nobody's choice.
        till.user.happens([&] {
            forms::ComboBox& box = till.module.request().cboShop;
            box.addItem("late", 77);
            box.setListIndex(0);
        });
        EXPECT_NE(till.module.session.lngOtherShopID, 77);
    }
    Till till(company);
    till.breaks("select SRHTransfinished");
    EXPECT_EQ(till.editRequest(kStored).readsReport("frmMaster , CmdEdit_Click").user.form(), "frmMaster");
    EXPECT_EQ(till.newRequest(0).lines().count(), 0) << "lines of the request that was not opened";
    EXPECT_TRUE(till.user.enabled("cmdOk"));
}

// A column that the list does not have, or an alignment that is none, is reported, and the columns before it have the
// layout that the site has stored.
TEST_F(Header, TheListIsLaidOutAsTheSiteHasStoredIt) {
    for (const std::string wrong : {"12,999,0", "8,999,3", "8,999,-1"}) {
        SCOPED_TRACE(wrong);
        std::string script = "delete alistviewdetails; delete alistviewheader; insert into alistviewheader"
                             " (lvwid,lvwtransname,lvwname,lvwmodulename) values"
                             " (7,' FRMREQUEST','LvwRequest ',' SHOPTOSHOPTRANSFER ')";
        for (const std::string& column : {std::string("3,2345,2"), std::string("7,2222,1"), wrong})
            script +=
                ";insert into alistviewdetails (lvwdid,lvwcolid,lvwdcolwidth,lvwdcolalign) values (7," + column + ")";
        company.change(script);
        Till till(company);
        till.opens();
        till.user.clicks("cmdnew");
        till.readsReport();
        const auto& columns = till.lines().columns();
        EXPECT_EQ(columns.at(2).width, 2345);
        EXPECT_EQ(columns.at(2).alignment, forms::ColumnAlignment::centre);
        EXPECT_EQ(columns.at(6).width, 2222) << "prices, where the site wants to see them";
        EXPECT_EQ(columns.at(7).width == 999, wrong[0] == '8') << "the width comes before the alignment";
        EXPECT_EQ(till.lines().tag().substr(0, 6), "Loaded");
    }
}

} // namespace
