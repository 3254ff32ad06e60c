// The request editor: the header of one request, the list of its lines, and saving.
#pragma once

#include "common/ModuleForm.h"
#include "forms/Buttons.h"
#include "forms/ComboBox.h"
#include "forms/ListView.h"
#include "forms/TextBox.h"

#include <optional>
#include <string>
#include <vector>

namespace goodsreq {

/// Sub-items of a request line in `lvwrequest`; the line's own text is its serial number.
enum LineColumn {
    kLineItemCode = 1,
    kLineItemName,
    kLineGoodQty,
    kLineBadQty,
    kLineItemId,
    kLinePrice,
    kLineUnit,
};

inline constexpr const char* kLinesMissing =
    "Not all lines of this request could be read. It can be looked at, but not changed.";

constexpr int kMostWholeDigits = 15; ///< of a line's numbers; three more behind the point are all that a column holds

class frmRequest : public ModuleForm {
public:
    explicit frmRequest(Module& module);

    forms::Label lblRequestNo{*this, "lblRequestNo"};
    forms::TextBox txtRequestNo{*this, "txtRequestNo"};
    forms::Label lblrequestDate{*this, "lblrequestDate"};
    forms::TextBox txtrequestDate{*this, "txtrequestDate"};
    forms::Label Label1{*this, "Label1"};
    forms::ComboBox cboShop{*this, "cboShop"};
    forms::Label lblRemarks{*this, "lblRemarks"};
    forms::TextBox txtRemarks{*this, "txtRemarks"};
    forms::ListView lvwrequest{*this, "lvwrequest"};
    forms::CheckBox chkTransFinished{*this, "chkTransFinished"};
    forms::CommandButton cmdOk{*this, "cmdOk"};
    forms::CommandButton cmdCancel{*this, "cmdCancel"};
    forms::MenuItem mnuAdd, mnuEdit, mnudel, mnuCancel;
    forms::Menu mnulist;

    /// Row that line entry is at: for a new line the number of lines at its opening, for a change the line's number.
    std::int16_t CurrentLineIndex = 0;

    /// True when the list holds no line; with `checkQuantities` also when no line has good plus bad quantity above
    /// zero.
    bool HasNoQuantities(bool checkQuantities) const;
    /// Whether the supplying shop carries the item; says so when it does not and a message is asked for.
    bool PresentInCurrentShop(std::int32_t itemId, bool wantMessage);
    /// Appends a line for each item whose reorder level exceeds the shop's whole stock. No command of the screen runs
    /// it; it serves other screens of the suite's build.
    void FillReorderSuggestions();
    bool holdsWork() override { return cmdOk.enabled() && changed().value_or(true); }

private:
    void design() override;
    void onLoad() override;
    void onActivate() override;
    void onQueryUnload(bool& cancel, forms::CloseReason reason) override;

    // Header.
    void fillShops();
    void openForEditing();
    /// OK, remarks and tick go together.
    void setChangeable(bool changeable);
    void shopChosen();
    void selectShop(std::int32_t shopId);
    /// Whether the date box holds a date; says so where it does not.
    bool dateRead();
    bool isNew() const { return session().editMode == "N"; }
    /// Whether something was entered that closing would lose; nothing where that cannot be told.
    std::optional<bool> changed();

    // Lines.
    void loadLines();
    void addLine();
    void editLine();
    void deleteLine();
    void showLineMenu();
    void showLineToolTips(forms::ListItem& line);

    // Saving.
    void save();
    bool validated();
    /// Whether each line holds numbers where the suite's helper puts them into statements; says which does not.
    bool linesHoldNumbers();
    /// Why a request is not stored.
    struct Refusal {
        std::string message;
        forms::Control* toMend = nullptr; ///< what the user can mend it in; none where it is final
    };
    /// Stores the request in one transaction. False where it is refused; the user was told then.
    bool store();
    /// The part of it within the transaction.
    std::optional<Refusal> write();
    /// The remarks that the header's column cannot hold.
    std::optional<Refusal> tooLong(const Recordset& header);
    bool liesBeforeTheRegister();
    bool RequestNoExists();
    /// After a commit whose outcome nobody knows: the id of the request of that number, 0 where it is not this one.
    std::int32_t idStoredBefore();
    /// What the boxes and the list hold of the request.
    std::vector<std::string> contents() const;
    std::string makeRequestNo();
    std::optional<Refusal> SaveNewRequest();
    std::optional<Refusal> UpdateRequest(std::int16_t id);
    void writeLines(std::int32_t id);
    std::string userName();

    std::string shopCondition(const std::string& column) const { return column + std::to_string(session().shopId); }

    CommonDb db_;
    CommonGen gen_;
    bool justLoaded_ = false;    ///< until the first activation
    bool linesComplete_ = false; ///< a save would delete the lines that could not be loaded
    bool saving_ = false;        ///< a second OK meanwhile is ignored
    bool remembered_ = false;    ///< the auditing service knows what the boxes held at first
    bool closingFailed_ = false; ///< once the editor could not be closed, as nobody could tell what had changed
    double priceValue_ = 0;      ///< selling price of each line of a plain shop request
    /// What a save sent under the number in its box. It stays with that number where nobody heard of the commit.
    struct Sent {
        automation::Value time; ///< the server's
        std::string user;
        std::vector<std::string> contents;
    };
    std::optional<Sent> sent_;
    std::int32_t requestId_ = 0; ///< 0 until lines are loaded, or the header of a new request is written
};

} // namespace goodsreq
