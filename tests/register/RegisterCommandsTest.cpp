// New, edit and delete from the register, and the rights that allow them.
#include "basic/Calendar.h"
#include "tests/register/RegisterTest.h"

#include "screens/request/frmRequest.h"

namespace {

using namespace goodsreq;
using forms::Answer;
using support::RegisterTest;
using support::Rows;
using support::Texts;

using RegisterRights = RegisterTest;
using RegisterEditing = RegisterTest;

TEST_F(RegisterRights, AllowTheirCommandsAndNoOthers) {
    has({{1, "a"}, {2, "b"}});
    const std::string insert = "insert into louserrights (userid,interfaceid,companyid,FunctionRights) values (1,";
    // The first in a statement; none for a user without a row.
    for (const auto& [rights, allowed] : {std::pair("'NEDP'", "NEDP"),
                                          {"'NEP'", "NEP"},
                                          {"' nep '", "NEP"},
                                          {"'D'", "D"},
                                          {"'ADMIN'", ""},
                                          {"' admin '", ""},
                                          {"'ADMINS'", "ND"},
                                          {"''", ""},
                                          {"null", ""},
                                          {"", "NEDP"}}) {
        SCOPED_TRACE(rights);
        // Rights for another screen or company say nothing about this one.
        company.change("delete louserrights where userid = 1;" + insert + "1611,1,'NEDP');" + insert +
                       "1507,2,'ADMIN')");
        if (*rights) company.change(insert + "1507,1," + rights + ")");
        opens();
        for (const int row : {1, 2}) {
            user().selectsRow("flexMaster", row);
            EXPECT_EQ(commands(), allowed);
        }
    }
}

TEST_F(RegisterRights, OfAnEarlierUserEndWithTheNextLoad) {
    opensWith({{1, "a"}, {2, "b"}});
    user().clicks("CmdClose");
    // A component keeps the form and reads it late; to load it is the worst that it could do.
    EXPECT_EQ(till->module.master().call("flexMaster").object().get("Rows"), automation::Value(2));
    till->module.master().ensureLoaded();
    till->component.intUserID = 3;
    till->opens();
    EXPECT_EQ(commands(), "");
    user().clicks("CmdClose");
    // The rights cannot be read: nothing of what an earlier user was allowed is left for the request shown.
    till->component.intUserID = 1;
    till->breaks("louserrights");
    till->opens();
    EXPECT_EQ(reports(), Texts{"frmMaster, USerRights"});
    EXPECT_EQ(commands(), "");
    user().clicks("CmdClose");
    // The load ends before the settings: services and settings of the earlier session are gone.
    session().blnIntegerQuantity = session().preserveItemDetails = true;
    till->breaks("PosUserAuditing.clsUserAuditing");
    till->opens();
    EXPECT_EQ(reports(), Texts{"frmMaster, Form_Load"});
    EXPECT_FALSE(session().auditing.pointer());
    EXPECT_FALSE(session().blnIntegerQuantity || session().preserveItemDetails);
}

TEST_F(RegisterRights, AreAskedByEachCommandWhateverWayItWasReached) {
    opensWith({{1, "a"}}, {.userId = 3}); // whose rights text names none
    user().focuses("flexMaster").types("\r\n").presses(forms::kKeyDelete);
    user().doubleClicks("flexMaster");
    EXPECT_FALSE(user().message());
    frmMaster& form = till->module.master();
    for (forms::CommandButton* button : {&form.cmdnew, &form.CmdEdit, &form.CmdDelete, &form.cmdPrev}) {
        user().happens([button] { button->put("Enabled", true); }).clicks(button->name());
        user().answers("You have no right to this command.", Answer::ok);
    }
    user().happens([&form] { form.mnurefresh.onClick(); });
    user().answers("You have no right to this command.", Answer::ok);
    EXPECT_EQ(user().form(), "frmMaster");
    EXPECT_EQ(till->statements("update").size() + till->statements("BEGIN").size(), 0u);
}

// A component wrote into the cell of the id.
TEST_F(RegisterRights, ACellThatIsNoIdReachesNoStatement) {
    opensWith({{1, "a"}, {2, "b"}});
    user().happens([this] { grid().setCell(2, kColCancelled, ""); }).selectsRow("flexMaster", 2);
    EXPECT_EQ(commands(), "NEP") << "what nobody says is not cancelled is not deleted";
    user().happens([this] { grid().setCell(2, kColShopId, "40000"); }).clicks("CmdEdit"); // past 16 bits
    EXPECT_EQ(reports(), Texts{"frmMaster, CmdEdit_Click"});
    user().selectsRow("flexMaster", 1);
    user().happens([this] { grid().setCell(1, kColId, "900 or 1=1"); });
    user().happens([this] { till->module.master().mnurefresh.onClick(); });
    EXPECT_EQ(reports(), Texts{"frmMaster, mnurefresh_Click"});
    for (const char* button : {"CmdEdit", "CmdDelete"}) {
        user().clicks(button);
        EXPECT_EQ(reports().size(), 1u) << button;
    }
    EXPECT_EQ(user().form(), "frmMaster");
    for (const std::string& statement : till->statements())
        EXPECT_EQ(statement.find("1=1"), statement.npos) << statement;
}

// A processing date that cannot be written: New fails at it.
TEST_F(RegisterEditing, WhatAFailedCommandLeavesIsNotShownToTheNext) {
    opensWith({{1, "a"}});
    till->breaks("clsUserAuditing.LoggedTime");
    for (const char* button : {"cmdnew", "CmdEdit"}) { // the one has set the mode by then, the other not yet
        user().clicks(button);
        EXPECT_EQ(reports().size(), 1u);
        EXPECT_EQ(session().editMode, "N");
    }
    till->breaks("");
    session().processDate = {1e7};
    user().clicks("cmdnew");
    EXPECT_EQ(reports(), Texts{"frmMaster, cmdnew_Click"});
    user().clicks("CmdEdit");
    ASSERT_EQ(user().form(), "frmRequest");
    EXPECT_EQ(user().text("txtRequestNo"), "GR/1");
    EXPECT_EQ(user().text("cboShop"), company.value("select shopname from aShops where shopid = 2"));
    user().clicks("cmdCancel");
    // The editor is read late; what it held is not offered as a new request.
    till->module.request().ensureLoaded();
    // The day of a new request has no time.
    for (const auto& [processDate, shown] :
         {std::pair(basic::dateOf(2026, 3, 31, 14, 5, 0), "31/03/2026"), {automation::Date{}, "30/12/1899"}}) {
        session().processDate = processDate;
        user().clicks("cmdnew");
        EXPECT_EQ(user().text("txtRequestNo") + user().text("cboShop"), "");
        EXPECT_TRUE(user().enabled("cboShop"));
        EXPECT_EQ(user().text("txtrequestDate"), shown);
        EXPECT_EQ(session().editMode, "N");
        EXPECT_EQ(session().lngOtherShopID, kNoShop);
        user().clicks("cmdCancel");
    }
}

TEST_F(RegisterEditing, EditHandsTheCurrentRequestToTheEditor) {
    opensWith({{1, "no 1"},
               {2, "no 2", "20260320", "cancelled"},
               {3, "no 3", "20260320", "confirmed"},
               {4, "no 4"}}); // confirmed since
    company.change("update mesRequesttoShopHeader set srhTransfinished = 1 where srhrequestid = 4");
    for (int row = 1; row <= 4; ++row) {
        SCOPED_TRACE(row);
        user().selectsRow("flexMaster", row).clicks("CmdEdit");
        if (row == 3) {
            EXPECT_EQ(user().message()->title, "Retail Back Office");
            user().answers("Request is confirmed, You can't edit", Answer::ok);
        }
        ASSERT_EQ(user().form(), "frmRequest");
        EXPECT_EQ(user().enabled("cmdOk"), row == 1);
        EXPECT_FALSE(user().enabled("cboShop"));
        EXPECT_EQ(user().text("txtRequestNo") + " " + user().text("txtrequestDate") + " " + user().text("txtRemarks"),
                  "GR/" + std::to_string(row) + " 20/03/2026 no " + std::to_string(row));
        EXPECT_TRUE(user().control<forms::TextBox>("txtrequestDate")->locked()); // an update does not write it
        EXPECT_EQ(session().editMode + std::to_string(session().lngOtherShopID), "E2");
        EXPECT_EQ(till->module.master().requestId, row);
        user().clicks("cmdCancel");
        ASSERT_EQ(user().form(), "frmMaster");
        expectSelected(row);
    }
}

class Deleting : public RegisterTest {
protected:
    Deleting() { has({{1, "first"}, {2, "second"}, {3, "third"}}); }
    void asks(int row) { user().selectsRow("flexMaster", row).clicks("CmdDelete"); }
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
    // Later is at another till, after this one has read its list.
    for (const auto& [change, refusal, later] :
         {std::tuple("srhused = 1, srhTransfinished = 1", "Entry Processed,Cannot Delete", false),
          {"srhTransfinished = 1", "Transaction confirmed as finished, Cannot Delete", false},
          {"srhTransfinished = 1", "Transaction confirmed as finished, Cannot Delete", true}}) {
        has({{1, "first"}});
        if (later) opens();
        company.change(std::string("update mesRequesttoShopHeader set ") + change);
        if (!later) opens();
        asks(1);
        user().answers(refusal, Answer::ok);
        EXPECT_EQ(user().form(), "frmMaster");
        EXPECT_EQ(till->statements("BEGIN").size(), 0u);
    }
    // Without a request there is nothing to edit, delete or refresh, and none to print.
    opensWith({});
    const frmMaster& form = till->module.master();
    for (const auto& act : {form.CmdEdit.onClick, form.CmdDelete.onClick, form.mnurefresh.onClick}) {
        user().happens(act).answers("Request not selected ", Answer::ok);
        EXPECT_EQ(user().form(), "frmMaster");
    }
    user().happens(form.cmdPrev.onClick).clicks("cmdOK");
    EXPECT_EQ(reports(), Texts{"frmPrint, cmdOK_Click"});
    EXPECT_EQ(user().form(), "frmPrint");
    EXPECT_EQ(till->statements("BEGIN").size(), 0u);
    EXPECT_EQ(till->statements("select UserName from loUsers").size(), 1u);
}

TEST_F(Deleting, IsRefusedForWhatSomebodyElseDidWhileTheUserWasAsked) {
    // Shown is then whether it is cancelled, used, confirmed.
    for (const auto& [change, refusal, shown] :
         {std::tuple("srhused = 1, srhTransfinished = 1", "Entry Processed,Cannot Delete", "No True Yes"),
          {"srhTransfinished = 1", "Transaction confirmed as finished, Cannot Delete", "No False Yes"},
          {"SRHcancelled = 1, srhused = 1, srhTransfinished = 1", "Record already deleted ", "Yes True Yes"}}) {
        SCOPED_TRACE(refusal);
        opensWith({{1, "first"}, {2, "second"}});
        confirms(2);
        company.change(std::string("update mesRequesttoShopHeader set ") + change + " where srhrequestid = 2");
        user().types("not needed\r\r");
        EXPECT_FALSE(till->connection->database().inTransaction()) << "others wait while the box is up";
        user().answers(refusal, Answer::ok);
        EXPECT_EQ(company.value("select srhcancelledRemarks from mesRequesttoShopHeader where srhrequestid = 2"), "");
        EXPECT_EQ(audit(), Rows{});
        expectSelected(2);
        EXPECT_EQ(current(kColCancelled) + " " + current(kColUsed) + " " + current(kColConfirmed), shown);
        EXPECT_EQ(user().enabled("CmdDelete"), shown[0] == 'N');
        till.reset();
    }
}

TEST_F(Deleting, AsksOnceMoreAndWithAReasonCancelsTheRequest) {
    opens();
    user().happens([this] { grid().setCell(2, kColId, " 2"); }); // as a component may write it
    asks(2);
    ASSERT_TRUE(user().message());
    EXPECT_EQ(user().message()->icon, forms::MessageIcon::critical);
    EXPECT_EQ(user().message()->buttons, forms::MessageButtons::yesNo);
    EXPECT_EQ(user().message()->defaultAnswer, Answer::no);
    EXPECT_EQ(user().message()->title, "Retail Back Office");
    user().answers("Are you sure you want to Delete  - GR/2 ?", Answer::no);
    EXPECT_EQ(till->statements("ROLLBACK").size(), 1u);
    EXPECT_EQ(audit(), Rows{});
    confirms(2);
    EXPECT_EQ(user().focus(), "txtcanreason");
    for (const auto& [text, ok] : {std::pair("", false), {"  ", false}, {"wrong", true}, {"", false}}) {
        user().enters("txtcanreason", text);
        EXPECT_EQ(user().enabled("cmdOk"), ok) << text;
    }
    user().happens([this] {
        till->module.cancelReason().cmdOk.onClick();
        till->module.master().flexMaster.selectRow(1); // what was asked about is deleted all the same
    });
    user().answers("Enter reason for deletion", Answer::ok).types(" entered twice \r");
    EXPECT_EQ(user().focus(), "cmdOk");
    user().types("\r");
    EXPECT_EQ(remarks(2), "Margaret Ellis:entered twice");
    EXPECT_EQ(audit(), (Rows{{"1", "1507", "2", "GR/2", "D"}}));
    EXPECT_EQ(column(kColCancelled), (Texts{"No", "Yes", "No"}));
    EXPECT_EQ(grid().rowColour(2), 255);
    EXPECT_NE(grid().rowColour(1), 255);
    expectSelected(2);
    EXPECT_EQ(commands(), "NEP");
    // The dialog comes back empty.
    confirms(3);
    EXPECT_EQ(user().text("txtcanreason"), "");
    EXPECT_FALSE(user().enabled("cmdOk"));
    user().closesFrame();
    EXPECT_EQ(remarks(3), "Margaret Ellis:");
    // One that is gone from the tables meanwhile takes nothing with it.
    confirms(1);
    company.change("delete mesRequesttoShopHeader where srhrequestid = 1");
    user().types("gone").closesFrame();
    EXPECT_EQ(user().form(), "frmMaster");
    EXPECT_EQ(audit().size(), 3u);
}

TEST_F(Deleting, KeepsTwentyCharactersOfTheNameAndTwoHundredAndThirtyOfTheReason) {
    const std::string longest(230, 'x');
    const std::tuple<std::string, std::string, std::string> cases[] = {
        {"administrator-of-shop-12", "wrong", "administrator-of-sho:wrong"},
        {"  Jo  ", "  wrong  ", "Jo:wrong"},
        {"Jo", " " + longest + "y", "Jo:" + longest},
        {"Jo''s", "it's 'late'", "Jo's:it's 'late'"}};
    for (const auto& [name, reason, stored] : cases) {
        company.change("update loUsers set UserName = '" + name + "' where Userid = 1");
        opensWith({{1, "first"}});
        confirms(1);
        user().pastes(reason).clicks("cmdOk");
        EXPECT_EQ(remarks(1), stored);
    }
}

} // namespace
