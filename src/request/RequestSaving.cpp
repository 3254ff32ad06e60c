// Saving a request: checks, number, and the one transaction that stores header, lines and audit record.
#include "basic/Conversion.h"
#include "basic/Format.h"
#include "basic/Text.h"
#include "register/frmMaster.h"
#include "request/frmRequest.h"

namespace goodsreq {

using automation::Value;

bool frmRequest::storesRequests() const {
    return session().screenId == kGoodsRequestToShop || session().screenId == kInterDivisionSales;
}

bool frmRequest::validated() {
    if (!cboShop.hasSelection()) {
        module().inform(session().aliasInUse ? "Select " + session().alias : "Select Shop");
        cboShop.setFocus();
        return false;
    }
    if (HasNoQuantities(true)) {
        module().inform("Atleast one detail needed");
        cmdOk.setFocus();
        return false;
    }
    if (chkTransFinished.value() == 1 && !module().confirm("You have confirmed the transaction as finished.\r\n"
                                                           "Cannot modify later, Do you want to continue?")) {
        chkTransFinished.setFocus();
        return false;
    }
    return true;
}

void frmRequest::save() {
    if (saving_) return;
    saving_ = true;
    trap("cmdOk_Click ", [this] {
        if (!validated()) return;
        const std::string formerNumber = txtRequestNo.text();
        bool commitAsked = false;
        try {
            Transaction transaction(module().connection());
            if (storesRequests()) {
                if (!isNew())
                    UpdateRequest(basic::cInt(module().master().requestId));
                else if (RequestNoExists())
                    module().inform("Request no already exists");
                else
                    SaveNewRequest();
            }
            commitAsked = true;
            transaction.commit();
        } catch (...) {
            // Once the commit was asked for, the request may stand: its number stays, so that a second OK cannot store
            // it twice. Before, nothing stands, and the number is anybody's.
            if (!commitAsked) txtRequestNo.setText(formerNumber);
            throw;
        }
        frmMaster& register_ = module().master();
        UpdateEditedRow(module(), register_.flexMaster, register_.listQuery, " srhrequestid =" + std::to_string(requestId_));
        cmdOk.setEnabled(false);
        unload();
    });
    saving_ = false;
}

bool frmRequest::RequestNoExists() {
    Recordset found = module().openRecordset("select SRHrequestID from mesRequesttoShopHeader where srhrequestno=" +
                                                 quoted(txtRequestNo.text()) + shopCondition(" and srhshopid="),
                                             Cursor::keyset, Lock::optimistic);
    return found.recordCount() >= 1;
}

std::string frmRequest::makeRequestNo() {
    Recordset prefixes = module().openRecordset(
        "SELECT Prefix FROM aPrefix WHERE InterfaceID = " + std::to_string(session().screenId) +
            " AND FinancialId = (Select FinancialId from aFinancialYear where CurFinancialYear = 1)" +
            shopCondition("  and shopid="),
        Cursor::statik);
    const std::string prefix = prefixes.eof() ? std::string() : basic::concatText(prefixes.value("Prefix"));
    const std::string length = std::to_string(basic::len(prefix));
    const std::string text = quoted(prefix);
    Recordset highest = module().openRecordset(
        "Select isnull(max(convert(int,right(SRHrequestNo,len(SRHrequestNo)-" + length +
        "))),0) from mesRequesttoShopHeader where srhshopid = " + shopCondition("") +
        " and len(SRHrequestNo)>len(" + text + ") and "
        " isnumeric(isnull(right(SRHrequestNo,len(SRHrequestNo)-" + length + "),0)) =1 and substring(SRHrequestNo,1,len(" +
        text + "))=" + text);
    const std::string last = highest.eof() ? "0" : basic::concatText(highest.value(0));
    // The sequence number is a 16-bit one; the request after 32767 overflows.
    const std::int16_t next = last == "0" ? std::int16_t{1} : basic::cInt(basic::cDbl(last) + 1);
    return prefix + std::to_string(next);
}

std::string frmRequest::userName() {
    return basic::concatText(db_.lookUp("loUsers", "UserName",
                                        "Userid=" + std::to_string(session().userId) + shopCondition(" and shopid=")));
}

void frmRequest::SaveNewRequest() {
    const Session& s = session();
    const std::int16_t id =
        basic::cInt(db_.fnGetNextMaxNo("mesRequesttoShopHeader where srhshopid=" + shopCondition(""), "srhrequestid"));
    txtRequestNo.setText(makeRequestNo());
    const std::string user = userName();
    const char* type = s.screenId == kGoodsRequestToShop ? "r" : s.screenId == kInterDivisionSales ? "s" : "";

    Recordset header =
        module().openRecordset("select * from mesRequesttoShopHeader", Cursor::keyset, Lock::optimistic);
    header.addNew();
    header.set("srhrequestid", id);
    header.set("srhrequestno", txtRequestNo.text());
    header.set("srhrequestdate", basic::format(txtrequestDate.text(), "yyyy/mm/dd", desktop().locale()));
    header.set("SRHrequestTime", module().connection().execute("select CURRENT_TIMESTAMP").value(0));
    header.set("srhshopid", s.shopId);
    header.set("srhtoShopid", cboShop.selectedData());
    header.set("SRHremarks", txtRemarks.text());
    header.set("srhrecaddUser", user);
    header.set("srhTransfinished", std::int16_t(chkTransFinished.value()));
    header.set("srhNoofDetails", std::int32_t{lvwrequest.count()});
    header.set("srhtype", type);
    header.update();
    header.close();

    writeLines(id);
    session().auditing.SaveUserAuditingInfo(std::to_string(id), txtRequestNo.text(), s.editMode, this);
    requestId_ = id;
}

void frmRequest::UpdateRequest(std::int16_t id) {
    const std::string user = userName();
    const std::string ofRequest = std::to_string(id);
    Recordset header = module().openRecordset("select * from mesRequesttoShopHeader where srhrequestid=" + ofRequest +
                                                  shopCondition(" and srhShopid="),
                                              Cursor::keyset, Lock::optimistic);
    header.set("SRHremarks", txtRemarks.text());
    header.set("srhrecmoduser", user);
    header.set("srhTransfinished", std::int16_t(chkTransFinished.value()));
    header.set("srhNoofDetails", std::int32_t{lvwrequest.count()});
    header.update();
    header.close();

    const Connection connection = module().connection();
    connection.execute("Update mesRequesttoShopHeader set updatetime=getdate() where srhrequestid=" + ofRequest +
                       shopCondition("  and srhShopid="));
    connection.execute("delete mesRequesttoShopdetail where srdrequestid=" + ofRequest + shopCondition(" and srdshopid = "));
    writeLines(id);
    session().auditing.SaveUserAuditingInfo(ofRequest, txtRequestNo.text(), session().editMode, this);
}

void frmRequest::writeLines(std::int32_t id) {
    if (!storesRequests()) return;
    const Session& s = session();
    db_.fnUpdateListViewDetails("mesRequesttoShopDetail", lvwrequest,
                                {ColumnSource::fixed(id), ColumnSource::fixed(s.shopId), ColumnSource::subItem(kLineItemId),
                                 ColumnSource::fixed(cboShop.selectedData()), ColumnSource::subItem(kLineGoodQty),
                                 ColumnSource::subItem(kLineBadQty),
                                 s.screenId == kInterDivisionSales ? ColumnSource::subItem(kLinePrice)
                                                                   : ColumnSource::fixed(priceValue_)});
}

} // namespace goodsreq
