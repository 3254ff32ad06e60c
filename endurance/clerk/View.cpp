#include "endurance/clerk/View.h"

#include "screens/fetch/FrmFetch.h"
#include "screens/lines/frmRequestDetail.h"
#include "screens/register/frmMaster.h"
#include "screens/register/frmcancelreason.h"
#include "screens/request/frmRequest.h"

namespace endurance::clerk {
namespace {

void lookAt(goodsreq::frmMaster& form, RegisterView& view) {
    view.shown = form.visible();
    if (!view.shown) return;
    view.caption = form.caption();
    const forms::Grid& grid = form.flexMaster;
    for (int row = grid.fixedRows(); row < grid.rows(); ++row) {
        view.rows.emplace_back();
        for (int col = 0; col < grid.cols(); ++col) view.rows.back().emplace_back(grid.cell(row, col));
    }
    view.row = grid.row();
    view.adds = form.cmdnew.enabled();
    view.edits = form.CmdEdit.enabled();
    view.deletes = form.CmdDelete.enabled();
    view.prints = form.cmdPrev.enabled();
}

void lookAt(goodsreq::frmRequest& form, EditorView& view) {
    view.shown = form.visible();
    if (!view.shown) return;
    view.number = form.txtRequestNo.text();
    view.date = form.txtrequestDate.text();
    view.remarks = form.txtRemarks.text();
    view.shop = form.cboShop.hasSelection() ? form.cboShop.selectedData() : -1;
    view.ticked = form.chkTransFinished.value() != 0;
    view.ok = form.cmdOk.enabled();
    view.dateLocked = form.txtrequestDate.locked() || !form.txtrequestDate.enabled();
    for (int i = 1; i <= form.lvwrequest.count(); ++i) {
        const forms::ListItem& line = form.lvwrequest.item(i);
        view.lines.push_back({line.text()});
        for (int sub = goodsreq::kLineItemCode; sub <= goodsreq::kLineUnit; ++sub)
            view.lines.back().push_back(line.subItem(sub));
        view.tips.push_back(line.toolTip(goodsreq::kLineGoodQty));
    }
    view.selected = form.lvwrequest.selectedIndex();
}

void lookAt(goodsreq::frmRequestDetail& form, EntryView& view) {
    view.shown = form.visible();
    if (!view.shown) return;
    view.item = form.cboItem.hasSelection() ? form.cboItem.selectedData() : 0;
    view.text = form.cboItem.text();
    view.quantity = form.txtQuantity.text();
    view.bad = form.txtBadQuantity.text();
    view.price = form.txtsellingprice.text();
    view.priceShown = form.txtsellingprice.visible();
    view.newLine = form.txtBarcode.enabled();
    for (int i = 1; i <= form.lvwpacktype.count(); ++i)
        view.packs.emplace_back(form.lvwpacktype.item(i).text(), form.lvwpacktype.item(i).subItem(2));
}

} // namespace

View look(support::Shop& till) {
    View view;
    view.waiting = till.desktop.waiting();
    view.form = till.user.form();
    if (view.waiting == support::Waiting::message) view.box = till.desktop.message().text;
    if (view.waiting == support::Waiting::nothing || view.waiting == support::Waiting::ended) return view;
    lookAt(till.module.master(), view.master);
    lookAt(till.module.request(), view.editor);
    lookAt(till.module.requestDetail(), view.entry);
    if (view.form == "frmcancelreason") view.reason = till.module.cancelReason().txtcanreason.text();
    if (view.form == "FrmFetch") view.searchText = till.module.fetchItem().txtFetch.text();
    view.shopInForce = till.module.session.lngOtherShopID;
    return view;
}

} // namespace endurance::clerk
