// Saving a request: what is refused, what is stored, and what a failure leaves behind.
#include "basic/Conversion.h"
#include "basic/Format.h"
#include "basic/Text.h"
#include "sandbox/data/SchemaText.h"
#include "screens/request/frmRequest.h"
#include "tests/editor/Till.h"

#include <gtest/gtest.h>

namespace {

using namespace editor;
using Names = std::vector<std::string>;

constexpr const char* kFinished = "You have confirmed the transaction as finished.\r\n"
                                  "Cannot modify later, Do you want to continue?";

class Saving : public testing::Test {
protected:
    CompanyFile company;
    std::vector<SampleItem> items = support::requestableItems(company, 1, kSupplier, 4);

    std::string newestId(const CompanyFile& file) const {
        return file.value("select max(srhrequestid) from mesRequesttoShopHeader where srhshopid = 1");
    }
    std::string newestId() const { return newestId(company); }
    Rows details(const std::string& id) const {
        return company.rows("select srditemid, srdtoshopid, srdgoodqty, srdbadQty, srdSellingprice from"
                            " mesRequesttoShopDetail where srdshopid = 1 and srdrequestid = " +
                            id + " order by srditemid");
    }
    /// How many rows requests and the audit trail have.
    std::string sizes(const CompanyFile& file) const {
        return file.value("select count(*) from mesRequesttoShopHeader") + " " +
               file.value("select count(*) from mesRequesttoShopDetail") + " " +
               file.value("select count(*) from loUserAuditing");
    }
    std::string sizes() const { return sizes(company); }
    std::string newest(const CompanyFile& file, const char* field) const {
        return file.value(std::string("select ") + field +
                          " from mesRequesttoShopHeader where srhshopid = 1 and srhrequestid = " + newestId(file));
    }
    std::string newest(const char* field) const { return newest(company, field); }
    /// Another till stores a request with one line, which takes the next number.
    void rivalSaves() const {
        Till rival(company, {.userId = 2});
        rival.newRequest();
        rival.enters({items[2]});
        rival.user.clicks("cmdOk");
        ASSERT_EQ(rival.user.form(), "frmMaster");
    }
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
        till.readsReport();
        till.connection->failOn(nullptr);
        till.connection->call("Close");
        till.connection->call("Open");
        EXPECT_NE(till.user.text("txtRequestNo"), "");
    }
    /// Runs `act` before the first statement that begins so.
    static void beforeStatement(Till& till, const char* beginning, std::function<void()> act) {
        till.connection->failOn([=, met = false](std::string_view statement) mutable {
            if (!met && statement.starts_with(beginning)) {
                met = true;
                act();
            }
            return false;
        });
    }
};

TEST_F(Saving, RefusesInOrder) {
    const std::string before = sizes();
    Till till(company);
    till.newRequest(0);
    till.user.checks("chkTransFinished");
    till.user.clicks("cmdOk");
    till.user.answers("Select Shop", Answer::ok);
    EXPECT_EQ(till.user.focus(), "cboShop");
    till.picksShop(kSupplier);
    till.user.clicks("cmdOk");
    till.user.answers("Atleast one detail needed", Answer::ok);
    EXPECT_EQ(till.user.focus(), "cmdOk");
    till.enters({items[0]});
    auto& line = till.user.control<forms::ListView>("lvwrequest")->item(1);
    till.user.happens([&] { line.setSubItem(3, "0.000"); });
    till.user.clicks("cmdOk");
    till.user.answers("Atleast one detail needed", Answer::ok);
    till.user.happens([&] {
        line.setSubItem(3, "2");
        line.setSubItem(4, "-2");
    });
    till.user.clicks("cmdOk");
    till.user.answers("Atleast one detail needed", Answer::ok);
    till.user.happens([&] {
        line.setSubItem(3, "0.000");
        line.setSubItem(4, "0.001");
    });
    const auto day = [&](const char* text) {
        till.user.happens([&] { till.user.control<forms::TextBox>("txtrequestDate")->setText(text); });
        till.user.clicks("cmdOk");
    };
    day("soon");
    till.user.answers("\"soon\" is no date. Enter the day of the request, such as 31/03/2026.", Answer::ok);
    day("31/03/2026");
    EXPECT_EQ(till.user.message()->defaultAnswer, Answer::no);
    till.user.answers(kFinished, Answer::no);
    EXPECT_EQ(till.user.focus(), "chkTransFinished");
    EXPECT_TRUE(till.user.checked("chkTransFinished"));
    EXPECT_EQ(sizes(), before);
    EXPECT_TRUE(till.statements("BEGIN").empty());
    till.user.clicks("cmdOk");
    till.user.answers(kFinished, Answer::yes);
    EXPECT_EQ(till.user.form(), "frmMaster");
    EXPECT_EQ(newest("srhTransfinished"), "1");
}

