// The suite's item search dialog, Fetch.clsFetch, by its members.
#pragma once

#include "common/Recordset.h"
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
    /// Shows the dialog modally. Returns the record set that stands on the chosen row: `choice`, or one that the dialog
    /// put in its place. One that holds no object when the user cancelled.
    Recordset show(const FetchRequest& request, const automation::ObjectPtr& choice) const;

private:
    /// Calls the member with the value; where it is a property that can only be written, puts it.
    void tell(const char* member, automation::Value value) const;
    /// A list goes as an array of variants; where the component takes none, by reference as an array of its own kind.
    void tellList(const char* member, automation::Array list) const;
};

} // namespace goodsreq
