#include "screens/request/frmRequest.h"

#include "basic/Conversion.h"
#include "basic/DateText.h"
#include "basic/Numbers.h"
#include "basic/Text.h"
#include "screens/register/frmMaster.h"

namespace goodsreq {

namespace {

constexpr int kMargin = 150;
constexpr int kWidth = 11400;
constexpr int kHeight = 7300;
constexpr int kRowHeight = 330;
constexpr int kLabelWidth = 1250;
constexpr const char* kLayoutKey = "Shoptoshoptransfer";

std::vector<forms::ListColumn> lineColumns() {
    using forms::ColumnAlignment;
    return {{"Sl No.", 700},
            {"Item Code", 1400},
            {"Item Name", 4350},
            {"Request Quantity.", 1950, ColumnAlignment::right},
            {"Bad Qty", 1100, ColumnAlignment::right},
            {"Item ID", 0, ColumnAlignment::right},
            {"Selling Price", 1200, ColumnAlignment::right},
            {"Unit", 800}};
}

} // namespace

frmRequest::frmRequest(Module& module) : ModuleForm(module, "frmRequest") {
    mnuAdd = {"mnuAdd", "&Add\tCtrl+Enter", true, [this] { trap("mnuAdd_Click", [this] { addLine(); }); }};
    mnuEdit = {"mnuEdit", "&Edit\tEnter", true, [this] { trap("mnuEdit_Click ", [this] { editLine(); }); }};
    mnudel = {"mnudel", "&Delete\tDel", true, [this] { trap("mnudel_Click ", [this] { deleteLine(); }); }};
    mnuCancel = {"mnuCancel", "&Cancel", true, [] {}};
    mnulist = {"mnulist", {&mnuAdd, &mnuEdit, &mnudel, &mnuCancel}};

    for (forms::Control* box :
         std::initializer_list<forms::Control*>{&txtRequestNo, &txtrequestDate, &cboShop, &chkTransFinished})
        box->onKeyPress = enterMovesOn();
    txtRemarks.onKeyPress = [this](std::int16_t& character) {
        EnterToTab(this->module(), character);
        if (character == forms::kKeyReturn) character = 0; // the box has several lines; Ctrl+Enter breaks one
    };
    for (forms::TextBox* box : {&txtRequestNo, &txtrequestDate}) box->onGotFocus = selectsItsText();
    txtRemarks.onGotFocus = [this] { txtRemarks.select(basic::len(txtRemarks.text()), 0); };
    txtrequestDate.onLostFocus = [this] {
        trap("txtrequestDate_LostFocus", [this] {
            if (headedFor() != &cmdCancel && !dateRead()) txtrequestDate.setFocus();
        });
    };

    cboShop.onGotFocus = [this] { cboShop.setTag(cboShop.text()); };
    cboShop.onClick = [this] { trap("cboShop_Click ", [this] { shopChosen(); }); };

    lvwrequest.onDblClick = [this] { trap("lvwrequest_DblClick", [this] { mnuEdit.onClick(); }); };
    lvwrequest.onItemClick = [this](forms::ListItem& line) {
        trap("lvwrequest_ItemClick", [&] { showLineToolTips(line); });
    };
    lvwrequest.onKeyPress = [this](std::int16_t& character) {
        trap("lvwrequest_KeyPress ", [&] {
            if (character == forms::kKeyReturn) (HasNoQuantities(false) ? mnuAdd : mnuEdit).onClick();
            if (character == forms::kKeyLineFeed) mnuAdd.onClick();
        });
    };
    lvwrequest.onKeyDown = [this](std::int16_t& keyCode, std::int16_t) {
        trap("lvwrequest_KeyDown ", [&] {
            if (keyCode == forms::kKeyF10) (HasNoQuantities(true) ? mnuAdd : mnuEdit).onClick();
            if (keyCode == forms::kKeyDelete) mnudel.onClick();
        });
    };
    lvwrequest.onMouseDown = [this](const forms::MouseEvent& event) {
        trap("lvwrequest_MouseDown", [&] {
            if (event.button == forms::MouseButton::right) showLineMenu();
        });
    };

    cmdOk.onClick = [this] { save(); };
    cmdCancel.onClick = [this] { unload(); };
}

void frmRequest::design() {
    setSize(kWidth, kHeight);
    setResizable(true);
    setCaption("Goods Request To Shop");
    const int second = kMargin + kRowHeight + 120;
    const int third = second + kRowHeight + 120;
    const int fieldLeft = kMargin + kLabelWidth;
    const int rightLabel = 6300;
    const int rightField = rightLabel + kLabelWidth;
    const forms::Anchor stretch{true, true, true, false};
    const forms::Anchor below{true, false, false, true};
    const forms::Anchor belowRight{false, false, true, true};

    lblRequestNo.place({kMargin, kMargin + 45, kLabelWidth, 240});
    lblRequestNo.setText("Request &No:");
    txtRequestNo.place({fieldLeft, kMargin, 2600, kRowHeight});
    txtRequestNo.setLocked(true); // the number is made at saving, so there is nothing to stop for
    txtRequestNo.setTabStop(false);
    lblrequestDate.place({rightLabel, kMargin + 45, kLabelWidth, 240});
    lblrequestDate.setText("&Date:");
    txtrequestDate.place({rightField, kMargin, 1700, kRowHeight});
    Label1.place({kMargin, second + 45, kLabelWidth, 240});
    Label1.setText("&Shop :");
    cboShop.place({fieldLeft, second, 4600, kRowHeight});
    lblRemarks.place({kMargin, third + 45, kLabelWidth, 240});
    lblRemarks.setText("Re&marks:");
    txtRemarks.place({fieldLeft, third, kWidth - kMargin - fieldLeft, 2 * kRowHeight}, stretch);
    txtRemarks.setMultiLine(true);

    const int list = third + 2 * kRowHeight + 150;
    const int buttons = kHeight - kMargin - 390;
    lvwrequest.place({kMargin, list, kWidth - 2 * kMargin, buttons - 150 - list}, {true, true, true, true});
    lvwrequest.setColumns(lineColumns());
    lvwrequest.setReadAs("Lines of the request");
    chkTransFinished.place({kMargin, buttons + 60, 2600, 270}, below);
    chkTransFinished.setText("Confirmed &Finished");
    cmdOk.place({kWidth - kMargin - 2 * 1300 - 100, buttons, 1300, 390}, belowRight);
    cmdOk.setText("&OK");
    cmdCancel.place({kWidth - kMargin - 1300, buttons, 1300, 390}, belowRight);
    cmdCancel.setText("&Cancel");
    cmdCancel.setCancel(true);
}

void frmRequest::onLoad() {
    requestId_ = 0;
    linesComplete_ = isNew();
    remembered_ = closingFailed_ = false;
    sent_.reset();
    db_ = {};
    gen_ = {};
    trap("Form_Load ", [this] {
        justLoaded_ = true;
        priceValue_ = 0;
        Session& s = session();
        gen_ = CommonGen(module().create("CommonModule.clsCommonGen"));
        db_ = module().createCommonDb();
        s.formColour.Applyformcolor(*this);
        setCaption(s.kind().editorCaption);
        if (s.kind().hidesPriceColumn) lvwrequest.setColumnWidth(kLinePrice + 1, 0);
        // Read as the suite's other editors do; nothing here goes by the kind of shop.
        db_.lookUp("ashops", "substring(futurevarchar,1,1)", shopCondition("ShopID="));
        fillShops();
        LoadListViewLayout(module(), name(), lvwrequest, kLayoutKey);
        lvwrequest.setTag("Loaded");
        if (!isNew()) {
            gen_.SelectComboItemByValue(cboShop, s.lngOtherShopID);
            loadLines();
        }
    });
}

void frmRequest::fillShops() {
    db_.populateComboorList("aShops s, ashopitemcategory ic", cboShop, "distinct s.shopid", "s.shopname",
                            " ic.shopid = s.shopid  and ic.itemcategoryid in "
                            "(select itemcategoryid from ashopitemcategory where shopid=" +
                                shopCondition("") + ")" + shopCondition(" and s.shopid<>") + " and s.ActiveShop=1");
}

void frmRequest::onActivate() {
    trap("Form_Activate ", [this] {
        Session& s = session();
        if (s.namesTheShop()) {
            Label1.setText(s.alias + " : ");
            setCaption("Goods Request To " + s.alias);
        }
        if (!justLoaded_) return;
        justLoaded_ = false;
        if (isNew())
            cboShop.setFocus();
        else
            openForEditing();
        s.auditing.SaveInToTag(*this);
        remembered_ = true;
        if (!linesComplete_) module().inform(kLinesMissing);
    });
}

void frmRequest::openForEditing() {
    // A request of which nobody can tell that it may be changed is only looked at.
    const bool changeable = cmdOk.enabled() && linesComplete_;
    setChangeable(false);
    gen_.SelectComboItemByValue(cboShop, session().lngOtherShopID);
    const std::string condition =
        " srhRequestid=" + std::to_string(module().master().currentId()) + shopCondition(" and srhshopid=");
    const bool used = isTrue(db_.lookUp("mesRequesttoShopHeader", "srhused", condition));
    const bool finished = isTrue(db_.lookUp("mesRequesttoShopHeader", "srhTransfinished", condition));
    if (finished) chkTransFinished.setValue(1);
    setChangeable(changeable && !used && !finished);
}

void frmRequest::setChangeable(bool changeable) {
    cmdOk.setEnabled(changeable);
    txtRemarks.setLocked(!changeable);
    chkTransFinished.setEnabled(changeable);
}

bool frmRequest::dateRead() {
    const basic::Locale& locale = desktop().locale();
    const std::string& text = txtrequestDate.text();
    // A number alone, or a time, would be a day long ago.
    const auto date = basic::isNumeric(text) ? std::nullopt : basic::parseDate(text, locale);
    if (txtrequestDate.locked() || (date && date->days >= 1)) return true;
    module().inform("\"" + text + "\" is no date. Enter the day of the request, such as " +
                    basic::shortDate(session().processDate, locale) + ".");
    return false;
}

void frmRequest::shopChosen() {
    if (!cboShop.hasSelection()) return;
    Session& s = session();
    const std::int32_t chosen = cboShop.selectedData();
    if (chosen == s.lngOtherShopID) return;
    if (!isNew()) return selectShop(s.lngOtherShopID); // a stored request keeps its shop
    if (s.lngOtherShopID != kNoShop && lvwrequest.count() > 0) {
        if (!module().confirm("Already entered data will be cleared. Do you want to change shop?")) {
            selectShop(s.lngOtherShopID);
            return;
        }
        lvwrequest.clear();
    }
    s.lngOtherShopID = chosen;
}

// The box never stays on another shop than the one in force.
void frmRequest::selectShop(std::int32_t shopId) {
    try {
        gen_.SelectComboItemByValue(cboShop, shopId);
    } catch (...) {
        for (int i = 0; i < cboShop.listCount(); ++i)
            if (cboShop.itemData(i) == shopId) cboShop.setListIndex(i);
        throw;
    }
}

std::optional<bool> frmRequest::changed() {
    if (lvwrequest.tag() == "C" || !remembered_) return true;
    std::optional<bool> differs;
    trap("Form_QueryUnload", [&] { differs = session().auditing.DataChanged(*this); });
    return differs;
}

void frmRequest::onQueryUnload(bool& cancel, forms::CloseReason) {
    if (!cmdOk.enabled()) return;
    const std::optional<bool> known = changed();
    if (!known && !closingFailed_) {
        closingFailed_ = true; // whether anything is lost is not known; the next time the user decides
        cancel = true;
        return;
    }
    if (known == false) return;
    const bool asked = trap("Form_QueryUnload", [&] {
        const forms::Answer answer =
            module().ask({"Save Changes?", session().messageBoxCaption, forms::MessageIcon::question,
                          forms::MessageButtons::yesNoCancel, forms::Answer::yes});
        if (answer == forms::Answer::cancel) cancel = true;
        if (answer == forms::Answer::yes) {
            save();
            cancel = loaded(); // a save that went through has unloaded the editor
        }
    });
    if (!asked) cancel = true;
}

} // namespace goodsreq