// A component wrote into a cell, which goes into a statement of the suite's helper.
TEST_F(Saving, ACellThatIsNoNumberIsRefusedAndCanBePutRight) {
    Till till(company, {.screenId = 1611});
    till.newRequest();
    till.enters({items[0], items[1]});
    const std::string before = sizes();
    forms::ListItem& line = till.user.control<forms::ListView>("lvwrequest")->item(2);
    const auto writes = [&](int cell, const std::string& text) {
        till.user.happens([&] { line.setSubItem(cell, text); });
        till.user.clicks("cmdOk");
    };
    for (int cell = 3; cell <= 6; ++cell) {
        const std::string good = line.subItem(cell);
        for (const char* bad : {"900 or 1=1", "1,5", "1e3", ".", "1.2.3", "1234567890123456.000"}) {
            writes(cell, bad);
            till.user.answers(
                "Line 2 holds \"" + std::string(bad) +
                    "\" where a number of at most 15 digits must stand. Correct the line, or delete it and enter it again.",
                Answer::ok);
            EXPECT_EQ(till.user.form(), "frmRequest");
        }
        till.user.happens([&] { line.setSubItem(cell, good); });
    }
    EXPECT_EQ(sizes(), before);
    writes(6, ""); // as suggested lines have it; the column takes no gap
    till.readsReport();
    EXPECT_FALSE(till.statements("insert into mesRequesttoShopDetail").empty());
}

TEST_F(Saving, StoresHeaderLinesAndAuditRecordOfEachKind) {
    struct Case {
        std::int32_t screen;
        const char *type, *price, *prefix;
    };
    for (const Case& c : {Case{1507, "r", "0", "GR/"}, {1611, "s", "9.99", "IS/"}}) {
        Till till(company, {.screenId = c.screen, .userId = 2});
        till.newRequest();
        till.addsLines();
        till.user.enters("txtBarcode", items[0].barcode + "\r");
        till.user.enters("txtQuantity", "3");
        till.user.enters("txtBadQuantity", "1.5");
        if (till.user.visible("txtsellingprice")) till.user.enters("txtsellingprice", "9.99");
        till.user.clicks("cmdOk");
        till.line(items[1], "2");
        till.user.clicks("cmdCancel");
        // A line of nothing counts and is stored beside a real one.
        till.user.happens([&] { till.user.control<forms::ListView>("lvwrequest")->item(2).setSubItem(3, "0.000"); });
        till.user.enters("txtRemarks", "d'accord, \xC3\xA9t\xC3\xA9");
        till.user.clicks("cmdOk");
        ASSERT_EQ(till.user.form(), "frmMaster");
        const std::string id = newestId();
        const Rows stored = details(id);
        ASSERT_EQ(stored.size(), 2u);
        EXPECT_EQ(stored[0], (std::vector<std::string>{items[0].id, "2", "3", "1.5", c.price}));
        EXPECT_EQ(stored[1][2], "0");
        EXPECT_EQ(
            company.rows("select srhtype, srhNoofDetails, srhtoShopid, SRHremarks, srhrecaddUser, srhrecmoduser,"
                         " srhTransfinished, srhrequestdate, case when"
                         " SRHrequestTime > '20200101' then 'timed' end from mesRequesttoShopHeader"
                         " where srhshopid = 1 and srhrequestid = " +
                         id),
            (Rows{{c.type, "2", "2", "d'accord, \xC3\xA9t\xC3\xA9", "Tom Barker", "", "0", "31/03/2026", "timed"}}));
        EXPECT_EQ(company.rows(
                      "select ActionType, UserID, InterfaceID from loUserAuditing where ShopID = 1 and DocumentID = '" +
                      id + "'"),
                  (Rows{{"N", "2", std::to_string(c.screen)}}));
        const auto row = till.user.grid("flexMaster").back();
        EXPECT_EQ(row[0], id);
        EXPECT_EQ(row[1].substr(0, 3), c.prefix);
        EXPECT_EQ(row[2], "31/03/2026");
    }
}

