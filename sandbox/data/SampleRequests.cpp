#include "sandbox/data/SampleRequests.h"

#include "sandbox/data/SampleCompany.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <map>

namespace sandbox {

namespace {

constexpr int kDaysBack = 60;

constexpr const char* kRemarks[] = {"",
                                    "",
                                    "",
                                    "Weekend order",
                                    "Needed before Friday",
                                    "Shelf empty since Tuesday",
                                    "For the spring display",
                                    "Please send with the van",
                                    "Customer is waiting",
                                    "Manager's special",
                                    "Top up after stocktaking",
                                    "Swap for the damaged delivery"};
constexpr const char* kReasons[] = {"Sent by the supplier instead", "Entered twice", "Wrong shop chosen",
                                    "Customer cancelled the order", "Stock turned up in the back room"};

std::string dayText(int daysBeforeProcessDate) {
    using namespace std::chrono;
    const sys_days process{year(kSampleProcessDate.year) / month(static_cast<unsigned>(kSampleProcessDate.month)) /
                           day(static_cast<unsigned>(kSampleProcessDate.day))};
    const year_month_day date{process - days(daysBeforeProcessDate)};
    char text[16];
    std::snprintf(text, sizeof text, "%04d%02u%02u", static_cast<int>(date.year()), static_cast<unsigned>(date.month()),
                  static_cast<unsigned>(date.day()));
    return text;
}

std::string timeText(int secondsOfDay) {
    char text[16];
    std::snprintf(text, sizeof text, "%02d:%02d:%02d", secondsOfDay / 3600 % 24, secondsOfDay / 60 % 60,
                  secondsOfDay % 60);
    return text;
}

/// Items that the shop may request from the other: active, of the shop's kind, and carried by both.
std::vector<const SampleItem*> itemsBetween(const std::vector<SampleItem>& items, int shop, int other) {
    std::vector<const SampleItem*> common;
    for (const SampleItem& item : items)
        if (item.active && item.typeB == (shop == kTradeShop) && item.shops.contains(shop) &&
            item.shops.contains(other))
            common.push_back(&item);
    return common;
}

struct Request {
    int shop = 0;
    int daysBack = 0;
};

/// Who asks when: most requests are the main shop's, and each shop's come by date.
std::vector<Request> planRequests(Random& random) {
    constexpr int kMainShare = 220;
    constexpr int kOthers[] = {2, 3, 4, 5, kTradeShop};
    std::vector<Request> plan;
    for (int i = 0; i < kSampleRequests; ++i) {
        const int shop = i < kMainShare ? kMainShop : kOthers[i % static_cast<int>(std::size(kOthers))];
        plan.push_back({shop, random.between(1, kDaysBack)});
    }
    std::ranges::stable_sort(plan, [](const Request& a, const Request& b) {
        return std::pair(a.shop, -a.daysBack) < std::pair(b.shop, -b.daysBack);
    });
    return plan;
}

} // namespace

const char* userName(int userId) {
    static constexpr const char* kNames[] = {"Margaret Ellis", "Tom Barker", "Priya Ramanathan-Whitlock", "Owen Pryce"};
    return kNames[userId - 1];
}

void writeRequests(const Rows::Execute& execute, const std::vector<SampleItem>& items, Random& random) {
    Rows headers(
        execute, "mesRequesttoShopHeader",
        "srhrequestid,srhshopid,srhrequestno,srhrequestdate,SRHrequestTime,srhtoShopid,SRHremarks,srhrecaddUser,"
        "srhTransfinished,srhNoofDetails,srhtype,srhused,SRHcancelled,srhcancelledRemarks");
    Rows details(execute, "mesRequesttoShopDetail",
                 "srdrequestid,srdshopid,srditemid,srdtoshopid,srdgoodqty,srdbadQty,srdSellingprice");

    std::map<std::pair<int, int>, std::vector<const SampleItem*>> common;
    std::map<int, int> lastId;                      ///< by shop
    std::map<std::pair<int, bool>, int> lastNumber; ///< by shop and kind
    for (const Request& request : planRequests(random)) {
        const int id = ++lastId[request.shop];
        const bool isSale = random.percent(40);

        // The first of all went to a shop that has closed since.
        int other = request.shop == kMainShop && id == 1 ? kClosedShop : 0;
        while (other == 0 || other == request.shop) other = random.between(1, kTradeShop);
        const auto carriedByBoth = [&](int supplier) -> std::vector<const SampleItem*>& {
            auto [found, isNew] = common.try_emplace({request.shop, supplier});
            if (isNew) found->second = itemsBetween(items, request.shop, supplier);
            return found->second;
        };
        if (carriedByBoth(other).empty()) other = kMainShop;
        std::vector<const SampleItem*> lines = carriedByBoth(other);

        const int wanted = random.between(1, 15);
        const int count = std::min(wanted, static_cast<int>(lines.size()));
        for (int i = 0; i < count; ++i) {
            std::swap(lines[static_cast<std::size_t>(i)],
                      lines[static_cast<std::size_t>(random.between(i, static_cast<int>(lines.size()) - 1))]);
            const SampleItem& item = *lines[static_cast<std::size_t>(i)];
            const bool isWeighed = item.product.unit == Unit::kilogram || item.product.unit == Unit::metre;
            const std::string part = isWeighed && random.percent(50) ? ".500" : ".000";
            const std::string damaged = random.percent(10) ? "1.000" : "0.000";
            details.add({id, request.shop, item.id, other, Literal::plain(std::to_string(random.between(1, 24)) + part),
                         Literal::plain(damaged),
                         Literal::plain(isSale ? money(item.product.pence * 85 / 100) + "0" : "0.000")});
        }

        const bool isCancelled = random.percent(9);
        const bool isConfirmed = !isCancelled && random.percent(25);
        const bool isUsed = isConfirmed && random.percent(50);
        const int user = random.between(1, 2);
        const std::string day = dayText(request.daysBack);
        const std::string number = (isSale ? "IS/" : "GR/") + std::to_string(++lastNumber[{request.shop, isSale}]);
        const std::string reason = kReasons[random.below(static_cast<int>(std::size(kReasons)))];
        headers.add({id, request.shop, number, day, day + " " + timeText(random.between(8 * 3600, 18 * 3600)), other,
                     kRemarks[random.below(static_cast<int>(std::size(kRemarks)))], userName(user), isConfirmed ? 1 : 0,
                     count, isSale ? "s" : "r", isUsed ? 1 : 0, isCancelled ? 1 : 0,
                     isCancelled ? Literal(std::string(userName(user)) + ":" + reason) : Literal(nullptr)});
    }
    headers.flush();
    details.flush();
}

} // namespace sandbox
