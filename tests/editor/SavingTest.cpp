// Saving a request: what is refused, what is stored, and what a failure leaves behind.
#include "basic/Conversion.h"
#include "basic/Format.h"
#include "basic/Text.h"
#include "sandbox/data/SchemaText.h"
#include "screens/request/frmRequest.h"
#include "tests/editor/Till.h"

namespace {

using namespace editor;

constexpr const char* kFinished = "You have confirmed the transaction as finished.\r\n"
                                  "Cannot modify later, Do you want to continue?";
constexpr const char* kExists = "Request no already exists";
constexpr const char* kNoLine = "Atleast one detail needed";

std::string noDate(const std::string& text) {
    return "\"" + text + "\" is no date. Enter the day of the request, such as 31/03/2026.";
}

/// How many rows requests and the audit trail have.
Rows sizes(const CompanyFile& file) {
    return file.rows("select (select count(*) from mesRequesttoShopHeader), (select count(*) from"
                     " mesRequesttoShopDetail), (select count(*) from loUserAuditing)");
}

/// Runs `act` before each statement that holds the text, at most so many times; `met` counts them.
void meanwhile(Till& till, const char* text, int most, int& met, const std::function<void()>& act) {
    met = 0;
    till.watches([=, &met](std::string_view statement) {
        if (met == most || statement.find(text) == statement.npos) return;
        ++met;
        act();
    });
}

class Saving : public EditorTest<4> {
protected:
    std::string newest(const char* field) const { return editor::newest(company, field); }
    int newestId() const { return std::stoi(newest("srhrequestid")); }
    Rows details(const std::string& id) const {
        return company.rows("select srditemid, srdtoshopid, srdgoodqty, srdbadQty, srdSellingprice from"
                            " mesRequesttoShopDetail where srdshopid = 1 and srdrequestid = " +
                            id + " order by srditemid");
    }
    int requests() const { return std::stoi(sizes(company)[0][0]); }
    /// Another till stores a request with one line, which takes the next number.
    void rivalSaves() const { Till(company, {.userId = 2}).newRequest().enters({items[2]}).saves(); }
    /// OK, and the connection dies at the commit, which `stands` or not; then there is another one.
    static void savesUnheard(Till& till, bool stands) {
        till.connection->failOn([&till, stands, met = false](std::string_view statement) mutable {
            if (met || !statement.starts_with("COMMIT")) return false;
            met = true;
            if (stands) till.connection->call("CommitTrans");
            till.connection->kill();
            return true;
        });
        till.user.clicks("cmdOk");
        till.readsReport().breaks("");
        till.connection->call("Close");
        till.connection->call("Open");
        EXPECT_NE(till.user.text("txtRequestNo"), "");
    }
};

TEST_F(Saving, RefusesInOrder) {
    const Rows before = sizes(company);
    Till till(company);
    till.newRequest(0).user.checks("chkTransFinished");
    EXPECT_EQ(till.oksAndReads("Select Shop").user.focus(), "cboShop");
    till.picksShop(kSupplier);
    till.user.focuses("txtRemarks").closesFrame().answers("Save Changes?", Answer::yes).answers(kNoLine, Answer::ok);
    EXPECT_EQ(till.user.focus(), "cmdOk");
    till.enters({item}).putsCell(1, 3, "0.000").oksAndReads(kNoLine);
    till.putsCell(1, 3, "2").putsCell(1, 4, "-2").oksAndReads(kNoLine);
    till.putsCell(1, 3, "0.000").putsCell(1, 4, "0.001").puts("txtrequestDate", "soon").oksAndReads(noDate("soon"));
    till.puts("txtrequestDate", "31/03/2026").user.clicks("cmdOk");
    EXPECT_EQ(till.isAsked(kFinished, Answer::no, Answer::no).user.focus(), "chkTransFinished");
    EXPECT_TRUE(till.user.checked("chkTransFinished"));
    EXPECT_EQ(sizes(company), before);
    EXPECT_TRUE(till.statements("BEGIN").empty());
    EXPECT_EQ(till.user.clicks("cmdOk").answers(kFinished, Answer::yes).form(), "frmMaster");
    EXPECT_EQ(newest("srhTransfinished"), "1");
}

// A component wrote into a cell, which goes into a statement of the suite's helper.
TEST_F(Saving, ACellThatIsNoNumberIsRefusedAndCanBePutRight) {
    const Rows before = sizes(company);
    Till till(company, {.screenId = 1611});
    till.newRequest().enters({item, other});
    for (int cell = 3; cell <= 6; ++cell) {
        const std::string good = till.lines().item(2).subItem(cell);
        for (const std::string bad : {"900 or 1=1", "1,5", "1e3", ".", "1.2.3", "1234567890123456.000"}) {
            till.putsCell(2, cell, bad)
                .oksAndReads("Line 2 holds \"" + bad +
                             "\" where a number of at most 15 digits must stand. Correct the "
                             "line, or delete it and enter it again.");
            EXPECT_EQ(till.user.form(), "frmRequest");
        }
        till.putsCell(2, cell, good);
    }
    EXPECT_EQ(sizes(company), before);
    till.putsCell(2, 6, "").user.clicks("cmdOk"); // as suggested lines have it; the column takes no gap
    till.readsReport();
    EXPECT_FALSE(till.statements("insert into mesRequesttoShopDetail").empty());
}

TEST_F(Saving, StoresHeaderLinesAndAuditRecordOfEachKind) {
    for (const auto& [screen, type, price, prefix] :
         Table<std::int32_t, Text, Text, Text>{{1507, "r", "0", "GR/"}, {1611, "s", "9.99", "IS/"}}) {
        Till till(company, {.screenId = screen, .userId = 2});
        // A line of nothing counts and is stored beside a real one, whichever comes first.
        const int nothing = screen == 1507 ? 1 : 2;
        till.newRequest().enters({item, other});
        for (int line = 1; line <= 2; ++line)
            till.putsCell(line, 3, "3").putsCell(line, 4, "1.5").putsCell(line, 6, "9.99");
        till.putsCell(nothing, 3, "0.000").putsCell(nothing, 4, "0.000");
        till.user.enters("txtRemarks", "d'accord, \xC3\xA9t\xC3\xA9");
        till.saves();
        const std::string id = newest("srhrequestid");
        Rows lines{{item.id, "2", "3", "1.5", price}, {other.id, "2", "3", "1.5", price}};
        lines.at(nothing - 1)[2] = lines.at(nothing - 1)[3] = "0";
        EXPECT_EQ(details(id), lines);
        EXPECT_EQ(
            company.rows("select srhtype, srhNoofDetails, srhtoShopid, SRHremarks, srhrecaddUser, srhrecmoduser,"
                         " srhTransfinished, srhrequestdate, case when SRHrequestTime > '20200101' then 'timed'"
                         " end from mesRequesttoShopHeader where srhshopid = 1 and srhrequestid = " +
                         id),
            (Rows{{type, "2", "2", "d'accord, \xC3\xA9t\xC3\xA9", "Tom Barker", "", "0", "31/03/2026", "timed"}}));
        EXPECT_EQ(till.user.rows("flexMaster").back()[1].substr(0, 3), prefix);
    }
}

TEST_F(Saving, AnotherScreenWritesNothingAndSaysNothing) {
    const Rows before = sizes(company);
    Till till(company, {.screenId = 1700});
    till.newRequest().enters({item}).user.enters("txtrequestDate", "31/03/2016");
    EXPECT_EQ(till.saves().said(), Names{});
    EXPECT_EQ(sizes(company), before);
}

TEST_F(Saving, AnIdThatASmallNumberCannotHoldReachesNoOtherRequest) {
    storeRequest(company, items,
                 "update mesRequesttoShopHeader set srhrequestid = 66436, srhrequestno = 'GR/901'" +
                     std::string(kOfStored) + // 65536 more
                     ";update mesRequesttoShopDetail set srdrequestid = 66436 where srdshopid = 1 and"
                     " srdrequestid = 900");
    storeRequest(company, items);
    const Rows before = company.rows("select * from mesRequesttoShopHeader where srhshopid = 1");
    Till till(company);
    till.editRequest("66436").user.enters("txtRemarks", "changed").clicks("cmdOk");
    EXPECT_EQ(till.readsReport("Error 6: Overflow").user.form(), "frmRequest");
    till.user.clicks("cmdCancel").answers("Save Changes?", Answer::no);
    EXPECT_EQ(till.newRequest().enters({item}).user.clicks("cmdOk").form(), "frmRequest"); // nor is there a next one
    till.readsReport("Error 6: Overflow");
    EXPECT_EQ(company.rows("select * from mesRequesttoShopHeader where srhshopid = 1"), before);
}

TEST_F(Saving, AnEditRewritesTheLinesAndLeavesTheRestOfTheHead) {
    storeRequest(company, items,
                 "update mesRequesttoShopDetail set srdgoodqty = 123456789012345.678 where srdshopid = 1 and"
                 " srdrequestid = 900 and srditemid = " +
                     item.id);
    const std::string kept = "select srhrequestno, srhrequestdate, srhtoShopid, srhrecaddUser, SRHrequestTime, srhtype"
                             " from mesRequesttoShopHeader" +
                             std::string(kOfStored);
    const Rows before = company.rows(kept);
    Till till(company);
    till.editRequest(kStored);
    company.change("delete aitem where itemid = " + items[2].id); // retired meanwhile, and stored all the same
    till.user.enters("txtrequestDate", "01/01/2020").selectsRow("lvwrequest", 2).presses(forms::kKeyDelete);
    till.user.answers(Answer::yes);
    till.addsLines().line(items[3], "2").backToEditor().changesLine(1);
    EXPECT_EQ(till.user.text("txtQuantity"), "123456789012345.678") << "all of its digits";
    till.user.clicks("cmdOk").clicks("cmdCancel").checks("chkTransFinished").clicks("cmdOk");
    EXPECT_EQ(till.user.answers(kFinished, Answer::yes).form(), "frmMaster");
    EXPECT_EQ(details(kStored), (Rows{{item.id, "2", "123456789012345.678", "0.5", "0"},
                                      {items[2].id, "2", "6", "0.5", "0"},
                                      {items[3].id, "2", "2", "0", "0"}}));
    EXPECT_EQ(company.rows(kept), before);
}

// Each time after this till has read the highest number, before it writes, another till takes it.
TEST_F(Saving, OthersWhoTakeTheNumberMeanwhileCostNothingUpToThreeTimes) {
    const int oldId = newestId();
    for (const int rivals : {1, 3, 4}) {
        SCOPED_TRACE(rivals);
        const int last = newestId();
        Till till(company);
        till.newRequest().enters({item, other});
        int taken = 0;
        meanwhile(till, "CURRENT_TIMESTAMP", rivals, taken, [this] { rivalSaves(); });
        till.user.clicks("cmdOk");
        EXPECT_EQ(taken, rivals);
        // Not in step with the others, and longer each time.
        ASSERT_EQ(till.system.pauses.size(), static_cast<std::size_t>(std::min(rivals, 3)));
        for (std::size_t i = 0; i < till.system.pauses.size(); ++i) {
            EXPECT_GE(till.system.pauses[i], 50 << i);
            EXPECT_LE(till.system.pauses[i], 150 << i);
        }
        if (rivals > 3) {
            EXPECT_EQ(till.readsReport("KEY constraint").user.text("txtRequestNo"), "");
            EXPECT_EQ(till.lines().count(), 2);
            till.user.clicks("cmdOk");
        }
        ASSERT_EQ(till.user.form(), "frmMaster");
        EXPECT_EQ(newestId(), last + rivals + 1);
        EXPECT_EQ(details(newest("srhrequestid")).size(), 2u);
    }
    const std::string newer =
        " from mesRequesttoShopHeader where srhshopid = 1 and srhrequestid > " + std::to_string(oldId);
    EXPECT_EQ(company.rows("select distinct srhrequestno" + newer).size(), company.rows("select 1" + newer).size());
}

// Another till holds its rows for longer than the server lets this one wait, and then lets them go.
TEST_F(Saving, ALockThatWasWaitedForTooLongCostsOneMoreTry) {
    Till till(company);
    till.newRequest().enters({item});
    const int last = newestId();
    const auto rival = sandbox::openConnection(company.path());
    rival->call("BeginTrans");
    rival->call("Execute", "update mesRequesttoShopHeader set SRHremarks = SRHremarks");
    int begun = 0;
    meanwhile(till, "BEGIN", 99, begun, [&] {
        if (begun == 2) rival->call("RollbackTrans");
        till.module.request().cmdOk.onClick(); // an OK within an OK is none
    });
    till.saves();
    EXPECT_EQ(begun, 2);
    EXPECT_EQ(newestId(), last + 1);
}

TEST_F(Saving, ADeadlocksVictimIsSavedAgainAndWhatFailsEachTimeIsNot) {
    Till till(company);
    till.newRequest().enters({item});
    const int last = newestId();
    int lost = 0;
    meanwhile(till, "insert into mesRequesttoShopDetail", 1, lost, [&] { till.connection->database().loseDeadlock(); });
    till.saves();
    EXPECT_EQ(lost, 1);
    EXPECT_EQ(newestId(), last + 1);
    EXPECT_EQ(details(newest("srhrequestid")).size(), 1u);
    till.newRequest().enters({item, other});
    const auto failsOnce = [&] {
        const std::size_t begun = till.statements("BEGIN").size();
        till.user.clicks("cmdOk");
        till.readsReport();
        EXPECT_EQ(till.statements("BEGIN").size(), begun + 1);
    };
    till.breaks("clsUserAuditing.SaveUserAuditingInfo");
    failsOnce();
    till.breaks("");
    till.putsCell(2, 5, item.id); // an item twice, which only a component can enter
    failsOnce();
    // A transaction that an earlier failure left is cleared away by the first OK.
    till.connection->call("BeginTrans");
    till.user.clicks("cmdOk");
    till.readsReport().putsCell(2, 5, other.id).saves();
}

// Longer lists of what may come between stand in the endurance's random clerks.
TEST_F(Saving, ACommitOfWhichNobodyHeardLosesNothingAndStoresNothingTwice) {
    const auto nothing = [](Till&) {};
    const auto rival = [this](Till&) { rivalSaves(); };
    const auto adds = [this](Till& till) {
        till.addsLines().line(items[3], "7").backToEditor().user.enters("txtRemarks", "and one more");
    };
    const auto turns = [this](Till& till) {
        till.picksShop(3);
        till.user.answers(Answer::yes);
        till.enters({item}).user.enters("txtrequestDate", "30/03/2026");
    };
    // Whether the first OK's commit stands, what comes before the second OK, what that says, and the request's records.
    for (const auto& [what, stands, between, said, audit] : Table<Text, bool, std::function<void(Till&)>, Text, Rows>{
             {"it stands", true, nothing, kExists, {{"N"}}},
             {"it stands, and lines were added", true, adds, "", {{"N"}, {"E"}}},
             {"it stands, and the clerk turns to another shop and day", true, turns, "", {{"N"}, {"E"}}},
             {"it does not, and somebody took the number", false, rival, "", {{"N"}}}}) {
        SCOPED_TRACE(what);
        const int count = requests();
        Till till(company);
        till.newRequest().enters({item, other});
        savesUnheard(till, stands);
        between(till);
        const std::string shop = std::to_string(till.module.session.lngOtherShopID);
        Rows lines;
        for (const std::string& one : till.column(5)) lines.push_back({one, shop});
        const Names head{shop, till.user.text("txtrequestDate"), till.user.text("txtRemarks"),
                         std::to_string(lines.size())};
        till.user.clicks("cmdOk");
        if (*said) till.user.answers(said, Answer::ok);
        ASSERT_EQ(till.user.form(), "frmMaster");
        EXPECT_FALSE(till.user.message());
        EXPECT_EQ(requests(), count + (stands ? 1 : 2));
        const std::string id = newest("srhrequestid");
        const std::string ofIt = " = " + id + " and srdshopid = 1 order by srditemid";
        EXPECT_EQ(company.rows("select srditemid, srdtoshopid from mesRequesttoShopDetail where srdrequestid" + ofIt),
                  lines);
        EXPECT_EQ(company.rows("select srhtoShopid, srhrequestdate, SRHremarks, srhNoofDetails from"
                               " mesRequesttoShopHeader where srhshopid = 1 and srhrequestid = " +
                               id),
                  Rows{head});
        EXPECT_EQ(company.rows("select ActionType from loUserAuditing where ShopID = 1 and DocumentID = '" + id + "'"),
                  audit);
        EXPECT_EQ(till.user.rows("flexMaster").back()[1], newest("srhrequestno"));
    }
}

// Whose the request under the kept number is: its user and its time of storing tell.
TEST_F(Saving, ARequestIsOnlyTakenForOnesOwnWhereItsUserAndTimeAre) {
    // The seconds are past the own time, which loses its fraction.
    for (const auto& [set, seconds, own] :
         Table<std::string, double, bool>{{"SRHrequestTime = ", 0, true},
                                          {"SRHrequestTime = ", 3, false},
                                          {"SRHrequestTime = ", -3, false},
                                          {"SRHrequestTime = null --", 0, false},
                                          {"srhrecaddUser = 'Tom Barker', SRHrequestTime = ", 0, false}}) {
        SCOPED_TRACE(set + std::to_string(seconds));
        const int count = requests();
        Till till(company);
        till.newRequest().enters({item});
        savesUnheard(till, true);
        const automation::Date time{basic::cDate(newest("SRHrequestTime")).days + seconds / 86400};
        company.change("update mesRequesttoShopHeader set " + set + "'" + basic::format(time, "yyyymmdd hh:nn:ss") +
                       "'\n where srhshopid = 1 and srhrequestid = " + newest("srhrequestid"));
        till.user.clicks("cmdOk");
        if (own) till.user.answers(kExists, Answer::ok);
        ASSERT_EQ(till.user.form(), "frmMaster");
        EXPECT_EQ(requests(), count + (own ? 1 : 2));
    }
}

TEST_F(Saving, ARequestThatSomebodyClosedToChangesMeanwhileStaysAsItIs) {
    for (const auto& [change, said] : Table<std::string, Text>{
             {"srhTransfinished = 1, SRHcancelled = 1, srhused = 1", "Request is confirmed, You can't edit"},
             {"SRHcancelled = 1, srhused = 1", "Record already deleted "},
             {"srhused = 1", "Entry Processed,Cannot Edit"}}) {
        SCOPED_TRACE(said);
        const CompanyFile file;
        storeRequest(file, items);
        Till till(file);
        till.editRequest(kStored).changesLine(2).user.types("8\r\r\r").presses(forms::kKeyEscape);
        till.user.enters("txtRemarks", "too late");
        file.change("update mesRequesttoShopHeader set " + change + kOfStored);
        const std::string row = std::string("select * from mesRequesttoShopHeader") + kOfStored;
        const Rows before = sizes(file), stored = file.rows(row);
        till.user.clicks("cmdOk");
        EXPECT_FALSE(till.connection->database().inTransaction()) << "others wait while the box is up";
        EXPECT_EQ(till.user.answers(said, Answer::ok).form(), "frmRequest");
        EXPECT_FALSE(till.user.enabled("cmdOk") || till.user.enabled("chkTransFinished"));
        EXPECT_TRUE(till.user.control<forms::TextBox>("txtRemarks")->locked());
        EXPECT_EQ(till.column(3)[1], "8.000");
        EXPECT_EQ(sizes(file), before);
        EXPECT_EQ(file.rows(row), stored);
        EXPECT_EQ(till.user.clicks("cmdCancel").form(), "frmMaster");
    }
}

TEST_F(Saving, BadInputIsRefusedInWordsAndCanBePutRight) {
    const std::string long_(253, 'x'), trolley = "\xF0\x9F\x9B\x92", today = "31/03/2026";
    const std::string tooLong = "The remarks have 256 characters, 1 more than can be stored. Shorten them to 255.";
    // clang-format off
    for (const auto& [what, box, bad, good, said] : Table<Text, std::string, std::string, std::string, std::string>{
             {"no date", "txtrequestDate", "soon", today, noDate("soon")},
             {"a number, which is a day long ago", "txtrequestDate", "31032026", today, noDate("31032026")},
             {"a time", "txtrequestDate", "10:30", today, noDate("10:30")},
             {"an empty date", "txtrequestDate", "", today, noDate("")},
             {"remarks that are too long", "txtRemarks", long_ + "xxx", long_ + "'\"", tooLong},
             {"signs that count twice", "txtRemarks", long_ + trolley + "\xC3\xA9", long_ + trolley, tooLong}}) {
        // clang-format on
        SCOPED_TRACE(what);
        const Rows before = sizes(company);
        Till till(company);
        till.newRequest().enters({item}).puts(box, bad).oksAndReads(said);
        EXPECT_EQ(till.user.form() + till.user.focus(), "frmRequest" + box);
        EXPECT_EQ(till.user.text("txtRequestNo"), "");
        EXPECT_EQ(till.lines().count(), 1);
        EXPECT_EQ(sizes(company), before);
        till.puts(box, good).saves();
        EXPECT_EQ(newest(box == "txtRemarks" ? "SRHremarks" : "srhrequestdate"), good);
        if (box != "txtRemarks") continue;
        till.user.clicks("CmdEdit");
        till.puts(box, bad).oksAndReads(said);
    }
    // A column without a limit tells of none.
    const CompanyFile wide(
        basic::replaceAll(sandbox::schemaText(), "SRHremarks nvarchar(255)", "SRHremarks nvarchar(max)"));
    Till(wide).newRequest().enters({item}).puts("txtRemarks", std::string(300, 'x')).saves();
}

TEST_F(Saving, ADateIsReadWhenItsBoxIsLeft) {
    Till till(company);
    EXPECT_EQ(till.newRequest(0).user.focus(), "cboShop");
    till.picksShop(kSupplier);
    till.enters({item}).user.enters("txtrequestDate", "31/31/2026\r").answers(noDate("31/31/2026"), Answer::ok);
    EXPECT_EQ(till.user.focus(), "txtrequestDate");
    till.user.clicks("cmdCancel").answers("Save Changes?", Answer::cancel); // which is not held up by it
    EXPECT_EQ(till.user.enters("txtrequestDate", "31/03/2016\r").focus(), "cboShop");
}

TEST_F(Saving, TellsWhereTheRegisterDoesNotShowWhatItSaved) {
    const std::string before = " Its date lies before those that the register shows.";
    const std::string unread = " The register could not show it; it is not to be entered again.";
    const char *today = "31/03/2026", *dayClose = "insert into losShopDayClose values (1, '20260331 18:30')";
    // clang-format off
    for (const auto& [what, settings, date, meanwhile, breaks, said] : Table<Text, Text, Text, Text, Text, std::string>{
             {"the business day has a time", "update LOsSettings set sNoofBackDays = 0", today, "", "", ""},
             {"the day was closed at half past six", dayClose, today, "", "", ""},
             {"the day before", dayClose, "30/03/2026", "", "", before},
             {"years ago", "update LOsSettings set sNoofBackDays = 30", "31/03/2016", "", "", before},
             {"the row cannot be read", "", today, "", " and  srhrequestid =", unread},
             {"the supplier is gone", "", today, "delete aShops where shopid = 2", "", unread}}) {
        // clang-format on
        SCOPED_TRACE(what);
        const CompanyFile file;
        file.change(settings);
        Till till(file);
        till.component.dtProcessDate.days += 0.6;
        till.newRequest().enters({item}).user.enters("txtrequestDate", date);
        file.change(meanwhile);
        till.breaks(breaks);
        till.user.clicks("cmdOk");
        if (*breaks) till.user.answers(Answer::ok); // the report
        if (!said.empty())
            till.user.answers("The request " + editor::newest(file, "srhrequestno") + " is saved." + said, Answer::ok);
        EXPECT_EQ(till.user.form(), "frmMaster");
        EXPECT_FALSE(till.user.message());
        EXPECT_EQ(till.user.rows("flexMaster").back()[0] == editor::newest(file, "srhrequestid"), said.empty());
    }
}

} // namespace
