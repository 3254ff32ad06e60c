// Programs that save: one is killed again and again, four work in one shop at once.
#include "endurance/Endurance.h"
#include "tests/editor/Till.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <csignal>
#include <cstring>
#include <list>
#include <random>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace endurance {
namespace {

using namespace editor;
using Say = std::function<void(const std::string&)>;
using Microseconds = std::chrono::duration<double, std::micro>;

/// A program beside this one: it goes on after a fork, and its words come through a pipe.
class Child {
public:
    /// Starts `act` in a process of its own; what it says reaches hears(). No thread may run at that time.
    explicit Child(const std::function<void(const Say&)>& act) {
        int ends[2];
        std::fflush(nullptr);
        if (pipe(ends) != 0 || (process_ = fork()) < 0) throw std::runtime_error("No program could be started");
        if (process_ > 0) {
            close(ends[1]);
            words_ = fdopen(ends[0], "r");
            return;
        }
        close(ends[0]);
        int status = 1;
        try {
            act([out = ends[1]](const std::string& line) { dprintf(out, "%s\n", line.c_str()); });
            status = 0;
        } catch (const std::exception& error) {
            std::fprintf(stderr, "%s\n", error.what());
        }
        std::fflush(nullptr);
        _exit(status); // The files and objects of the program that forked are not this one's to clear away.
    }
    Child(const Child&) = delete;
    Child& operator=(const Child&) = delete;
    ~Child() {
        kill();
        std::fclose(words_);
    }

    /// The next line that it says, without its end; empty once it has ended.
    std::string hears() {
        char line[100] = "";
        if (std::fgets(line, sizeof line, words_)) line[std::strcspn(line, "\n")] = '\0';
        return line;
    }
    /// Ends it as a power cut does: nothing of it runs any more.
    void kill() {
        if (process_ <= 0) return;
        ::kill(process_, SIGKILL);
        ends();
    }
    /// Waits for its end. Whether it ended by itself, and well.
    bool ends() {
        int status = 0;
        const bool ended = waitpid(process_, &status, 0) == process_;
        process_ = -1;
        return ended && WIFEXITED(status) && WEXITSTATUS(status) == 0;
    }

private:
    pid_t process_ = -1;
    std::FILE* words_ = nullptr;
};

int highestId(const CompanyFile& company) {
    return std::stoi(company.value("select max(srhrequestid) from mesRequesttoShopHeader where srhshopid = 1"));
}

/// From the register to a request of that many lines, ready to be stored.
void entersRequest(Till& till, const std::vector<SampleItem>& items, std::size_t lines) {
    till.another({items.begin(), items.begin() + static_cast<std::ptrdiff_t>(lines)});
}

/// What one of several programs did: "REQUESTS LINES REPORTS".
void saveMany(const CompanyFile& company, const std::vector<SampleItem>& items, int requests, unsigned seed,
              std::int16_t user, const Say& say) {
    std::mt19937 random(seed);
    Till till(company, {.userId = user});
    till.system.sleeps = true;
    till.opens();
    std::size_t lines = 0;
    int reports = 0;
    for (int i = 0; i < requests; ++i) {
        const std::size_t count = random() % 5 + 1;
        entersRequest(till, items, count);
        till.user.clicks("cmdOk");
        for (int again = 0; till.user.message() && again < 200; ++again) {
            till.readsReport();
            ++reports;
            till.user.clicks("cmdOk");
        }
        if (till.user.form() != "frmMaster") throw std::runtime_error("A request could not be stored");
        lines += count;
    }
    say(std::to_string(requests) + " " + std::to_string(lines) + " " + std::to_string(reports));
}

} // namespace

void killSaves(const Options& options, Report& report) {
    const int kills = options.quick ? 25 : 500;
    std::mt19937 random(options.seed);
    const CompanyFile company;
    const std::vector<SampleItem> items = support::requestableItems(company, 1, kSupplier, 12);
    const int oldId = highestId(company);
    Cases cases;
    int inside = 0;
    Microseconds usual(20'000); // that a save takes
    for (int i = 0; i < kills; ++i) {
        const std::size_t lines = random() % items.size() + 1;
        const int fullSaves = static_cast<int>(random() % 2);
        const double moment = std::uniform_real_distribution(0.0, 1.1)(random);
        cases.run("kill " + std::to_string(i + 1), [&] {
            Child child([&](const Say& say) {
                Till till(company);
                for (till.opens();;) {
                    entersRequest(till, items, lines);
                    say("begins");
                    till.user.clicks("cmdOk");
                    say("ends");
                }
            });
            for (int save = 0; save < fullSaves; ++save) {
                EXPECT_EQ(child.hears(), "begins");
                const auto begin = std::chrono::steady_clock::now();
                EXPECT_EQ(child.hears(), "ends");
                usual = (usual + (std::chrono::steady_clock::now() - begin)) / 2;
            }
            EXPECT_EQ(child.hears(), "begins");
            std::this_thread::sleep_for(usual * moment);
            child.kill();
            if (child.hears().empty()) ++inside;
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
    const int oldId = highestId(company);
    const auto count = [&](const std::string& what) {
        return std::stol(company.value("select count(*) from " + what));
    };
    const std::string newer = "mesRequesttoShopHeader where srhshopid = 1 and srhrequestid > " + std::to_string(oldId);
    const std::string allLines = "mesRequesttoShopDetail where srdshopid = 1";
    const long oldLines = count(allLines);
    std::list<Child> programs;
    for (int i = 0; i < kPrograms; ++i)
        programs.emplace_back([&, i](const Say& say) {
            saveMany(company, items, each, options.seed + static_cast<unsigned>(i),
                     static_cast<std::int16_t>(i % 2 + 1), say);
        });
    long requests = 0, lines = 0, reports = 0, ended = 0;
    for (Child& program : programs) {
        long stored[3] = {};
        std::sscanf(program.hears().c_str(), "%ld %ld %ld", &stored[0], &stored[1], &stored[2]);
        ended += program.ends();
        requests += stored[0];
        lines += stored[1];
        reports += stored[2];
    }
    const long wanted = kPrograms * each;
    const struct {
        const char* name;
        long wanted, found;
    } rows[] = {{"programs that ended well", kPrograms, ended},
                {"requests said to be stored", wanted, requests},
                {"requests stored", wanted, count(newer)},
                {"numbers", wanted, std::ssize(company.rows("select distinct srhrequestno from " + newer))},
                {"ids without a gap", wanted, highestId(company) - oldId},
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
