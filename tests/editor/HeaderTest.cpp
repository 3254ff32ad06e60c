// The head of a request: whom it can be sent to, its number, opening and closing.
#include "screens/lines/frmRequestDetail.h"
#include "screens/request/frmRequest.h"
#include "tests/editor/Till.h"

#include <gtest/gtest.h>

namespace {

using namespace editor;
using Names = std::vector<std::string>;

class Header : public testing::Test {
protected:
    CompanyFile company;
    std::vector<SampleItem> items = support::requestableItems(company, 1, kSupplier, 3);

    std::string newest(const std::string& field) const {
        return company.value("select " + field +
                             " from mesRequesttoShopHeader where srhshopid = 1 and srhrequestid ="
                             " (select max(srhrequestid) from mesRequesttoShopHeader where srhshopid = 1)");
    }
    /// Remarks, tick and date of the request shown cannot be changed.
    static void expectLocked(Till& till) {
        const std::string shown = till.user.text("txtRemarks") + till.user.text("txtrequestDate");
        till.user.enters("txtRemarks", "too late");
        till.user.enters("txtrequestDate", "01/01/2020");
        EXPECT_EQ(till.user.text("txtRemarks") + till.user.text("txtrequestDate"), shown);
        EXPECT_FALSE(till.user.enabled("chkTransFinished"));
        EXPECT_FALSE(till.user.enabled("cmdOk"));
    }
    std::string count() const {
        return company.value("select count(*) from mesRequesttoShopHeader where srhshopid = 1");
    }
};

TEST_F(Header, OffersTheOtherActiveShopsThatDealInTheSameGoods) {
    company.change("insert into ashopitemcategory values (8, 11)"); // the garden centre takes up a common category
    {
        Till till(company);
        till.newRequest(0);
        EXPECT_EQ(till.user.entries("cboShop"),
                  (Names{"Brackenway Garden Centre", "Brackenway Harbour", "Brackenway Market Square",
                         "Brackenway Riverside", "Brackenway Station Road", "Brackenway Trade Counter"}));
        EXPECT_EQ(till.user.text("cboShop"), "");
    }
    company.change("delete ashopitemcategory where shopid = 8 and itemcategoryid = 11;"
                   "update aShops set ActiveShop = 0 where shopid = 3");
    Till till(company);
    till.newRequest(0);
    EXPECT_EQ(till.user.entries("cboShop"), (Names{"Brackenway Harbour", "Brackenway Market Square",
                                                   "Brackenway Station Road", "Brackenway Trade Counter"}));
}

TEST_F(Header, EnterMovesOnThroughTheBoxes) {
    Till till(company);
    till.newRequest();
    till.user.enters("txtRemarks", "kept");
    till.user.focuses("txtrequestDate");
    till.user.types("30/03/2026");
    EXPECT_EQ(till.user.text("txtrequestDate"), "30/03/2026") << "a box is typed over";
    for (const char* next : {"cboShop", "txtRemarks", "lvwrequest"}) {
        till.user.types("\r");
        EXPECT_EQ(till.user.focus(), next);
        if (till.user.focus() == "txtRemarks") till.user.types("!");
    }
    EXPECT_EQ(till.user.text("txtRemarks"), "kept!") << "and remarks are gone on with";
    EXPECT_EQ(till.user.control("cboShop")->tag().substr(0, 10), "Brackenway");
    till.user.focuses("chkTransFinished");
    till.user.types("\r");
    EXPECT_EQ(till.user.focus(), "cmdOk");
}

TEST_F(Header, AChangeOfShopAsksOnlyWhenLinesWouldBeLost) {
    Till till(company);
    till.newRequest(0);
    till.picksShop(3);
    till.picksShop(kSupplier);
    EXPECT_EQ(till.said(), Names{});
    till.enters(items);

    const std::string question = "Already entered data will be cleared. Do you want to change shop?";
    till.picksShop(4);
    ASSERT_TRUE(till.user.message());
    EXPECT_EQ(till.user.message()->defaultAnswer, Answer::no);
    EXPECT_EQ(till.user.message()->icon, forms::MessageIcon::question);
    EXPECT_EQ(till.user.message()->title, "Retail Back Office");
    till.user.answers(question, Answer::no);
    EXPECT_EQ(till.user.text("cboShop"), "Brackenway Station Road");
    EXPECT_EQ(till.user.list("lvwrequest").size(), 3u);
    EXPECT_EQ(till.module.session.lngOtherShopID, kSupplier);

    till.picksShop(4);
    till.user.answers(question, Answer::yes);
    EXPECT_EQ(till.user.text("cboShop"), "Brackenway Market Square");
    EXPECT_TRUE(till.user.list("lvwrequest").empty());
    EXPECT_EQ(till.module.session.lngOtherShopID, 4);
    EXPECT_FALSE(till.user.message());
}

TEST_F(Header, NumbersFollowTheHighestOfTheirPrefix) {
    struct Case {
        const char* what;
        Names numbers; ///< that the shop's requests have before, for a statement
        const char* prefix;
        const char* next;
    };
    for (const Case& c : {Case{"no request yet", {}, "GR/", "GR/1"},
                          {"by number, not text", {"GR/9", "GR/10"}, "GR/", "GR/11"},
                          {"a remainder that is no number", {"GR/41", "GR/X1"}, "GR/", "GR/42"},
                          {"other prefixes", {"GR/7", "IS/90", "GR24/80"}, "GR/", "GR/8"},
                          {"no row of prefixes", {}, nullptr, "1"},
                          {"plain numbers go on", {"8", "GR/30"}, nullptr, "9"},
                          {"an apostrophe in the prefix", {"O''B/3"}, "O''B/", "O'B/4"},
                          {"the last one that fits", {"GR/32766"}, "GR/", "GR/32767"}}) {
        SCOPED_TRACE(c.what);
        std::string script = "delete mesRequesttoShopDetail where srdshopid = 1;"
                             "delete mesRequesttoShopHeader where srhshopid = 1;"
                             "delete aPrefix where shopid = 1 and InterfaceID = 1507";
        if (c.prefix) script += std::string(";insert into aPrefix values (1507, 2, 1, '") + c.prefix + "')";
        int id = 0;
        for (const std::string& number : c.numbers)
            script += ";insert into mesRequesttoShopHeader (srhrequestid,srhshopid,srhrequestno,srhrequestdate,"
                      "srhtoShopid,srhtype) values (" +
                      std::to_string(++id) + ",1,'" + number + "','20260301',2,'r')";
        company.change(script);
        Till till(company);
        till.newRequest();
        till.enters({items[0]});
        till.user.clicks("cmdOk");
        ASSERT_EQ(till.user.form(), "frmMaster");
        EXPECT_EQ(newest("srhrequestno"), c.next);
    }
}

TEST_F(Header, PastTheLastNumberThereIsOneReportAndNothingIsStored) {
    company.change(
        "update mesRequesttoShopHeader set srhrequestno = 'GR/32767' where srhshopid = 1 and srhrequestid = 1");
    const std::string before = count();
    Till till(company);
    till.newRequest();
    till.enters(items);
    till.user.clicks("cmdOk");
    EXPECT_NE(till.readsReport().find("Error 6: Overflow. The request numbers that begin with \"GR/\" end at 32767"),
              std::string::npos);
    EXPECT_EQ(till.user.form(), "frmRequest");
    EXPECT_EQ(till.user.list("lvwrequest").size(), 3u);
    EXPECT_EQ(till.user.text("txtRequestNo"), "");
    EXPECT_EQ(count(), before);

    company.change(
        "update mesRequesttoShopHeader set srhrequestno = 'GR/500' where srhshopid = 1 and srhrequestid = 1");
    till.user.clicks("cmdOk");
    EXPECT_EQ(till.user.form(), "frmMaster");
    EXPECT_EQ(newest("srhrequestno"), "GR/501");
}

TEST_F(Header, ANumberWithAnApostropheIsLookedUpAsItStands) {
    Till till(company);
    till.newRequest();
    till.enters({items[0]});
    till.user.happens([&] { till.user.control<forms::TextBox>("txtRequestNo")->setText("it's \u2032 or"); });
    till.user.clicks("cmdOk");
    EXPECT_EQ(till.user.form(), "frmMaster");
    EXPECT_EQ(till.errors(), Names{});
    bool lookedUp = false;
    for (const std::string& sent : till.statements())
        lookedUp = lookedUp || sent.find("'it''s '' or'") != std::string::npos;
    EXPECT_TRUE(lookedUp);

    const std::string before = count();
    till.user.clicks("cmdnew");
    till.picksShop(kSupplier);
    till.enters({items[0]});
    till.user.happens([&] { till.user.control<forms::TextBox>("txtRequestNo")->setText(newest("srhrequestno")); });
    till.user.clicks("cmdOk");
    till.user.answers("Request no already exists", Answer::ok);
    EXPECT_EQ(till.user.form(), "frmMaster");
    EXPECT_EQ(count(), before);
}

TEST_F(Header, CaptionsGoByTheScreenAndTheSitesWordForAShop) {
    struct Case {
        std::int32_t screen;
        bool alias;
        const char *caption, *label, *lineCaption, *refusal;
        bool price;
    };
    for (const Case& c :
         {Case{1507, false, "Goods Request To Shop", "&Shop :", "Goods Request To Shop", "Select Shop", false},
          {1611, false, "Inter Division Sales Request", "&Shop :", "Inter Division Sales Request", "Select Shop", true},
          {1507, true, "Goods Request To Outlet", "Outlet : ", "Goods Request To Outlet", "Select Outlet", false},
          {1611, true, "Goods Request To Outlet", "Outlet : ", "Inter Division Sales Request", "Select Outlet", true},
          {1700, false, "Inter Division Sales Request", "&Shop :", "Goods Request To Shop", "Select Shop", false},
          {1700, true, "Goods Request To Outlet", "Outlet : ", "Goods Request To Outlet", "Select Outlet", false}}) {
        company.change(std::string("update aPAckageSettings set alias = ") + (c.alias ? "1" : "0"));
        Till till(company, {.screenId = c.screen});
        till.newRequest(0);
        EXPECT_EQ(till.user.caption(), c.caption);
        EXPECT_EQ(till.user.text("Label1"), c.label);
        EXPECT_EQ(till.user.control<forms::ListView>("lvwrequest")->columns().at(6).width > 0,
                  c.screen == 1700); // prices
        till.user.clicks("cmdOk");
        till.user.answers(c.refusal, Answer::ok);
        till.addsLines();
        EXPECT_EQ(till.user.caption(), c.lineCaption);
        EXPECT_EQ(till.user.visible("txtsellingprice"), c.price);
        EXPECT_EQ(till.user.visible("lblsellingprice"), c.price);
        if (!c.alias || c.screen != 1507) continue;
        // The next session has no word for a shop when it begins, and one that is not read later.
        for (const char* button : {"cmdCancel", "cmdCancel", "CmdClose"}) till.user.clicks(button);
        company.change("update aPAckageSettings set alias = 0");
        till.component.interfaceid = 1611;
        till.newRequest(0);
        company.change("update aPAckageSettings set alias = 1");
        till.user.clicks("cmdCancel");
        till.user.clicks("cmdnew");
        EXPECT_EQ(till.user.caption(), "Inter Division Sales Request");
        EXPECT_EQ(till.user.text("Label1"), "&Shop :");
        till.user.clicks("cmdOk");
        till.user.answers("Select Shop", Answer::ok);
    }
}

TEST_F(Header, ARequestThatIsFinalOpensToBeReadOnly) {
    struct Case {
        const char* what;
        const char* change;
        bool locked, finished;
        Names said;
    };
    for (const Case& c :
         {Case{"open", "", false, false, {}},
          {"used", "update mesRequesttoShopHeader set srhused = 1 where srhrequestid = 900", true, false, {}},
          {"finished",
           "update mesRequesttoShopHeader set srhTransfinished = 1 where srhrequestid = 900",
           true,
           true,
           {"Request is confirmed, You can't edit"}},
          {"cancelled",
           "update mesRequesttoShopHeader set SRHcancelled = 1 where srhrequestid = 900",
           true,
           false,
           {}}}) {
        SCOPED_TRACE(c.what);
        CompanyFile file;
        storeRequest(file, items, c.change);
        Till till(file);
        till.editRequest(kStored);
        if (till.user.message()) till.user.answers(Answer::ok);
        ASSERT_EQ(till.user.form(), "frmRequest");
        EXPECT_EQ(till.said(), c.said);
        EXPECT_EQ(till.user.text("cboShop"), "Brackenway Station Road");
        EXPECT_EQ(till.user.text("txtRemarks"), "as agreed");
        EXPECT_EQ(till.column(3), (Names{"4.000", "5.500", "6.000"}));
        EXPECT_EQ(till.column(0), (Names{"1", "2", "3"}));
        EXPECT_EQ(till.column(1), (Names{items[0].code, items[1].code, items[2].code}));
        EXPECT_EQ(till.module.request().lvwrequest.selectedIndex(), 1);
        EXPECT_EQ(till.user.enabled("cmdOk"), !c.locked);
        EXPECT_EQ(till.user.checked("chkTransFinished"), c.finished);
        EXPECT_EQ(till.user.enabled("chkTransFinished"), !c.locked);
        // A component switches the shop on: a stored request keeps its own.
        till.user.happens([&] { till.module.request().cboShop.setEnabled(true); });
        till.picksShop(3);
        EXPECT_EQ(till.user.text("cboShop"), "Brackenway Station Road");
        EXPECT_EQ(till.module.session.lngOtherShopID, kSupplier);
        if (!c.locked) continue;
        till.user.selectsRow("lvwrequest", 2);
        till.user.types("\r\n");
        till.user.presses(forms::kKeyF10);
        till.user.presses(forms::kKeyDelete);
        till.user.doubleClicks("lvwrequest");
        till.user.rightClicks("lvwrequest");
        const auto menu = till.user.menu();
        ASSERT_EQ(menu.size(), 4u);
        for (std::size_t i = 0; i < 3; ++i) EXPECT_FALSE(menu[i].enabled) << menu[i].name;
        till.user.dismissesMenu();
        EXPECT_EQ(till.user.form(), "frmRequest");
        EXPECT_EQ(till.user.list("lvwrequest").size(), 3u);
        expectLocked(till);
        till.user.clicks("cmdCancel");
        EXPECT_EQ(till.user.form(), "frmMaster");
        // Nothing of it is left to the next request.
        till.user.clicks("cmdnew");
        till.user.enters("txtRemarks", "free");
        till.user.enters("txtrequestDate", "30/03/2026");
        EXPECT_EQ(till.user.text("txtRemarks") + till.user.text("txtrequestDate"), "free30/03/2026");
        EXPECT_TRUE(till.user.enabled("chkTransFinished"));
        till.user.tabs();
        till.user.tabs(true);
        EXPECT_EQ(till.user.focus(), "txtrequestDate");
    }
}

TEST_F(Header, ClosingAsksWhatToDoWithChanges) {
    const auto looksAtALine = [](Till& till) {
        till.changesLine(3);
        till.user.clicks("cmdCancel");
    };
    const auto remarks = [](Till& till) { till.user.enters("txtRemarks", "urgent"); };
    const auto line = [](Till& till, const char* quantity) {
        till.changesLine(3);
        if (*quantity) till.user.enters("txtQuantity", quantity);
        till.user.happens([&] { EXPECT_EQ(forms::input::holdsWork(till.module.requestDetail()), *quantity != '\0'); });
        till.user.clicks("cmdOk");
    };
    struct Case {
        const char* what;
        std::function<void(Till&)> change;
        std::optional<Answer> answer; ///< none where nothing is asked
        const char* stored;           ///< remarks, and quantity of the third line
    };
    for (const Case& c : {Case{"a look at a line", looksAtALine, {}, "as agreed 6"},
                          {"a remark, cancel", remarks, Answer::cancel, "as agreed 6"},
                          {"a remark, no", remarks, Answer::no, "as agreed 6"},
                          {"a remark and a look at a line, yes",
                           [&](Till& till) {
                               remarks(till);
                               looksAtALine(till);
                           },
                           Answer::yes, "urgent 6"},
                          {"a line as it was", [&](Till& till) { line(till, ""); }, {}, "as agreed 6"},
                          {"a line, cancel", [&](Till& till) { line(till, "77"); }, Answer::cancel, "as agreed 6"},
                          {"a line, no", [&](Till& till) { line(till, "77"); }, Answer::no, "as agreed 6"},
                          {"a line, yes", [&](Till& till) { line(till, "77"); }, Answer::yes, "as agreed 77"}})
        for (const bool frame : {false, true}) {
            SCOPED_TRACE(std::string(c.what) + (frame ? ", by the window" : ", by the button"));
            CompanyFile file;
            storeRequest(file, items);
            Till till(file);
            till.editRequest(kStored);
            c.change(till);
            till.user.happens([&] { EXPECT_EQ(forms::input::holdsWork(till.module.request()), c.answer.has_value()); });
            if (frame)
                till.user.closesFrame();
            else
                till.user.clicks("cmdCancel");
            const auto box = till.user.message();
            ASSERT_EQ(box.has_value(), c.answer.has_value());
            if (box) {
                EXPECT_EQ(box->defaultAnswer, Answer::yes);
                EXPECT_EQ(box->icon, forms::MessageIcon::question);
                EXPECT_EQ(box->title, "Retail Back Office");
                till.user.answers("Save Changes?", *c.answer);
            }
            EXPECT_EQ(till.user.form(), c.answer == Answer::cancel ? "frmRequest" : "frmMaster");
            EXPECT_EQ(file.value("select SRHremarks from mesRequesttoShopHeader where srhshopid = 1 and srhrequestid ="
                                 " 900") +
                          " " +
                          file.value("select max(srdgoodqty) from mesRequesttoShopDetail where srdshopid = 1 and"
                                     " srdrequestid = 900"),
                      c.stored);
            EXPECT_EQ(till.errors(), Names{});
        }
}

TEST_F(Header, AnEditorWhoseChangesNobodyCanTellIsLeftByTheClerksOwnAnswer) {
    Till till(company);
    till.newRequest();
    till.user.enters("txtRemarks", "typed");
    till.breaks("clsUserAuditing.DataChanged");
    till.user.clicks("cmdCancel");
    EXPECT_NE(till.readsReport().find("frmRequest , Form_QueryUnload"), std::string::npos);
    EXPECT_EQ(till.user.form(), "frmRequest");
    for (const Answer answer : {Answer::cancel, Answer::no}) {
        till.user.closesFrame();
        ASSERT_TRUE(till.user.message());
        till.user.answers(Answer::ok); // the report
        till.user.answers("Save Changes?", answer);
        EXPECT_EQ(till.user.form(), answer == Answer::no ? "frmMaster" : "frmRequest");
    }
    till.user.clicks("cmdnew"); // where it is a first time again
    till.user.clicks("cmdCancel");
    till.readsReport();
    EXPECT_EQ(till.user.form(), "frmRequest");
    till.breaks("");
    till.user.enters("txtRemarks", "typed");
    till.desktop.refusals = 1; // a question that cannot be shown is not answered
    till.user.clicks("cmdCancel");
    till.readsReport();
    EXPECT_EQ(till.user.form(), "frmRequest");
}

TEST_F(Header, LinesThatCannotBeLoadedWholeKeepOkDisabled) {
    storeRequest(company, items, "delete aitem where itemid = " + items[1].id);
    Till till(company);
    till.editRequest(kStored);
    till.user.answers("Not all lines of this request could be read. It can be looked at, but not changed.", Answer::ok);
    EXPECT_EQ(till.user.list("lvwrequest").size(), 2u);
    expectLocked(till);
    // Not even where a component switches OK on.
    till.user.happens([&] {
        till.module.request().cmdOk.setEnabled(true);
        till.module.request().txtRemarks.setText("changed");
    });
    till.user.clicks("cmdOk");
    till.user.answers("Not all lines of this request could be read. It can be looked at, but not changed.", Answer::ok);
    EXPECT_EQ(till.user.form(), "frmRequest");
    till.user.happens([&] { till.module.request().cmdOk.setEnabled(true); });
    till.user.clicks("cmdCancel");
    till.user.answers("Save Changes?", Answer::yes);
    till.user.answers("Not all lines of this request could be read. It can be looked at, but not changed.", Answer::ok);
    EXPECT_EQ(till.statements("BEGIN"), Names{});
    till.user.clicks("cmdCancel");
    till.user.answers("Save Changes?", Answer::no);
    EXPECT_EQ(till.user.form(), "frmMaster");
    EXPECT_EQ(company.value("select count(*) from mesRequesttoShopDetail where srdshopid = 1 and srdrequestid = 900"),
              "3");
}

TEST_F(Header, ARequestOfWhichNobodyKnowsWhetherItIsFinalIsNotChanged) {
    storeRequest(company, items);
    const auto fails = [](Till& till, const char* statement) {
        till.connection->failOn([=](std::string_view s) { return s.find(statement) != s.npos; });
    };
    for (const char* lookUp : {"select srhused", "select srhTransfinished"}) {
        SCOPED_TRACE(lookUp);
        Till till(company);
        fails(till, lookUp);
        till.editRequest(kStored);
        EXPECT_NE(till.readsReport().find("frmRequest , Form_Activate"), std::string::npos);
        EXPECT_EQ(till.user.list("lvwrequest").size(), 3u);
        expectLocked(till);
        till.user.clicks("cmdCancel");
        EXPECT_EQ(till.user.form(), "frmMaster");
        // A shop that is chosen in a closed editor is nobody's choice.
        till.user.happens([&] {
            forms::ComboBox& box = till.module.request().cboShop;
            box.addItem("late", 77);
            box.setListIndex(0);
        });
        EXPECT_NE(till.module.session.lngOtherShopID, 77);
    }
    Till till(company);
    fails(till, "select SRHTransfinished");
    till.editRequest(kStored);
    EXPECT_NE(till.readsReport().find("frmMaster , CmdEdit_Click"), std::string::npos);
    EXPECT_EQ(till.user.form(), "frmMaster");
    till.connection->failOn(nullptr);
    till.user.clicks("cmdnew");
    ASSERT_EQ(till.user.form(), "frmRequest");
    EXPECT_TRUE(till.user.list("lvwrequest").empty()) << "lines of the request that was not opened";
    EXPECT_EQ(till.user.text("cboShop"), "");
    EXPECT_TRUE(till.user.enabled("cmdOk"));
}

// The site's stored layout of the editor's list, found by three names in any case and with blanks around. A column that
// the list does not have, or an alignment that is none, is reported, and the columns before it have their layout.
TEST_F(Header, TheListIsLaidOutAsTheSiteHasStoredIt) {
    struct Case {
        const char* header;
        bool own;
        const char* wrong;
    };
    for (const auto& [header, own, wrong] :
         std::initializer_list<Case>{{"'frmRequest','lvwrequest','Shoptoshoptransfer'", true, "12,999,0"},
                                     {"' FRMREQUEST','LvwRequest ',' SHOPTOSHOPTRANSFER '", true, "8,999,3"},
                                     {"'frmRequest','lvwrequest','Shoptoshoptransfer'", true, "8,999,-1"},
                                     {"'frmOther','lvwrequest','Shoptoshoptransfer'", false, "12,999,0"},
                                     {"'frmRequest','lvwrequest','Transfer'", false, "12,999,0"}}) {
        SCOPED_TRACE(header);
        const auto column = [](const char* values) {
            return ";insert into alistviewdetails (lvwdid,lvwcolid,lvwdcolwidth,lvwdcolalign) values (7," +
                   std::string(values) + ")";
        };
        company.change("delete alistviewdetails; delete alistviewheader;"
                       " insert into alistviewheader (lvwid,lvwtransname,lvwname,lvwmodulename) values (7," +
                       std::string(header) + ")" + column("3,2345,2") + column("7,2222,1") + column(wrong));
        Till till(company);
        till.opensRegister();
        till.user.clicks("cmdnew");
        if (own) till.readsReport();
        const auto& list = *till.user.control<forms::ListView>("lvwrequest");
        EXPECT_EQ(list.columns().at(2).width, own ? 2345 : 4700);
        EXPECT_EQ(list.columns().at(2).alignment, own ? forms::ColumnAlignment::centre : forms::ColumnAlignment::left);
        EXPECT_EQ(list.columns().at(6).width, own ? 2222 : 0) << "prices, where the site wants to see them";
        EXPECT_EQ(list.tag().substr(0, 6), "Loaded");
    }
}

} // namespace
