// From a code, or the item search, to the one item of the line.
#include "basic/Apostrophes.h"
#include "basic/Conversion.h"
#include "basic/Letters.h"
#include "basic/Numbers.h"
#include "basic/Text.h"
#include "common/Packing.h"
#include "screens/lines/frmRequestDetail.h"

#include <algorithm>

namespace goodsreq {

using automation::Value;

namespace {

/// Shortcut numbers have at most so many digits; what follows them in the box is passed over.
constexpr int kShortcutLength = 4;

const std::vector<FetchColumn>& fetchColumns() {
    static const std::vector<FetchColumn> columns{
        {"ItemID", "Item ID", 0}, {"ItemCode", "Item Code", 2000}, {"ItemDescription", "Item Description", 4000},
        {"Brand", "Brand", 2000}, {"ModelNo", "Model No", 2000},   {"Part_Code", "Part Code", 2000},
    };
    return columns;
}

constexpr std::int16_t kDescriptionColumn = 2;

/// The text of a key with which a code can begin; empty for any other, such as Enter or a blank.
std::string codeBegunBy(std::int16_t character) {
    const auto unit = static_cast<std::uint16_t>(character);
    const bool control = unit <= ' ' || (unit >= 0x7F && unit < 0xA0);
    const bool halfOfALetter = unit >= 0xD800 && unit < 0xE000;
    std::string text;
    if (!control && !halfOfALetter) basic::appendUtf8(text, unit);
    return basic::hasApostrophe(text) ? std::string() : text;
}

} // namespace

std::string itemFamily(const CommonDb& db, std::int16_t shopId) {
    const std::string kind =
        basic::concatText(db.lookUp("ashops", "substring(futurevarchar,1,1)", "ShopID=" + std::to_string(shopId)));
    return basic::ucase(kind) == "B" ? " and a.itemtype ='B'" : " and a.itemtype <>'B'";
}

void frmRequestDetail::resolveBarcode() {
    if (itemStands()) return;
    clearItem();
    readItemFamily();
    const std::string code = basic::trim(txtBarcode.text());
    if (code.empty()) return focusAfterResolution();
    if (foundByBarcode(code)) {
        focusAfterResolution();
        return noteUnlessCarried(); // after the focus has moved, which takes the note away
    }
    if (basic::isNumeric(code) && foundByShortcut()) return;
    findByItemCode(code);
}

bool frmRequestDetail::foundByBarcode(const std::string& code) {
    // clang-format off
    Recordset found = module().openRecordset("select apd.itemid from aitempackingdetail apd, aitem a "
                                             " where apd.packingbarcode=" + quoted(code) + " "
                                             " and apd.itemid = a.itemid" + session().strItemTypeFilter +
                                                 " and apd.Active = 1"
                                                 " and a.Active = 1",
                                             Cursor::keyset, Lock::optimistic);
    // clang-format on
    if (found.eof()) return false;
    found.close();
    DisplayBarcodeItemDetails(code, 0);
    if (cboItem.hasSelection()) fillPackings();
    return true;
}

bool frmRequestDetail::foundByShortcut() {
    const std::string shortcut = basic::numberText(basic::val(basic::left(txtBarcode.text(), kShortcutLength)));
    // clang-format off
    Recordset found = module().openRecordset("select ai.itemid from ashopitemDetail ai, aitem a"
                                             " Where a.itemid = ai.itemid"
                                             " and  ai.itemID = ai.itemID"
                                             " And ai.shortcutno = " + shortcut +
                                                 " And shopid = " + std::to_string(session().shopId) + " " +
                                                 session().strItemTypeFilter + " And a.Active = 1",
                                             Cursor::keyset);
    // clang-format on
    if (found.eof()) return false;
    const std::int32_t item = basic::cLng(found.value("itemid"));
    found.close();
    DisplayBarcodeItemDetails(" ", item);
    if (cboItem.hasSelection()) {
        fillPackings();
        EnterToTab(module(), forms::kKeyReturn);
    }
    noteUnlessCarried();
    return true;
}

void frmRequestDetail::findByItemCode(const std::string& code) {
    const Value duplicates = db_.lookUp("apackagesettings", "AllowItemCodeDuplication");
    // Only a plain False allows it: with the switch on, or no row at all, an item code does not name one item.
    if (!isFalse(duplicates)) return refuseCode("Scan valid barcode");
    // clang-format off
    Recordset found = module().openRecordset("select a.itemid from aitem a"
                                             " where itemcode = " + quoted(code) + session().strItemTypeFilter +
                                                 " and a.Active = 1",
                                             Cursor::keyset, Lock::optimistic);
    // clang-format on
    if (found.eof()) return refuseCode("Scan valid barcode");
    const std::int32_t item = basic::cLng(found.value("itemid"));
    DisplayBarcodeItemDetails(" ", item);
    if (!cboItem.hasSelection()) return refuseCode("Given item does not exist in this shop.   ");
    fillPackings();
    found.close();
    focusAfterResolution();
}

void frmRequestDetail::refuseCode(const std::string& message) {
    module().inform(message);
    txtBarcode.setFocus();
    txtBarcode.selectAll();
}

void frmRequestDetail::focusAfterResolution() {
    if (basic::trim(txtBarcode.text()).empty())
        cmdbarcode.setFocus();
    else if (cboItem.hasSelection())
        txtQuantity.setFocus();
    else
        desktop().sendKeys("{TAB}");
}

// Beside the box and no message: a scanner does not read, and its next code must not answer one.
void frmRequestDetail::noteUnlessCarried() {
    if (cboItem.hasSelection()) return;
    lblNotCarried.setText(session().lngOtherShopID == kNoShop ? "Choose the\r\nother shop first"
                                                              : "Not carried by\r\nthe other shop");
}

void beginCode(forms::TextBox& box, std::int16_t& character) {
    const std::string begun = codeBegunBy(character);
    if (begun.empty()) return;
    character = 0;
    box.setFocus();
    box.setText(begun);
    box.select(1, 0);
}

// The Enter on OK is easily forgotten before the next scan, which must lose neither the line nor the code.
void frmRequestDetail::scanOnward(std::int16_t& character) {
    if (codeBegunBy(character).empty()) return;
    if (itemStands()) {
        character = 0;
        module().inform("The item of a line that stands cannot be changed. Close, then scan it for a new line.");
        return;
    }
    const bool inProgress = !cboItem.text().empty() || !txtQuantity.text().empty();
    // What is refused was said in a box, which got the rest of the scan.
    if (!inProgress || commitLine()) beginCode(txtBarcode, character);
    character = 0;
}

std::string frmRequestDetail::carriedByBothShops() const {
    const std::string here = std::to_string(session().shopId);
    const std::string there = std::to_string(session().lngOtherShopID);
    // clang-format off
    return " Where a.active = 1 and a.itemcategoryid in"
           " (select ItemCategoryId from aShopItemCategory where ShopId=" + here +
           " intersect select ItemCategoryId from aShopItemCategory where ShopId=" + there +
           ")"
           " and a.ItemId in (select ItemId from aShopItemDetail where ShopId=" + here +
           " intersect select ItemId from aShopItemDetail where ShopId=" + there + ")";
    // clang-format on
}

void frmRequestDetail::DisplayBarcodeItemDetails(const std::string& strBarcode, std::int32_t lngItemid) {
    if (lngItemid == 0) {
        const Value id = db_.lookUp("aitempackingdetail", "itemid",
                                    " packingbarcode=" + quoted(basic::trim(strBarcode)) + " and Active = 1");
        if (!id.isNull()) lngItemid = basic::cLng(id);
    }
    Recordset item = db_.fnReturnRecords("select a.itemid, v.itemdescription, a.itemcode "
                                         " from aitem a inner join vwItemDescription v on a.ItemId=v.ItemId" +
                                         carriedByBothShops() + " and a.itemid=" + std::to_string(lngItemid));
    if (item.eof()) {
        clearItem();
        txtBarcode.setText("");
        return;
    }
    const Item carried{lngItemid, basic::concatText(item.value("itemcode")), basic::concatText(item.value(1))};
    item.close(); // The choice of an item asks the server more.
    showItem(carried);
}

void frmRequestDetail::clearItem() {
    cboItem.clear();
    strItemCode.clear();
    lblNotCarried.setText("");
    asksSupplier_ = false;
    txtQuantity.setText("");
    txtsellingprice.setText("");
    lvwpacktype.clear();
}

void frmRequestDetail::offerItem(const Item& item) {
    clearItem();
    cboItem.addItem(item.description, item.id);
    strItemCode = item.code;
}

void frmRequestDetail::showItem(const Item& item) {
    offerItem(item);
    cboItem.setListIndex(cboItem.newIndex());
}

void frmRequestDetail::itemChosen() {
    if (!cboItem.hasSelection()) return;
    const Session& s = session();
    const std::int32_t item = cboItem.selectedData();
    // Where a look-up fails, nothing of the item before stays.
    txtQuantity.setText("");
    txtsellingprice.setText("");
    if (s.lngOtherShopID != kNoShop)
        txtQuantity.setText(basic::concatText(
            db_.lookUp("aShopItemDetail", "reorderquantity",
                       "shopid=" + std::to_string(s.shopId) + " and itemid=" + std::to_string(item))));
    fnGetDeptCurrID(shopId_);
    txtsellingprice.setText(basic::decimalText(fnGetSellingPrice(module(), item, lngOtherShopCurrID)));
}

void frmRequestDetail::fnGetDeptCurrID(std::int32_t lngshopid) {
    lngOtherShopDeptID = lngOtherShopCurrID = 0;
    trap("fnGetDeptCurrID", [&] {
        // clang-format off
        Recordset department = module().openRecordset("select a.departmentID,a.DepCurrencyID from aDepartmentMaster a,aShops b "
                                                      "Where a.departmentID = b.departmentID And a.CompanyID = b.CompanyID "
                                                      "and b.shopid=" + std::to_string(lngshopid));
        // clang-format on
        if (department.eof()) return;
        lngOtherShopDeptID = basic::cLng(department.value("departmentID"));
        lngOtherShopCurrID = basic::cLng(department.value("DepCurrencyID"));
    });
}

void frmRequestDetail::fillPackings() { FillPackingTypes(module(), lvwpacktype, cboItem.selectedData()); }

void frmRequestDetail::fetchItem() {
    QuickFetch();
    if (cboItem.hasSelection()) txtQuantity.setFocus();
}

void frmRequestDetail::QuickFetch() {
    trap("QuickFetch", [this] {
        if (itemStands()) return;
        Session& s = session();
        readItemFamily();
        FetchRequest request;
        request.connection = s.connection;
        request.messageBoxTitle = s.messageBoxCaption;
        request.userId = s.userId;
        request.query = "select distinct(a.itemid) itemid,a.itemcode,v.itemdescription,"
                        " a.brand,a.modelno,isnull(a.part_code,' ')part_code "
                        " from aitem a inner join vwItemDescription v on a.ItemId=v.ItemId" +
                        carriedByBothShops();
        request.columns = fetchColumns();
        request.defaultColumn = defaultFetchColumn(request.columns);
        request.caption = "Item Fetch";
        request.shopId = s.shopId;
        request.screenId = s.screenId;
        request.preserveData = s.preserveItemDetails;
        const Fetch dialog = fetch_; // whatever becomes of this form meanwhile
        const std::optional<Item> chosen = chosenIn(dialog.show(request, module().create("ADODB.Recordset")));
        if (!chosen) return;
        showItem(*chosen);
        fillPackings();
    });
}

// Closes the record set: some drivers refuse a transaction while it is open.
std::optional<frmRequestDetail::Item> frmRequestDetail::chosenIn(Recordset rows) {
    if (!rows.object() || rows.eof()) return std::nullopt;
    return Item{basic::cLng(rows.value("itemid")), basic::concatText(rows.value("itemcode")),
                basic::concatText(rows.value("itemdescription"))};
}

std::int16_t frmRequestDetail::defaultFetchColumn(const std::vector<FetchColumn>& columns) {
    const Value setting = db_.lookUp("lossettings", "defaultfetch", "ShopID=" + std::to_string(session().shopId));
    if (setting.isNull()) return kDescriptionColumn;
    const std::string wanted = basic::concatText(setting);
    const auto match =
        std::find_if(columns.begin(), columns.end(), [&](const FetchColumn& c) { return wanted == c.field; });
    const auto index = match - columns.begin();
    // The hidden id column can never be the one to search in.
    return match == columns.end() || index == 0 ? kDescriptionColumn : static_cast<std::int16_t>(index);
}

} // namespace goodsreq
