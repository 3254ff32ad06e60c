// Saving a request: what is refused, what is stored, and what a failure leaves behind.
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
    till.user.happens([&] { line.setSubItem(4, "0.001"); });
    till.user.clicks("cmdOk");
    EXPECT_EQ(till.user.message()->defaultAnswer, Answer::no);
    till.user.answers(kFinished, Answer::no);
    EXPECT_EQ(till.user.focus(), "chkTransFinished");
    EXPECT_TRUE(till.user.checked("chkTransFinished"));
    EXPECT_EQ(sizes(), before);
    EXPECT_TRUE(till.statements("BEGIN").empty());
    till.user.clicks("cmdOk");
    till.user.answers(kFinished, Answer::yes);
    EXPECT_EQ(till.user.form(), "frmMaster");
    EXPECT_EQ(
        company.value("select srhTransfinished from mesRequesttoShopHeader where srhshopid = 1 and srhrequestid = " +
                      newestId()),
        "1");
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
    till.user.clicks("cmdOk");
    EXPECT_EQ(till.user.form(), "frmMaster");
    EXPECT_EQ(sizes(), before);
    EXPECT_EQ(till.said(), Names{});
}

TEST_F(Saving, AnEditRewritesTheLinesAndLeavesTheRestOfTheHead) {
    storeRequest(company, items);
    const std::string kept =
        "select srhrequestno, srhrequestdate, srhtoShopid, srhrecaddUser, SRHrequestTime, srhtype from"
        " mesRequesttoShopHeader where srhshopid = 1 and srhrequestid = 900";
    const Rows before = company.rows(kept);
    struct Case {
        const char* what;
        std::function<void(Till&)> edit;
        Names quantities; ///< by item
    };
    for (const Case& c : {Case{"one quantity",
                               [](Till& t) {
                                   t.changesLine(2);
                                   t.user.types("8\r\r\r");
                                   t.user.presses(forms::kKeyEscape);
                               },
                               {"4", "8", "6"}},
                          {"a line more",
                           [this](Till& t) {
                               t.addsLines();
                               t.line(items[3], "2");
                               t.user.clicks("cmdCancel");
                           },
                           {"4", "8", "6", "2"}},
                          {"a line less",
                           [](Till& t) {
                               t.user.selectsRow("lvwrequest", 1);
                               t.user.presses(forms::kKeyDelete);
                               t.user.answers(Answer::yes);
                           },
                           {"8", "6", "2"}}}) {
        SCOPED_TRACE(c.what);
        Till till(company, {.userId = 2});
        till.editRequest(kStored);
        till.user.enters("txtrequestDate", "01/01/2020");
        c.edit(till);
        const Names items_ = till.column(5);
        till.user.clicks("cmdOk");
        ASSERT_EQ(till.user.form(), "frmMaster");
        Names stored, quantities;
        for (const auto& row : details(kStored)) {
            stored.push_back(row[0]);
            quantities.push_back(row[2]);
        }
        EXPECT_EQ(stored, items_);
        EXPECT_EQ(quantities, c.quantities);
        EXPECT_EQ(company.rows(kept), before);
        EXPECT_EQ(
            company.rows("select srhNoofDetails, srhrecmoduser, case when updatetime is null then 0 else 1 end from"
                         " mesRequesttoShopHeader where srhshopid = 1 and srhrequestid = 900"),
            (Rows{{std::to_string(items_.size()), "Tom Barker", "1"}}));
    }
    Till till(company);
    till.editRequest(kStored);
    till.user.checks("chkTransFinished");
    till.user.clicks("cmdOk");
    till.user.answers(kFinished, Answer::yes);
    EXPECT_EQ(company.value("select srhTransfinished from mesRequesttoShopHeader where srhshopid = 1 and"
                            " srhrequestid = 900"),
              "1");
}

