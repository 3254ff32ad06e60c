// Line entry: one line of a request is entered or changed and written straight into the editor's list.
#pragma once

#include "common/Fetch.h"
#include "common/ModuleForm.h"
#include "forms/Buttons.h"
#include "forms/ComboBox.h"
#include "forms/ListView.h"
#include "forms/TextBox.h"

namespace goodsreq {

/// Refuses a fraction, as it is typed and again at OK.
inline constexpr const char* kIntegerOnly = "Only Integer Quantity is allowed";

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

    void EnableOrDisableNavigationButtons();
    /// Shows the editor's selected line. Its item cannot be changed.
    void ShowSelectedLine();
    /// Loads one item that both shops carry into `cboItem`; with item id 0 the id is looked up from the packing barcode. An
    /// item that is not carried by both empties the barcode box and leaves the combo without an entry.
    void DisplayBarcodeItemDetails(const std::string& strBarcode, std::int32_t lngItemid);
    /// Makes the item the combo's one entry, not chosen yet.
    void offerItem(const std::string& description, std::int32_t itemId);
    /// The same, and chooses it.
    void showItem(const std::string& description, std::int32_t itemId);
    /// Lists the packing types of the chosen item; empties the list and `strItemCode` where none is chosen.
    void showPackings();

private:
    void design() override;
    void onLoad() override;
    void onActivate() override;

    // Item resolution.
    void resolveBarcode();
    bool foundByBarcode(const std::string& code);
    bool foundByShortcut();
    void findByItemCode(const std::string& code);
    void focusAfterResolution();
    void refuseCode(const std::string& message);
    void readItemTypeFilter();
    std::string carriedByBothShops() const;
    void itemChosen();
    void fetchItem();
    void QuickFetch();
    std::int16_t defaultFetchColumn(const std::vector<FetchColumn>& columns);
    void fnGetDeptCurrID(std::int32_t lngshopid);
    void fillPackings();

    // Boxes.
    void filterNumber(forms::TextBox& box, std::int16_t& character);
    bool acceptsNumber(forms::TextBox& box, const std::string& whole);
    void quantityKey(std::int16_t& character);
    void quantityEntered();
    void showValueAsToolTip(forms::TextBox& box, const char* pattern);

    // The line.
    void commitLine();
    bool checked();
    bool fnItemAlreadyInList() const;
    void addLine(forms::ListView& list);
    void writeLine(forms::ListItem& line);
    void prepareNextLine();
    void goTo(int row);
    bool isNewLine() const { return session().strLineMode == "N"; }
    bool showsPrice() const { return session().screenId != kGoodsRequestToShop; }
    forms::ListView& lines() const;

    CommonDb db_;
    CommonGen gen_;
    Fetch fetch_;
    bool justLoaded_ = false;
    bool committing_ = false;     ///< a second OK meanwhile is ignored
    std::int16_t shopId_ = 0;     ///< whose department and currency prices are asked in
    std::int32_t enteredItem_ = 0; ///< the item that was chosen when the focus left the combo
};

} // namespace goodsreq
