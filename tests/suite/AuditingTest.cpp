// The audit trail, and the memory of what a form's boxes held.
#include "basic/Calendar.h"
#include "basic/Conversion.h"
#include "tests/suite/Suite.h"

namespace {

class Auditing : public suite::StandInTest {
protected:
    automation::ObjectPtr connection = sandbox::openConnection(company.path());
    automation::ObjectPtr auditing = standIn("PosUserAuditing.clsUserAuditing");

    void SetUp() override {
        form->cboShop.addItem("High Street", 1);
        form->cboShop.addItem("Harbour", 5);
        auditing->call("OpenObject", connection, std::int32_t{1}, std::int16_t{1}, std::int32_t{2}, std::int32_t{1507},
                       basic::dateOf(2026, 3, 31, 9, 0, 0));
    }
    void remember() { auditing->call("SaveInToTag", automation::ObjectPtr(form)); }
    bool changed() { return basic::cBool(auditing->call("DataChanged", automation::ObjectPtr(form))); }
};

TEST_F(Auditing, WritesWhoDidWhatWithinTheCallersTransaction) {
    auditing->put("LoggedTime", basic::dateOf(2026, 3, 31, 10, 15, 30));
    remember();
    form->txtName.setText("O'Neil");
    connection->call("BeginTrans");
    auditing->call("SaveUserAuditingInfo", "12", "GR/12", true, "D");
    connection->call("RollbackTrans"); // what is rolled back was never audited
    connection->call("BeginTrans");
    auditing->call("SaveUserAuditingInfo", "13", "O'N/13", true, "E", automation::ObjectPtr(form));
    connection->call("CommitTrans");
    EXPECT_EQ(company.rows("select CompanyID,ShopID,UserID,InterfaceID,DocumentID,DocumentNo,ActionType,"
                           "LoggedTime,Remarks from loUserAuditing"),
              (support::Rows{{"1", "1", "2", "1507", "13", "O'N/13", "E", "31/03/2026 10:15:30", "txtName"}}));
}

TEST_F(Auditing, NoticesAChangeInEachKindOfBoxAndItsTakingBack) {
    struct Case {
        const char* box;
        std::function<void(SampleForm&)> change, back;
    };
    form->txtName.setText("typed");
    EXPECT_FALSE(changed()) << "nothing was remembered yet";
    // clang-format off
    const Case cases[] = {
        {"text box", [](auto& f) { f.txtName.setText("else"); }, [](auto& f) { f.txtName.setText("typed"); }},
        {"combo box", [](auto& f) { f.cboShop.setListIndex(1); }, [](auto& f) { f.cboShop.setListIndex(-1); }},
        {"free combo box", [](auto& f) { f.cboFree.setText("x"); }, [](auto& f) { f.cboFree.setText(""); }},
        {"check box", [](auto& f) { f.chkDone.setValue(1); }, [](auto& f) { f.chkDone.setValue(0); }},
        {"option", [](auto& f) { f.optDown.setValue(true); }, [](auto& f) { f.optUp.setValue(true); }},
    };
    // clang-format on
    for (const Case& c : cases) {
        remember();
        EXPECT_FALSE(changed()) << c.box;
        c.change(*form);
        EXPECT_TRUE(changed()) << c.box;
        c.back(*form);
        EXPECT_FALSE(changed()) << c.box;
    }
    form->lvwLines.add("1");
    form->lblName.setText("another caption");
    EXPECT_FALSE(changed()) << "lists and labels are no boxes to fill in";
}

TEST_F(Auditing, LeavesTheFormsOwnTagsReadable) {
    form->lvwLines.setTag("Loaded");
    form->cboShop.setListIndex(0);
    form->cboShop.setTag("Harbour");
    remember();
    remember();
    EXPECT_EQ(form->lvwLines.tag(), "Loaded");
    EXPECT_TRUE(form->cboShop.tag().starts_with("Harbour"));
    form->cboShop.setTag("High Street");
    EXPECT_FALSE(changed()) << "the form may overwrite its tag";
    form->cboShop.setListIndex(1);
    EXPECT_TRUE(changed()) << "and what was remembered is still known";
}

} // namespace
