// The register: opening, sorting, searching, and the memory that it takes.
#include "benchmarks/Bare.h"
#include "benchmarks/Benchmarks.h"
#include "benchmarks/Timing.h"
#include "tests/support/Till.h"

#include "basic/Text.h"
#include "forms/Grid.h"
#include "forms/UserInput.h"

#include <malloc.h>
#include <random>
#include <sqlite3.h>
#include <stdexcept>

namespace bench {
namespace {

constexpr int kFew = 10'000;
constexpr int kMost = 32'767; ///< a shop's request ids have 16 bits
/// Columns of the register.
constexpr int kId = 0, kDate = 2, kRemarks = 5;

/// The most that opening may take: as often the bare time, and as often the time of 10,000 requests.
constexpr double kTimesBare = 3, kGrowth = 3.6;
constexpr double kSortTimesBare = 2;
/// The most that one more key in the search box may take, as a part of the sort that the first one took.
constexpr double kKeyPercent = 1;
constexpr double kMegabytes = 32;

/// A company whose shop 1 has that many requests of the sample's days, for browsing only.
class Browsing {
public:
    Browsing(int requests, unsigned seed) {
        static constexpr const char* kRemarks[] = {
            "Weekend order",           "needed before Friday",     "Shelf empty since Tuesday",
            "For the spring display",  "please send with the van", "Customer is waiting",
            "Top up after stocktaking"};
        // Milliseconds since 1899-12-30, as the sandbox keeps moments.
        const long long lastDay = 46112LL * 86'400'000;
        std::mt19937_64 random(seed);
        std::string rows;
        for (int i = 1; i <= requests; ++i) {
            const long long day = lastDay - (requests - i) * 20LL / requests * 86'400'000;
            const std::string remarks =
                std::string(kRemarks[random() % std::size(kRemarks)]) + " " + std::to_string(random() % 1'000'000);
            rows += (i > 1 ? ",(" : "(") + std::to_string(i) + ",1,'GR/" +
                    std::to_string(random() % 900'000 + 100'000) + "/" + std::to_string(i) + "'," +
                    std::to_string(day) + "," + std::to_string(random() % 5 + 2) + ",'" + remarks + "',0,12,'r',0," +
                    (random() % 10 == 0 ? "1)" : "0)");
        }
        bare.run("DELETE FROM mesRequesttoShopHeader;"
                 "INSERT INTO mesRequesttoShopHeader (srhrequestid, srhshopid, srhrequestno, srhrequestdate, "
                 "srhtoShopid, SRHremarks, srhTransfinished, srhNoofDetails, srhtype, srhused, SRHcancelled) VALUES " +
                 rows);
    }

    support::CompanyFile file;
    Bare bare{file.path()};
};

/// Throws where the work was not done: then its time says nothing.
void expect(bool done, const char* what) {
    if (!done) throw std::runtime_error(what);
}

/// The register of a company, opened again and again. Both sides keep their connection, with its prepared statements
/// and the pages that it has read.
class Opening {
public:
    Opening(Browsing& company, int requests) : bare_(company.bare), till_(company.file) {
        till_.opens();
        list_ = bare_.prepare(till_.statements(" select sRHrequestID"));
        expect(list_.size() == 1, "The register did not read its list once");
        expect(till_.user.control<forms::Grid>("flexMaster")->rows() == requests + 1,
               "The register does not show all requests");
    }

    void races() {
        const Race next = race(
            1, kTimesBare, [this] { return opens(); }, [this] { return busy([this] { bare_.run(list_); }); });
        best.module = std::min(best.module, next.module);
        best.bare = std::min(best.bare, next.bare);
    }

    Race best;

private:
    double opens() {
        till_.user.clicks("CmdClose");
        return busy([this] { till_.opens(); });
    }

    Bare& bare_;
    support::Till till_;
    std::vector<Bare::Step> list_;
};

void measureOpening(Browsing& fewRequests, Browsing& mostRequests, const Options& options, Report& report) {
    Opening few(fewRequests, kFew);
    Opening most(mostRequests, kMost);
    const auto growth = [&] { return most.best.module / few.best.module; };
    const auto held = [&] {
        return growth() <= kGrowth && few.best.ratio() <= kTimesBare && most.best.ratio() <= kTimesBare;
    };
    repeat(repeats(options), held, [&] {
        few.races();
        most.races();
    });
    report.add({"open the register, 10,000 requests", few.best.ratio(), kTimesBare, "times bare"});
    report.add({"open the register, 32,767 requests", most.best.ratio(), kTimesBare, "times bare"});
    report.add({"open the register, 32,767 to 10,000 requests", growth(), kGrowth, "times"});
}

/// Bytes that the program has asked for and not given back, without what SQLite keeps of its file: a shop's database is
/// on another machine.
std::size_t bytesInUse() {
    const struct mallinfo2 info = mallinfo2();
    return info.uordblks + info.hblkhd - static_cast<std::size_t>(sqlite3_memory_used());
}

/// Counts how often the grid's rows were laid out anew.
class RowsWatch : public forms::ControlView {
public:
    void changed(forms::Control&, forms::Aspect aspect) override { count += aspect == forms::Aspect::items; }
    int count = 0;
};

/// A register of many requests with a person before it.
class Sitting {
public:
    explicit Sitting(const support::CompanyFile& file) : till_(file) {
        const std::size_t before = bytesInUse();
        till_.opens();
        bytes_ = bytesInUse() - before;
        grid_ = till_.user.control<forms::Grid>("flexMaster");
    }

