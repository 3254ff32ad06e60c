#include "endurance/Endurance.h"

#include "basic/Conversion.h"
#include "sandbox/database/Company.h"

#include <gtest/gtest.h>
#include <utility>

namespace endurance {
namespace {

/// What has failed so far, each expectation once.
const testing::TestResult& failures() { return testing::UnitTest::GetInstance()->ad_hoc_test_result(); }

} // namespace

void Cases::run(const std::string& name, const std::function<void()>& act) {
    const testing::ScopedTrace trace(__FILE__, __LINE__, name);
    const int before = failures().total_part_count();
    try {
        act();
    } catch (const std::exception& error) {
        ADD_FAILURE() << error.what();
    }
    ++count_;
    if (failures().total_part_count() != before) ++wrong_;
}

std::string Cases::takeFailure() {
    static int taken = 0;
    const int first = std::exchange(taken, failures().total_part_count());
    return first == taken ? "" : failures().GetTestPartResult(first).message();
}

bench::Result Cases::row(const std::string& name, const std::string& kind) const {
    return {name, static_cast<double>(wrong_), 0, "wrong of " + std::to_string(count_) + " " + kind};
}

std::string brokenRequests(const std::string& companyPath, int oldId) {
    const std::string newer =
        "mesRequesttoShopHeader h where h.srhshopid = 1 and h.srhrequestid > " + std::to_string(oldId) + " and ";
    const std::string lines = "(select count(*) from mesRequesttoShopDetail d where d.srdshopid = h.srhshopid and"
                              " d.srdrequestid = h.srhrequestid";
    const std::pair<const char*, std::string> rules[] = {
        {"the header counts its lines", newer + "h.srhNoofDetails <> " + lines + ")"},
        {"a line asks for something", newer + lines + " and (d.srdgoodqty > 0 or d.srdbadQty > 0)) = 0"},
        {"no line without a header", "mesRequesttoShopDetail d where d.srdshopid = 1 and d.srdrequestid not in"
                                     " (select srhrequestid from mesRequesttoShopHeader where srhshopid = 1)"},
        {"a new request has one audit record", newer + "1 <> (select count(*) from loUserAuditing a where a.ShopID = 1"
                                                       " and a.ActionType = 'N' and a.DocumentID = h.srhrequestid)"},
    };
    const auto connection = sandbox::openConnection(companyPath);
    std::string broken;
    for (const auto& [rule, breaking] : rules) {
        const sandbox::Outcome outcome = connection->database().executeSilently("select count(*) from " + breaking);
        if (const std::string count = basic::concatText(outcome.rows[0][0]); count != "0")
            broken += std::string(broken.empty() ? "" : "; ") + rule + ": " + count + " break it";
    }
    return broken;
}

} // namespace endurance
