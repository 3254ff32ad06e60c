// Programs that save: one is killed again and again, four work in one shop at once.
#include "endurance/Endurance.h"
#include "tests/editor/Till.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <csignal>
#include <random>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace endurance {
namespace {

using namespace editor;
constexpr int kFailed = 255; ///< status of a program that an exception ended

/// Runs `act` in a program beside this one, whose status it gives. No thread may run at that time.
pid_t forked(const std::function<int()>& act) {
    std::fflush(nullptr);
    const pid_t program = fork();
    if (program < 0) throw std::runtime_error("No program could be started");
    if (program > 0) return program;
    int status = kFailed;
    try {
        status = act();
    } catch (const std::exception& error) {
        std::fprintf(stderr, "%s\n", error.what());
    }
    std::fflush(nullptr);
    _exit(status); // The files and objects of the program that forked are not this one's to clear away.
}

/// Waits for its end.
int statusOf(pid_t program) {
    int status = 0;
    const bool ended = waitpid(program, &status, 0) == program && WIFEXITED(status);
    return ended ? WEXITSTATUS(status) : kFailed;
}

/// From the register to a request of one line, or two, up to all items, ready to be stored.
void entersRequest(Till& till, const std::vector<SampleItem>& items, std::size_t number) {
    till.newRequest().enters({items.begin(), items.begin() + static_cast<std::ptrdiff_t>(number % items.size() + 1)});
}

/// Stores so many requests. How often a second OK was needed.
int saveMany(const CompanyFile& company, const std::vector<SampleItem>& items, int requests, std::int16_t user) {
    Till till(company, {.userId = user});
    till.system.sleeps = true;
    till.opens();
    int reports = 0;
    for (int i = 0; i < requests; ++i) {
        entersRequest(till, items, static_cast<std::size_t>(i));
        till.user.clicks("cmdOk");
        for (int again = 0; till.user.message() && again < 200; ++again) {
            till.readsReport();
            ++reports;
            till.user.clicks("cmdOk");
        }
        if (till.user.form() != "frmMaster") throw std::runtime_error("A request could not be stored");
    }
    return std::min(reports, kFailed - 1);
}

} // namespace

void killSaves(const Options& options, Report& report) {
    const int kills = options.quick ? 25 : 500;
    std::mt19937 random(options.seed);
    const CompanyFile company;
    const std::vector<SampleItem> items = support::requestableItems(company, 1, kSupplier, 12);
    const int oldId = std::stoi(newest(company, "srhrequestid"));
    Cases cases;
    int inside = 0;
    for (int i = 0; i < kills; ++i) {
        const std::size_t number = random();
        const std::chrono::microseconds moment(random() % 20'000);
        cases.run("kill " + std::to_string(i + 1), [&] {
            int words[2] = {};
            if (pipe(words) != 0) throw std::runtime_error("No pipe could be made");
            const pid_t program = forked([&] {
                Till till(company);
                for (till.opens();;) {
                    entersRequest(till, items, number);
                    dprintf(words[1], "b");
                    till.user.clicks("cmdOk");
                    dprintf(words[1], "e");
                }
                return 0;
            });
            close(words[1]);
            char word = 0;
            EXPECT_EQ(read(words[0], &word, 1), 1); // the first save has begun
            std::this_thread::sleep_for(moment);
            kill(program, SIGKILL); // as a power cut does: nothing of it runs any more
            statusOf(program);
            while (read(words[0], &word, 1) == 1) continue;
            if (word == 'b') ++inside;
            close(words[0]);
            EXPECT_EQ(brokenRequests(company.path(), oldId), "");
        });
    }
    bench::Result row = cases.row("kills at random moments of saves", "kills");
    row.unit += ", " + std::to_string(inside) + " inside a save";
    report.add(row);
    if (inside < kills / 4) throw std::runtime_error("Too few of the kills met a save");
}

void saveAtOnce(const Options& options, Report& report) {
    constexpr int kPrograms = 4;
    const int each = options.quick ? 15 : 250; // of one to five lines, as often
    const int wanted = kPrograms * each;
    const CompanyFile company;
    const std::vector<SampleItem> items = support::requestableItems(company, 1, kSupplier, 5);
    const int oldId = std::stoi(newest(company, "srhrequestid"));
    const std::string lines = "select srdrequestid from mesRequesttoShopDetail where srdshopid = 1",
                      newer = " from mesRequesttoShopHeader where srhshopid = 1 and srhrequestid > " +
                              std::to_string(oldId);
    const auto oldLines = std::ssize(company.rows(lines));
    std::vector<pid_t> programs;
    for (int i = 0; i < kPrograms; ++i)
        programs.push_back(
            forked([&] { return saveMany(company, items, each, static_cast<std::int16_t>(i % 2 + 1)); }));
    Cases cases;
    int reports = 0;
    cases.run("four programs at once", [&] {
        for (const pid_t program : programs) {
            const int status = statusOf(program);
            EXPECT_NE(status, kFailed);
            reports += status;
        }
        EXPECT_EQ(std::ssize(company.rows("select distinct srhrequestno" + newer)), wanted);
        EXPECT_EQ(std::stoi(newest(company, "srhrequestid")), oldId + wanted) << "a gap between the ids";
        EXPECT_EQ(std::ssize(company.rows(lines)), oldLines + 3 * wanted);
        EXPECT_EQ(brokenRequests(company.path(), oldId), "");
    });
    report.add(cases.row("four programs at once: requests, numbers, ids, lines", "company"));
    report.add({"four programs at once: reports with a second OK", static_cast<double>(reports),
                std::max(1.0, static_cast<double>(wanted) / 100), "of " + std::to_string(wanted) + " saves"});
}

} // namespace endurance
