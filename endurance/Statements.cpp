// Each statement of save and delete fails in turn, and in turn the connection dies at it.
#include "endurance/Endurance.h"
#include "screens/register/frmMaster.h"
#include "tests/editor/Till.h"

#include <gtest/gtest.h>

namespace endurance {
namespace {

using namespace editor;

enum class Fault {
    fails,   ///< the server refuses the statement
    dies,    ///< the connection dies before it
    unheard, ///< the commit happens, and the connection dies before its answer
};
constexpr const char* kFaultNames[] = {"fails", "dies", "is not heard of"};

/// Puts the fault to the statement of that number, counted from 1; rolling back is not counted. `struck` gets its text.
void strike(Till& till, Fault fault, int number, std::string& struck) {
    till.connection->failOn([&till, fault, number, &struck, sent = 0](std::string_view statement) mutable {
        if (statement.starts_with("ROLLBACK") || !struck.empty()) return false;
        // Only of a commit does it matter whether it still happened: all else goes with the transaction.
        if (fault == Fault::unheard && !statement.starts_with("COMMIT")) return false;
        if (++sent != number) return false;
        struck = statement;
        if (fault == Fault::unheard) till.connection->call("CommitTrans");
        if (fault != Fault::fails) till.connection->kill();
        return true;
    });
}

/// The connection answers again, as it does after the network came back.
void answersAgain(Till& till, Fault fault) {
    till.connection->failOn(nullptr);
    if (fault == Fault::fails) return;
    till.connection->call("Close");
    till.connection->call("Open");
}

Rows requests(const CompanyFile& company) {
    return company.rows("select h.srhrequestid, h.srhrequestno, h.SRHremarks, h.srhNoofDetails, h.SRHcancelled,"
                        " h.srhcancelledRemarks, d.srditemid, d.srdgoodqty, d.srdbadQty from mesRequesttoShopHeader h,"
                        " mesRequesttoShopDetail d where h.srhshopid = 1 and d.srdshopid = 1 and d.srdrequestid ="
                        " h.srhrequestid and h.srhrequestid >= 900 order by h.srhrequestid, d.srditemid");
}

/// One save under one fault. False when the save has no statement of that number.
bool saves(const std::vector<SampleItem>& items, bool isNew, Fault fault, int number, Cases& cases) {
    CompanyFile company;
    storeRequest(company, items);
    Till till(company);
    if (isNew) {
        till.newRequest();
        till.enters(items);
    } else {
        till.editRequest(kStored);
        till.addsLines();
        till.line(items[3], "2");
        till.user.clicks("cmdCancel");
    }
    till.user.enters("txtRemarks", "under a fault");
    const auto lines = till.user.list("lvwrequest");
    const Rows before = requests(company);

    std::string struck;
    strike(till, fault, number, struck);
    till.user.clicks("cmdOk");
    if (struck.empty()) return false;
    cases.run(std::string(isNew ? "saving a new request" : "saving a changed request") + ", statement " +
                  std::to_string(number) + " " + kFaultNames[static_cast<int>(fault)] + ": " + struck,
              [&] {
                  if (till.user.form() == "frmMaster" && !till.user.message()) {
                      ADD_FAILURE() << "nothing is reported";
                      return;
                  }
                  if (till.user.message() && till.user.message()->text.find(" is saved. ") != std::string::npos)
                      till.user.answers(Answer::ok); // the register could not read the row
                  // Where the connection died after the commit, the register that comes back to the front meets that
                  // too.
                  till.user.answers(Answer::ok);
                  if (till.user.form() == "frmMaster" && fault != Fault::fails && till.user.message())
                      till.user.answers(Answer::ok);
                  EXPECT_FALSE(till.user.message()) << "another box follows";
                  answersAgain(till, fault);
                  const bool open = till.user.form() == "frmRequest";
                  const Rows between = requests(company);
                  EXPECT_EQ(brokenRequests(company.path(), 900), "");
                  if (open) {
                      EXPECT_EQ(till.user.list("lvwrequest"), lines);
                      if (fault != Fault::unheard) {
                          EXPECT_EQ(between, before);
                      }
                      till.user.clicks("cmdOk");
                      if (between != before && isNew) till.user.answers("Request no already exists", Answer::ok);
                  }
                  EXPECT_EQ(till.user.form(), "frmMaster");
                  const Rows after = requests(company);
                  EXPECT_EQ(after.size(), before.size() + (isNew ? items.size() : 1));
                  EXPECT_EQ(after.back()[2], "under a fault");
                  EXPECT_EQ(brokenRequests(company.path(), 900), "");
                  till.user.clicks("CmdClose");
                  EXPECT_TRUE(till.user.ended());
              });
    return true;
}

/// One deletion under one fault; the connection's owner then rolls back, or ends the connection.
bool deletes(const std::vector<SampleItem>& items, bool ownerRollsBack, int number, Cases& cases) {
    CompanyFile company;
    storeRequest(company, items);
    Till till(company);
    till.opensRegister();
    const auto grid = till.user.grid("flexMaster");
    for (std::size_t row = 0; row < grid.size(); ++row)
        if (grid[row][0] == kStored) till.user.selectsRow("flexMaster", static_cast<int>(row) + 1);
    const Rows before = requests(company);

    std::string struck;
    strike(till, Fault::fails, number, struck);
    till.user.clicks("CmdDelete");
    if (struck.empty()) {
        till.user.answers(Answer::yes);
        if (struck.empty()) {
            till.user.enters("txtcanreason", "asked twice");
            till.user.clicks("cmdOk");
        }
    }
    if (struck.empty()) return false;
    cases.run("deleting, statement " + std::to_string(number) + " fails, the owner " +
                  (ownerRollsBack ? "rolls back: " : "ends the connection: ") + struck,
              [&] {
                  till.readsReport();
                  till.connection->failOn(nullptr);
                  EXPECT_EQ(till.user.form(), "frmMaster");
                  const bool begun = !till.statements("BEGIN").empty() && !struck.starts_with("BEGIN");
                  const bool committed = !till.statements("COMMIT").empty() && !struck.starts_with("COMMIT");
                  EXPECT_EQ(till.connection->database().inTransaction(), begun && !committed);
                  if (begun && !committed) {
                      if (ownerRollsBack) {
                          till.connection->call("RollbackTrans");
                      } else {
                          till.connection->kill();
                          till.connection->call("Close");
                      }
                  }
                  const Rows after = requests(company);
                  if (committed) {
                      EXPECT_TRUE(after.front()[5].ends_with(":asked twice")) << after.front()[5];
                  } else {
                      EXPECT_EQ(after, before);
                  }
                  till.user.clicks("CmdClose");
                  EXPECT_TRUE(till.user.ended());
              });
    return true;
}

} // namespace

void strikeStatements(const Options&, Report& report) {
    constexpr int kMostStatements = 100;
    const CompanyFile sample;
    const std::vector<SampleItem> items = support::requestableItems(sample, 1, kSupplier, 4);
    for (const bool isNew : {true, false}) {
        Cases cases;
        for (const Fault fault : {Fault::fails, Fault::dies, Fault::unheard})
            for (int number = 1; number < kMostStatements && saves(items, isNew, fault, number, cases); ++number) {
            }
        report.add(cases.row(
            isNew ? "faults at the statements of a new save" : "faults at the statements of a changed save", "faults"));
    }
    Cases cases;
    for (const bool ownerRollsBack : {true, false})
        for (int number = 1; number < kMostStatements && deletes(items, ownerRollsBack, number, cases); ++number) {
        }
    report.add(cases.row("faults at the statements of a deletion", "faults"));
}

} // namespace endurance
