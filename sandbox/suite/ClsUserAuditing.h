// Stand-in for PosUserAuditing.clsUserAuditing: the audit trail, and the memory of what a form's boxes held.
#pragma once

#include "automation/RunTimeError.h"
#include "sandbox/suite/StandIn.h"

#include <map>

namespace sandbox {

class ClsUserAuditing : public StandIn<ClsUserAuditing> {
public:
    static constexpr const char* kClassName = "clsUserAuditing";
    static const automation::Members<ClsUserAuditing>& members();

private:
    void OpenObject(automation::Arguments arguments);
    /// Writes on the session's connection, so the record belongs to the transaction that is open there.
    void SaveUserAuditingInfo(const std::string& documentId, const std::string& documentNo, const std::string& action,
                              automation::Object* form);
    void SaveInToTag(automation::Object& form);
    bool DataChanged(automation::Object& form) const;
    std::string changedControls(automation::Object& form) const;
    /// What the control held when it was last remembered; its present text where it never was.
    std::string remembered(automation::Object& form, automation::Object& control) const;

    automation::ObjectPtr connection_;
    std::int32_t company_ = 0;
    std::int32_t shop_ = 0;
    std::int32_t user_ = 0;
    std::int32_t screen_ = 0;
    automation::Date loggedTime_;
    /// By form and control. For tags that their form has overwritten since.
    std::map<std::pair<std::string, std::string>, std::string> memory_;
};

} // namespace sandbox
