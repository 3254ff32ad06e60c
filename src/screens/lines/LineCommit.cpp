// Writing the line into the editor's list, and walking through the lines.
#include "basic/Conversion.h"
#include "basic/Format.h"
#include "basic/Numbers.h"
#include "basic/Text.h"
#include "common/Packing.h"
#include "screens/lines/frmRequestDetail.h"
#include "screens/request/frmRequest.h"

#include <algorithm>

namespace goodsreq {
namespace {

// The number that the checks read, with all its digits: eighteen of them do not fit a floating-point number.
std::string quantityText(const std::string& text) { return basic::format(basic::valText(text), "#0.000"); }

/// How many digits stand before the point.
std::ptrdiff_t wholeDigits(const std::string& number) {
    const std::string whole = number.substr(0, number.find('.'));
    return std::count_if(whole.begin(), whole.end(), [](char c) { return c >= '0' && c <= '9'; });
}

} // namespace

bool frmRequestDetail::commitLine() {
    if (committing_) return false;
    const Busy committing(committing_);
    bool done = false;
    trap("cmdOk_Click ", [&] {
        if (!checked()) return;
        frmRequest& editor = module().request();
        forms::ListView& list = lines();
        const int selected = list.selectedIndex();
        const bool twice = fnItemAlreadyInList();
        if (twice)
            module().inform(cboItem.text() + " Already Exists");
        else if (isNewLine())
            addLine(list);
        else
            writeLine(list.item(selected));
        if (changed()) list.setTag("C"); // at once: whatever fails now, the line is written
        list.reveal(isNewLine() ? list.count() : selected);

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
        done = !twice;
    });
    return done;
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
    for (forms::TextBox* box : {&txtQuantity, &txtBadQuantity, &txtsellingprice})
        if (box->visible() && wholeDigits(basic::valText(box->text())) > kMostWholeDigits)
            return refuse("At most 15 digits before the point can be stored. Correct the number.", *box);
    if (!meant(txtQuantity, kLineGoodQty, "quantity") || !meant(txtBadQuantity, kLineBadQty, "quantity")) return false;
    if (txtsellingprice.visible() && !meant(txtsellingprice, kLinePrice, "price")) return false;
    if (asksSupplier_ && !module().request().PresentInCurrentShop(cboItem.selectedData(), true)) {
        txtBarcode.setFocus();
        return false;
    }
    return true;
}

// A barcode that was scanned into the box of a number looks like one. The shortest has eight digits, perhaps with a 0
// in front.
bool frmRequestDetail::meant(forms::TextBox& number, int column, const char* what) {
    const std::string value = basic::valText(number.text());
    if (std::max(wholeDigits(number.text()), wholeDigits(value)) < 8) return true;
    // What the line had already was asked about before.
    if (itemStands() && basic::valText(lines().item(lines().selectedIndex()).subItem(column)) == value) return true;
    if (module().confirm(std::string("Is the ") + what + " " + value + " right?")) return true;
    number.setFocus();
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
    try {
        line->setSubItem(kLineItemCode, strItemCode);
        writeLine(*line);
    } catch (...) {
        list.remove(list.count()); // no half line stays behind
        throw;
    }
    line->setSubItem(kLineUnit, fnGetUnitCode(module(), cboItem.selectedData()));
}

void frmRequestDetail::writeLine(forms::ListItem& line) {
    // A number that cannot be read leaves the line as it was.
    const std::string good = quantityText(txtQuantity.text());
    const std::string bad = quantityText(txtBadQuantity.text());
    const std::string price = showsPrice() ? quantityText(txtsellingprice.text()) : std::string();
    line.setSubItem(kLineItemName, cboItem.text());
    line.setSubItem(kLineGoodQty, good);
    line.setSubItem(kLineBadQty, bad);
    line.setSubItem(kLineItemId, std::to_string(cboItem.selectedData()));
    if (showsPrice()) line.setSubItem(kLinePrice, price);
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
