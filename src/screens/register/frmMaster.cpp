#include "screens/register/frmMaster.h"

#include "basic/Conversion.h"
#include "basic/Numbers.h"
#include "screens/print/frmPrint.h"

namespace goodsreq {
namespace {

constexpr int kMargin = 150;
constexpr int kWidth = 14000;
constexpr int kHeight = 8700;
constexpr int kButtonWidth = 1300;
constexpr int kButtonHeight = 390;
constexpr int kRowHeight = 315;

} // namespace

frmMaster::frmMaster(Module& module) : ModuleForm(module, "frmMaster") {
    mnurefresh = {"mnurefresh", "&Refresh", true, [this] { trap("mnurefresh_Click", [this] { refreshRequest(); }); }};
    mnupopup = {"mnupopup", {&mnurefresh}};

    onKeyPress = [this](std::int16_t& character) {
        constexpr std::int16_t kControlD = 4;
        if (character == kControlD) trap("Form_KeyPress", [this] { goToLastRow(); });
    };

    flexMaster.onRowColChange = [this] { trap("flexMaster_RowColChange", [this] { enableRowCommands(); }); };
    flexMaster.onDblClick = [this] {
        if (CmdEdit.enabled()) CmdEdit.onClick();
    };
    flexMaster.onKeyDown = [this](std::int16_t& keyCode, std::int16_t) {
        if (keyCode == forms::kKeyDelete && CmdDelete.enabled()) CmdDelete.onClick();
    };
    flexMaster.onKeyPress = [this](std::int16_t& character) {
        if (character == forms::kKeyReturn && CmdEdit.enabled()) CmdEdit.onClick();
        if (character == forms::kKeyLineFeed && cmdnew.enabled()) cmdnew.onClick();
    };
    flexMaster.onMouseMove = [this](const forms::MouseEvent&) {
        trap("flexMaster_MouseMove", [this] { showCellUnderPointer(); });
    };
    flexMaster.onMouseUp = [this](const forms::MouseEvent& event) {
        trap("flexMaster_MouseUp", [&] { showMenu(event); });
    };

    cboColNames.onClick = [this] { trap("cboColNames_Click", [this] { sortByChosenColumn(); }); };
    optAscend.onClick = [this] { trap("optAscend_Click", [this] { cboColNames.setListIndex(-1); }); };
    optDescend.onClick = [this] { trap("optDescend_Click", [this] { cboColNames.setListIndex(-1); }); };
    txtsearch.onGotFocus = selectsItsText();
    txtsearch.onKeyUp = [this](std::int16_t&, std::int16_t) { trap("txtsearch_KeyUp", [this] { search(); }); };
    for (forms::Control* box :
         std::initializer_list<forms::Control*>{&cboColNames, &cboSearch, &optAscend, &optDescend, &txtsearch})
        box->onKeyPress = enterMovesOn();

    cmdnew.onClick = [this] { trap("cmdnew_Click ", [this] { newRequest(); }); };
    CmdEdit.onClick = [this] { trap("CmdEdit_Click ", [this] { editRequest(); }); };
    CmdDelete.onClick = [this] { trap("CmdDelete_Click ", [this] { deleteRequest(); }); };
    cmdPrev.onClick = [this] {
        trap("cmdPrev_Click", [this] {
            if (allowed("P")) this->module().print().offer();
        });
    };
    CmdClose.onClick = [this] { unload(); };
}

void frmMaster::design() {
    setSize(kWidth, kHeight);
    setResizable(true);
    const forms::Anchor below{true, false, false, true};
    const forms::Anchor belowRight{false, false, true, true};
    const int boxes = kHeight - kMargin - kButtonHeight - 200 - kRowHeight;
    const int buttons = kHeight - kMargin - kButtonHeight;

    flexMaster.place({kMargin, kMargin, kWidth - 2 * kMargin, boxes - 2 * kMargin}, {true, true, true, true});
    flexMaster.setReadAs("Requests");
    lblSort.place({kMargin, boxes + 45, 700, 240}, below);
    lblSort.setText("S&ort by:");
    cboColNames.place({900, boxes, 2300, kRowHeight}, below);
    optAscend.place({3320, boxes, 1250, kRowHeight}, below);
    optAscend.setText("&Ascending");
    optAscend.setValue(true);
    optDescend.place({4620, boxes, 1350, kRowHeight}, below);
    optDescend.setText("De&scending");
    lblSearch.place({6300, boxes + 45, 950, 240}, below);
    lblSearch.setText("Searc&h in:");
    cboSearch.place({7250, boxes, 2300, kRowHeight}, below);
    txtsearch.place({9650, boxes, kWidth - kMargin - 9650, kRowHeight}, {true, false, true, true});
    txtsearch.setReadAs("Search text");

    int left = kWidth - kMargin - 5 * kButtonWidth - 4 * 100;
    struct Caption {
        forms::CommandButton& button;
        const char* text;
    };
    for (const Caption& caption : {Caption{cmdnew, "&New"},
                                   {CmdEdit, "&Edit"},
                                   {CmdDelete, "&Delete"},
                                   {cmdPrev, "&Print"},
                                   {CmdClose, "&Close"}}) {
        caption.button.place({left, buttons, kButtonWidth, kButtonHeight}, belowRight);
        caption.button.setText(caption.text);
        left += kButtonWidth + 100;
    }
}

void frmMaster::onLoad() {
    Session& s = session();
    // A load that fails before it has read the rights leaves none, least of all an earlier user's; nor does it leave
    // the services of an earlier session.
    s.userRights.clear();
    s.hasEveryRight = false;
    for (forms::CommandButton* command : {&cmdnew, &CmdEdit, &CmdDelete, &cmdPrev}) command->setEnabled(false);
    s.formColour = {};
    s.auditing = {};
    s.userName.clear();
    s.alias.clear();
    s.blnIntegerQuantity = s.aliasInUse = s.preserveItemDetails = false;
    db_ = {};
    listQuery.clear();
    setCaption(s.kind().registerCaption);
    trap("Form_Load ", [&] {
        db_ = CommonDb(module().create("CommonModule.clscommonDB"), s.connection);
        s.formColour = FormColour(module().create("Formcolor.clsFormcolor"));
        s.formColour.Applyformcolor(*this);
        s.auditing = UserAuditing(module().create("PosUserAuditing.clsUserAuditing"));
        s.auditing.OpenObject(s.connection, s.companyId, s.shopId, s.userId, s.screenId, desktop().now());
        readSettings();
        listQuery = buildListQuery();
        GridPopulate(listQuery, "mesRequesttoShopHeader,ashops");
        trap("USerRights", [this] { USerRights(); });
    });
}

void frmMaster::onActivate() {
    trap("Form_Activate ", [this] {
        Session& s = session();
        s.aliasInUse = isTrue(db_.lookUp("apackagesettings", "alias"));
        if (s.aliasInUse && s.kind().namesTheShop) {
            s.alias = shown(db_.lookUp("aalias", "Alias", "aliasid =1"));
            setCaption("Goods Request To " + s.alias);
        }
    });
    trap("Form_Activate ", [this] { enableRowCommands(); });
}

std::string frmMaster::current(RegisterColumn column) const {
    return flexMaster.row() < flexMaster.fixedRows() || column >= flexMaster.cols()
               ? std::string()
               : std::string(flexMaster.cell(flexMaster.row(), column));
}

std::int32_t frmMaster::currentId() const { return basic::cLng(flexMaster.cell(flexMaster.row(), kColId)); }

void frmMaster::enableRowCommands() {
    const bool hasRequest = hasCurrentRequest();
    CmdEdit.setEnabled(hasRequest && mayUse("E"));
    CmdDelete.setEnabled(hasRequest && current(kColCancelled) == "No" && mayUse("D"));
    cmdPrev.setEnabled(hasRequest && mayUse("P"));
}

void frmMaster::showCellUnderPointer() {
    const int row = flexMaster.mouseRow();
    const int col = flexMaster.mouseCol();
    const bool inside = row >= 0 && row < flexMaster.rows() && col >= 0 && col < flexMaster.cols();
    flexMaster.setToolTip(inside ? std::string(flexMaster.cell(row, col)) : std::string());
}

void frmMaster::showMenu(const forms::MouseEvent& event) {
    if (event.button == forms::MouseButton::right && basic::val(current(kColId)) > 0)
        desktop().popupMenu(*this, mnupopup);
}

void frmMaster::goToLastRow() {
    flexMaster.selectRow(flexMaster.rows() - 1);
    flexMaster.setTopRow(flexMaster.rows() - 1);
}

} // namespace goodsreq
