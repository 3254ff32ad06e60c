// Writing the line into the editor's list, and walking through the lines.
#include "basic/Conversion.h"
#include "basic/Format.h"
#include "basic/Numbers.h"
#include "basic/Text.h"
#include "common/Packing.h"
#include "screens/lines/frmRequestDetail.h"
#include "screens/request/frmRequest.h"

#include <cmath>

namespace goodsreq {
namespace {

// The number that the checks read, with all its digits: eighteen of them do not fit a floating-point number.
std::string quantityText(const std::string& text) { return basic::format(basic::valText(text), "#0.000"); }

} // namespace

void frmRequestDetail::commitLine() {
    if (committing_) return;
    const Busy committing(committing_);
    trap("cmdOk_Click ", [this] {
        if (!checked()) return;
        frmRequest& editor = module().request();
        forms::ListView& list = lines();
        const int selected = list.selectedIndex();
        if (fnItemAlreadyInList())
            module().inform(cboItem.text() + " Already Exists");
        else if (isNewLine())
            addLine(list);
        else
            writeLine(list.item(selected));
        list.reveal(isNewLine() ? list.count() : selected);
        if (changed()) list.setTag("C");

        if (isNewLine()) {
            prepareNextLine();
        } else if (selected == list.count()) {
            unload();
            return;
        } else {
            list.select(selected + 1);
            editor.CurrentLineIndex = basic::cInt(std::int32_t{selected + 1});
            ShowSelectedLine();
            txtQuantity.setFocus();
        }
        EnableOrDisableNavigationButtons();
    });
}

bool frmRequestDetail::checked() {
    const auto refuse = [this](const char* message, forms::Control& focus) {
        module().inform(message);
        focus.setFocus();
        return false;
    };
    if (basic::trim(cboItem.text()).empty() || !cboItem.hasSelection()) return refuse("Select an item.   ", cboItem);
    if (basic::val(txtQuantity.text()) == 0) return refuse("Enter the quantity.   ", txtQuantity);
    if (txtsellingprice.visible() && basic::val(txtsellingprice.text()) <= 0)
        return refuse("Selling price cannot be sero.   ", txtsellingprice);
    if (session().blnIntegerQuantity && txtQuantity.text().find('.') != std::string::npos)
        return refuse(kIntegerOnly, txtQuantity);
    if (!meant(txtQuantity) || !meant(txtBadQuantity)) return false;
    if (asksSupplier_ && !module().request().PresentInCurrentShop(cboItem.selectedData(), true)) {
        txtBarcode.setFocus();
        return false;
    }
    return true;
}

// A barcode that was scanned into the box of a quantity looks like one.
bool frmRequestDetail::meant(forms::TextBox& quantity) {
    constexpr double kEightDigits = 1e7;
    if (std::fabs(basic::val(quantity.text())) < kEightDigits) return true;
    if (module().confirm("Is the quantity " + basic::valText(quantity.text()) + " right?")) return true;
    quantity.setFocus();
    return false;
}

bool frmRequestDetail::fnItemAlreadyInList() const {
    if (!isNewLine()) return false;
    const std::string wanted = basic::ucase(cboItem.text());
    const forms::ListView& list = lines();
    for (int i = 1; i <= list.count(); ++i)
        if (basic::ucase(list.item(i).subItem(kLineItemName)) == wanted) return true;
    return false;
}

void frmRequestDetail::addLine(forms::ListView& list) {
    list.add(std::to_string(list.count() + 1));
    const std::shared_ptr<forms::ListItem> line = list.itemPtr(list.count());
    line->setSubItem(kLineItemCode, strItemCode);
    try {
        writeLine(*line);
    } catch (...) {
        list.remove(list.count()); // no half line stays behind
        throw;
    }
    line->setSubItem(kLineUnit, fnGetUnitCode(module(), cboItem.selectedData()));
}

void frmRequestDetail::writeLine(forms::ListItem& line) {
    line.setSubItem(kLineItemName, cboItem.text());
    line.setSubItem(kLineGoodQty, quantityText(txtQuantity.text()));
    line.setSubItem(kLineBadQty, quantityText(txtBadQuantity.text()));
    line.setSubItem(kLineItemId, std::to_string(cboItem.selectedData()));
    if (showsPrice()) line.setSubItem(kLinePrice, quantityText(txtsellingprice.text()));
}

void frmRequestDetail::prepareNextLine() {
    clearItem();
    txtBadQuantity.setText("");
    txtBarcode.setText("");
    cboItem.setEnabled(true);
    txtBarcode.setFocus();
    remember();
}

bool frmRequestDetail::changed() {
    bool differs = true;
    trap("cmdOk_Click ", [&] { differs = session().auditing.DataChanged(*this) || !remembered_; });
    return differs;
}

void frmRequestDetail::remember() {
    remembered_ = false;
    session().auditing.SaveInToTag(*this);
    remembered_ = true;
}

void frmRequestDetail::ShowSelectedLine() {
    session().strLineMode = "E";
    const forms::ListView& list = lines();
    const forms::ListItem& line = list.item(list.selectedIndex());
    for (forms::Control* control :
         std::initializer_list<forms::Control*>{&cboItem, &cmdbarcode, &txtBarcode, &txtsellingprice})
        control->setEnabled(false);
    const std::int32_t item = basic::cLng(basic::val(line.subItem(kLineItemId)));
    showItem({item, line.subItem(kLineItemCode), line.subItem(kLineItemName)});
    txtQuantity.setText(basic::valText(line.subItem(kLineGoodQty)));
    txtBadQuantity.setText(basic::valText(line.subItem(kLineBadQty)));
    txtsellingprice.setText(basic::valText(line.subItem(kLinePrice)));
    fillPackings();
    FillPackingQuantities(module(), lvwpacktype, item, basic::val(txtQuantity.text()));
    remember();
}

void frmRequestDetail::goTo(int row) {
    forms::ListView& list = lines();
    session().strLineMode = "E";
    module().request().CurrentLineIndex = basic::cInt(std::int32_t{row});
    list.select(row);
    EnableOrDisableNavigationButtons();
    ShowSelectedLine();
}

void frmRequestDetail::EnableOrDisableNavigationButtons() {
    forms::touch(*this);
    const int count = lines().count();
    const int current = module().request().CurrentLineIndex;
    const bool walks = !isNewLine() && count != 1;
    const bool last = current == count;
    const bool first = !last && current == 1;
    cmdFirst.setEnabled(walks && !first);
    cmdPrev.setEnabled(walks && !first);
    cmdNext.setEnabled(walks && !last);
    cmdLast.setEnabled(walks && !last);
}

} // namespace goodsreq
