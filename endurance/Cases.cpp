#include "endurance/Endurance.h"

#include "basic/Conversion.h"
#include "common/Recordset.h"
#include "sandbox/database/Company.h"

#include <gtest/gtest.h>
#include <utility>

namespace endurance {
namespace {

class Failures : public testing::EmptyTestEventListener {
public:
    static Failures& instance() {
        static auto* listener = [] {
            auto* made = new Failures; // GoogleTest owns it
            testing::UnitTest::GetInstance()->listeners().Append(made);
            return made;
        }();
        return *listener;
    }
    void OnTestPartResult(const testing::TestPartResult& result) override {
        if (!result.failed()) return;
        ++count;
        if (first.empty()) first = result.message();
    }
    int count = 0;
    std::string first; ///< since it was last taken
};

} // namespace

void Cases::run(const std::string& name, const std::function<void()>& act) {
    const testing::ScopedTrace trace(__FILE__, __LINE__, name);
    const int before = Failures::instance().count;
    try {
        act();
    } catch (const std::exception& error) {
        ADD_FAILURE() << error.what();
    }
    ++count_;
    if (Failures::instance().count != before) ++wrong_;
}

std::string Cases::takeFailure() { return std::exchange(Failures::instance().first, {}); }

bench::Result Cases::row(const std::string& name, const std::string& kind) const {
    return {name, static_cast<double>(wrong_), 0, "wrong of " + std::to_string(count_) + " " + kind};
}

std::string brokenRequests(const std::string& companyPath, int oldId) {
    const std::string lines = "(select count(*) from mesRequesttoShopDetail d where d.srdshopid = h.srhshopid and"
                              " d.srdrequestid = h.srhrequestid";
    const std::string newer = " and h.srhrequestid > " + std::to_string(oldId);
    const struct {
        const char* rule;
        std::string breaking; ///< counts what breaks it
    } rules[] = {
        {"the header counts its lines", "select count(*) from mesRequesttoShopHeader h where h.srhshopid = 1 and"
                                        " h.srhNoofDetails <> " +
                                            lines + ")" + newer},
        {"a line asks for something", "select count(*) from mesRequesttoShopHeader h where h.srhshopid = 1 and " +
                                          lines + " and (d.srdgoodqty > 0 or d.srdbadQty > 0)) = 0" + newer},
        {"no line without a header",
         "select count(*) from mesRequesttoShopDetail d where d.srdshopid = 1 and d.srdrequestid not in (select"
         " h.srhrequestid from mesRequesttoShopHeader h where h.srhshopid = 1)"},
        {"a new request has one audit record", "select count(*) from mesRequesttoShopHeader h where h.srhshopid = 1" +
                                                   newer +
                                                   " and 1 <> (select count(*) from loUserAuditing a where a.ShopID = "
                                                   "1 and a.ActionType = 'N' and a.DocumentID = h.srhrequestid)"},
    };
    const auto connection = sandbox::openConnection(companyPath);
    std::string broken;
    for (const auto& rule : rules) {
        const goodsreq::Recordset records(connection->call("Execute", rule.breaking).objectPtr());
        const std::string count = basic::concatText(records.fields().front().value());
        if (count != "0") broken += std::string(broken.empty() ? "" : "; ") + rule.rule + ": " + count + " break it";
    }
    return broken;
}

} // namespace endurance
