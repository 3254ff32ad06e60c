// New, edit and delete from the register, and the rights that allow them.
#include "basic/Calendar.h"
#include "tests/register/Register.h"

#include "screens/request/frmRequest.h"

namespace {

using namespace goodsreq;
using forms::Answer;
using support::Register;
using support::Rows;
using support::Texts;

using RegisterRights = Register;
using RegisterEditing = Register;

const char* const kCommands[] = {"cmdnew", "CmdEdit", "CmdDelete", "cmdPrev"};

TEST_F(RegisterRights, AllowTheirCommandsAndNoOthers) {
    has({{1, "a"}, {2, "b"}});
    struct Case {
        const char* rights; ///< in a statement; null for a user without a row
        bool mayCreate, mayEdit, mayDelete, mayPrint;
    };
    for (const Case& c : {Case{"'NEDP'", true, true, true, true},
                          {"'NEP'", true, true, false, true},
                          {"' nep '", true, true, false, true},
                          {"'D'", false, false, true, false},
                          {"'ADMIN'", false, false, false, false},
                          {"' admin '", false, false, false, false},
                          {"'ADMINS'", true, false, true, false},
                          {"''", false, false, false, false},
                          {"null", false, false, false, false},
                          {nullptr, true, true, true, true}}) {
        SCOPED_TRACE(c.rights ? c.rights : "no row");
        company.change("delete louserrights where userid = 1");
        // Rights for another screen or company say nothing about this one.
        company.change(
            "insert into louserrights (userid,interfaceid,companyid,FunctionRights) values (1,1611,1,'NEDP');"
            "insert into louserrights (userid,interfaceid,companyid,FunctionRights) values (1,1507,2,'ADMIN')");
        if (c.rights)
            company.change("insert into louserrights (userid,interfaceid,companyid,FunctionRights) values (1,1507,1," +
                           std::string(c.rights) + ")");
        opens();
        for (const int row : {1, 2}) {
            user().selectsRow("flexMaster", row);
            const bool wanted[] = {c.mayCreate, c.mayEdit, c.mayDelete, c.mayPrint};
            for (std::size_t i = 0; i < std::size(kCommands); ++i)
                EXPECT_EQ(user().enabled(kCommands[i]), wanted[i]) << kCommands[i];
        }
        EXPECT_EQ(shop->errors(), Texts{});
    }
}

TEST_F(RegisterRights, OfAnEarlierUserEndWithTheNextLoad) {
    has({{1, "a"}});
    opens({.userId = 1});
    user().clicks("CmdClose");
    shop->component.intUserID = 3;
    shop->opens();
    for (const char* button : kCommands) EXPECT_FALSE(user().enabled(button)) << button;
    user().clicks("CmdClose");
    // The rights cannot be read: nothing of what an earlier user was allowed is left for the request shown.
    shop->component.intUserID = 1;
    shop->connection->failOn([](std::string_view s) { return s.find("louserrights") != s.npos; });
    shop->opens();
    EXPECT_EQ(reports(), Texts{"frmMaster, USerRights"});
    for (const char* button : kCommands) EXPECT_FALSE(user().enabled(button)) << button;
    user().clicks("CmdClose");
    // The load ends before the settings: services and settings of the earlier session are gone.
    session().blnIntegerQuantity = session().preserveItemDetails = true;
    shop->breaks("PosUserAuditing.clsUserAuditing");
    shop->opens();
    EXPECT_EQ(reports(), Texts{"frmMaster, Form_Load"});
    EXPECT_FALSE(session().auditing.pointer());
    EXPECT_FALSE(session().blnIntegerQuantity || session().preserveItemDetails);
}

TEST_F(RegisterRights, AreAskedByEachCommandWhateverWayItWasReached) {
    has({{1, "a"}});
    opens({.userId = 3}); // whose rights text names none
    user().focuses("flexMaster");
    user().types("\r\n");
    user().presses(forms::kKeyDelete);
    user().doubleClicks("flexMaster");
    EXPECT_FALSE(user().message());
    goodsreq::frmMaster& form = shop->module.master();
    for (forms::CommandButton* button : {&form.cmdnew, &form.CmdEdit, &form.CmdDelete, &form.cmdPrev}) {
        user().happens([button] { button->put("Enabled", true); });
        user().clicks(button->name());
        user().answers("You have no right to this command.", Answer::ok);
    }
    user().happens([&form] { form.mnurefresh.onClick(); });
    user().answers("You have no right to this command.", Answer::ok);
    EXPECT_EQ(user().form(), "frmMaster");
    EXPECT_EQ(shop->statements("update").size() + shop->statements("BEGIN").size(), 0u);
}

// A component wrote into the cell of the id.
TEST_F(RegisterRights, ACellThatIsNoIdReachesNoStatement) {
    has({{1, "a"}});
    opens();
    user().happens([this] { grid().setCell(1, kColId, "900 or 1=1"); });
    goodsreq::frmMaster& form = shop->module.master();
    user().happens([&form] { form.mnurefresh.onClick(); });
    EXPECT_EQ(reports(), Texts{"frmMaster, mnurefresh_Click"});
    for (const char* button : {"CmdEdit", "CmdDelete"}) {
        user().clicks(button);
        EXPECT_EQ(reports().size(), 1u) << button;
    }
    EXPECT_EQ(user().form(), "frmMaster");
    for (const std::string& statement : shop->statements())
        EXPECT_EQ(statement.find("1=1"), statement.npos) << statement;
}

// A component keeps a form and reads it after it was closed, before the next user comes.
TEST_F(RegisterRights, OfAClosedRegisterThatIsReadLateReachNobody) {
    has({{1, "a"}, {2, "b"}});
    opens({.userId = 1});
    user().clicks("CmdClose");
    EXPECT_EQ(shop->module.master().call("flexMaster").object().get("Rows"), automation::Value(std::int32_t{2}));
    shop->module.master().ensureLoaded(); // the worst that it could do
    shop->component.intUserID = 3;
    shop->opens();
    for (const char* button : kCommands) EXPECT_FALSE(user().enabled(button)) << button;
}

// A processing date that cannot be written: New fails at it.
TEST_F(RegisterEditing, WhatAFailedCommandLeavesIsNotShownToTheNext) {
    has({{1, "a"}});
    opens();
    session().processDate = {1e7};
    user().clicks("cmdnew");
    EXPECT_EQ(reports(), Texts{"frmMaster, cmdnew_Click"});
    user().clicks("CmdEdit");
    ASSERT_EQ(user().form(), "frmRequest");
    EXPECT_EQ(user().text("txtRequestNo"), "GR/1");
    EXPECT_EQ(user().text("cboShop"), company.value("select shopname from aShops where shopid = 2"));
    user().clicks("cmdCancel");
    // The editor is read late; what it held is not offered as a new request.
    shop->module.request().ensureLoaded();
    session().processDate = shop->component.dtProcessDate;
    user().clicks("cmdnew");
    EXPECT_EQ(user().text("txtRequestNo"), "");
    EXPECT_EQ(user().text("cboShop"), "");
    EXPECT_TRUE(user().enabled("cboShop"));
}

TEST_F(RegisterEditing, TheDayOfANewRequestHasNoTime) {
    for (const auto& [processDate, shown] : std::initializer_list<std::pair<automation::Date, const char*>>{
             {basic::dateOf(2026, 3, 31, 14, 5, 0), "31/03/2026"}, {automation::Date{}, "30/12/1899"}}) {
        shop.emplace(company);
        shop->component.dtProcessDate = processDate;
        shop->opens();
        user().clicks("cmdnew");
        EXPECT_EQ(user().text("txtrequestDate"), shown);
        EXPECT_EQ(session().editMode, "N");
        EXPECT_EQ(session().lngOtherShopID, kNoShop);
    }
}

TEST_F(RegisterEditing, EditHandsTheCurrentRequestToTheEditor) {
    has({{1, "plain"},
         {2, "cancelled", "20260320", false, false, true},
         {3, "confirmed", "20260320", false, true},
         {4, "confirmed since"}});
    opens();
    company.change("update mesRequesttoShopHeader set srhTransfinished = 1 where srhrequestid = 4");
    for (int row = 1; row <= 4; ++row) {
        SCOPED_TRACE(row);
        user().selectsRow("flexMaster", row);
        user().clicks("CmdEdit");
        if (row == 3) {
            ASSERT_TRUE(user().message());
            EXPECT_EQ(user().message()->icon, forms::MessageIcon::information);
            EXPECT_EQ(user().message()->title, "Retail Back Office");
            user().answers("Request is confirmed, You can't edit", Answer::ok);
        }
        ASSERT_EQ(user().form(), "frmRequest");
        EXPECT_EQ(user().enabled("cmdOk"), row == 1);
        EXPECT_FALSE(user().enabled("cboShop"));
        EXPECT_EQ(user().text("txtRequestNo"), "GR/" + std::to_string(row));
        EXPECT_EQ(user().text("txtrequestDate"), "20/03/2026");
        EXPECT_TRUE(user().control<forms::TextBox>("txtrequestDate")->locked()); // an update does not write it
        EXPECT_EQ(user().text("txtRemarks"),
                  Texts({"plain", "cancelled", "confirmed", "confirmed since"})[static_cast<std::size_t>(row - 1)]);
        EXPECT_EQ(session().editMode, "E");
        EXPECT_EQ(session().lngOtherShopID, 2);
        EXPECT_EQ(shop->module.master().requestId, row);
        user().clicks("cmdCancel");
        ASSERT_EQ(user().form(), "frmMaster");
        expectSelected(row);
    }
}

TEST_F(RegisterEditing, WithoutARequestThereIsNothingToEditOrDelete) {
    has({});
    opens();
    for (forms::CommandButton* button : {&shop->module.master().CmdEdit, &shop->module.master().CmdDelete}) {
        user().happens([button] { button->onClick(); });
        user().answers("Request not selected ", Answer::ok);
        EXPECT_EQ(user().form(), "frmMaster");
    }
    EXPECT_EQ(shop->statements("BEGIN").size(), 0u);
}

class Deleting : public Register {
protected:
    Deleting() { has({{1, "first"}, {2, "second"}, {3, "third"}}); }
    void asks(int row) {
        user().selectsRow("flexMaster", row);
        user().clicks("CmdDelete");
    }
    /// As far as the dialog for the reason.
    void confirms(int row) {
        asks(row);
        user().answers("Are you sure you want to Delete  - GR/" + std::to_string(row) + " ?", Answer::yes);
        ASSERT_EQ(user().form(), "frmcancelreason");
    }
    std::string remarks(int id) {
        return company.value("select srhcancelledRemarks from mesRequesttoShopHeader where SRHcancelled = 1 and"
                             " srhrequestid = " +
                             std::to_string(id));
    }
    Rows audit() {
        return company.rows("select UserID,InterfaceID,DocumentID,DocumentNo,ActionType from loUserAuditing");
    }
};

TEST_F(Deleting, IsRefusedForWhatIsProcessedOrConfirmed) {
    struct Case {
        const char* change;
        const char* refusal;
    };
    for (const Case& c : {Case{"srhused = 1", "Entry Processed,Cannot Delete"},
                          {"srhused = 1, srhTransfinished = 1", "Entry Processed,Cannot Delete"},
                          {"srhTransfinished = 1", "Transaction confirmed as finished, Cannot Delete"}}) {
        has({{1, "first"}});
        company.change("update mesRequesttoShopHeader set " + std::string(c.change));
        opens();
        asks(1);
        ASSERT_TRUE(user().message());
        EXPECT_EQ(user().message()->icon, forms::MessageIcon::information);
        user().answers(c.refusal, Answer::ok);
        EXPECT_EQ(user().form(), "frmMaster");
    }
    // Another till confirms the request after this one has read its list.
    has({{1, "first"}});
    opens();
    company.change("update mesRequesttoShopHeader set srhTransfinished = 1");
    asks(1);
    user().answers("Transaction confirmed as finished, Cannot Delete", Answer::ok);
    EXPECT_EQ(shop->statements("BEGIN").size(), 0u);
}

TEST_F(Deleting, IsRefusedForWhatSomebodyElseDidWhileTheUserWasAsked) {
    struct Case {
        const char* change;
        const char* refusal;
        const char* shown; ///< cancelled, used, confirmed
    };
    for (const Case& c :
         {Case{"srhused = 1, srhTransfinished = 1", "Entry Processed,Cannot Delete", "No True Yes"},
          {"srhTransfinished = 1", "Transaction confirmed as finished, Cannot Delete", "No False Yes"},
          {"SRHcancelled = 1, srhused = 1, srhTransfinished = 1", "Record already deleted ", "Yes True Yes"}}) {
        SCOPED_TRACE(c.refusal);
        has({{1, "first"}, {2, "second"}});
        opens();
        confirms(2);
        company.change(std::string("update mesRequesttoShopHeader set ") + c.change + " where srhrequestid = 2");
        user().types("not needed\r\r");
        EXPECT_FALSE(shop->connection->database().inTransaction()) << "others wait while the box is up";
        user().answers(c.refusal, Answer::ok);
        EXPECT_EQ(user().form(), "frmMaster");
        EXPECT_EQ(company.value("select srhcancelledRemarks from mesRequesttoShopHeader where srhrequestid = 2"), "");
        EXPECT_EQ(audit(), Rows{});
        EXPECT_EQ(column(kColCancelled)[1] + " " + column(kColUsed)[1] + " " + column(kColConfirmed)[1], c.shown);
        EXPECT_EQ(user().enabled("CmdDelete"), c.shown[0] == 'N');
        expectSelected(2);
        shop.reset();
    }
}

TEST_F(Deleting, AsksOnceMoreAndNoIsTheDefault) {
    opens();
    asks(2);
    ASSERT_TRUE(user().message());
    EXPECT_EQ(user().message()->icon, forms::MessageIcon::critical);
    EXPECT_EQ(user().message()->buttons, forms::MessageButtons::yesNo);
    EXPECT_EQ(user().message()->defaultAnswer, Answer::no);
    EXPECT_EQ(user().message()->title, "Retail Back Office");
    user().answers("Are you sure you want to Delete  - GR/2 ?", Answer::no);
    EXPECT_EQ(user().form(), "frmMaster");
    EXPECT_FALSE(shop->connection->database().inTransaction());
    EXPECT_EQ(shop->statements("ROLLBACK").size(), 1u);
    EXPECT_EQ(column(kColCancelled), (Texts{"No", "No", "No"}));
    EXPECT_EQ(company.value("select count(*) from mesRequesttoShopHeader where SRHcancelled = 1"), "0");
}

TEST_F(Deleting, WithAReasonCancelsTheRequest) {
    opens();
    user().happens([this] { grid().setCell(2, kColId, " 2"); }); // as a component may write it
    confirms(2);
    EXPECT_EQ(user().caption(), "Reason for deletion");
    EXPECT_EQ(shop->module.cancelReason().width(), 6480);
    EXPECT_EQ(shop->module.cancelReason().height(), 915);
    EXPECT_EQ(user().focus(), "txtcanreason");
    EXPECT_FALSE(user().enabled("cmdOk"));
    user().types("  ");
    EXPECT_FALSE(user().enabled("cmdOk"));
    user().types("wrong");
    EXPECT_TRUE(user().enabled("cmdOk"));
    user().enters("txtcanreason", "");
    EXPECT_FALSE(user().enabled("cmdOk"));
    user().happens([this] {
        shop->module.cancelReason().cmdOk.onClick();
        shop->module.master().flexMaster.selectRow(1); // what was asked about is deleted all the same
    });
    user().answers("Enter reason for deletion", Answer::ok);
    EXPECT_EQ(user().focus(), "txtcanreason");
    user().types(" entered twice \r");
    EXPECT_EQ(user().focus(), "cmdOk");
    user().types("\r");

    ASSERT_EQ(user().form(), "frmMaster");
    EXPECT_EQ(remarks(2), "Margaret Ellis:entered twice");
    EXPECT_EQ(company.value("select count(*) from mesRequesttoShopHeader where SRHcancelled = 1"), "1");
    EXPECT_EQ(audit(), (Rows{{"1", "1507", "2", "GR/2", "D"}}));
    EXPECT_EQ(column(kColCancelled), (Texts{"No", "Yes", "No"}));
    EXPECT_EQ(grid().rowColour(2), 255);
    EXPECT_NE(grid().rowColour(1), 255);
    expectSelected(2);
    EXPECT_FALSE(user().enabled("CmdDelete"));
    EXPECT_TRUE(user().enabled("CmdEdit"));
    EXPECT_EQ(session().editMode, "E");
    // The row alone was read again.
    EXPECT_EQ(shop->statements(" select sRHrequestID").size(), 2u);
    EXPECT_EQ(shop->statements("select * from  mesRequesttoShopHeader where SRHshopid=1 and sRHrequestID  = 2").size(),
              1u);

    // The dialog comes back empty.
    confirms(3);
    EXPECT_EQ(user().text("txtcanreason"), "");
    EXPECT_FALSE(user().enabled("cmdOk"));
    user().closesFrame();
    EXPECT_EQ(remarks(3), "Margaret Ellis:");
    // One that is gone from the tables meanwhile takes nothing with it.
    confirms(1);
    company.change("delete mesRequesttoShopHeader where srhrequestid = 1");
    user().types("gone");
    user().closesFrame();
    EXPECT_EQ(user().form(), "frmMaster");
    EXPECT_EQ(audit().size(), 3u);
    EXPECT_EQ(shop->errors(), Texts{});
}

TEST_F(Deleting, KeepsTwentyCharactersOfTheNameAndTwoHundredAndThirtyOfTheReason) {
    struct Case {
        const char* name;
        std::string reason;
        std::string stored;
    };
    for (const Case& c : {Case{"administrator-of-shop-12", "wrong", "administrator-of-sho:wrong"},
                          {"  Jo  ", "  wrong  ", "Jo:wrong"},
                          {"Jo", std::string(230, 'x') + "y", "Jo:" + std::string(230, 'x')},
                          {"Jo''s", "it's 'late'", "Jo's:it's 'late'"}}) {
        has({{1, "first"}});
        company.change("update loUsers set UserName = '" + std::string(c.name) + "' where Userid = 1");
        opens();
        confirms(1);
        user().pastes(c.reason);
        user().clicks("cmdOk");
        EXPECT_EQ(remarks(1), c.stored);
    }
}

} // namespace