TEST_F(Saving, AnotherScreenWritesNothingAndSaysNothing) {
    const std::string before = sizes();
    Till till(company, {.screenId = 1700});
    till.newRequest();
    till.enters({items[0]});
    till.user.enters("txtrequestDate", "31/03/2016");
    till.user.clicks("cmdOk");
    EXPECT_EQ(till.user.form(), "frmMaster");
    EXPECT_EQ(sizes(), before);
    EXPECT_EQ(till.said(), Names{});
}

TEST_F(Saving, AnEditRewritesTheLinesAndLeavesTheRestOfTheHead) {
    storeRequest(company, items,
                 "update mesRequesttoShopDetail set srdgoodqty = 123456789012345.678 where srdshopid = 1 and"
                 " srdrequestid = 900 and srditemid = " +
                     items[0].id);
    const std::string kept =
        "select srhrequestno, srhrequestdate, srhtoShopid, srhrecaddUser, SRHrequestTime, srhtype from"
        " mesRequesttoShopHeader where srhshopid = 1 and srhrequestid = 900";
    const Rows before = company.rows(kept);
    Till till(company, {.userId = 2});
    till.editRequest(kStored);
    company.change("delete aitem where itemid = " + items[2].id); // retired meanwhile, and stored all the same
    till.user.enters("txtrequestDate", "01/01/2020");
    till.user.selectsRow("lvwrequest", 2);
    till.user.presses(forms::kKeyDelete);
    till.user.answers(Answer::yes);
    till.addsLines();
    till.line(items[3], "2");
    till.user.clicks("cmdCancel");
    till.changesLine(1);
    EXPECT_EQ(till.user.text("txtQuantity"), "123456789012345.678") << "all of its digits";
    till.user.clicks("cmdOk");
    till.user.clicks("cmdCancel");
    till.user.checks("chkTransFinished");
    till.user.clicks("cmdOk");
    till.user.answers(kFinished, Answer::yes);
    ASSERT_EQ(till.user.form(), "frmMaster");
    EXPECT_EQ(details(kStored), (Rows{{items[0].id, "2", "123456789012345.678", "0.5", "0"},
                                      {items[2].id, "2", "6", "0.5", "0"},
                                      {items[3].id, "2", "2", "0", "0"}}));
    EXPECT_EQ(company.rows(kept), before);
    EXPECT_EQ(company.rows("select srhNoofDetails, srhrecmoduser, srhTransfinished, case when updatetime is null then 0"
                           " else 1 end from mesRequesttoShopHeader where srhshopid = 1 and srhrequestid = 900"),
              (Rows{{"3", "Tom Barker", "1", "1"}}));
}

// Each time after this till has read the highest number, before it writes, another till takes it.
TEST_F(Saving, OthersWhoTakeTheNumberMeanwhileCostNothingUpToThreeTimes) {
    const int oldId = std::stoi(newestId());
    for (const int rivals : {1, 3, 4}) {
        SCOPED_TRACE(rivals);
        const int before = std::stoi(newestId());
        Till till(company);
        till.newRequest();
        till.enters({items[0], items[1]});
        int taken = 0;
        till.connection->failOn([&](std::string_view statement) {
            if (taken < rivals && statement.find("CURRENT_TIMESTAMP") != std::string_view::npos) {
                ++taken;
                rivalSaves();
            }
            return false;
        });
        till.user.clicks("cmdOk");
        EXPECT_EQ(taken, rivals);
        till.connection->failOn(nullptr);
        // Not in step with the others, and longer each time.
        ASSERT_EQ(till.system.pauses.size(), static_cast<std::size_t>(std::min(rivals, 3)));
        for (std::size_t i = 0; i < till.system.pauses.size(); ++i) {
            EXPECT_GE(till.system.pauses[i], 50 << i);
            EXPECT_LE(till.system.pauses[i], 150 << i);
        }
        if (rivals > 3) {
            EXPECT_NE(till.readsReport().find("KEY constraint"), std::string::npos);
            EXPECT_EQ(till.user.text("txtRequestNo"), "");
            EXPECT_EQ(till.user.list("lvwrequest").size(), 2u);
            till.user.clicks("cmdOk");
        }
        ASSERT_EQ(till.user.form(), "frmMaster");
        EXPECT_EQ(std::stoi(newestId()), before + rivals + 1);
        EXPECT_EQ(details(newestId()).size(), 2u);
    }
    const std::string newer =
        " from mesRequesttoShopHeader where srhshopid = 1 and srhrequestid > " + std::to_string(oldId);
    EXPECT_EQ(company.rows("select distinct srhrequestno" + newer).size(),
              company.rows("select srhrequestno" + newer).size());
}

