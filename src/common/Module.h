// The module as a whole: its session, its forms, and what they need of the world.
#pragma once

#include "common/CommonDb.h"
#include "common/Connection.h"
#include "common/Session.h"
#include "common/System.h"
#include "forms/Desktop.h"

#include <functional>
#include <memory>
#include <string>

namespace goodsreq {

class frmMaster;
class FrmFetch;
class frmPrint;
class frmcancelreason;
class frmRequest;
class frmRequestDetail;
class frmscanBc;
class Module;

/// How each form is made on its first use. Whoever runs the module fills this in, so that the forms' folders need not
/// know one another.
struct FormMakers {
    std::function<std::shared_ptr<frmMaster>(Module&)> master;
    std::function<std::shared_ptr<frmcancelreason>(Module&)> cancelReason;
    std::function<std::shared_ptr<frmRequest>(Module&)> request;
    std::function<std::shared_ptr<frmRequestDetail>(Module&)> requestDetail;
    std::function<std::shared_ptr<frmPrint>(Module&)> print;
    std::function<std::shared_ptr<frmscanBc>(Module&)> scanBarcode;
    std::function<std::shared_ptr<FrmFetch>(Module&)> fetchItem;
};

/// One user at one screen. The component keeps the process's one; a test makes as many as it has users.
class Module {
public:
    /// `folder` is where the component itself is loaded from, without a separator at its end.
    Module(forms::Desktop& desktop, System& system, automation::ObjectFactory factory, FormMakers makers,
           std::string folder);
    Module(const Module&) = delete;
    Module& operator=(const Module&) = delete;
    ~Module();

    Session session;

    forms::Desktop& desktop() const { return desktop_; }
    System& system() const { return system_; }
    const std::string& folder() const { return folder_; }

    /// Single instances, made on first use. Reading a form's variables this way does not load it; see forms::touch.
    frmMaster& master();
    frmcancelreason& cancelReason();
    frmRequest& request();
    frmRequestDetail& requestDetail();
    frmPrint& print();
    frmscanBc& scanBarcode();
    FrmFetch& fetchItem();

    /// Error 429 where the component is missing.
    automation::ObjectPtr create(std::string_view progId) const { return factory_(progId); }
    CommonDb createCommonDb() const;
    Connection connection() const { return Connection(session.connection); }
    /// Opens a query on the session's connection.
    Recordset openRecordset(const std::string& query, Cursor cursor = Cursor::forwardOnly,
                            Lock lock = Lock::readOnly) const;

    /// A refusal or a remark: information icon, OK.
    void inform(const std::string& text) const;
    /// A question: Yes or No, No as the default. True on Yes.
    bool confirm(const std::string& text, forms::MessageIcon icon = forms::MessageIcon::question) const;
    forms::Answer ask(const forms::Message& message) const;

    /// Lets go of forms and of the session's objects without releasing them: they belong to a thread that may have
    /// ended. The values of the session stay.
    void abandonObjects();

private:
    forms::Desktop& desktop_;
    System& system_;
    automation::ObjectFactory factory_;
    FormMakers makers_;
    std::string folder_;
    struct Forms {
        std::shared_ptr<frmMaster> master;
        std::shared_ptr<frmcancelreason> cancelReason;
        std::shared_ptr<frmRequest> request;
        std::shared_ptr<frmRequestDetail> requestDetail;
        std::shared_ptr<frmPrint> print;
        std::shared_ptr<frmscanBc> scanBarcode;
        std::shared_ptr<FrmFetch> fetchItem;
    };
    Forms forms_;
};

} // namespace goodsreq
