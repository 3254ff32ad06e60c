// Saving a request: checks, number, and the one transaction that stores header, lines and audit record.
#include "basic/Conversion.h"
#include "basic/DateText.h"
#include "basic/Format.h"
#include "basic/Text.h"
#include "screens/register/frmMaster.h"
#include "screens/request/frmRequest.h"

#include <cmath>

namespace goodsreq {

using automation::Value;

namespace {

/// How often a new request is made once more before it is reported that others were quicker each time.
constexpr int kMostRepeats = 3;

/// Of the error that is being handled.
bool collided(const Connection& connection) {
    try {
        throw;
    } catch (const automation::RunTimeError& error) {
        return connection.collided(error);
    } catch (...) {
        return false;
    }
}

} // namespace

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
    if (!dateRead()) {
        txtrequestDate.setFocus();
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
    const Busy saving(saving_);
    trap("cmdOk_Click ", [this] {
        if (!validated() || !store()) return;
        frmMaster& register_ = module().master();
        UpdateEditedRow(module(), register_.flexMaster, register_.listQuery,
                        " srhrequestid =" + std::to_string(requestId_));
        cmdOk.setEnabled(false);
        const bool unseen = liesBeforeTheRegister();
        const std::string number = txtRequestNo.text();
        unload();
        if (unseen)
            module().inform("The request " + number + " is saved. Its date lies before those that the register shows.");
    });
}

bool frmRequest::liesBeforeTheRegister() {
    if (!isNew() || requestId_ == 0) return false;
    const auto date = basic::parseDate(txtrequestDate.text(), desktop().locale());
    return date && date->days < session().fromDate.days;
}

bool frmRequest::store() {
    const std::string formerNumber = txtRequestNo.text();
    for (int repeats = 0;; ++repeats) {
        Transaction transaction(module().connection());
        try {
            if (const std::optional<Refusal> refusal = write()) {
                transaction.rollback();
                txtRequestNo.setText(formerNumber);
                if (!refusal->toMend) cmdOk.setEnabled(false);
                module().inform(refusal->message);
                if (refusal->toMend) refusal->toMend->setFocus();
                return false;
            }
            transaction.commit();
            return true;
        } catch (...) {
            // Two tills that save at once may make the same id and number: the slower one makes others.
            const bool othersWereQuicker = isNew() && collided(module().connection());
            // A deadlock's victim has nothing left to roll back, and is refused.
            const bool nothingStands = transaction.rollback() || !transaction.commitAsked();
            // Where nothing stands the number is anybody's. Only where nobody can tell whether the commit went through
            // it stays, so that a second OK cannot store the request twice.
            if (nothingStands) {
                txtRequestNo.setText(formerNumber);
                sent_.reset();
            }
            if (!othersWereQuicker || !nothingStands || repeats == kMostRepeats) throw;
        }
    }
}

std::optional<frmRequest::Refusal> frmRequest::write() {
    if (!*session().kind().type) return std::nullopt;
    if (!isNew()) return UpdateRequest(basic::cInt(module().master().requestId));
    if (!RequestNoExists() || !storedBefore()) return SaveNewRequest();
    module().inform("Request no already exists");
    return std::nullopt;
}

std::optional<frmRequest::Refusal> frmRequest::tooLong(const Recordset& header) {
    const int length = basic::len(txtRemarks.text());
    const int most = header.field("SRHremarks").definedSize();
    if (most <= 0 || length <= most) return std::nullopt; // no provider's way to say "any length" is a refusal
    return Refusal{"The remarks have " + std::to_string(length) + " characters, " + std::to_string(length - most) +
                       " more than can be stored. Shorten them to " + std::to_string(most) + ".",
                   &txtRemarks};
}

bool frmRequest::storedBefore() {
    const auto* time = sent_ ? sent_->time.as<automation::Date>() : nullptr;
    if (!time) return true;
    Recordset found = module().openRecordset("select SRHrequestTime, srhrecaddUser, srhtoShopid, srhNoofDetails"
                                             " from mesRequesttoShopHeader where srhrequestno=" +
                                             quoted(txtRequestNo.text()) + shopCondition(" and srhshopid="));
    if (found.eof()) return true;
    const Value stored = found.value(0);
    const auto* then = stored.as<automation::Date>();
    constexpr double kFraction = 1.5 / 86400; // of a second; some providers lose it
    return (!then || std::fabs(then->days - time->days) < kFraction) &&
           basic::rtrim(basic::concatText(found.value(1))) == basic::rtrim(sent_->user) &&
           basic::cLng(found.value(2)) == sent_->toShop && basic::cLng(found.value(3)) == sent_->lines;
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
    // clang-format off
    Recordset highest = module().openRecordset(
        "Select isnull(max(convert(int,right(SRHrequestNo,len(SRHrequestNo)-" + length +
        "))),0) from mesRequesttoShopHeader where srhshopid = " + shopCondition("") +
        " and len(SRHrequestNo)>len(" + text + ") and "
        " isnumeric(isnull(right(SRHrequestNo,len(SRHrequestNo)-" + length + "),0)) =1 and substring(SRHrequestNo,1,len(" +
        text + "))=" + text);
    // clang-format on
    const std::string last = highest.eof() ? "0" : basic::concatText(highest.value(0));
    // The sequence number is a 16-bit one; the request after 32767 overflows.
    const std::int16_t next = last == "0" ? std::int16_t{1} : basic::cInt(basic::cDbl(last) + 1);
    return prefix + std::to_string(next);
}

std::string frmRequest::userName() {
    return basic::concatText(db_.lookUp("loUsers", "UserName",
                                        "Userid=" + std::to_string(session().userId) + shopCondition(" and shopid=")));
}

std::optional<frmRequest::Refusal> frmRequest::SaveNewRequest() {
    const Session& s = session();
    const std::int16_t id =
        basic::cInt(db_.fnGetNextMaxNo("mesRequesttoShopHeader where srhshopid=" + shopCondition(""), "srhrequestid"));
    txtRequestNo.setText(makeRequestNo());
    const std::string user = userName();

    Recordset header = module().openRecordset("select * from mesRequesttoShopHeader", Cursor::keyset, Lock::optimistic);
    if (auto refusal = tooLong(header)) return refusal;
    header.addNew();
    header.set("srhrequestid", id);
    header.set("srhrequestno", txtRequestNo.text());
    header.set("srhrequestdate", basic::format(txtrequestDate.text(), "yyyy/mm/dd", desktop().locale()));
    sent_ = {module().connection().execute("select CURRENT_TIMESTAMP").value(0), user, cboShop.selectedData(),
             std::int32_t{lvwrequest.count()}};
    header.set("SRHrequestTime", sent_->time);
    header.set("srhshopid", s.shopId);
    header.set("srhtoShopid", cboShop.selectedData());
    header.set("SRHremarks", txtRemarks.text());
    header.set("srhrecaddUser", user);
    header.set("srhTransfinished", std::int16_t(chkTransFinished.value()));
    header.set("srhNoofDetails", std::int32_t{lvwrequest.count()});
    header.set("srhtype", s.kind().type);
    header.update();
    header.close();

    writeLines(id);
    session().auditing.SaveUserAuditingInfo(std::to_string(id), txtRequestNo.text(), s.editMode, this);
    requestId_ = id;
    return std::nullopt;
}

std::optional<frmRequest::Refusal> frmRequest::UpdateRequest(std::int16_t id) {
    const std::string user = userName();
    const std::string ofRequest = std::to_string(id);
    Recordset header = module().openRecordset("select * from mesRequesttoShopHeader where srhrequestid=" + ofRequest +
                                                  shopCondition(" and srhShopid="),
                                              Cursor::keyset, Lock::optimistic);
    // Somebody else may have closed the request to changes since it was opened here.
    if (isTrue(header.value("srhTransfinished"))) return Refusal{"Request is confirmed, You can't edit"};
    if (isTrue(header.value("SRHcancelled"))) return Refusal{"Record already deleted "};
    if (isTrue(header.value("srhused"))) return Refusal{"Entry Processed,Cannot Edit"};
    if (auto refusal = tooLong(header)) return refusal;
    header.set("SRHremarks", txtRemarks.text());
    header.set("srhrecmoduser", user);
    header.set("srhTransfinished", std::int16_t(chkTransFinished.value()));
    header.set("srhNoofDetails", std::int32_t{lvwrequest.count()});
    header.update();
    header.close();

    const Connection connection = module().connection();
    connection.execute("Update mesRequesttoShopHeader set updatetime=getdate() where srhrequestid=" + ofRequest +
                       shopCondition("  and srhShopid="));
    connection.execute("delete mesRequesttoShopdetail where srdrequestid=" + ofRequest +
                       shopCondition(" and srdshopid = "));
    writeLines(id);
    session().auditing.SaveUserAuditingInfo(ofRequest, txtRequestNo.text(), session().editMode, this);
    return std::nullopt;
}

void frmRequest::writeLines(std::int32_t id) {
    const Session& s = session();
    // clang-format off
    db_.fnUpdateListViewDetails("mesRequesttoShopDetail", lvwrequest,
                                {ColumnSource::fixed(id), ColumnSource::fixed(s.shopId), ColumnSource::subItem(kLineItemId),
                                 ColumnSource::fixed(cboShop.selectedData()), ColumnSource::subItem(kLineGoodQty),
                                 ColumnSource::subItem(kLineBadQty),
                                 s.kind().priced ? ColumnSource::subItem(kLinePrice) : ColumnSource::fixed(priceValue_)});
    // clang-format on
}

} // namespace goodsreq