// Another till holds its rows for longer than the server lets this one wait, and then lets them go.
TEST_F(Saving, ALockThatWasWaitedForTooLongCostsOneMoreTry) {
    Till till(company);
    till.newRequest();
    till.enters({items[0]});
    const std::string before = newestId();
    const auto other = sandbox::openConnection(company.path());
    other->call("BeginTrans");
    other->call("Execute", "update mesRequesttoShopHeader set SRHremarks = SRHremarks");
    int begun = 0;
    till.connection->failOn([&](std::string_view statement) {
        if (!statement.starts_with("BEGIN")) return false;
        if (++begun == 2) other->call("RollbackTrans");
        till.module.request().cmdOk.onClick(); // an OK within an OK is none
        return false;
    });
    till.user.clicks("cmdOk");
    EXPECT_EQ(begun, 2);
    EXPECT_EQ(till.user.form(), "frmMaster");
    EXPECT_EQ(std::stoi(newestId()), std::stoi(before) + 1);
}

TEST_F(Saving, ADeadlocksVictimIsSavedAgainAndWhatFailsEachTimeIsNot) {
    Till till(company);
    till.newRequest();
    till.enters({items[0]});
    const std::string before = newestId();
    bool lost = false;
    till.connection->failOn([&](std::string_view statement) {
        if (!lost && statement.starts_with("insert into mesRequesttoShopDetail")) {
            lost = true;
            till.connection->database().loseDeadlock();
        }
        return false;
    });
    till.user.clicks("cmdOk");
    EXPECT_TRUE(lost);
    EXPECT_EQ(till.user.form(), "frmMaster");
    EXPECT_EQ(std::stoi(newestId()), std::stoi(before) + 1);
    EXPECT_EQ(details(newestId()).size(), 1u);
    till.user.clicks("cmdnew");
    till.picksShop(kSupplier);
    till.enters({items[0], items[1]});
    const auto failsOnce = [&] {
        const std::size_t begun = till.statements("BEGIN").size();
        till.user.clicks("cmdOk");
        till.readsReport();
        EXPECT_EQ(till.statements("BEGIN").size(), begun + 1);
    };
    till.breaks("clsUserAuditing.SaveUserAuditingInfo");
    failsOnce();
    till.breaks("");
    // An item twice, which only a component can enter.
    till.user.happens([&] { till.module.request().lvwrequest.item(2).setSubItem(5, items[0].id); });
    failsOnce();
    // A transaction that an earlier failure left is cleared away by the first OK.
    till.connection->call("BeginTrans");
    till.user.clicks("cmdOk");
    till.readsReport();
    till.user.happens([&] { till.module.request().lvwrequest.item(2).setSubItem(5, items[1].id); });
    till.user.clicks("cmdOk");
    EXPECT_EQ(till.user.form(), "frmMaster");
}

