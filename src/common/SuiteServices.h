// Typed faces of the suite's smaller helper components; each is a thin class over the late-bound object.
#pragma once

#include "automation/Object.h"
#include "forms/ComboBox.h"
#include "forms/Grid.h"
#include "forms/TextBox.h"

#include <string>

namespace goodsreq {

/// What every face is: an object by its members. Error 91 where the component was not created.
class ServiceFace {
public:
    ServiceFace() = default;
    explicit ServiceFace(automation::ObjectPtr object) : object_(std::move(object)) {}
    const automation::ObjectPtr& pointer() const { return object_; }

protected:
    /// The object, kept alive over a call in which the face may be dropped.
    automation::ObjectPtr object() const;

private:
    automation::ObjectPtr object_;
};

/// CommonModule.clsCommonGen: general helpers for boxes.
class CommonGen : public ServiceFace {
public:
    using ServiceFace::ServiceFace;
    /// Selects the entry whose item data equals the value; none where there is no such entry.
    void SelectComboItemByValue(forms::ComboBox& box, std::int32_t value) const;
    /// Selects the entry whose text equals `text`; none where there is no such entry.
    void SelectComboItemByname(forms::ComboBox& box, const std::string& text) const;
    /// The numeric key filter: sets `character` to 0 where the box, read as a number, cannot take it.
    void TextValidateNum(forms::TextBox& box, std::int16_t& character) const;
};

/// Formcolor.clsFormcolor: the suite's colours.
class FormColour : public ServiceFace {
public:
    using ServiceFace::ServiceFace;
    void Applyformcolor(forms::Form& form) const;
};

/// PosUserAuditing.clsUserAuditing: the audit trail, and the memory of what a form's boxes held.
class UserAuditing : public ServiceFace {
public:
    using ServiceFace::ServiceFace;
    void OpenObject(const automation::ObjectPtr& connection, std::int32_t companyId, std::int16_t shopId,
                    std::int32_t userId, std::int32_t screenId, automation::Date now) const;
    /// The start of the action about to be audited.
    void setLoggedTime(automation::Date now) const;
    /// Writes one audit record on the session's connection. `form` is the editor for a save, null for a deletion.
    void SaveUserAuditingInfo(const std::string& documentId, const std::string& documentNo, const std::string& action,
                              forms::Form* form = nullptr) const;
    void SaveInToTag(forms::Form& form) const;
    bool DataChanged(forms::Form& form) const;
};

/// MasterGridSetting.clsMasterGridSetting: the user's saved layout of a register grid.
class GridSettings : public ServiceFace {
public:
    using ServiceFace::ServiceFace;
    void fnGridSettings(std::int32_t userId, std::int32_t companyId, forms::Grid& grid,
                        const automation::ObjectPtr& connection) const;
};

} // namespace goodsreq
