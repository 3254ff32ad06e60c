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
        const char *type, *price;
    };
    for (const Case& c : {Case{1507, "r", "0"}, {1611, "s", "9.99"}}) {
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
                         " srhTransfinished, convert(varchar(10), srhrequestdate, 111) from mesRequesttoShopHeader"
                         " where srhshopid = 1 and srhrequestid = " +
                         id),
            (Rows{{c.type, "2", "2", "d'accord, \xC3\xA9t\xC3\xA9", "Tom Barker", "", "0", "2026/03/31"}}));
        EXPECT_EQ(company.rows(
                      "select ActionType, UserID, InterfaceID from loUserAuditing where ShopID = 1 and DocumentID = '" +
                      id + "'"),
                  (Rows{{"N", "2", std::to_string(c.screen)}}));
        EXPECT_EQ(till.user.grid("flexMaster").back()[0], id);
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

TEST_F(Saving, ASecondUserWhoTakesTheNumberCostsOneReportAndASecondOk) {
    Till first(company);
    first.newRequest();
    first.enters({items[0], items[1]});
    Till second(company, {.userId = 2});
    second.newRequest();
    second.enters({items[2]});

    // The other till saves after this one has read the highest number, before it writes.
    bool taken = false;
    first.connection->failOn([&](std::string_view statement) {
        if (!taken && statement.find("CURRENT_TIMESTAMP") != std::string_view::npos) {
            taken = true;
            second.user.clicks("cmdOk");
        }
        return false;
    });
    first.user.clicks("cmdOk");
    first.connection->failOn(nullptr);
    ASSERT_TRUE(taken);
    ASSERT_EQ(second.user.form(), "frmMaster");
    const std::string secondsId = newestId();
    EXPECT_NE(first.readsReport().find("KEY constraint"), std::string::npos);
    EXPECT_EQ(first.user.form(), "frmRequest");
    EXPECT_EQ(first.user.list("lvwrequest").size(), 2u);
    EXPECT_EQ(first.user.text("txtRequestNo"), "");
    EXPECT_EQ(details(secondsId).size(), 1u);

    first.user.clicks("cmdOk");
    ASSERT_EQ(first.user.form(), "frmMaster");
    EXPECT_EQ(std::stoi(newestId()), std::stoi(secondsId) + 1);
    EXPECT_EQ(details(newestId()).size(), 2u);
    EXPECT_NE(company.value("select srhrequestno from mesRequesttoShopHeader where srhshopid = 1 and srhrequestid = " +
                            newestId()),
              company.value("select srhrequestno from mesRequesttoShopHeader where srhshopid = 1 and srhrequestid = " +
                            secondsId));
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

TEST_F(Saving, BadInputIsOneReportAndCanBePutRight) {
    struct Case {
        const char* what;
        const char* box;
        std::string bad, good;
    };
    for (const Case& c :
         {Case{"no date", "txtrequestDate", "soon", "31/03/2026"},
          {"an empty date", "txtrequestDate", "", "31/03/2026"},
          {"remarks that are too long", "txtRemarks", std::string(10000, 'x'), "quote ' and \"quote\""}}) {
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
        till.readsReport();
        EXPECT_EQ(till.user.form(), "frmRequest");
        EXPECT_EQ(till.user.list("lvwrequest").size(), 1u);
        EXPECT_EQ(sizes(), before);
        writes(c.good);
        till.user.clicks("cmdOk");
        EXPECT_EQ(till.user.form(), "frmMaster");
        EXPECT_EQ(company.value(std::string("select ") +
                                (std::string(c.box) == "txtRemarks" ? "SRHremarks"
                                                                    : "convert(varchar(10), srhrequestdate, 103)") +
                                " from mesRequesttoShopHeader where srhshopid = 1 and srhrequestid = " + newestId()),
                  c.good);
    }
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