TEST_F(Saving, AQuantityOfEighteenDigitsSurvivesLoadingAndSaving) {
    storeRequest(company, items,
                 "update mesRequesttoShopDetail set srdgoodqty = 123456789012345.678 where srdshopid = 1 and"
                 " srdrequestid = 900 and srditemid = " +
                     items[0].id);
    Till till(company);
    till.editRequest(kStored);
    EXPECT_EQ(till.column(3)[0], "123456789012345.678");
    till.changesLine(1);
    EXPECT_EQ(till.user.text("txtQuantity"), "123456789012345.678");
    till.user.clicks("cmdOk");
    till.user.clicks("cmdCancel");
    EXPECT_EQ(till.column(3)[0], "123456789012345.678");
    till.user.clicks("cmdOk");
    ASSERT_EQ(till.user.form(), "frmMaster");
    EXPECT_EQ(details(kStored)[0][2], "123456789012345.678");
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
                Till rival(company, {.userId = 2});
                rival.newRequest();
                rival.enters({items[2]});
                rival.user.clicks("cmdOk");
                ++taken;
            }
            return false;
        });
        till.user.clicks("cmdOk");
        EXPECT_EQ(taken, rivals);
        till.connection->failOn(nullptr);
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
        if (statement.starts_with("BEGIN") && ++begun == 2) other->call("RollbackTrans");
        return false;
    });
    till.user.clicks("cmdOk");
    EXPECT_EQ(begun, 2);
    EXPECT_EQ(till.user.form(), "frmMaster");
    EXPECT_EQ(std::stoi(newestId()), std::stoi(before) + 1);
}

TEST_F(Saving, ADeadlocksVictimIsSavedAgainAndAComponentsErrorIsNot) {
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
    till.enters({items[0]});
    const std::size_t begun = till.statements("BEGIN").size();
    till.breaks("clsUserAuditing.SaveUserAuditingInfo");
    till.user.clicks("cmdOk");
    till.readsReport();
    EXPECT_EQ(till.statements("BEGIN").size(), begun + 1);
}

TEST_F(Saving, WhereTheRefusedCommitWasRolledBackTheNumberIsAnybodys) {
    Till first(company);
    first.newRequest();
    first.enters({items[0], items[1]});
    first.connection->failOn([](std::string_view statement) { return statement.starts_with("COMMIT"); });
    first.user.clicks("cmdOk");
    first.readsReport();
    first.connection->failOn(nullptr);
    EXPECT_EQ(first.user.text("txtRequestNo"), "");
    Till second(company, {.userId = 2});
    second.newRequest();
    second.enters({items[2]});
    second.user.clicks("cmdOk");
    const int secondsId = std::stoi(newestId());
    first.user.clicks("cmdOk");
    EXPECT_EQ(first.user.form(), "frmMaster");
    EXPECT_EQ(std::stoi(newestId()), secondsId + 1);
    EXPECT_EQ(details(newestId()).size(), 2u);
}

TEST_F(Saving, ARequestThatSomebodyClosedToChangesMeanwhileStaysAsItIs) {
    for (const auto& [change, said] : std::initializer_list<std::pair<const char*, const char*>>{
             {"srhTransfinished = 1", "Request is confirmed, You can't edit"},
             {"SRHcancelled = 1", "Record already deleted "},
             {"srhused = 1", "Entry Processed,Cannot Edit"}}) {
        SCOPED_TRACE(said);
        const CompanyFile file;
        storeRequest(file, items, "");
        const std::string row = "select * from mesRequesttoShopHeader where srhshopid = 1 and srhrequestid = 900";
        Till till(file);
        till.editRequest(kStored);
        till.addsLines();
        till.line(items[3], "2");
        till.user.clicks("cmdCancel");
        till.user.enters("txtRemarks", "too late");
        file.change(std::string("update mesRequesttoShopHeader set ") + change +
                    " where srhshopid = 1 and srhrequestid = 900");
        const std::string before = sizes(file);
        const Rows stored = file.rows(row);
        till.user.clicks("cmdOk");
        till.user.answers(said, Answer::ok);
        EXPECT_EQ(till.user.form(), "frmRequest");
        EXPECT_FALSE(till.user.enabled("cmdOk"));
        EXPECT_EQ(till.user.list("lvwrequest").size(), 4u);
        EXPECT_FALSE(till.connection->database().inTransaction());
        EXPECT_EQ(sizes(file), before);
        EXPECT_EQ(file.rows(row), stored);
        till.user.clicks("cmdCancel");
        EXPECT_EQ(till.user.form(), "frmMaster");
    }
}