TEST_F(Saving, ACommitOfWhichNobodyHeardLosesNothingAndStoresNothingTwice) {
    const char* const kExists = "Request no already exists";
    struct Case {
        const char* what;
        bool stands; ///< what the first OK committed
        int rivals;
        std::vector<std::function<void(Till&)>> acts; ///< each followed by an OK; all but the last one fail
        const char* said;
        const char* audit; ///< of the request
    };
    const auto nothing = [](Till&) {};
    const auto rival = [this](Till&) { rivalSaves(); };
    const auto fails = [](Till& till) { till.breaks("insert into mesRequesttoShopDetail"); };
    const auto adds = [this](Till& till) {
        till.addsLines();
        till.line(items[3], "7");
        till.user.clicks("cmdCancel");
        till.user.enters("txtRemarks", "and one more");
    };
    // clang-format off
    for (const Case& c : {
             Case{"it stands", true, 0, {nothing}, kExists, "N"},
             {"it stands, and lines were added", true, 0, {adds}, nullptr, "NE"},
             {"it stands, lines were added, and the second OK fails", true, 0, {[&](Till& till) { adds(till); fails(till); }, nothing}, nullptr, "NE"},
             {"it stands, and the clerk turns to another shop, and to another day", true, 0,
              {[this](Till& till) {
                  till.picksShop(3);
                  till.user.answers(Answer::yes);
                  till.enters({items[0]});
                  till.user.enters("txtrequestDate", "30/03/2026");
              }}, nullptr, "NE"},
             {"it does not, and somebody took the number", false, 1, {rival}, nullptr, "N"},
             {"it does not, the second OK fails, and somebody took the number", false, 1, {fails, rival}, nullptr, "N"},
             {"it does not, and somebody takes the number within the second OK", false, 1,
              {[this](Till& till) { beforeStatement(till, "select CURRENT_TIMESTAMP", [this] { rivalSaves(); }); }}, nullptr, "N"}}) {
        // clang-format on
        SCOPED_TRACE(c.what);
        const int count = std::stoi(sizes());
        Till till(company);
        till.newRequest();
        till.enters({items[0], items[1]});
        savesUnheard(till, c.stands);
        Names lines;
        std::string shop, date, remarks;
        for (const auto& act : c.acts) {
            act(till);
            lines = till.column(5);
            shop = std::to_string(till.module.session.lngOtherShopID);
            date = till.user.text("txtrequestDate");
            remarks = till.user.text("txtRemarks");
            till.user.clicks("cmdOk");
            if (&act != &c.acts.back()) till.readsReport();
            till.breaks("");
        }
        if (c.said) till.user.answers(c.said, Answer::ok);
        ASSERT_EQ(till.user.form(), "frmMaster");
        EXPECT_FALSE(till.user.message());
        EXPECT_EQ(std::stoi(sizes()), count + 1 + c.rivals);
        Names stored;
        for (const auto& row : details(newestId())) {
            stored.push_back(row[0]);
            EXPECT_EQ(row[1], shop);
        }
        EXPECT_EQ(stored, lines);
        EXPECT_EQ(newest("srhtoShopid"), shop);
        EXPECT_EQ(newest("srhrequestdate"), date);
        EXPECT_EQ(newest("srhNoofDetails"), std::to_string(lines.size()));
        std::string audit;
        for (const auto& row : company.rows(
                 "select ActionType from loUserAuditing where ShopID = 1 and DocumentID = '" + newestId() + "'"))
            audit += row[0];
        EXPECT_EQ(audit, c.audit);
        const auto row = till.user.grid("flexMaster").back();
        EXPECT_EQ(row[0], newestId());
        EXPECT_EQ(row[1], newest("srhrequestno"));
        EXPECT_EQ(row[5], remarks);
    }
}

// Whose the request under the kept number is: its user and its time of storing tell.
TEST_F(Saving, ARequestIsOnlyTakenForOnesOwnWhereItsUserAndTimeAre) {
    struct Case {
        const char* set;
        double seconds; ///< past the own time, which loses its fraction
        bool own;
    };
    for (const Case& c : {Case{"SRHrequestTime = ", 0, true},
                          {"SRHrequestTime = ", 3, false},
                          {"SRHrequestTime = ", -3, false},
                          {"SRHrequestTime = null --", 0, false},
                          {"srhrecaddUser = 'Tom Barker', SRHrequestTime = ", 0, false}}) {
        SCOPED_TRACE(c.set + std::to_string(c.seconds));
        const int count = std::stoi(sizes());
        Till till(company);
        till.newRequest();
        till.enters({items[0]});
        savesUnheard(till, true);
        const automation::Date time{basic::cDate(newest("SRHrequestTime")).days + c.seconds / 86400};
        company.change("update mesRequesttoShopHeader set " + std::string(c.set) + "'" +
                       basic::format(time, "yyyymmdd hh:nn:ss") +
                       "'\n where srhshopid = 1 and srhrequestid = " + newestId());
        till.user.clicks("cmdOk");
        if (c.own) till.user.answers("Request no already exists", Answer::ok);
        ASSERT_EQ(till.user.form(), "frmMaster");
        EXPECT_EQ(std::stoi(sizes()), count + (c.own ? 1 : 2));
    }
}

