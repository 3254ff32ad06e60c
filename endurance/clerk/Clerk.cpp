// A clerk's eyes and hands, and what is likely to be done next.
#include "endurance/clerk/Clerk.h"

#include "basic/Text.h"
#include "screens/fetch/FrmFetch.h"
#include "screens/lines/frmRequestDetail.h"
#include "screens/register/frmMaster.h"
#include "screens/register/frmcancelreason.h"
#include "screens/request/frmRequest.h"

namespace endurance::clerk {

using support::Waiting;

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
    for (const auto& [letter, button] : {std::pair('N', &form.cmdnew), std::pair('E', &form.CmdEdit),
                                         std::pair('D', &form.CmdDelete), std::pair('P', &form.cmdPrev)})
        if (button->enabled()) view.on += letter;
    view.descends = form.optDescend.value();
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

Clerk::Clerk(Company& where)
    : Shop(where.file(), {}, [this](automation::ObjectFactory inner) { return around(std::move(inner)); }),
      company(where) {
    component.intCompanyID = kCompanyId;
    listen();
    die = [this] {
        connection->kill();
        dead = diedNow = true;
    };
    commit = [this] { connection->database().commit(); };
    inTransaction = [this] { return connection->isOpen() && connection->database().inTransaction(); };
    failBoxes = [this](int count) { desktop.refusals += count; };
}

Clerk::~Clerk() {
    disarm();
    desktop.abandon();
    kept.clear();
}

void Clerk::listen() {
    connection->failOn([this](std::string_view text) {
        statement(text);
        return false;
    });
}

std::string Clerk::place() const {
    switch (desktop.waiting()) {
    case Waiting::form: return user.form();
    case Waiting::message: return "message";
    case Waiting::menu: return "menu";
    default: return "nobody";
    }
}

bool Clerk::can(const std::string& name) const {
    if (desktop.waiting() != Waiting::form || !desktop.topForm()) return false;
    const forms::Control* control = desktop.topForm()->find(name);
    return control && control->visible() && control->enabled();
}

bool Clerk::says(const std::string& what) {
    memory.said += (memory.said.empty() ? "" : ", ") + what;
    for (char& c : memory.said)
        if (c == '\r' || c == '\n') c = ' ';
    return true;
}

bool Clerk::clicksOn(const std::string& control) {
    if (!can(control)) return false;
    memory.touched.insert(control);
    says("clicks " + control);
    user.clicks(control);
    return true;
}

bool Clerk::comesTo(const std::string& control) {
    if (!can(control) || !desktop.topForm()->find(control)->canTakeFocus()) return false;
    memory.touched.insert(control);
    if (user.focus() != control) user.focuses(control);
    return desktop.waiting() == Waiting::form && user.focus() == control;
}

void Clerk::selectsAll() {
    desktop.perform([this] {
        if (auto* box = dynamic_cast<forms::TextBox*>(desktop.topForm()->activeControl()))
            box->selectionMoved(0, basic::len(box->text()));
    });
}

void Clerk::keys(const std::string& text) {
    const std::string form = user.form();
    for (std::size_t i = 0; i < text.size();) {
        std::size_t length = 1;
        while (i + length < text.size() && (text[i + length] & 0xC0) == 0x80) ++length;
        if (desktop.waiting() != Waiting::form || user.form() != form || user.focus().empty()) return;
        user.types(text.substr(i, length));
        i += length;
    }
}

bool Clerk::fills(const std::string& box, const std::string& text) {
    if (!comesTo(box)) return false;
    selectsAll();
    says("types \"" + text + "\" into " + box);
    keys(text.empty() ? "\b" : text);
    return true;
}

bool Clerk::play(const Step& step, long minute) {
    desktop.time.days = static_cast<double>(minute) / 1440;
    memory.pressed = 0;
    memory.said.clear();
    memory.typed.clear();
    memory.meant.clear();
    memory.answer.reset();
    if (step.verb == "fault") {
        arm(static_cast<Fault>(step.a % kFaults), step.b, step.c);
        return says("fault " + std::to_string(step.a % kFaults) + " in " + std::to_string(step.b) + " of " +
                    of(members(), step.c).name);
    }
    const std::string here = place();
    if (here != "message" && here != "menu") memory.touched = {user.focus()};
    for (const Act& act : kActs)
        if (act.verb == step.verb && (act.place == here || (act.place.empty() && desktop.waiting() == Waiting::form)))
            return act.does(*this, step);
    return false;
}

std::vector<std::string_view> Clerk::possible() const {
    std::vector<std::string_view> verbs;
    const std::string here = place();
    for (const Act& act : kActs)
        if (act.place == here || (act.place.empty() && desktop.waiting() == Waiting::form))
            verbs.insert(verbs.end(), static_cast<std::size_t>(act.weight), act.verb);
    return verbs;
}

void Clerk::ownerRollsBack() {
    if (dead || !inTransaction() || !(holdsRows() || place() == "frmMaster")) return;
    connection->failOn(nullptr);
    connection->call("RollbackTrans");
    listen();
}

void Clerk::recover() {
    if (diedNow) deadFor_ = 4;
    diedNow = false;
    if (dead && --deadFor_ == 0) {
        connection->call("Close");
        connection->call("Open");
        dead = false;
    }
}

} // namespace endurance::clerk
