#include "screens/lines/frmRequestDetail.h"

#include "basic/Conversion.h"
#include "basic/Format.h"
#include "basic/Numbers.h"
#include "basic/Text.h"
#include "common/Packing.h"
#include "screens/request/frmRequest.h"

namespace goodsreq {

namespace {

constexpr int kMargin = 150;
constexpr int kWidth = 8700;
constexpr int kFieldLeft = 1850;
constexpr int kRowHeight = 330;
constexpr int kRowStep = 435;
constexpr int kPacksHeight = 1700;
constexpr int kButtonHeight = 390;

} // namespace

frmRequestDetail::frmRequestDetail(Module& module) : ModuleForm(module, "frmRequestDetail") {
    onKeyDown = [this](std::int16_t& keyCode, std::int16_t) {
        trap("Form_KeyDown", [&] {
            lblNotCarried.setText("");
            if (keyCode == forms::kKeyF3 && cmdbarcode.enabled()) cmdbarcode.onClick();
        });
    };

    txtBarcode.onKeyPress = [this](std::int16_t& character) {
        if (character == '\'') character = 0;
        if (character != forms::kKeyReturn) return;
        // A code that could not be looked up gives way to the next scan.
        if (!trap("txtBarcode_KeyPress ", [this] { resolveBarcode(); })) txtBarcode.selectAll();
    };
    keepApostrophesOut(txtBarcode);
    txtBarcode.onGotFocus = [this] { txtBarcode.selectAll(); };
    txtBarcode.onLostFocus = cmdbarcode.onLostFocus = [this] { lblNotCarried.setText(""); };
    cmdbarcode.onKeyPress = [this](std::int16_t& character) {
        trap("cmdbarcode_KeyPress", [&] {
            if (!itemStands()) beginCode(txtBarcode, character);
        });
    };
    cmdbarcode.onClick = [this] { trap("cmdbarcode_Click", [this] { fetchItem(); }); };
    cboItem.onClick = [this] { trap("cboItem_Click ", [this] { itemChosen(); }); };
    cboItem.onValidate = [this] {
        trap("cboItem_Validate", [this] {
            if (isNewLine() && cboItem.hasSelection()) enteredItem_ = cboItem.selectedData();
        });
    };
    cboItem.onKeyPress = [this](std::int16_t& character) {
        trap("cboItem_KeyPress", [&] {
            EnterToTab(this->module(), character);
            if (cboItem.listCount() == 0 && !itemStands())
                beginCode(txtBarcode, character); // there is no item to type at
        });
    };
    lvwpacktype.onKeyPress = [this](std::int16_t& character) {
        trap("lvwpacktype_KeyPress", [&] {
            EnterToTab(this->module(), character);
            if (!itemStands()) scanOnward(character);
        });
    };
    cmdOk.onKeyPress = [this](std::int16_t& character) { trap("cmdOk_KeyPress", [&] { scanOnward(character); }); };
    cmdCancel.onKeyPress = [this](std::int16_t& character) {
        trap("cmdCancel_KeyPress", [&] { scanOnward(character); });
    };

    for (forms::TextBox* box : {&txtQuantity, &txtBadQuantity, &txtsellingprice}) {
        keepNumberPlain(*box);
        box->acceptsWhole = [this, box](const std::string& whole) { return acceptsNumber(*box, whole); };
        box->onGotFocus = [this, box] {
            box->selectAll();
            desktop().sendKeys("{Home}+{End}");
        };
    }
    txtQuantity.onKeyPress = [this](std::int16_t& character) {
        trap("txtQuantity_KeyPress", [&] { quantityKey(character); });
    };
    txtBadQuantity.onKeyPress = [this](std::int16_t& character) {
        trap("txtBadQuantity_KeyPress", [&] {
            if (character == forms::kKeyReturn)
                EnterToTab(this->module(), character);
            else
                filterNumber(txtBadQuantity, character);
        });
    };
    txtsellingprice.onKeyPress = [this](std::int16_t& character) {
        trap("txtsellingprice_KeyPress", [&] {
            EnterToTab(this->module(), character);
            filterNumber(txtsellingprice, character);
        });
    };
    txtQuantity.onMouseMove = [this](const forms::MouseEvent&) {
        trap("txtQuantity_MouseMove", [this] { showValueAsToolTip(txtQuantity, "###,###,##0.000#####"); });
    };
    txtQuantity.onMouseUp = [this](const forms::MouseEvent&) {
        trap("txtQuantity_MouseUp", [this] { showValueAsToolTip(txtQuantity, "###,###,##0.000"); });
    };
    txtBadQuantity.onMouseMove = [this](const forms::MouseEvent&) {
        trap("txtBadQuantity_MouseMove", [this] { showValueAsToolTip(txtBadQuantity, "###,###,##0.000#####"); });
    };

    cmdOk.onClick = [this] { commitLine(); };
    cmdCancel.onClick = [this] { unload(); };
    cmdFirst.onClick = [this] { trap("cmdFirst_Click ", [this] { goTo(1); }); };
    cmdPrev.onClick = [this] {
        trap("cmdPrev_Click ", [this] { goTo(this->module().request().CurrentLineIndex - 1); });
    };
    cmdNext.onClick = [this] {
        trap("cmdNext_Click ", [this] { goTo(this->module().request().CurrentLineIndex + 1); });
    };
    cmdLast.onClick = [this] { trap("cmdLast_Click ", [this] { goTo(lines().count()); }); };
}

void frmRequestDetail::design() {
    const int labelLeft = kMargin + 150;
    int top = kMargin + 300;
    struct Row {
        forms::Label& label;
        const char* caption;
        forms::Control& field;
        int width;
    };
    for (const Row& row : {Row{lblBarcode, "&Barcode / Code:", txtBarcode, 3000},
                           {lblItem, "&Item:", cboItem, 5900},
                           {lblQuantity, "&Request Quantity:", txtQuantity, 1800},
                           {lblBadQuantity, "&Bad Quantity:", txtBadQuantity, 1800},
                           {lblsellingprice, "Selling Price:", txtsellingprice, 1800}}) {
        row.label.place({labelLeft, top + 45, kFieldLeft - labelLeft, 240});
        row.label.setText(row.caption);
        row.field.place({kFieldLeft, top, row.width, kRowHeight});
        top += kRowStep;
    }
    lblBarcode.setText("Bar&code / Code:");
    cmdbarcode.place({kFieldLeft + 3000 + 100, txtBarcode.bounds().top - 15, 1700, kRowHeight + 30});
    cmdbarcode.setText("&Search...  F3");
    lblNotCarried.place({cmdbarcode.bounds().right() + 100, txtBarcode.bounds().top - 45, 1700, 420});
    for (forms::TextBox* box : {&txtQuantity, &txtBadQuantity, &txtsellingprice}) box->setRightAligned(true);
    Frame1.place({kMargin, kMargin, kWidth - 2 * kMargin, top - kMargin + 60});

    lvwpacktype.setReadAs("Packing types of the item");
    lvwpacktype.setColumns(
        {{"PackID", 900}, {"Packing Type", 5300}, {"Quantity", 1900, forms::ColumnAlignment::right}});
    lvwpacktype.place({kMargin, Frame1.bounds().bottom() + 150, kWidth - 2 * kMargin, kPacksHeight});
    const int buttons = lvwpacktype.bounds().bottom() + 150;
    int left = kMargin;
    struct Button {
        forms::CommandButton& button;
        const char* caption;
        int width;
    };
    for (const Button& b :
         {Button{cmdFirst, "|<", 600}, {cmdPrev, "<", 600}, {cmdNext, ">", 600}, {cmdLast, ">|", 600}}) {
        b.button.place({left, buttons, b.width, kButtonHeight});
        b.button.setText(b.caption);
        b.button.setEnabled(false); // until somebody knows where in the list we are
        left += b.width + 60;
    }
    cmdOk.place({kWidth - kMargin - 2 * 1300 - 100, buttons, 1300, kButtonHeight});
    cmdOk.setText("&OK");
    cmdCancel.place({kWidth - kMargin - 1300, buttons, 1300, kButtonHeight});
    cmdCancel.setText("C&lose");
    cmdCancel.setCancel(true);
    setSize(kWidth, buttons + kButtonHeight + kMargin);
}

void frmRequestDetail::forget() {
    db_ = {};
    gen_ = {};
    fetch_ = {};
    strItemCode.clear();
    asksSupplier_ = remembered_ = false;
}

void frmRequestDetail::onLoad() {
    forget();
    trap("Form_Load ", [this] {
        Session& s = session();
        justLoaded_ = true;
        setCaption(s.kind().namesTheShop && s.aliasInUse ? "Goods Request To " + s.alias : s.kind().registerCaption);
        if (!showsPrice()) {
            const auto moveUp = [](forms::Control& control) {
                forms::Rect bounds = control.bounds();
                bounds.top -= kRowStep;
                control.setBounds(bounds);
            };
            txtsellingprice.setVisible(false);
            lblsellingprice.setVisible(false);
            forms::Rect frame = Frame1.bounds();
            frame.height -= kRowStep;
            Frame1.setBounds(frame);
            for (forms::Control* control : std::initializer_list<forms::Control*>{
                     &lvwpacktype, &cmdFirst, &cmdPrev, &cmdNext, &cmdLast, &cmdOk, &cmdCancel})
                moveUp(*control);
            setSize(width(), height() - kRowStep);
        }
        shopId_ = s.shopId;
        db_ = module().createCommonDb();
        gen_ = CommonGen(module().create("CommonModule.clsCommonGen"));
        fetch_ = Fetch(module().create("Fetch.clsFetch"));
        s.formColour.Applyformcolor(*this);
        EnableOrDisableNavigationButtons();
    });
}

void frmRequestDetail::onActivate() {
    trap("Form_Activate ", [this] {
        if (!justLoaded_) return;
        justLoaded_ = false;
        if (isNewLine())
            cboItem.setListIndex(-1);
        else
            ShowSelectedLine();
        remember();
    });
}

forms::ListView& frmRequestDetail::lines() const { return forms::touch(module().request()).lvwrequest; }

void frmRequestDetail::filterNumber(forms::TextBox& box, std::int16_t& character) {
    if (character == desktop().locale().decimalSeparator) character = '.';
    if (character != forms::kKeyReturn) gen_.TextValidateNum(box, character);
}

// Text that comes as a whole passes what would refuse it key by key.
bool frmRequestDetail::acceptsNumber(forms::TextBox& box, const std::string& pasted) {
    const std::string whole = plainNumber(pasted);
    int digits = 0;
    int decimals = 0;
    bool point = false;
    for (std::size_t i = 0; i < whole.size(); ++i) {
        const char c = whole[i];
        if (c == '-' && i == 0 && &box != &txtQuantity) continue;
        if (c == '.' && !point && !(&box == &txtQuantity && session().blnIntegerQuantity)) {
            point = true;
            continue;
        }
        if (c < '0' || c > '9') return false;
        ++digits;
        decimals += point;
    }
    return digits <= 18 && decimals <= 3;
}

void frmRequestDetail::quantityKey(std::int16_t& character) {
    if (character == forms::kKeyReturn) return quantityEntered();
    if (character == '-') character = 0;
    if (character == desktop().locale().decimalSeparator) character = '.';
    if (character == '.' && session().blnIntegerQuantity) {
        character = 0;
        module().inform(kIntegerOnly);
    }
    if (character != 0) filterNumber(txtQuantity, character);
}

void frmRequestDetail::quantityEntered() {
    const double quantity = basic::val(txtQuantity.text());
    if (quantity <= 0) return;
    if (cboItem.hasSelection()) FillPackingQuantities(module(), lvwpacktype, cboItem.selectedData(), quantity);
    EnterToTab(module(), forms::kKeyReturn);
}

void frmRequestDetail::showValueAsToolTip(forms::TextBox& box, const char* pattern) {
    box.setToolTip(basic::format(basic::valText(box.text()), pattern));
}

} // namespace goodsreq
