// Stand-in for CommonModule.clsCommonDB: look-ups, next numbers, filling of boxes and writing of list lines.
#pragma once

#include "sandbox/suite/StandIn.h"

namespace sandbox {

class ClsCommonDB : public StandIn<ClsCommonDB> {
public:
    static constexpr const char* kClassName = "clsCommonDB";
    static const automation::Members<ClsCommonDB>& members();

private:
    automation::Value fnReturnField(const std::string& field, const std::string& criterion);
    automation::Value fnReturnRecords(const std::string& sql);
    automation::Value fnGetNextMaxNo(const std::string& field);
    /// One row into the table for each line of the list, by position; all or none is the caller's transaction's
    /// business.
    void fnUpdateListViewDetails(automation::Arguments arguments);
    void populateComboorList(automation::Object& box, const std::string& valueField, const std::string& textField,
                             const std::string& condition);

    automation::ObjectPtr connection_;
    std::string table_;
};

} // namespace sandbox
