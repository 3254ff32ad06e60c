// Writing the line into the editor's list, and walking through the lines.
#include "basic/Format.h"
#include "basic/Conversion.h"
#include "basic/Numbers.h"
#include "basic/Text.h"
#include "common/Packing.h"
#include "lines/frmRequestDetail.h"
#include "request/frmRequest.h"

namespace goodsreq {
namespace {

// Exact digits where the text is a number; else its leading number, as an empty box is 0.
std::string quantityText(const std::string& text) {
    const std::string trimmed = basic::trim(text);
    if (basic::isNumeric(trimmed)) return basic::format(trimmed, "#0.000");
    return basic::format(basic::val(trimmed), "#0.000");
}

} // namespace

void frmRequestDetail::commitLine() {
    if (committing_) return;
    committing_ = true;
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
        if (session().auditing.DataChanged(*this)) list.setTag("C");

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
    committing_ = false;
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
    return true;
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
    // Read first: a failure must leave no half line behind.
    const std::string unit = fnGetUnitCode(module(), cboItem.selectedData());
    forms::ListItem& line = list.add(std::to_string(list.count() + 1));
    line.setSubItem(kLineItemCode, strItemCode);
    writeLine(line);
    line.setSubItem(kLineUnit, unit);
}

void frmRequestDetail::writeLine(forms::ListItem& line) {
    line.setSubItem(kLineItemName, cboItem.text());
    line.setSubItem(kLineGoodQty, quantityText(txtQuantity.text()));
    line.setSubItem(kLineBadQty, quantityText(txtBadQuantity.text()));
    line.setSubItem(kLineItemId, std::to_string(cboItem.selectedData()));
    if (showsPrice()) line.setSubItem(kLinePrice, quantityText(txtsellingprice.text()));
}

void frmRequestDetail::prepareNextLine() {
    cboItem.clear();
    cboItem.setText("");
    for (forms::TextBox* box : {&txtQuantity, &txtBadQuantity, &txtBarcode}) box->setText("");
    if (showsPrice()) txtsellingprice.setText("");
    lvwpacktype.clear();
    cboItem.setEnabled(true);
    session().auditing.SaveInToTag(*this);
    txtBarcode.setFocus();
}

void frmRequestDetail::ShowSelectedLine() {
    session().strLineMode = "E";
    const forms::ListView& list = lines();
    const forms::ListItem& line = list.item(list.selectedIndex());
    for (forms::Control* control : std::initializer_list<forms::Control*>{&cboItem, &cmdbarcode, &txtBarcode, &txtsellingprice})
        control->setEnabled(false);
    const std::int32_t item = basic::cLng(basic::val(line.subItem(kLineItemId)));
    showItem(line.subItem(kLineItemName), item);
    const auto plain = [&](int column) {
        // Exact digits: eighteen of them do not fit a floating-point number.
        const std::string& text = line.subItem(column);
        if (basic::isNumeric(text)) {
            std::string number = basic::format(text, "0.###############");
            if (!number.empty() && number.back() == '.') number.pop_back();
            return number;
        }
        return basic::decimalText(basic::val(text));
    };
    txtQuantity.setText(plain(kLineGoodQty));
    txtBadQuantity.setText(plain(kLineBadQty));
    txtsellingprice.setText(plain(kLinePrice));
    FillPackingTypes(module(), lvwpacktype, item);
    FillPackingQuantities(module(), lvwpacktype, item, basic::val(txtQuantity.text()));
    session().auditing.SaveInToTag(*this);
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
