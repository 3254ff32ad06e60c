// The register's commands and the rights that allow them.
#include "basic/Conversion.h"
#include "basic/DateText.h"
#include "basic/Numbers.h"
#include "basic/Text.h"
#include "screens/register/frmMaster.h"
#include "screens/register/frmcancelreason.h"
#include "screens/request/frmRequest.h"

namespace goodsreq {

namespace {

constexpr int kLongestName = 20;    ///< characters of the user's name kept with a cancellation
constexpr int kLongestReason = 230; ///< characters of the reason, without the blanks around it

} // namespace

void frmMaster::USerRights() {
    Session& s = session();
    Recordset rights = module().openRecordset(
        "select functionrights from louserrights where userid = " + std::to_string(s.userId) +
        " and interfaceid = " + std::to_string(s.screenId) + " and companyid = " + std::to_string(s.companyId));
    const bool hasEveryRight = rights.eof();
    if (!hasEveryRight) s.userRights = basic::concatText(rights.value("functionrights"));
    s.hasEveryRight = hasEveryRight;
    cmdnew.setEnabled(mayUse("N"));
    CmdEdit.setEnabled(mayUse("E"));
    CmdDelete.setEnabled(mayUse("D"));
    cmdPrev.setEnabled(mayUse("P"));
    rights.close();
}

bool frmMaster::fnUSerRights(const std::string& letter) {
    std::string& rights = session().userRights;
    rights = basic::trim(basic::ucase(rights));
    return rights != "ADMIN" && basic::instr(rights, basic::trim(basic::ucase(letter))) > 0;
}

bool frmMaster::mayUse(const std::string& letter) { return session().hasEveryRight || fnUSerRights(letter); }

bool frmMaster::allowed(const std::string& letter) {
    if (mayUse(letter)) return true;
    module().inform("You have no right to this command.");
    return false;
}

bool frmMaster::requestChosen() {
    const bool chosen = hasCurrentRequest();
    if (!chosen) module().inform("Request not selected ");
    return chosen;
}

void frmMaster::newRequest() {
    if (!allowed("N")) return;
    Session& s = session();
    s.editMode = "N";
    s.auditing.setLoggedTime(desktop().now());
    s.lngOtherShopID = kNoShop;
    const std::string date = basic::shortDate(s.processDate, desktop().locale());
    frmRequest& editor = forms::touchAfresh(module().request());
    editor.txtrequestDate.setText(date);
    editor.txtRemarks.setText("");
    editor.showModal(this);
}

bool frmMaster::isFinished(const std::string& idColumn) {
    return isTrue(db_.lookUp("mesrequesttoshopheader", "SRHTransfinished",
                             idColumn + "=" + std::to_string(currentId()) +
                                 " and srhshopid=" + std::to_string(session().shopId)));
}

void frmMaster::editRequest() {
    if (!allowed("E") || !requestChosen()) return;
    Session& s = session();
    s.auditing.setLoggedTime(desktop().now());
    s.editMode = "E";
    requestId = currentId();
    s.lngOtherShopID = basic::cInt(basic::val(current(kColShopId)));

    const bool cancelled = current(kColCancelled) == "Yes";
    bool editable = !cancelled;
    if (current(kColConfirmed) == "Yes") {
        module().inform("Request is confirmed, You can't edit");
        editable = false;
    }
    frmRequest& editor = forms::touchAfresh(module().request());
    editor.cmdOk.setEnabled(editable);
    editor.cmdOk.setEnabled(!isFinished("SRHrequestid") && !cancelled);
    editor.txtRequestNo.setText(current(kColNumber));
    editor.txtrequestDate.setText(current(kColDate));
    editor.txtrequestDate.setLocked(true); // an update does not write it, so there is nothing to stop for
    editor.txtrequestDate.setTabStop(false);
    editor.txtRemarks.setText(current(kColRemarks));
    editor.cboShop.setEnabled(false);
    editor.showModal(this);
}

void frmMaster::deleteRequest() {
    if (!allowed("D")) return;
    Session& s = session();
    const std::string shop = std::to_string(s.shopId);
    const std::string userName = basic::trim(
        shown(db_.lookUp("loUsers", "UserName", "Userid=" + std::to_string(s.userId) + " and shopid=" + shop)));
    if (!requestChosen()) return;
    // Never true, as the upper-cased text is compared with "Yes": what keeps a cancelled request from being deleted
    // again is the disabled button. The message stays for the day on which the comparison is put right.
    if (basic::ucase(current(kColCancelled)) == "Yes") return module().inform("Record already deleted ");
    const std::string used = current(kColUsed);
    if (!used.empty() && basic::cBool(used)) return module().inform("Entry Processed,Cannot Delete");
    if (isFinished("srhrequestid")) return module().inform("Transaction confirmed as finished, Cannot Delete");

    // What the user is asked about is what is deleted, whatever becomes of the grid meanwhile.
    const int row = flexMaster.row();
    const std::string id = current(kColId);
    const std::string number = current(kColNumber);
    requestId = currentId();
    s.auditing.setLoggedTime(desktop().now());
    // Plain calls and no scope: a failure between begin and commit leaves the transaction to the connection's owner.
    const Connection connection = module().connection();
    connection.beginTrans();
    if (id.empty()) return;
    if (!module().confirm("Are you sure you want to Delete  - " + number + " ?", forms::MessageIcon::critical)) {
        connection.rollbackTrans();
        return;
    }
    s.cancelReason.clear();
    module().cancelReason().showAfresh(this);

    s.selectedRequestId = requestId;
    Recordset header = module().openRecordset("select * from  mesRequesttoShopHeader "
                                              "where SRHshopid=" +
                                                  shop + " and sRHrequestID  = " + std::to_string(s.selectedRequestId),
                                              Cursor::keyset, Lock::optimistic);
    if (!header.eof()) {
        // Somebody else may have been quicker while the user was asked.
        const char* refusal = isTrue(header.value("SRHcancelled")) ? "Record already deleted "
                              : isTrue(header.value("srhused"))    ? "Entry Processed,Cannot Delete"
                              : isTrue(header.value("srhTransfinished"))
                                  ? "Transaction confirmed as finished, Cannot Delete"
                                  : nullptr;
        if (refusal) {
            header.close();
            connection.rollbackTrans();
            module().inform(refusal);
            return updateDeletedRow(row);
        }
        header.set("SRHcancelled", std::int16_t{1});
        header.set("srhcancelledRemarks", basic::left(userName, kLongestName) + ":" +
                                              basic::left(basic::trim(s.cancelReason), kLongestReason));
        header.update();
    }
    header.close();
    s.auditing.SaveUserAuditingInfo(std::to_string(requestId), number, "D");
    connection.commitTrans();
    updateDeletedRow(row);
}

void frmMaster::updateDeletedRow(int row) {
    session().editMode = "E";
    flexMaster.selectRow(row);
    UpdateEditedRow(module(), flexMaster, listQuery, " srhrequestid =" + std::to_string(session().selectedRequestId));
    colourCancelledRows();
    flexMaster.selectRow(row);
    enableRowCommands();
}

void frmMaster::refreshRequest() {
    if (!allowed("E") || !requestChosen()) return;
    const std::string id = std::to_string(currentId());
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
