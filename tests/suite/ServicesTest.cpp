// Colours, error reports, and which components are stood in for.
#include "basic/Calendar.h"
#include "tests/suite/Suite.h"

namespace {

using forms::kSystemColour;

class StandIns : public suite::StandInTest {};

TEST_F(StandIns, AreMadeByTheirProgIdInAnyCase) {
    std::vector<std::string> progIds = sandbox::standInProgIds();
    for (const char* odd : {"CommonModule.clscommondb", "COMMONMODULE.CLSCOMMONGEN", "errorhandler.errordetails"})
        progIds.push_back(odd);
    for (const std::string& progId : progIds) EXPECT_TRUE(standIn(progId.c_str())) << progId;
    EXPECT_FALSE(standIn("Fetch.clsOther"));
    EXPECT_EQ(errorOf([&] { sandbox::standInFactory({&desktop, ""})("Fetch.clsOther"); }), 429);
    EXPECT_EQ(errorOf([&] { standIn("Fetch.clsFetch")->call("NoSuchMember"); }), 438);
}

TEST_F(StandIns, GiveInkWherePaperIsGivenAndLeaveBoxesToTheSystem) {
    standIn("Formcolor.clsFormcolor")->call("Applyformcolor", automation::ObjectPtr(form));
    EXPECT_NE(form->backColor(), kSystemColour);
    for (const forms::Control* control : form->controls()) {
        const bool plain = control->backColor() == kSystemColour;
        EXPECT_EQ(plain, control->foreColor() == kSystemColour) << control->name();
        EXPECT_TRUE(plain || control->backColor() == form->backColor()) << control->name();
    }
    EXPECT_NE(form->lblName.backColor(), kSystemColour);
    EXPECT_EQ(form->txtName.backColor(), kSystemColour);
    EXPECT_EQ(form->flexRows.backColor(), kSystemColour);
}

TEST_F(StandIns, ReportErrorsInABoxAndOnOneLineOfTheLog) {
    support::TestFolder folder;
    desktop.time = basic::dateOf(2026, 3, 31, 10, 30);
    for (const char* logFolder : {"", "", "no/such/folder"}) { // nobody is kept from the message
        user.starts([&] {
            standIn("ErrorHandler.ErrorDetails", folder.file(logFolder))
                ->call("ErrorTrack", "frmRequest ", "Tom Barker", "cmdOk_Click ", std::int32_t{13}, "goodsreq",
                       "Type mismatch\r\nin a line", "N", true);
        });
        const auto message = user.message();
        ASSERT_TRUE(message);
        EXPECT_EQ(message->icon, forms::MessageIcon::critical);
        for (const char* part : {"13", "Type mismatch", "goodsreq", "frmRequest", "cmdOk_Click"})
            EXPECT_NE(message->text.find(part), std::string::npos) << part;
        EXPECT_TRUE(user.answers(forms::Answer::ok).ended());
    }
    const std::string line = "2026/03/31 10:30:00\t13\tfrmRequest \tcmdOk_Click \tTom Barker\tN\tgoodsreq\t"
                             "Type mismatch  in a line\n";
    EXPECT_EQ(support::readAll(folder.file("errors.log")), line + line);
}

} // namespace
