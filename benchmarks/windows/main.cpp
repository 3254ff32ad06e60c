// What the module takes through COM and real windows, against a bare late-bound loop over the same record sets.
#include "basic/Conversion.h"
#include "benchmarks/Program.h"
#include "benchmarks/Timing.h"
#include "benchmarks/windows/Late.h"
#include "benchmarks/windows/WindowTimes.h"
#include "common/Recordset.h"
#include "sandbox/database/Company.h"
#include "tests/support/Scratch.h"
#include "tests/windows/Session.h"

#include <algorithm>
#include <cmath>
#include <fstream>
#include <future>
#include <stdexcept>

namespace bench {
namespace {

using support::RealUser;

HWND const ear = support::makeEar(); ///< of the module's thread

constexpr double kTimesBare = 3; ///< the most that each work may take

Result row(const std::string& name, const Race& race) {
    return {name, race.ratio(), kTimesBare, "times bare, " + std::to_string(std::lround(1000 * race.bare)) + " ms"};
}

int repeats(const Options& options) { return options.quick ? 3 : 8; }

double secondsOf(const std::function<void()>& work) {
    const double begin = seconds();
    work();
    return seconds() - begin;
}

/// What the module sends while `act` runs on a connection to that company.
std::vector<std::string> statementsOf(const std::string& company,
                                      const std::function<void(const automation::ObjectPtr& connection)>& act) {
    const std::filesystem::path file = support::scratch("trace.sql");
    std::filesystem::remove(file);
    {
        const automation::ObjectPtr connection = support::openConnection(company + ";Trace=" + file.string());
        act(connection);
        connection->call("Close");
    }
    std::vector<std::string> statements;
    std::ifstream trace(file, std::ios::binary);
    for (std::string line; std::getline(trace, line);) {
        if (line.ends_with('\r')) line.pop_back();
        statements.push_back(line);
    }
    return statements;
}

void require(bool done, const char* what) {
    if (!done) throw std::runtime_error(std::string("This did not come about: ") + what);
}

/// Shows the register on a connection while `act` works it.
void shows(const automation::ObjectPtr& connection, const RealUser::Script& act) {
    const automation::ObjectPtr module = support::makeModule(connection, 1);
    RealUser::sits([&] { module->call("Show"); }, act);
}

/// Seconds from Show until the register has its rows and begins to make its windows. What those cost is the system's.
double opensRegister(const automation::ObjectPtr& connection) {
    const automation::ObjectPtr module = support::makeModule(connection, 1);
    const std::function<void()> closes = [] { PostMessageW(GetActiveWindow(), WM_CLOSE, 0, 0); };
    support::hearsLater(ear, closes); // by the loop in which the register waits for input
    const WindowTimes windows;
    const double begin = seconds();
    module->call("Show");
    require(windows.made > begin, "the register");
    return windows.made - begin;
}

/// A company whose shop 1 has that many requests, for browsing only.
std::string browsingCompany(int requests) {
    const std::string path = support::sampleCompany("browsing.db");
    const auto company = sandbox::openConnection(path);
    company->database().atomically([&] {
        company->database().executeSilently("delete mesRequesttoShopHeader");
        for (int i = 1; i <= requests; ++i)
            company->database().executeSilently(
                "insert into mesRequesttoShopHeader (srhrequestid,srhshopid,srhrequestno,srhrequestdate,srhtoShopid,"
                "SRHremarks,srhTransfinished,srhNoofDetails,srhtype,srhused,SRHcancelled) values (" +
                std::to_string(i) + ",1,'GR/" + std::to_string(i) + "','20260" + std::to_string(310 + i % 20) + "'," +
                std::to_string(i % 5 + 2) + ",'Weekend order " + std::to_string(i * 7919 % requests) + "',0,12,'r',0," +
                (i % 10 ? "0)" : "1)"));
    });
    return path;
}

void measureOpening(const Options& options, Report& report) {
    for (const int requests : {10'000, 32'767}) {
        if (options.quick && requests > 10'000) continue;
        const std::string path = browsingCompany(requests);
        std::string list;
        for (const std::string& statement :
             statementsOf(path, [](const auto& connection) { opensRegister(connection); }))
            if (statement.starts_with(" select sRHrequestID")) list = statement;
        require(!list.empty(), "the list's query");
        const automation::ObjectPtr connection = support::openConnection(path);
        const Late bare = Late::of(connection);
        const com::Bstr query{std::string_view(list)};
        const Race opening = race(
            repeats(options), kTimesBare, [&] { return opensRegister(connection); },
            [&] { return secondsOf([&] { readAllAsText(bare, query); }); });
        report.add(row("W open the register, " + std::to_string(requests) + " requests", opening));
        connection->call("Close");
    }
}

/// The sample company with a supplying shop that carries all that shop 1 does.
std::string savingCompany() {
    const std::string path = support::sampleCompany("saving.db");
    const auto company = sandbox::openConnection(path);
    const std::string supplier = std::to_string(support::kFirstOffered);
    for (const char* table : {"ashopitemdetail", "ashopitemcategory"}) {
        const std::string column = std::string(table) == "ashopitemdetail" ? "itemid" : "itemcategoryid";
        std::vector<std::string> missing;
        goodsreq::Recordset records(company
                                        ->call("Execute", "select " + column + " from " + table +
                                                              " where shopid = 1 and " + column + " not in (select " +
                                                              column + " from " + table +
                                                              " where shopid = " + supplier + ")")
                                        .objectPtr());
        for (; !records.eof(); records.moveNext()) missing.push_back(basic::concatText(records.value(0)));
        company->database().atomically([&] {
            for (const std::string& id : missing)
                company->database().executeSilently(std::string("insert into ") + table + " (shopid," + column +
                                                    ") values (" + supplier + "," + id + ")");
        });
    }
    return path;
}

/// From the open register to a request with these lines, ready for OK.
void entersRequest(RealUser& user, const std::vector<std::string>& barcodes, std::size_t lines) {
    support::beginsRequest(user);
    support::beginsLines(user);
    for (std::size_t i = 0; i < lines; ++i) support::entersLine(user, barcodes[i]);
    user.sendsKey(VK_ESCAPE, "unloaded frmRequestDetail");
}

/// Seconds from OK until the request has been saved and the register becomes the active window again.
double savesRequest(const automation::ObjectPtr& connection, const std::vector<std::string>& barcodes,
                    std::size_t lines) {
    WindowTimes windows;
    double begin = 0;
    // Both run on the module's thread, and until the second the clerk keeps still, as looking takes the system's time.
    std::promise<void> over;
    const std::function<void()> begins = [&] {
        begin = seconds();
        windows.activated = 0;
    };
    const std::function<void()> ends = [&] { over.set_value(); };
    shows(connection, [&](RealUser& user) {
        user.awaits("active frmMaster");
        entersRequest(user, barcodes, lines);
        support::hearsLater(ear, begins);
        user.sendsAlt('o');
        support::hearsLater(ear, ends);
        over.get_future().wait_for(std::chrono::seconds(10));
        user.awaits("unloaded frmRequest");
        support::closesRegister(user);
    });
    require(begin > 0 && windows.activated > begin, "the register after OK");
    return windows.activated - begin;
}

void measureSaving(const Options& options, Report& report) {
    const std::string path = savingCompany();
    const auto company = sandbox::openConnection(path);
    const auto number = [&](const char* query) {
        return basic::cLng(goodsreq::Recordset(company->call("Execute", query).objectPtr()).value(0));
    };
    const long highest = number("select max(srhrequestid) from mesRequesttoShopHeader where srhshopid = 1");
    const auto takesOut = [&] {
        for (const char* table : {"mesRequesttoShopDetail where srdshopid = 1 and srdrequestid > ",
                                  "mesRequesttoShopHeader where srhshopid = 1 and srhrequestid > "})
            company->database().executeSilently(std::string("delete ") + table + std::to_string(highest));
    };
    const automation::ObjectPtr connection = support::openConnection(path);
    const std::vector<std::string> barcodes = support::requestableBarcodes(*connection);
    const Late bare = Late::of(connection);
    for (const std::size_t lines : {10u, 100u, 1000u}) {
        if (options.quick && lines > 100) continue;
        require(barcodes.size() >= lines, "items enough");
        std::vector<std::string> sent =
            statementsOf(path, [&](const auto& traced) { savesRequest(traced, barcodes, lines); });
        const auto begin = std::find(sent.begin(), sent.end(), "BEGIN TRANSACTION");
        const auto end = std::find(begin, sent.end(), "COMMIT TRANSACTION");
        require(end != sent.end(), "the transaction of the save");
        // The look-ups of a line come before, the register's row after it; only the save is measured on both sides.
        const std::vector<std::string> save(begin, end + 1);
        require(number("select count(*) from mesRequesttoShopDetail where srdshopid = 1") > 0, "lines");
        takesOut();
        const Race saving = race(
            lines > 100 ? 2 : repeats(options), kTimesBare,
            [&] {
                const double taken = savesRequest(connection, barcodes, lines);
                takesOut();
                return taken;
            },
            [&] {
                const double taken = secondsOf([&] { sendAgain(bare, save); });
                takesOut();
                return taken;
            });
        report.add(row("W save a new request of " + std::to_string(lines) + " lines", saving));
    }
}

} // namespace
} // namespace bench

int main(int count, char** arguments) {
    return bench::runProgram("bench-windows", count, arguments,
                             [](const bench::Options& options, bench::Report& report) {
                                 support::beginLog(); // Whether windows are logged is settled by the first.
                                 bench::measureOpening(options, report);
                                 bench::measureSaving(options, report);
                             });
}
