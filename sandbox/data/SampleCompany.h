// The sample company: a made-up chain of eight shops with its items, prices, users and requests of the last two months.
#pragma once

#include <functional>
#include <string>

namespace sandbox {

/// The day that the sample company is at; its requests are of the 60 days before.
struct Day {
    int year = 0;
    int month = 0;
    int day = 0;
    bool operator==(const Day&) const = default;
};
inline constexpr Day kSampleProcessDate{2026, 3, 31};

inline constexpr int kSampleCompanyId = 1;
inline constexpr int kGoodsRequest = 1507;         ///< screen id
inline constexpr int kInterDivisionRequest = 1611; ///< screen id

inline constexpr int kSampleShops = 8;
inline constexpr int kMainShop = 1;
inline constexpr int kTradeShop = 6;  ///< of kind B
inline constexpr int kClosedShop = 7; ///< not active any more
inline constexpr int kGardenShop = 8; ///< shares no item category with another

inline constexpr int kFullRightsUser = 1;    ///< "NEDP"
inline constexpr int kNoDeleteUser = 2;      ///< "NEP"
inline constexpr int kAdministrator = 3;     ///< "ADMIN"
inline constexpr int kUserWithoutRights = 4; ///< no row

inline constexpr int kSampleItems = 2000;
inline constexpr int kSampleRequests = 400;

/// Gives the statements that fill an empty company, in the server's dialect, one after the other; the same each time.
void writeSampleCompany(const std::function<void(const std::string& statement)>& execute);

/// The in-store barcode of an item's packing: 13 digits, the last one the check digit.
std::string sampleBarcode(int itemId, int packingTypeId);

/// The check digit of the first 12 digits of an EAN-13.
char ean13CheckDigit(const std::string& digits);

} // namespace sandbox
