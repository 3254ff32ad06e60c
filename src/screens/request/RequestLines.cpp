// The editor's list of lines: loading, adding, changing, deleting, and the checks on it.
#include "basic/Conversion.h"
#include "basic/Format.h"
#include "basic/Numbers.h"
#include "screens/lines/frmRequestDetail.h"
#include "screens/register/frmMaster.h"
#include "screens/request/frmRequest.h"

#include <algorithm>
#include <string_view>

namespace goodsreq {
namespace {

constexpr const char* kQuantityFormat = "#0.000";

bool isDigits(std::string_view text) { return !text.empty() && text.find_first_not_of("0123456789") == text.npos; }

/// A number as a statement has it: no sign but "-" and ".", no exponent.
bool isPlainNumber(std::string_view text) {
    if (text.starts_with('-')) text.remove_prefix(1);
    const std::size_t point = text.find('.');
    const std::string_view whole = text.substr(0, point);
    return isDigits(whole) && std::ssize(whole) <= kMostWholeDigits &&
           (point == text.npos || isDigits(text.substr(point + 1)));
}

} // namespace

void frmRequest::loadLines() {
    requestId_ = module().master().requestId;
    // clang-format off
    Recordset lines = module().openRecordset(
        "select a.srditemid, a.srdgoodqty, a.srdbadQty, "
        " a.srdSellingprice, c.ItemDescription, u.UnitCode "
        " from mesRequesttoShopdetail a, aitem b, vwItemDescription c, aUnit u "
        " where a.srditemid = b.itemid"
        " and c.itemid = b.itemid "
        " and b.UnitsID = u.UnitId"
        " and a.srdrequestid = " + std::to_string(requestId_) + shopCondition(" and srdshopid = "));
    // clang-format on
    if (!lines.eof()) {
        const Field item = lines.field("srdItemId");
        const Field good = lines.field("srdgoodqty");
        const Field bad = lines.field("srdbadqty");
        const Field price = lines.field("srdSellingprice");
        const Field description = lines.field("itemdescription");
        const Field unit = lines.field("UnitCode");
        for (; !lines.eof(); lines.moveNext()) {
            forms::ListItem& line = lvwrequest.add(std::to_string(lvwrequest.count() + 1));
            line.setSubItem(kLineItemName, basic::concatText(description.value()));
            line.setSubItem(kLineGoodQty, basic::format(good.value(), kQuantityFormat));
            line.setSubItem(kLineBadQty, basic::format(bad.value(), kQuantityFormat));
            line.setSubItem(kLineItemId, basic::concatText(item.value()));
            line.setSubItem(kLinePrice, basic::format(price.value(), kQuantityFormat));
            line.setSubItem(kLineUnit, basic::concatText(unit.value()));
        }
    }
    lines.close();
    // Not before: while rows are still being read, the server would need another connection for each look-up.
    for (int i = 1; i <= lvwrequest.count(); ++i) {
        forms::ListItem& line = lvwrequest.item(i);
        line.setSubItem(kLineItemCode, basic::concatText(db_.lookUp("aitem", "itemcode",
                                                                    "itemid=" + idText(line.subItem(kLineItemId)))));
    }
    // A line whose item has left the master tables is not among them; a save would drop it for good.
    const Recordset stored = module().openRecordset(
        "select count(*) from mesRequesttoShopdetail where srdrequestid = " + std::to_string(requestId_) +
        shopCondition(" and srdshopid = "));
    linesComplete_ = basic::cLng(stored.value(0)) == lvwrequest.count();
    if (lvwrequest.count() > 0) lvwrequest.select(1);
}

void frmRequest::addLine() {
    if (!cmdOk.enabled()) return;
    session().strLineMode = "N";
    CurrentLineIndex = basic::cInt(std::int32_t{lvwrequest.count()});
    module().requestDetail().showAfresh(this);
}

void frmRequest::editLine() {
    if (!cmdOk.enabled() || HasNoQuantities(false)) return;
    session().strLineMode = "E";
    CurrentLineIndex = basic::cInt(std::int32_t{lvwrequest.selectedIndex()});
    frmRequestDetail& lineEntry = forms::touchAfresh(module().requestDetail());
    lineEntry.EnableOrDisableNavigationButtons();
    lineEntry.showModal(this);
}

void frmRequest::deleteLine() {
    if (!cmdOk.enabled() || HasNoQuantities(false)) return;
    const forms::ListItem* line = lvwrequest.selectedItem();
    if (!line || !module().confirm("Are you sure you want to delete \r" + line->subItem(kLineItemName))) return;
    const int row = lvwrequest.selectedIndex();
    lvwrequest.remove(row);
    for (int i = 1; i <= lvwrequest.count(); ++i) lvwrequest.item(i).setText(std::to_string(i));
    if (lvwrequest.count() > 0) lvwrequest.select(std::min(row, lvwrequest.count()));
}

void frmRequest::showLineMenu() {
    if (!cmdOk.enabled()) {
        mnuAdd.enabled = mnuEdit.enabled = mnudel.enabled = false;
    } else {
        mnuEdit.enabled = mnudel.enabled = !HasNoQuantities(false);
        mnuAdd.enabled = cboShop.hasSelection();
    }
    desktop().popupMenu(*this, mnulist);
}

void frmRequest::showLineToolTips(forms::ListItem& line) {
    if (!line.subItem(kLineGoodQty).empty())
        line.setToolTip(kLineGoodQty, basic::format(line.subItem(kLineGoodQty), "###,###,##0.000"));
    if (!line.subItem(kLineItemName).empty()) line.setToolTip(kLineItemName, line.subItem(kLineItemName));
}

bool frmRequest::HasNoQuantities(bool checkQuantities) const {
    if (lvwrequest.count() == 0) return true;
    if (!checkQuantities) return false;
    for (int i = 1; i <= lvwrequest.count(); ++i) {
        const forms::ListItem& line = lvwrequest.item(i);
        if (basic::val(line.subItem(kLineGoodQty)) + basic::val(line.subItem(kLineBadQty)) > 0) return false;
    }
    return true;
}

bool frmRequest::linesHoldNumbers() {
    for (int i = 1; i <= lvwrequest.count(); ++i) {
        const forms::ListItem& line = lvwrequest.item(i);
        for (const int cell : {kLineItemId, kLineGoodQty, kLineBadQty, kLinePrice}) {
            const std::string& text = line.subItem(cell);
            const bool notStored = cell == kLinePrice && (text.empty() || !session().kind().priced);
            if (notStored || (cell == kLineItemId ? isDigits(text) : isPlainNumber(text))) continue;
            module().inform("Line " + std::to_string(i) + " holds \"" + text +
                            "\" where a number of at most 15 digits must stand. Correct the line, or delete it and "
                            "enter it again.");
            return false;
        }
    }
    return true;
}

bool frmRequest::PresentInCurrentShop(std::int32_t itemId, bool wantMessage) {
    const std::string shop = std::to_string(session().lngOtherShopID);
    const std::string found = basic::concatText(
        db_.lookUp("aShopItemDetail", "itemid", "shopid=" + shop + " and itemid=" + std::to_string(itemId)));
    const bool present = basic::val(found) != 0;
    if (!present && wantMessage) module().inform("Item not in shop " + shop);
    return present;
}

void frmRequest::FillReorderSuggestions() {
    trap("FillReorderSuggestions", [this] {
        // clang-format off
        Recordset items = module().openRecordset(
            "select  sd.itemid, sd.ItemReorderLevel,"
            " sd.ReorderQuantity, b.ItemDescription, u.UnitCode "
            " from ashopitemdetail sd, aitem b, aUnit u "
            " where sd.itemid = b.itemid "
            " and b.UnitsId = u.UnitId"
            " and sd.ItemReorderLevel > "
            " (select isnull(sum(stock), 0) from vwinquiryshopstock s "
            " where s.shopid=sd.shopid) and sd.shopid=" + shopCondition("") +
                " and b.itemcategoryid in (select itemcategoryid from ashopitemcategory  "
                " where shopid = " + std::to_string(session().lngOtherShopID) + ")",
            Cursor::keyset, Lock::optimistic);
        // clang-format on
        if (!items.eof()) {
            const Field description = items.field("itemdescription");
            const Field quantity = items.field("reorderquantity");
            const Field item = items.field("itemid");
            const Field unit = items.field("UnitCode");
            for (; !items.eof(); items.moveNext()) {
                forms::ListItem& line = lvwrequest.add(std::to_string(lvwrequest.count() + 1));
                line.setSubItem(kLineItemName, basic::concatText(description.value()));
                line.setSubItem(kLineGoodQty, basic::concatText(quantity.value()));
                line.setSubItem(kLineBadQty, "0");
                line.setSubItem(kLineItemId, basic::concatText(item.value()));
                line.setSubItem(kLineUnit, basic::concatText(unit.value()));
            }
        }
        items.close();
    });
}

} // namespace goodsreq
