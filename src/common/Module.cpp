#include "common/Module.h"

#include <utility>
#include <vector>

namespace goodsreq {
namespace {

template <class F>
F& single(std::shared_ptr<F>& form, const std::function<std::shared_ptr<F>(Module&)>& make, Module& module) {
    if (!form) form = make(module);
    return *form;
}

} // namespace

Module::Module(forms::Desktop& desktop, System& system, automation::ObjectFactory factory, FormMakers makers,
               std::string folder)
    : desktop_(desktop), system_(system), factory_(std::move(factory)), makers_(std::move(makers)),
      folder_(std::move(folder)) {}

Module::~Module() = default;

frmMaster& Module::master() { return single(forms_.master, makers_.master, *this); }

frmcancelreason& Module::cancelReason() { return single(forms_.cancelReason, makers_.cancelReason, *this); }

frmRequest& Module::request() { return single(forms_.request, makers_.request, *this); }

frmRequestDetail& Module::requestDetail() { return single(forms_.requestDetail, makers_.requestDetail, *this); }

frmPrint& Module::print() { return single(forms_.print, makers_.print, *this); }

frmscanBc& Module::scanBarcode() { return single(forms_.scanBarcode, makers_.scanBarcode, *this); }

FrmFetch& Module::fetchItem() { return single(forms_.fetchItem, makers_.fetchItem, *this); }

void Module::abandonObjects() {
    static auto& abandoned = *new std::vector<std::pair<Forms, Session>>;
    abandoned.emplace_back(std::exchange(forms_, {}), session);
    // Counted once more, so these do not release either.
    session.connection = nullptr;
    session.formColour = FormColour();
    session.auditing = UserAuditing();
}

CommonDb Module::createCommonDb() const { return CommonDb(create("CommonModule.clsCommonDB"), session.connection); }

Recordset Module::openRecordset(const std::string& query, Cursor cursor, Lock lock) const {
    Recordset recordset(create("ADODB.Recordset"));
    recordset.object()->call("Open", query, session.connection, static_cast<std::int32_t>(cursor),
                             static_cast<std::int32_t>(lock));
    return recordset;
}

void Module::inform(const std::string& text) const {
    ask({text, session.messageBoxCaption, forms::MessageIcon::information, forms::MessageButtons::ok,
         forms::Answer::ok});
}

bool Module::confirm(const std::string& text, forms::MessageIcon icon) const {
    return ask({text, session.messageBoxCaption, icon, forms::MessageButtons::yesNo, forms::Answer::no}) ==
           forms::Answer::yes;
}

forms::Answer Module::ask(const forms::Message& message) const { return desktop_.messageBox(message); }

} // namespace goodsreq
