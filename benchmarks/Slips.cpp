// Printing a slip.
#include "benchmarks/Bare.h"
#include "benchmarks/Benchmarks.h"
#include "benchmarks/Timing.h"
#include "tests/support/Till.h"

#include "slip/SlipPrinter.h"

#include <filesystem>
#include <fstream>
#include <sstream>
#include <stdexcept>

namespace bench {
namespace {

constexpr double kTimesBare = 2; ///< the most that printing may take
constexpr int kLines = 5000;
constexpr int kRequest = 30000;
constexpr int kFirstItem = 100'000;
constexpr const char* kPort = "LPT1";

/// A company with a request of many lines, each of an item of its own that has a cost and a selling price.
class Printing {
public:
    Printing() {
        std::string items, packings, prices, lines;
        for (int i = 0; i < kLines; ++i) {
            const std::string id = std::to_string(kFirstItem + i);
            const char* comma = i == 0 ? "(" : ",(";
            items += comma + id + ",'BN" + id + "','Item for the long slip " + id + "',1,1," +
                     std::to_string(10'000 + i * 25) + ",'G',1)";
            packings += comma + id + ",1,1,1)";
            prices += comma + id + ",1,1," + std::to_string(20'000 + i * 35) + ")";
            lines += comma + std::to_string(kRequest) + ",1," + id + ",2,'" + std::to_string(i % 90 + 1) +
                     ".250','0.000','0.000')";
        }
        bare.run(
            "INSERT INTO mesRequesttoShopHeader (srhrequestid, srhshopid, srhrequestno, srhrequestdate, srhtoShopid, "
            "SRHremarks, srhTransfinished, srhNoofDetails, srhtype, srhused, SRHcancelled) VALUES "
            "(30000, 1, 'GR/30000', 46111 * 86400000, 2, 'long', 0, 5000, 'r', 0, 0);"
            "INSERT INTO aitem (itemid, itemcode, ItemDescription, UnitsId, itemcategoryid, itemrate, itemtype, "
            "Active) VALUES " +
            items + ";INSERT INTO aitempackingdetail (itemid, packingtypeid, RetailPacking, Active) VALUES " +
            packings + ";INSERT INTO losShopItemShipmentDetail (ItemId, PackingTypeId, ShopId, SellingPrice) VALUES " +
            prices +
            ";INSERT INTO mesRequesttoShopDetail (srdrequestid, srdshopid, srditemid, srdtoshopid, srdgoodqty, "
            "srdbadQty, srdSellingprice) VALUES " +
            lines);
    }

    support::CompanyFile file;
    Bare bare{file.path()};
};

std::string plainSettings() {
    std::ifstream stream(std::filesystem::path(PROJECT_DIR) / "sandbox/data/ShopSetting.txt", std::ios::binary);
    if (!stream) throw std::runtime_error("The sandbox has no print settings");
    return {std::istreambuf_iterator<char>(stream), {}};
}

void switchOn(std::string& settings, const std::string& key) {
    const std::string off = key + " :=0";
    const std::size_t at = settings.find(off);
    if (at == std::string::npos) throw std::runtime_error("The print settings do not switch " + key + " off");
    settings[at + off.size() - 1] = '1';
}

double measure(Printing& company, const std::string& settings, int repeats) {
    support::Till till(company.file);
    till.system.files[PROJECT_DIR "/sandbox/data\\ShopSetting.txt"] = settings;
    till.opens();
    const auto print = [&] {
        return busy([&] {
            till.user.happens(
                [&] { goodsreq::SlipPrinter(till.module, goodsreq::SlipPrinter::Target::port).PrintBill(kRequest); });
        });
    };
    const std::size_t before = till.statements().size();
    print();
    const std::vector<std::string> sent = till.statements();
    till.connection->trace(nullptr); // What writes the statements down is the test's, and the bare side does not do it.
    const std::vector<Bare::Step> steps =
        company.bare.prepare({sent.begin() + static_cast<std::ptrdiff_t>(before), sent.end()});

    std::vector<std::string> lines;
    std::istringstream slip(till.system.files.at(kPort));
    for (std::string line; std::getline(slip, line);) lines.push_back(line + "\n");
    if (lines.size() < kLines) throw std::runtime_error("The slip has not all of its lines");
    std::string written;
    const auto bare = [&] {
        written.clear();
        return busy([&] {
            company.bare.run(steps);
            for (const std::string& line : lines) written += line;
        });
    };
    return race(repeats, kTimesBare, print, bare).ratio();
}

} // namespace

void measureSlips(const Options& options, Report& report) {
    Printing company;
    std::string settings = plainSettings();
    report.add({"print a slip of 5000 lines", measure(company, settings, repeats(options)), kTimesBare, "times bare"});
    switchOn(settings, "showcostintrans");
    switchOn(settings, "showspintransrep");
    report.add({"print a slip of 5000 lines with prices and costs", measure(company, settings, repeats(options)),
                kTimesBare, "times bare"});
}

} // namespace bench
