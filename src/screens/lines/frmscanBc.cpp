#include "screens/lines/frmscanBc.h"

#include "basic/Conversion.h"
#include "basic/Numbers.h"
#include "screens/lines/frmRequestDetail.h"

namespace goodsreq {

using automation::Value;

namespace {

constexpr int kMargin = 150;
constexpr int kWidth = 5400;
constexpr int kFieldLeft = 1500;
constexpr int kRowHeight = 330;
constexpr int kButtonWidth = 1300;
constexpr int kButtonHeight = 390;

} // namespace

frmscanBc::frmscanBc(Module& module) : ModuleForm(module, "frmscanBc") {
    txtBarcode.onKeyPress = [this](std::int16_t& character) {
        if (character == '\'') character = 0;
        if (character != forms::kKeyReturn) return;
        character = 0; // a box of one line would beep
        if (txtBarcode.text().empty()) return;
        // A code that could not be looked up gives way to the next scan.
        if (!trap("txtBarcode_KeyPress ", [this] { resolve(); })) txtBarcode.selectAll();
    };
    keepApostrophesOut(txtBarcode);
    txtBarcode.onGotFocus = [this] { txtBarcode.selectAll(); };
    CmdClose.onKeyPress = [this](std::int16_t& character) {
        trap("CmdClose_KeyPress", [&] { beginCode(txtBarcode, character); });
    };
    CmdClose.onClick = [this] { unload(); };
}

void frmscanBc::design() {
    setCaption("Scanning Barcode");
    lblBarcode.place({kMargin, kMargin + 45, kFieldLeft - kMargin, 240});
    lblBarcode.setText("Scan Barcode:");
    txtBarcode.place({kFieldLeft, kMargin, kWidth - kMargin - kFieldLeft, kRowHeight});
    const int buttons = kMargin + kRowHeight + kMargin;
    CmdClose.place({kWidth - kMargin - kButtonWidth, buttons, kButtonWidth, kButtonHeight});
    CmdClose.setText("Close");
    CmdClose.setCancel(true);
    setSize(kWidth, buttons + kButtonHeight + kMargin);
}

void frmscanBc::forget() {
    db_ = {};
    gen_ = {};
}

void frmscanBc::onLoad() {
    forget();
    trap("Form_Load ", [this] {
        db_ = module().createCommonDb();
        gen_ = CommonGen(module().create("CommonModule.clsCommongen"));
        session().formColour.Applyformcolor(*this);
    });
}

// Line entry asks more of a code: the shop's kind, active items and packings, and that both shops carry the item.
void frmscanBc::resolve() {
    const std::string code = txtBarcode.text();
    if (itemOf("select itemid from aitempackingdetail where packingbarcode=" + quoted(code))) return finish(code, 0);
    if (basic::isNumeric(code)) {
        const auto item =
            itemOf("select itemid from ashopitemDetail ai "
                   " Where ai.itemID = ai.itemID And ai.shortcutno= " +
                   basic::numberText(basic::val(code)) + " And shopid = " + std::to_string(session().shopId));
        if (item) return finish(code, *item);
    }
    if (!isFalse(db_.lookUp("miscsettings", "AllowItemCodeDuplication"))) return refuse();
    const auto item = itemOf("select itemid from aitem where itemcode=" + quoted(code));
    if (!item) return refuse();
    finish(code, *item);
}

std::optional<std::int32_t> frmscanBc::itemOf(const std::string& query) const {
    const Recordset found = module().openRecordset(query);
    if (found.eof()) return std::nullopt;
    return basic::cLng(found.value("itemid"));
}

void frmscanBc::finish(const std::string& code, std::int32_t itemId) {
    DisplayBarcodeItemDetails(code, itemId);
    unload();
}

void frmscanBc::refuse() {
    module().inform("Scan valid barcode");
    txtBarcode.setFocus();
    txtBarcode.selectAll();
}

std::int32_t frmscanBc::DisplayBarcodeItemDetails(const std::string& strBarcode, std::int32_t lngItemid) {
    if (lngItemid == 0) {
        const Value id = db_.lookUp("aitempackingdetail", "itemid", " packingbarcode=" + quoted(strBarcode));
        if (!id.isNull() && !id.isEmpty()) lngItemid = basic::cLng(id);
    }
    frmRequestDetail& lineEntry = forms::touch(module().requestDetail());
    if (lineEntry.itemStands()) return lngItemid;
    Recordset item =
        db_.fnReturnRecords("select v.itemdescription, a.itemcode from aitem a inner join vwItemDescription v "
                            "on a.ItemId=v.ItemId where a.itemid=" +
                            std::to_string(lngItemid));
    if (item.eof()) {
        lineEntry.clearItem();
        return lngItemid;
    }
    const frmRequestDetail::Item found{lngItemid, basic::concatText(item.value("itemcode")),
                                       basic::concatText(item.value("itemdescription"))};
    item.close(); // The choice of an item asks the server more.
    lineEntry.offerItem(found);
    lineEntry.mayNotBeCarried();
    gen_.SelectComboItemByValue(lineEntry.cboItem, lngItemid);
    if (!lineEntry.cboItem.hasSelection()) return lngItemid;
    lineEntry.fillPackings();
    lineEntry.txtQuantity.setFocus();
    return lngItemid;
}

} // namespace goodsreq
