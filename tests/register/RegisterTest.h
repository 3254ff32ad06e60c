// A register with a few requests of the test's own.
#pragma once

#include "tests/support/Till.h"

#include "screens/register/frmMaster.h"
#include "screens/register/frmcancelreason.h"

#include <gtest/gtest.h>

#include <optional>
#include <regex>
#include <string>
#include <vector>

namespace support {

struct Request {
    int id;
    std::string remarks;
    std::string date = "20260320";
    std::string state = ""; ///< words of "used", "confirmed", "cancelled" and "sale"
};

/// A person of the sample company's first shop, with its requests replaced.
class RegisterTest : public testing::Test {
protected:
    CompanyFile company;
    std::optional<Till> till;

    /// Request n has the number "GR/n", and goes to shop 2.
    void has(const std::vector<Request>& requests) {
        std::string script = "delete mesRequesttoShopHeader";
        for (const Request& r : requests) {
            const auto bit = [&r](const char* word) { return r.state.find(word) == r.state.npos ? ",0" : ",1"; };
            script += ";insert into mesRequesttoShopHeader (srhrequestid,srhshopid,srhrequestno,srhrequestdate,"
                      "srhtoShopid,SRHremarks,srhtype,srhused,srhTransfinished,SRHcancelled) values (" +
                      std::to_string(r.id) + ",1,'GR/" + std::to_string(r.id) + "','" + r.date + "',2,'" + r.remarks +
                      (r.state == "sale" ? "','s'" : "','r'") + bit("used") + bit("confirmed") + bit("cancelled") + ")";
        }
        company.change(script);
    }
    User& opens(Seat seat = {}) {
        till.emplace(company, seat);
        till->opens();
        return till->user;
    }
    User& opensWith(const std::vector<Request>& requests, Seat seat = {}) {
        has(requests);
        return opens(seat);
    }
    User& user() { return till->user; }
    forms::Grid& grid() { return *user().control<forms::Grid>("flexMaster"); }
    goodsreq::Session& session() { return till->module.session; }

    /// What stands in one column, from the first data row on.
    std::vector<std::string> column(int col) { return user().column("flexMaster", col); }
    /// What stands in one column of the current row.
    std::string current(int col) { return column(col).at(static_cast<std::size_t>(grid().row()) - 1); }
    /// A letter for each command whose button is on.
    std::string commands() {
        std::string on;
        for (const char* button : {"cmdnew", "CmdEdit", "CmdDelete", "cmdPrev"})
            if (user().enabled(button)) on += button[3] == 'n' ? 'N' : button[3];
        return on;
    }
    /// Takes note of the error boxes and closes them; each as "module, routine", without the blanks that both end with.
    std::vector<std::string> reports() {
        static const std::regex place("Where: (.*?) *, (.*?) *\r\n");
        std::vector<std::string> places;
        for (std::smatch found; user().message(); user().answers(forms::Answer::ok)) {
            const std::string text = user().message()->text;
            EXPECT_TRUE(std::regex_search(text, found, place)) << "No error box: " << text;
            places.push_back(found.empty() ? text : found.str(1) + ", " + found.str(2));
        }
        return places;
    }
    /// Whole row `row` is selected, and it is the current one.
    void expectSelected(int row) {
        EXPECT_EQ(grid().row(), row);
        EXPECT_EQ(grid().rowSel(), row);
        EXPECT_EQ(grid().col(), 0);
        EXPECT_EQ(grid().colSel(), goodsreq::kColShopId);
    }
};

using Texts = std::vector<std::string>;

} // namespace support
