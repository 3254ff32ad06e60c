// Line entry: one line of a request is entered or changed and written straight into the editor's list.
#pragma once

#include "common/Fetch.h"
#include "common/ModuleForm.h"
#include "forms/Buttons.h"
#include "forms/ComboBox.h"
#include "forms/ListView.h"
#include "forms/TextBox.h"

#include <optional>

namespace goodsreq {

/// Refuses a fraction, as it is typed and again at OK.
inline constexpr const char* kIntegerOnly = "Only Integer Quantity is allowed";

/// Condition on the items that a shop deals in: one of kind B in items of type B only, every other in all the others.
std::string itemFamily(const CommonDb& db, std::int16_t shopId);

/// A key with which a code can begin does so in `box`, wherever it was pressed, and is taken. Others, such as Enter or
/// a blank, stay what they are.
void beginCode(forms::TextBox& box, std::int16_t& character);

class frmRequestDetail : public ModuleForm {
public:
    explicit frmRequestDetail(Module& module);

    // The order is the tab order: from the code straight to the quantities and OK, as the counter works.
    forms::Frame Frame1{*this, "Frame1"};
    forms::Label lblBarcode{*this, "lblBarcode"};
    forms::TextBox txtBarcode{*this, "txtBarcode"};
    forms::Label lblQuantity{*this, "lblQuantity"};
    forms::TextBox txtQuantity{*this, "txtQuantity"};
    forms::Label lblBadQuantity{*this, "lblBadQuantity"};
    forms::TextBox txtBadQuantity{*this, "txtBadQuantity"};
    forms::Label lblsellingprice{*this, "lblsellingprice"};
    forms::TextBox txtsellingprice{*this, "txtsellingprice"};
    forms::CommandButton cmdOk{*this, "cmdOk"};
    forms::CommandButton cmdCancel{*this, "cmdCancel"};
    forms::CommandButton cmdbarcode{*this, "cmdbarcode"};
    forms::Label lblNotCarried{*this, "lblNotCarried"};
    forms::Label lblItem{*this, "lblItem"};
    forms::ComboBox cboItem{*this, "cboItem", forms::ComboBox::Style::editable};
    forms::ListView lvwpacktype{*this, "lvwpacktype"};
    forms::CommandButton cmdFirst{*this, "cmdFirst"};
    forms::CommandButton cmdPrev{*this, "cmdPrev"};
    forms::CommandButton cmdNext{*this, "cmdNext"};
    forms::CommandButton cmdLast{*this, "cmdLast"};

    // For the suite's other screens that reach this form; this module itself reads only the last three.
    std::int16_t intindexlist = 0;
    std::int32_t ReqID = 0;
    std::int32_t intITID = 0;
    bool WantMsg = false;
    std::string strItemCode; ///< of the chosen item
    std::int32_t lngOtherShopCurrID = 0;
    std::int32_t lngOtherShopDeptID = 0;

    /// Whether a line is shown that stands in the list: no code and no dialog puts another item into it.
    bool itemStands() const { return session().strLineMode == "E"; }
    void EnableOrDisableNavigationButtons();
    /// Shows the editor's selected line. Its item cannot be changed.
    void ShowSelectedLine();
    /// Loads one item that both shops carry into `cboItem`; with item id 0 the id is looked up from the packing
    /// barcode. An item that is not carried by both empties the barcode box and leaves the combo without an entry.
    void DisplayBarcodeItemDetails(const std::string& strBarcode, std::int32_t lngItemid);
    struct Item {
        std::int32_t id = 0;
        std::string code;
        std::string description;
    };
    /// Makes the item the combo's one entry, not chosen yet. All that line entry shows is of this item from then on.
    void offerItem(const Item& item);
    /// The same, and chooses it.
    void showItem(const Item& item);
    /// The chosen item comes from a dialog that did not ask whether the supplying shop carries it; OK asks then.
    void mayNotBeCarried() { asksSupplier_ = true; }
    /// Leaves line entry without an item, and with nothing of the former one.
    void clearItem();
    /// Lists the packing types of the chosen item.
    void fillPackings();
    bool holdsWork() override { return cmdOk.enabled() && changed(); }

private:
    void design() override;
    void onLoad() override;
    void onActivate() override;
    void onUnload() override { forget(); }
    /// Drops what was made for one session.
    void forget();

    // Item resolution.
    void resolveBarcode();
    bool foundByBarcode(const std::string& code);
    bool foundByShortcut();
    void findByItemCode(const std::string& code);
    void focusAfterResolution();
    void refuseCode(const std::string& message);
    /// A code that is begun where a line may be in progress: it is written first, as by OK. Where it is not, the key is
    /// dropped.
    void scanOnward(std::int16_t& character);
    void noteUnlessCarried();
    void readItemFamily() { session().strItemTypeFilter = itemFamily(db_, session().shopId); }
    std::string carriedByBothShops() const;
    void itemChosen();
    void fetchItem();
    void QuickFetch();
    static std::optional<Item> chosenIn(Recordset rows);
    std::int16_t defaultFetchColumn(const std::vector<FetchColumn>& columns);
    void fnGetDeptCurrID(std::int32_t lngshopid);

    // Boxes.
    void filterNumber(forms::TextBox& box, std::int16_t& character);
    bool acceptsNumber(forms::TextBox& box, const std::string& pasted);
    void quantityKey(std::int16_t& character);
    void quantityEntered();
    void showValueAsToolTip(forms::TextBox& box, const char* pattern);

    // The line.
    /// Whether a line was written, and all that follows done.
    bool commitLine();
    bool checked();
    /// Asks about a number that may be a barcode; `column` of the list holds what the line had.
    bool meant(forms::TextBox& number, int column, const char* what);
    bool fnItemAlreadyInList() const;
    void addLine(forms::ListView& list);
    void writeLine(forms::ListItem& line);
    void prepareNextLine();
    /// Whether the boxes were changed; true where nobody can tell.
    bool changed();
    /// Lets the auditing service remember what the boxes hold now.
    void remember();
    void goTo(int row);
    bool isNewLine() const { return session().strLineMode == "N"; }
    bool showsPrice() const { return session().kind().priced; }
    forms::ListView& lines() const;

    CommonDb db_;
    CommonGen gen_;
    Fetch fetch_;
    bool justLoaded_ = false;
    bool committing_ = false;      ///< a second OK meanwhile is ignored
    bool asksSupplier_ = false;    ///< see mayNotBeCarried
    bool remembered_ = false;      ///< the auditing service knows what the boxes held
    std::int32_t enteredItem_ = 0; ///< the item that was chosen when the focus left the combo
    std::int16_t shopId_ = 0;      ///< whose department and currency prices are asked in
};

} // namespace goodsreq
