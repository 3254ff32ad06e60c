// Requests: saving new ones, saving changed ones, opening.
#include "benchmarks/Bare.h"
#include "benchmarks/Benchmarks.h"
#include "benchmarks/Timing.h"
#include "tests/support/Till.h"

#include "forms/ListView.h"
#include "screens/request/frmRequest.h"

#include <stdexcept>

namespace bench {
namespace {

constexpr int kSupplier = 2;
constexpr double kTimesBare = 3; ///< the most that each may take
constexpr int kStored = 30000;   ///< id of the request to open and change

/// A clerk, and the bare side on the same file.
class Desk {
public:
    Desk() : items_(file_.rows("select itemid, itemcode, itemdescription from aitem order by itemid")) {}

    void opens() {
        till_.emplace(file_);
        till_->opens();
    }

    /// One act of the clerk's, which ends at that form: seconds, and its statements for `learns`.
    double acts(Clock clock, const std::function<void()>& act, const char* ending) {
        const std::size_t before = till_->statements().size();
        const double seconds = clock(act);
        if (till_->user.form() != ending) throw std::runtime_error(std::string("The act did not end at ") + ending);
        std::vector<std::string> sent = till_->statements();
        statements_.assign(sent.begin() + static_cast<std::ptrdiff_t>(before), sent.end());
        return seconds;
    }

    /// A new request of that many lines, stored; seconds of the storing.
    double savesNew(int lines) {
        user().clicks("cmdnew");
        till_->picksShop(kSupplier);
        user().happens([this, lines] { fill(*till_->user.control<forms::ListView>("lvwrequest"), lines); });
        return acts(
            elapsed, [this] { user().clicks("cmdOk"); }, "frmMaster");
    }

    void storesRequest(int lines) {
        bare_.run("INSERT INTO mesRequesttoShopHeader (srhrequestid, srhshopid, srhrequestno, srhrequestdate, "
                  "srhtoShopid, SRHremarks, srhTransfinished, srhNoofDetails, srhtype, srhused, SRHcancelled) VALUES "
                  "(30000, 1, 'GR/30000', 46111 * 86400000, 2, '', 0, 1000, 'r', 0, 0)");
        for (int i = 0; i < lines; ++i)
            bare_.run("INSERT INTO mesRequesttoShopDetail VALUES (30000, 1, " + items_[static_cast<std::size_t>(i)][0] +
                      ", 2, '" + std::to_string(i % 50 + 1) + ".500', '0.000', '0.000')");
    }
    void selectsStored() {
        const auto* grid = user().control<forms::Grid>("flexMaster");
        for (int row = 1; row < grid->rows(); ++row)
            if (grid->cell(row, 0) == std::to_string(kStored)) return void(user().selectsRow("flexMaster", row));
        throw std::runtime_error("The register does not show the stored request");
    }
    double opensRequest() {
        return acts(
            busy, [this] { user().clicks("CmdEdit"); }, "frmRequest");
    }
    double savesChanged() {
        user().enters("txtRemarks", "change " + std::to_string(++changes_));
        return acts(
            elapsed, [this] { user().clicks("cmdOk"); }, "frmMaster");
    }
    void leavesRequest() { user().clicks("cmdCancel"); }

    /// Takes what was saved as new out again, so that the next one finds the same company.
    void takesOut(int highestId) {
        const std::string newer = " > " + std::to_string(highestId);
        bare_.run("DELETE FROM mesRequesttoShopDetail WHERE srdshopid = 1 AND srdrequestid" + newer +
                  "; DELETE FROM mesRequesttoShopHeader WHERE srhshopid = 1 AND srhrequestid" + newer);
    }
    int linesAbove(int highestId) const {
        return std::stoi(
            file_.value("select count(*) from mesRequesttoShopDetail where srdshopid = 1 and srdrequestid > " +
                        std::to_string(highestId)));
    }
    int highestId() const {
        return std::stoi(file_.value("select max(srhrequestid) from mesRequesttoShopHeader where srhshopid = 1"));
    }

    /// The same statements as in the act before, already prepared; kept for the acts that follow.
    void learns() { steps_ = bare_.prepare(statements_); }
    double runsBare(Clock clock) {
        return clock([this] { bare_.run(steps_); });
    }

private:
    support::User& user() { return till_->user; }

    void fill(forms::ListView& list, int lines) const {
        for (int i = 0; i < lines; ++i) {
            const std::vector<std::string>& item = items_[static_cast<std::size_t>(i)];
            forms::ListItem& line = list.add(std::to_string(i + 1));
            line.setSubItem(goodsreq::kLineItemCode, item[1]);
            line.setSubItem(goodsreq::kLineItemName, item[2]);
            line.setSubItem(goodsreq::kLineGoodQty, std::to_string(i % 50 + 1) + ".500");
            line.setSubItem(goodsreq::kLineBadQty, "0.000");
            line.setSubItem(goodsreq::kLineItemId, item[0]);
            line.setSubItem(goodsreq::kLinePrice, "0.000");
            line.setSubItem(goodsreq::kLineUnit, "PCS");
        }
    }

    support::CompanyFile file_;
    Bare bare_{file_.path()};
    support::Rows items_;
    std::optional<support::Till> till_;
    std::vector<std::string> statements_;
    std::vector<Bare::Step> steps_;
    int changes_ = 0;
};

void measureNew(const Options& options, Report& report) {
    for (int lines : {10, 100, 1000}) {
        Desk desk;
        desk.opens();
        const int highest = desk.highestId();
        desk.savesNew(lines);
        if (desk.linesAbove(highest) != lines) throw std::runtime_error("The new request was not stored whole");
        desk.learns();
        desk.takesOut(highest);
        const auto clean = [&](double seconds) {
            desk.takesOut(highest);
            return seconds;
        };
        const Race race = bench::race(
            repeats(options), kTimesBare, [&] { return clean(desk.savesNew(lines)); },
            [&] { return clean(desk.runsBare(elapsed)); });
        report.add(
            {"save a new request of " + std::to_string(lines) + " lines", race.ratio(), kTimesBare, "times bare"});
    }
}

void measureChanged(const Options& options, Report& report) {
    constexpr int kLines = 1000;
    Desk desk;
    desk.storesRequest(kLines);
    desk.opens();
    desk.selectsStored();

    desk.opensRequest();
    desk.learns();
    const Race opening = race(
        repeats(options), kTimesBare,
        [&] {
            desk.leavesRequest();
            return desk.opensRequest();
        },
        [&] { return desk.runsBare(busy); });
    report.add({"open a request of 1000 lines", opening.ratio(), kTimesBare, "times bare"});

    desk.savesChanged();
    desk.learns();
    const Race saving = race(
        repeats(options), kTimesBare,
        [&] {
            desk.opensRequest();
            return desk.savesChanged();
        },
        [&] { return desk.runsBare(elapsed); });
    report.add({"edit and save 1000 lines", saving.ratio(), kTimesBare, "times bare"});
}

} // namespace

void measureRequests(const Options& options, Report& report) {
    measureNew(options, report);
    measureChanged(options, report);
}

} // namespace bench
