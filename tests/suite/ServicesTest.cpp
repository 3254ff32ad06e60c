// Colours, saved grid widths, error reports, and which components are stood in for.
#include "basic/Calendar.h"
#include "tests/basic/ExpectError.h"
#include "tests/forms/SampleForm.h"
#include "tests/support/TestFolder.h"
#include "tests/support/User.h"

#include "sandbox/suite/StandIns.h"

#include <gtest/gtest.h>

#include <fstream>
#include <sstream>

using automation::Value;
using forms::kSystemColour;

TEST(StandIns, AreMadeByTheirProgIdInAnyCase) {
    support::ScriptedDesktop desktop;
    const sandbox::Surroundings surroundings{&desktop, ""};
    for (const std::string& progId : sandbox::standInProgIds())
        EXPECT_TRUE(sandbox::createStandIn(progId, surroundings)) << progId;
    for (const char* progId : {"CommonModule.clscommondb", "COMMONMODULE.CLSCOMMONGEN", "errorhandler.errordetails"})
        EXPECT_TRUE(sandbox::createStandIn(progId, surroundings)) << progId;
    EXPECT_FALSE(sandbox::createStandIn("Fetch.clsOther", surroundings));
    EXPECT_EQ(errorOf([&] { sandbox::standInFactory(surroundings)("Fetch.clsOther"); }), 429);
    EXPECT_EQ(errorOf([&] { sandbox::createStandIn("Fetch.clsFetch", surroundings)->call("NoSuchMember"); }), 438);
}

TEST(FormColours, GiveInkWherePaperIsGivenAndLeaveBoxesToTheSystem) {
    support::ScriptedDesktop desktop;
    const auto form = std::make_shared<SampleForm>(desktop);
    form->ensureLoaded();
    sandbox::createStandIn("Formcolor.clsFormcolor", {&desktop, ""})
        ->call("Applyformcolor", automation::ObjectPtr(form));
    EXPECT_NE(form->backColor(), kSystemColour);
    for (const forms::Control* control : form->controls()) {
        EXPECT_EQ(control->backColor() == kSystemColour, control->foreColor() == kSystemColour) << control->name();
        if (control->backColor() == kSystemColour) continue;
        EXPECT_EQ(control->backColor(), form->backColor()) << control->name();
    }
    EXPECT_NE(form->lblName.backColor(), kSystemColour);
    for (const forms::Control* box :
         {static_cast<forms::Control*>(&form->txtName), static_cast<forms::Control*>(&form->flexRows)})
        EXPECT_EQ(box->backColor(), kSystemColour) << box->name();
}

TEST(ErrorReports, AreShownAndLoggedOnOneLine) {
    support::TestFolder folder;
    support::ScriptedDesktop desktop;
    desktop.time = basic::dateOf(2026, 3, 31, 10, 30);
    support::User user(desktop);
    const auto report = [&](const std::string& logFolder) {
        user.starts([&, logFolder] {
            sandbox::createStandIn("ErrorHandler.ErrorDetails", {&desktop, logFolder})
                ->call("ErrorTrack", "frmRequest ", "Tom Barker", "cmdOk_Click ", std::int32_t{13}, "goodsreq",
                       "Type mismatch\r\nin a line", "N", true);
        });
        const auto message = user.message();
        ASSERT_TRUE(message);
        EXPECT_EQ(message->icon, forms::MessageIcon::critical);
        for (const char* part : {"13", "Type mismatch", "goodsreq", "frmRequest", "cmdOk_Click"})
            EXPECT_NE(message->text.find(part), std::string::npos) << part;
        user.answers(forms::Answer::ok);
        EXPECT_TRUE(user.ended());
    };
    report(folder.path());
    report(folder.path());
    report(folder.file("no/such/folder")); // nobody is kept from the message

    std::ifstream log(folder.file("errors.log"));
    std::string line;
    int lines = 0;
    for (; std::getline(log, line); ++lines)
        EXPECT_EQ(
            line,
            "2026/03/31 10:30:00\t13\tfrmRequest \tcmdOk_Click \tTom Barker\tN\tgoodsreq\tType mismatch  in a line");
    EXPECT_EQ(lines, 2);
}
