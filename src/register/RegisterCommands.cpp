// The register's commands and the rights that allow them.
#include "basic/Conversion.h"
#include "basic/DateText.h"
#include "basic/Numbers.h"
#include "basic/Text.h"
#include "register/frmMaster.h"
#include "register/frmcancelreason.h"
#include "request/frmRequest.h"

namespace goodsreq {

using automation::Value;

namespace {

constexpr int kLongestName = 20;    ///< characters of the user's name kept with a cancellation
constexpr int kLongestReason = 230; ///< characters of the reason

} // namespace

void frmMaster::USerRights() {
    Session& s = session();
    Recordset rights = module().openRecordset(
        "select functionrights from louserrights where userid = " + std::to_string(s.userId) +
        " and interfaceid = " + std::to_string(s.screenId) + " and companyid = " + std::to_string(s.companyId));
    s.hasEveryRight = rights.eof();
    if (!s.hasEveryRight) s.userRights = basic::concatText(rights.value("functionrights"));
    rights.close();
    if (s.hasEveryRight) return;
    cmdnew.setEnabled(fnUSerRights("N"));
    CmdEdit.setEnabled(fnUSerRights("E"));
    CmdDelete.setEnabled(fnUSerRights("D"));
    cmdPrev.setEnabled(fnUSerRights("P"));
}

bool frmMaster::fnUSerRights(const std::string& letter) {
    std::string& rights = session().userRights;
    rights = basic::trim(basic::ucase(rights));
    return rights != "ADMIN" && basic::instr(rights, basic::trim(basic::ucase(letter))) > 0;
}

bool frmMaster::mayUse(const std::string& letter) { return session().hasEveryRight || fnUSerRights(letter); }

void frmMaster::newRequest() {
    Session& s = session();
    s.editMode = "N";
    s.auditing.setLoggedTime(desktop().now());
    s.lngOtherShopID = kNoShop;
    frmRequest& editor = forms::touch(module().request());
    editor.txtrequestDate.setText(basic::shortDate(s.processDate, desktop().locale()));
    editor.txtRemarks.setText("");
    editor.showModal(this);
}

bool frmMaster::isFinished(const std::string& idColumn) {
    return isTrue(db_.lookUp("mesrequesttoshopheader", "SRHTransfinished",
                             idColumn + "=" + current(kColId) + " and srhshopid=" + std::to_string(session().shopId)));
}

void frmMaster::editRequest() {
    if (!hasCurrentRequest()) return module().inform("Request not selected ");
    Session& s = session();
    s.auditing.setLoggedTime(desktop().now());
    s.editMode = "E";
    requestId = basic::cLng(basic::val(current(kColId)));
    s.lngOtherShopID = basic::cInt(basic::val(current(kColShopId)));

    const bool cancelled = current(kColCancelled) == "Yes";
    bool editable = !cancelled;
    if (current(kColConfirmed) == "Yes") {
        module().inform("Request is confirmed, You can't edit");
        editable = false;
    }
    frmRequest& editor = forms::touch(module().request());
    editor.cmdOk.setEnabled(editable);
    try {
        editor.cmdOk.setEnabled(!isFinished("SRHrequestid") && !cancelled);
    } catch (...) {
        // Left loaded, the lines of this request would stand there for the next one that is opened.
        editor.cmdOk.setEnabled(false); // Nothing was entered, so nothing is asked.
        editor.unload();
        throw;
    }
    editor.txtRequestNo.setText(current(kColNumber));
    editor.txtrequestDate.setText(current(kColDate));
    editor.txtRemarks.setText(current(kColRemarks));
    editor.cboShop.setEnabled(false);
    editor.showModal(this);
}

void frmMaster::deleteRequest() {
    Session& s = session();
    const std::string shop = std::to_string(s.shopId);
    const std::string userName = basic::trim(
        shown(db_.lookUp("loUsers", "UserName", "Userid=" + std::to_string(s.userId) + " and shopid=" + shop)));
    if (!hasCurrentRequest()) return module().inform("Request not selected ");
    // Never true, as the upper-cased text is compared with "Yes": what keeps a cancelled request from being deleted
    // again is the disabled button. The message stays for the day on which the comparison is put right.
    if (basic::ucase(current(kColCancelled)) == "Yes") return module().inform("Record already deleted ");
    const std::string used = current(kColUsed);
    if (!used.empty() && basic::cBool(used)) return module().inform("Entry Processed,Cannot Delete");
    if (isFinished("srhrequestid")) return module().inform("Transaction confirmed as finished, Cannot Delete");

    const int row = flexMaster.row();
    requestId = basic::cLng(basic::val(current(kColId)));
    s.auditing.setLoggedTime(desktop().now());
    // Plain calls and no scope: a failure between begin and commit leaves the transaction to the connection's owner.
    const Connection connection = module().connection();
    connection.beginTrans();
    if (current(kColId).empty()) return;
    if (!module().confirm("Are you sure you want to Delete  - " + current(kColNumber) + " ?",
                          forms::MessageIcon::critical)) {
        connection.rollbackTrans();
        return;
    }
    forms::touch(module().cancelReason()).showModal(this);

    s.selectedRequestId = basic::cLng(basic::val(current(kColId)));
    Recordset header = module().openRecordset("select * from  mesRequesttoShopHeader "
                                              "where SRHshopid=" +
                                                  shop + " and sRHrequestID  = " + std::to_string(s.selectedRequestId),
                                              Cursor::keyset, Lock::optimistic);
    if (!header.eof()) {
        header.set("SRHcancelled", std::int16_t{1});
        header.set("srhcancelledRemarks", basic::left(userName, kLongestName) + ":" +
                                              basic::left(basic::trim(s.cancelReason), kLongestReason));
        header.update();
    }
    header.close();
    s.auditing.SaveUserAuditingInfo(current(kColId), current(kColNumber), "D");
    connection.commitTrans();
    s.editMode = "E";
    UpdateEditedRow(module(), flexMaster, listQuery, " srhrequestid =" + std::to_string(s.selectedRequestId));
    colourCancelledRows();
    flexMaster.selectRow(row);
    enableRowCommands();
}

void frmMaster::refreshRequest() {
    const std::string id = current(kColId);
    const std::string shop = std::to_string(session().shopId);
    const Connection connection = module().connection();
    connection.execute("update mesrequesttoshopheader set SRHcancelled=SRHcancelled where "
                       " SRHrequestID = " +
                       id + " and SRHshopid =" + shop);
    connection.execute("update mesrequesttoshopdetail set srdbadqty=srdbadqty where "
                       " SRDrequestid=" +
                       id + " and srdshopid =" + shop);
}

} // namespace goodsreq