TEST_F(Saving, ARequestThatSomebodyClosedToChangesMeanwhileStaysAsItIs) {
    for (const auto& [change, said] : std::initializer_list<std::pair<std::string, const char*>>{
             {"srhTransfinished = 1, SRHcancelled = 1, srhused = 1", "Request is confirmed, You can't edit"},
             {"SRHcancelled = 1, srhused = 1", "Record already deleted "},
             {"srhused = 1", "Entry Processed,Cannot Edit"}}) {
        SCOPED_TRACE(said);
        const CompanyFile file;
        storeRequest(file, items);
        const std::string row = "select * from mesRequesttoShopHeader where srhshopid = 1 and srhrequestid = 900";
        Till till(file);
        till.editRequest(kStored);
        till.changesLine(2);
        till.user.types("8\r\r\r");
        till.user.presses(forms::kKeyEscape);
        till.user.enters("txtRemarks", "too late");
        file.change("update mesRequesttoShopHeader set " + change + " where srhshopid = 1 and srhrequestid = 900");
        const std::string before = sizes(file);
        const Rows stored = file.rows(row);
        till.user.clicks("cmdOk");
        EXPECT_FALSE(till.connection->database().inTransaction()) << "others wait while the box is up";
        till.user.answers(said, Answer::ok);
        EXPECT_EQ(till.user.form(), "frmRequest");
        EXPECT_FALSE(till.user.enabled("cmdOk"));
        EXPECT_FALSE(till.user.enabled("chkTransFinished"));
        EXPECT_TRUE(till.user.control<forms::TextBox>("txtRemarks")->locked());
        EXPECT_EQ(till.column(3)[1], "8.000");
        EXPECT_EQ(sizes(file), before);
        EXPECT_EQ(file.rows(row), stored);
        till.user.clicks("cmdCancel");
        EXPECT_EQ(till.user.form(), "frmMaster");
    }
}

TEST_F(Saving, BadInputIsRefusedInWordsAndCanBePutRight) {
    struct Case {
        const char* what;
        const char* box;
        std::string bad, good, said;
    };
    const auto noDate = [](const std::string& text) {
        return "\"" + text + "\" is no date. Enter the day of the request, such as 31/03/2026.";
    };
    for (const Case& c :
         {Case{"no date", "txtrequestDate", "soon", "31/03/2026", noDate("soon")},
          {"a number, which is a day long ago", "txtrequestDate", "31032026", "31/03/2026", noDate("31032026")},
          {"a time", "txtrequestDate", "10:30", "31/03/2026", noDate("10:30")},
          {"an empty date", "txtrequestDate", "", "31/03/2026", noDate("")},
          {"remarks that are too long", "txtRemarks", std::string(256, 'x'), std::string(252, 'x') + "' \"",
           "The remarks have 256 characters, 1 more than can be stored. Shorten them to 255."},
          {"signs that count twice", "txtRemarks", std::string(253, 'x') + "\xF0\x9F\x9B\x92\xC3\xA9",
           std::string(253, 'x') + "\xF0\x9F\x9B\x92",
           "The remarks have 256 characters, 1 more than can be stored. Shorten them to 255."}}) {
        SCOPED_TRACE(c.what);
        const std::string before = sizes();
        Till till(company);
        till.newRequest();
        till.enters({items[0]});
        const auto writes = [&](const std::string& text) {
            till.user.happens([&] { till.user.control<forms::TextBox>(c.box)->setText(text); });
        };
        writes(c.bad);
        till.user.clicks("cmdOk");
        till.user.answers(c.said, Answer::ok);
        EXPECT_EQ(till.user.form(), "frmRequest");
        EXPECT_EQ(till.user.focus(), c.box);
        EXPECT_EQ(till.user.text("txtRequestNo"), "");
        EXPECT_EQ(till.user.list("lvwrequest").size(), 1u);
        EXPECT_EQ(sizes(), before);
        writes(c.good);
        till.user.clicks("cmdOk");
        EXPECT_EQ(till.user.form(), "frmMaster");
        EXPECT_EQ(newest(std::string(c.box) == "txtRemarks" ? "SRHremarks" : "srhrequestdate"), c.good);
        if (std::string(c.box) != "txtRemarks") continue;
        till.user.clicks("CmdEdit");
        writes(c.bad);
        till.user.clicks("cmdOk");
        till.user.answers(c.said, Answer::ok);
    }
    // A column without a limit tells of none.
    const CompanyFile wide(
        basic::replaceAll(sandbox::schemaText(), "SRHremarks nvarchar(255)", "SRHremarks nvarchar(max)"));
    Till till(wide);
    till.newRequest();
    till.enters({items[0]});
    till.user.happens([&] { till.module.request().txtRemarks.setText(std::string(300, 'x')); });
    till.user.clicks("cmdOk");
    EXPECT_EQ(till.user.form(), "frmMaster");
}