TEST_F(Saving, ALeftOverTransactionIsClearedByTheFirstOk) {
    Till till(company);
    till.newRequest();
    till.enters({items[0]});
    till.connection->call("BeginTrans");
    till.user.clicks("cmdOk");
    till.readsReport();
    EXPECT_EQ(till.user.form(), "frmRequest");
    till.user.clicks("cmdOk");
    EXPECT_EQ(till.user.form(), "frmMaster");
    EXPECT_EQ(details(newestId()).size(), 1u);
}

TEST_F(Saving, ACommitWhoseAnswerIsLostCannotStoreTheRequestTwice) {
    const std::string before = company.value("select count(*) from mesRequesttoShopHeader");
    Till till(company);
    till.newRequest();
    till.enters({items[0]});
    // The server commits, and the answer never comes.
    bool lost = false;
    till.connection->failOn([&](std::string_view statement) {
        if (lost || !statement.starts_with("COMMIT")) return false;
        lost = true;
        till.connection->call("CommitTrans");
        return true;
    });
    till.user.clicks("cmdOk");
    till.connection->failOn(nullptr);
    ASSERT_TRUE(lost);
    till.readsReport();
    EXPECT_NE(till.user.text("txtRequestNo"), "");
    till.user.clicks("cmdOk");
    till.user.answers("Request no already exists", Answer::ok);
    EXPECT_EQ(till.user.form(), "frmMaster");
    EXPECT_EQ(std::stoi(company.value("select count(*) from mesRequesttoShopHeader")), std::stoi(before) + 1);
}

TEST_F(Saving, ACommitThatDiedWithItsConnectionGivesWayToWhoTookTheNumberSince) {
    Till till(company);
    till.newRequest();
    till.enters({items[0], items[1]});
    till.connection->failOn([&](std::string_view statement) {
        if (statement.starts_with("COMMIT")) till.connection->kill();
        return false;
    });
    till.user.clicks("cmdOk");
    till.readsReport();
    till.connection->failOn(nullptr);
    till.connection->call("Close");
    till.connection->call("Open");
    const std::string kept = till.user.text("txtRequestNo");
    Till rival(company, {.userId = 2});
    rival.newRequest();
    rival.enters({items[2]});
    rival.user.clicks("cmdOk");
    const int rivalsId = std::stoi(newestId());
    EXPECT_EQ(company.value("select srhrequestno from mesRequesttoShopHeader where srhshopid = 1 and srhrequestid = " +
                            newestId()),
              kept);
    till.user.clicks("cmdOk");
    EXPECT_EQ(till.user.form(), "frmMaster");
    EXPECT_EQ(std::stoi(newestId()), rivalsId + 1);
    EXPECT_EQ(details(newestId()).size(), 2u);
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
          {"remarks that are too long", "txtRemarks", std::string(256, 'x'), "quote ' and \"quote\"",
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
        EXPECT_EQ(company.value(std::string("select ") +
                                (std::string(c.box) == "txtRemarks" ? "SRHremarks" : "srhrequestdate") +
                                " from mesRequesttoShopHeader where srhshopid = 1 and srhrequestid = " + newestId()),
                  c.good);
    }
}

TEST_F(Saving, ADateIsReadWhenItsBoxIsLeftAndSaidToLieBeforeTheRegister) {
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
    till.user.clicks("cmdOk");
    const std::string number = company.value(
        "select srhrequestno from mesRequesttoShopHeader where srhshopid = 1 and srhrequestid = " + newestId());
    till.user.answers("The request " + number + " is saved. Its date lies before those that the register shows.",
                      Answer::ok);
    EXPECT_EQ(till.user.form(), "frmMaster");
}

TEST_F(Saving, AnItemThatWasRetiredMeanwhileIsStoredAllTheSame) {
    storeRequest(company, items);
    Till till(company);
    till.editRequest(kStored);
    company.change("update aitem set Active = 0 where itemid = " + items[0].id +
                   ";delete aitem where itemid = " + items[1].id);
    till.user.enters("txtRemarks", "still wanted");
    till.user.clicks("cmdOk");
    EXPECT_EQ(till.user.form(), "frmMaster");
    EXPECT_EQ(details(kStored).size(), 3u);
    EXPECT_EQ(till.errors(), Names{});
}

} // namespace