    double megabytes() const { return static_cast<double>(bytes_) / 1e6; }

    /// Sorts by the column of that heading; seconds.
    double sorts(const std::string& heading) {
        till_.user.clicks("optAscend"); // so that the choice of the same column again sorts again
        return busy([&] { till_.user.picks("cboColNames", heading); });
    }
    std::string heading(int column) const { return std::string(grid_->cell(0, column)); }
    std::vector<std::string> column(int col) const {
        std::vector<std::string> cells;
        for (int row = 1; row < grid_->rows(); ++row) cells.emplace_back(grid_->cell(row, col));
        return cells;
    }

    struct Key {
        double seconds = 0;
        int sorts = 0;
    };
    /// What the module does at one more key in the search box, after the first of them has sorted the rows. It is
    /// measured on the module's own thread: the turns between it and the person would cost more than the search.
    Key searches(const std::string& heading) {
        till_.user.picks("cboSearch", heading);
        till_.user.enters("txtsearch", "N");
        RowsWatch watch;
        grid_->attach(&watch);
        Key key;
        till_.user.happens([&] {
            auto& box = *till_.user.control<forms::TextBox>("txtsearch");
            key.seconds = busy([&] {
                forms::input::edit(box, "Ne", 2, 0);
                forms::input::keyUp(box, 'E');
            });
        });
        grid_->attach(nullptr);
        key.sorts = watch.count;
        expect(basic::startsWithNoCase(grid_->cell(grid_->row(), kRemarks), "Ne"), "The search found nothing");
        return key;
    }

private:
    support::Till till_;
    std::size_t bytes_ = 0;
    forms::Grid* grid_ = nullptr;
};

/// The same keys, made beforehand, in the order in which the rows stand.
double sortTexts(const std::vector<std::string>& cells) {
    std::vector<std::string> upper;
    for (const std::string& cell : cells) upper.push_back(basic::ucase(cell));
    std::vector<std::string_view> keys(upper.begin(), upper.end());
    return busy([&] { std::stable_sort(keys.begin(), keys.end()); });
}

double sortNumbers(const std::vector<std::string>& cells) {
    std::vector<double> keys;
    for (const std::string& cell : cells) keys.push_back(std::stod(cell));
    return busy([&] { std::stable_sort(keys.begin(), keys.end()); });
}

} // namespace

void measureRegister(const Options& options, Report& report) {
    Browsing few(kFew, options.seed);
    Browsing most(kMost, options.seed);
    measureOpening(few, most, options, report);

    Sitting sitting(most.file);
    report.add({"memory of the register, 32,767 requests", sitting.megabytes(), kMegabytes, "MB"});

    const std::string dates = sitting.heading(kDate);
    const std::string remarks = sitting.heading(kRemarks);
    // The requests came in the order of their ids; each sort undoes the other's order.
    const std::vector<std::string> byId = sitting.column(kRemarks);
    sitting.sorts(remarks);
    const std::vector<std::string> byRemarks = sitting.column(kId);
    expect(sitting.column(kRemarks) != byId, "The sort by text changed nothing");
    sitting.sorts(dates);
    expect(sitting.column(kRemarks) == byId, "The sort by number did not bring the first order back");
    Race byText, byNumber;
    const auto held = [&] { return byText.ratio() <= kSortTimesBare && byNumber.ratio() <= kSortTimesBare; };
    repeat(kRepeatsOfSorts, held, [&] {
        byText.module = std::min(byText.module, sitting.sorts(remarks));
        byText.bare = std::min(byText.bare, sortTexts(byId));
        byNumber.module = std::min(byNumber.module, sitting.sorts(dates));
        byNumber.bare = std::min(byNumber.bare, sortNumbers(byRemarks));
    });
    report.add({"sort 32,767 rows by text", byText.ratio(), kSortTimesBare, "times bare"});
    report.add({"sort 32,767 rows by number", byNumber.ratio(), kSortTimesBare, "times bare"});

    Sitting::Key key;
    key.seconds = byText.module;
    const auto percent = [&] { return 100 * key.seconds / byText.module; };
    repeat(
        kRepeatsOfSorts, [&] { return percent() <= kKeyPercent; },
        [&] {
            const Sitting::Key next = sitting.searches(remarks);
            key.seconds = std::min(key.seconds, next.seconds);
            key.sorts = std::max(key.sorts, next.sorts);
        });
    report.add({"sorts at one key in the search box, 32,767 rows", double(key.sorts), 0, "sorts"});
    report.add({"one key in the search box, 32,767 rows", percent(), kKeyPercent, "% of the sort"});
}

} // namespace bench
