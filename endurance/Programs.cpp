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
using Microseconds = std::chrono::duration<double, std::micro>;
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

/// From the register to a request of that many lines, ready to be stored.
void entersRequest(Till& till, const std::vector<SampleItem>& items, std::size_t lines) {
    till.another({items.begin(), items.begin() + static_cast<std::ptrdiff_t>(lines)});
}

/// How many lines the n-th request of each of several programs has.
std::size_t linesOf(int request) { return static_cast<std::size_t>(request) % 5 + 1; }

/// Stores so many requests. How often a second OK was needed.
int saveMany(const CompanyFile& company, const std::vector<SampleItem>& items, int requests, std::int16_t user) {
    Till till(company, {.userId = user});
    till.system.sleeps = true;
    till.opens();
    int reports = 0;
    for (int i = 0; i < requests; ++i) {
        entersRequest(till, items, linesOf(i));
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
    Microseconds usual(20'000); // that a save takes
    for (int i = 0; i < kills; ++i) {
        const std::size_t lines = random() % items.size() + 1;
        const int fullSaves = static_cast<int>(random() % 2);
        const double moment = std::uniform_real_distribution(0.0, 1.1)(random);
        cases.run("kill " + std::to_string(i + 1), [&] {
            int words[2] = {};
            if (pipe(words) != 0) throw std::runtime_error("No pipe could be made");
            const pid_t program = forked([&] {
                Till till(company);
                for (till.opens();;) {
                    entersRequest(till, items, lines);
                    dprintf(words[1], "b");
                    till.user.clicks("cmdOk");
                    dprintf(words[1], "e");
                }
                return 0;
            });
            close(words[1]);
            const auto hears = [&](char wanted) {
                char word = 0;
                return read(words[0], &word, 1) == 1 && word == wanted;
            };
            for (int save = 0; save < fullSaves; ++save) {
                EXPECT_TRUE(hears('b'));
                const auto begin = std::chrono::steady_clock::now();
                EXPECT_TRUE(hears('e'));
                usual = (usual + (std::chrono::steady_clock::now() - begin)) / 2;
            }
            EXPECT_TRUE(hears('b'));
            std::this_thread::sleep_for(usual * moment);
            kill(program, SIGKILL); // as a power cut does: nothing of it runs any more
            statusOf(program);
            if (!hears('e')) ++inside;
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
    const int each = options.quick ? 15 : 250;
    const CompanyFile company;
    const std::vector<SampleItem> items = support::requestableItems(company, 1, kSupplier, 5);
    const int oldId = std::stoi(newest(company, "srhrequestid"));
    const auto count = [&](const std::string& what) {
        return std::stol(company.value("select count(*) from " + what));
    };
    const std::string newer = "mesRequesttoShopHeader where srhshopid = 1 and srhrequestid > " + std::to_string(oldId);
    const std::string allLines = "mesRequesttoShopDetail where srdshopid = 1";
    const long oldLines = count(allLines);
    std::vector<pid_t> programs;
    for (int i = 0; i < kPrograms; ++i)
        programs.push_back(
            forked([&] { return saveMany(company, items, each, static_cast<std::int16_t>(i % 2 + 1)); }));
    const long wanted = kPrograms * each;
    long lines = 0, reports = 0, ended = 0;
    for (int i = 0; i < each; ++i) lines += kPrograms * static_cast<long>(linesOf(i));
    for (const pid_t program : programs) {
        const int status = statusOf(program);
        if (status == kFailed) continue;
        ++ended;
        reports += status;
    }
    const struct {
        const char* name;
        long wanted, found;
    } rows[] = {{"programs that ended well", kPrograms, ended},
                {"requests stored", wanted, count(newer)},
                {"numbers", wanted, std::ssize(company.rows("select distinct srhrequestno from " + newer))},
                {"ids without a gap", wanted, std::stoi(newest(company, "srhrequestid")) - oldId},
                {"lines", lines, count(allLines) - oldLines}};
    const std::string programsAt = "four programs at once: ";
    for (const auto& row : rows)
        report.add({programsAt + row.name, static_cast<double>(std::abs(row.wanted - row.found)), 0,
                    "missing of " + std::to_string(row.wanted)});
    report.add({programsAt + "reports with a second OK", static_cast<double>(reports),
                std::max(1.0, static_cast<double>(wanted) / 100), "of " + std::to_string(wanted) + " saves"});
    Cases cases;
    cases.run("the requests of four programs", [&] { EXPECT_EQ(brokenRequests(company.path(), oldId), ""); });
    report.add(cases.row(programsAt + "what holds of every request", "company"));
}

} // namespace endurance