TEST_F(Saving, ADateIsReadWhenItsBoxIsLeft) {
    Till till(company);
    till.newRequest(0);
    EXPECT_EQ(till.user.focus(), "cboShop");
    till.picksShop(kSupplier);
    till.enters({items[0]});
    till.user.enters("txtrequestDate", "31/31/2026\r");
    till.user.answers("\"31/31/2026\" is no date. Enter the day of the request, such as 31/03/2026.", Answer::ok);
    EXPECT_EQ(till.user.focus(), "txtrequestDate");
    till.user.clicks("cmdCancel"); // which is not held up by it
    till.user.answers("Save Changes?", Answer::cancel);
    till.user.enters("txtrequestDate", "31/03/2016\r");
    EXPECT_EQ(till.user.focus(), "cboShop");
}

TEST_F(Saving, TellsWhereTheRegisterDoesNotShowWhatItSaved) {
    const std::string before = " Its date lies before those that the register shows.";
    const std::string unread = " The register could not show it; it is not to be entered again.";
    struct Case {
        const char* what;
        const char *settings, *date, *meanwhile, *breaks;
        std::string said;
    };
    // clang-format off
    for (const Case& c : {
             Case{"the business day has a time", "update LOsSettings set sNoofBackDays = 0", "31/03/2026", "", "", ""},
             {"the day was closed at half past six", "insert into losShopDayClose values (1, '20260331 18:30')", "31/03/2026", "", "", ""},
             {"the day before", "insert into losShopDayClose values (1, '20260331 18:30')", "30/03/2026", "", "", before},
             {"years ago", "update LOsSettings set sNoofBackDays = 30", "31/03/2016", "", "", before},
             {"the row cannot be read", "", "31/03/2026", "", " and  srhrequestid =", unread},
             {"the supplier is gone", "", "31/03/2026", "delete aShops where shopid = 2", "", unread}}) {
        // clang-format on
        SCOPED_TRACE(c.what);
        const CompanyFile file;
        file.change(c.settings);
        Till till(file);
        till.component.dtProcessDate.days += 0.6;
        till.newRequest();
        till.enters({items[0]});
        till.user.enters("txtrequestDate", c.date);
        file.change(c.meanwhile);
        till.breaks(c.breaks);
        till.user.clicks("cmdOk");
        if (*c.breaks) till.user.answers(Answer::ok); // the report
        if (!c.said.empty())
            till.user.answers("The request " + newest(file, "srhrequestno") + " is saved." + c.said, Answer::ok);
        EXPECT_EQ(till.user.form(), "frmMaster");
        EXPECT_FALSE(till.user.message());
        EXPECT_EQ(till.user.grid("flexMaster").back()[0] == newestId(file), c.said.empty());
    }
}

} // namespace
