// The session: what the host handed over, and what the screens share.
#pragma once

#include "common/RequestKind.h"
#include "common/SuiteServices.h"

#include <string>

namespace goodsreq {

/// No supplying shop.
inline constexpr std::int32_t kNoShop = -1;

/// Keeps its values for the life of the process; the next Show overwrites the host's share of it.
struct Session {
    // From the host.
    automation::ObjectPtr connection;
    std::int32_t companyId = 0;
    std::int32_t userId = 0;
    std::int16_t shopId = 0; ///< the requesting shop
    std::int32_t screenId = 0;
    std::string messageBoxCaption;
    automation::Date processDate;

    // Shared by the screens.
    std::string editMode;                  ///< of the editor: "N" a new request, "E" an existing one
    std::string strLineMode;               ///< of line entry: "N" adds lines, "E" changes them
    std::int32_t lngOtherShopID = kNoShop; ///< the supplying shop
    std::string strItemTypeFilter;         ///< condition that keeps the item families apart, by the kind of shop
    std::string cancelReason;
    std::int32_t selectedRequestId = 0;
    std::string userName;      ///< kept for the session
    automation::Date fromDate; ///< the register shows requests from this day on
    std::string userRights;
    bool hasEveryRight = false; ///< for a user without a row of rights
    bool blnIntegerQuantity = false;
    bool aliasInUse = false; ///< the site has a word of its own for a shop:
    std::string alias;       ///< which may not have been read yet
    bool namesTheShop() const { return aliasInUse && !alias.empty(); }
    bool preserveItemDetails = false;

    const RequestKind& kind() const { return requestKind(screenId); }

    // Of the register that is open; its load makes them.
    FormColour formColour;
    UserAuditing auditing;
};

} // namespace goodsreq
