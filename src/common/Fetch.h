// The suite's item search dialog, Fetch.clsFetch, by its members.
#pragma once

#include "common/SuiteServices.h"

#include <vector>

namespace goodsreq {

struct FetchColumn {
    const char* field;
    const char* caption;
    std::int16_t width; ///< twips; 0 hides the column
};

/// What the dialog is to search, and how it looks.
struct FetchRequest {
    automation::ObjectPtr connection;
    std::string messageBoxTitle;
    std::int32_t userId = 0;
    std::string query;
    std::vector<FetchColumn> columns;
    std::int16_t defaultColumn = 0; ///< index into `columns` of the one to search in first
    std::string caption;
    std::int16_t shopId = 0;
    std::int32_t screenId = 0;
    bool preserveData = false; ///< the shop keeps what was last searched
};

class Fetch : public ServiceFace {
public:
    using ServiceFace::ServiceFace;
    /// Shows the dialog modally. Returns the record set that stands on the chosen row; null when the user cancelled.
    /// `shared` is the module's record set for the choice; the dialog may replace it.
    automation::ObjectPtr show(const FetchRequest& request, automation::Value& shared) const;
};

} // namespace goodsreq
