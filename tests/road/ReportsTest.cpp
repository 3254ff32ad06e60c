// What support reads of a failure: which routine met it, by the very name that the suite's log has, for whom and why.
#include "automation/RunTimeError.h"
#include "basic/Text.h"
#include "screens/fetch/FrmFetch.h"
#include "screens/lines/frmRequestDetail.h"
#include "screens/lines/frmscanBc.h"
#include "screens/register/frmcancelreason.h"
#include "screens/request/frmRequest.h"
#include "slip/SettingsFile.h"
#include "tests/road/Screens.h"

#include <gtest/gtest.h>

namespace {

using namespace road;
using support::CompanyFile;
using support::Till;
using support::User;

using Act = std::function<void(Till& till)>;

struct Fault {
    const char* place; ///< module and routine; each blank counts
    Act open;
    const char* broken;
    Act act;
};

/// What a person does.
template <class... Given, class... Takes> Act does(User& (User::*act)(Takes...), Given... given) {
    return [=](Till& till) { (till.user.*act)(given...); };
}
Act clicks(const char* button) { return does(&User::clicks, button); }
Act rightClicks(const char* control) { return does(&User::rightClicks, control); }
Act types(const std::string& keys) { return does(&User::types, keys); }
Act presses(std::int16_t key, std::int16_t shift = 0) { return does(&User::presses, key, shift); }
Act enters(const char* box, const char* keys) { return does(&User::enters, box, keys); }
Act picksShop(int id) {
    return [=](Till& till) { till.picksShop(id); };
}
Act happens(void (*act)(goodsreq::Module&)) {
    return [=](Till& till) { till.user.happens([&] { act(till.module); }); };
}
Act inTurn(const std::vector<Act>& acts) {
    return [=](Till& till) {
        for (const Act& act : acts) act(till);
    };
}
/// The choice of a number that a component has added to a combo box.
Act picksOther(const char* combo, std::int32_t number) {
    return [=](Till& till) {
        till.user.happens([&] { till.user.control<forms::ComboBox>(combo)->addItem("other", number); });
        till.user.picks(combo, "other");
    };
}
/// The act, while the next box or menu cannot be shown.
Act unseen(const Act& act) {
    return [=](Till& till) {
        till.desktop.refusals = 1;
        act(till);
    };
}
/// The act, while the control's window cannot be changed.
Act stuck(const char* name, const Act& act) {
    struct : forms::ControlView {
        void changed(forms::Control&, forms::Aspect) override { automation::raise(automation::kInvalidCall); }
    } static view;
    return [=](Till& till) {
        auto* control = till.user.control(name);
        if (!control) return;
        control->attach(&view);
        act(till);
        control->attach(nullptr);
    };
}
Act movesOver(const char* name) { return stuck(name, does(&User::movesOver, name)); }
/// The act, on an editor with so many lines of which the last is chosen.
Act amongLines(int count, const Act& act) {
    return [=](Till& till) {
        till.user.focuses("lvwrequest").happens([&] {
            forms::ListView& list = till.module.request().lvwrequest;
            for (int i = 0; i < count; ++i) list.add("1");
            list.select(count);
        });
        act(till);
    };
}
Act goesOver(const char* dialog) {
    return [=](Till& till) { goOver(till, dialog); };
}

const Act openNothing = inTurn({});
const Act openOnNumbers = inTurn({openLineEntry, enters("txtQuantity", "1"), enters("txtBadQuantity", "1")});
const Act scans = [](Till& till) {
    till.user.types(support::requestableItems(CompanyFile(), 1, 2, 1).front().barcode + "\r");
};
const Act entersLine = inTurn({scans, types("4\r\r\r\r")});
const Act prints = inTurn({clicks("optScreen"), clicks("cmdOK")});
const Act confirmsDelete = [](Till& till) { till.user.clicks("CmdDelete").answers(forms::Answer::yes); };
const Act refreshes = [](Till& till) { till.user.rightClicks("flexMaster").choosesMenu("mnurefresh"); };
void pressesSearch(goodsreq::Module& module) {
    std::int16_t character = '7';
    module.requestDetail().cmdbarcode.onKeyPress(character);
}
void choosesSecond(goodsreq::Module& module) {
    module.fetchItem().flexMaster.setCell(1, 0, "2");
    module.fetchItem().flexMaster.selectRow(1);
}
void filesAway(Till& till) {
    till.system.refused["locked.txt"] = 70;
    till.user.happens([&] { goodsreq::FileCode(till.module, "port", "locked.txt"); });
}

// clang-format off
const Fault kFaults[] = {
    // Register.
    {"frmMaster |Form_Load ", openNothing, "Formcolor.clsFormcolor", openRegister},
    {"frmMaster |Form_Activate ", openEditor, "select alias", clicks("cmdCancel")},
    {"frmMaster |Form_Activate ", openRegister, "",
     inTurn({happens([](auto& m) { m.master().CmdEdit.setEnabled(false); }),
             stuck("CmdEdit", inTurn({clicks("cmdnew"), clicks("cmdCancel")}))})},
    {"frmMaster |GridPopulate", openNothing, "atablecolumns", openRegister},
    {"frmMaster |USerRights", openNothing, "louserrights", openRegister},
    {"frmMaster |flexMaster_MouseUp", openRegister, "", unseen(rightClicks("flexMaster"))},
    {"frmMaster |cmdnew_Click ", openRegister, "clsUserAuditing.LoggedTime", clicks("cmdnew")},
    {"frmMaster |CmdEdit_Click ", openRegister, "clsUserAuditing.LoggedTime", clicks("CmdEdit")},
    {"frmMaster |CmdDelete_Click ", openDeletable, "UserName", clicks("CmdDelete")},
    {"frmMaster |flexMaster_MouseMove", openRegister, "",
     inTurn({happens([](auto& m) { m.master().flexMaster.pointedAt(0, 1); }), movesOver("flexMaster")})},
    {"frmMaster |flexMaster_RowColChange", openDeletable, "",
     stuck("CmdDelete", [](auto& till) { till.user.selectsRow("flexMaster", 1); })},
    {"frmMaster |Form_KeyPress", openRegister, "", stuck("flexMaster", presses('D', forms::kControl))},
    {"frmMaster |mnurefresh_Click", openRegister, "update mesrequesttoshopheader", refreshes},
    {"frmMaster |cboColNames_Click", openRegister, "", picksOther("cboColNames", 99)},
    {"frmMaster |optDescend_Click", openRegister, "", inTurn({picksOther("cboColNames", 1), stuck("cboColNames", clicks("optDescend"))})},
    {"frmMaster |optAscend_Click", openRegister, "", inTurn({picksOther("cboColNames", 1), stuck("cboColNames", clicks("optAscend"))})},
    {"frmMaster |txtsearch_KeyUp", openRegister, "", inTurn({picksOther("cboSearch", 99), enters("txtsearch", "a")})},
    {"basGRtoShop |UpdateEditedRow", openRegister, "",
     happens([](auto& m) { UpdateEditedRow(m, m.master().flexMaster, "select", ""); })},
    {"frmcancelreason |Form_Load ", openDeletable, "clsFormcolor.Applyformcolor", confirmsDelete},
    {"frmcancelreason |cmdOk_Click ", openReason, "", unseen(happens([](auto& m) { m.cancelReason().cmdOk.onClick(); }))},
    {"frmcancelreason |txtcanreason_KeyUp", openReason, "", stuck("cmdOk", types("x"))},
    {"frmcancelreason |Form_QueryUnload", openReason, "", unseen([](auto& till) {
         till.user.happens([&] { till.module.cancelReason().cmdOk.setEnabled(true); }).closesFrame();
     })},
    // Editor.
    {"frmRequest |Form_Load ", openRegister, "CommonModule.clsCommonGen", clicks("cmdnew")},
    {"frmRequest |Form_Activate ", openRegister, "clsUserAuditing.SaveInToTag", clicks("cmdnew")},
    {"frmRequest |Form_QueryUnload", openEditor, "clsUserAuditing.DataChanged", clicks("cmdCancel")},
    {"frmRequest |Form_QueryUnload", openEditor, "", inTurn({enters("txtRemarks", "typed"), unseen(clicks("cmdCancel"))})},
    {"frmRequest |txtrequestDate_LostFocus", openEditor, "", unseen(enters("txtrequestDate", "soon\r"))},
    {"frmRequest |cmdOk_Click ", openEditor, "", unseen(clicks("cmdOk"))},
    {"frmRequest |cboShop_Click ", openEditor, "", inTurn({picksShop(2), amongLines(1, unseen(picksShop(3)))})},
    {"frmRequest |mnuAdd_Click", openEditor, "", amongLines(32768, types("\n"))}, // the current line has 16 bits
    {"frmRequest |mnuEdit_Click ", openEditor, "", amongLines(32768, types("\r"))},
    {"frmRequest |mnudel_Click ", openEditor, "", amongLines(1, unseen(presses(forms::kKeyDelete)))},
    {"frmRequest |lvwrequest_MouseDown", openEditor, "", unseen(rightClicks("lvwrequest"))},
    {"frmRequest |FillReorderSuggestions", openEditor, "vwinquiryshopstock",
     happens([](auto& m) { m.request().FillReorderSuggestions(); })},
    {"basGRtoShop |LoadListViewLayout", openRegister, "alistviewdetails", clicks("cmdnew")},
    // Line entry and the dialogs over it.
    {"frmRequestDetail |Form_Load ", openEditor, "Fetch.clsFetch", amongLines(0, types("\n"))},
    {"frmRequestDetail |Form_Activate ", openEditor, "clsUserAuditing.SaveInToTag", amongLines(0, types("\n"))},
    {"frmRequestDetail |txtBarcode_KeyPress ", openLineEntry, "futurevarchar", types("1\r")},
    {"frmRequestDetail |QuickFetch", openLineEntry, "clsFetch.Show", clicks("cmdbarcode")},
    {"frmRequestDetail |cboItem_Click ", openLineEntry, "reorderquantity", scans},
    {"frmRequestDetail |txtQuantity_KeyPress", openLineEntry, "clsCommonGen.TextValidateNum", enters("txtQuantity", "1")},
    {"frmRequestDetail |txtBadQuantity_KeyPress", openLineEntry, "clsCommonGen.TextValidateNum", enters("txtBadQuantity", "1")},
    {"frmRequestDetail |txtsellingprice_KeyPress", openLineEntry, "clsCommonGen.TextValidateNum", enters("txtsellingprice", "1")},
    {"frmRequestDetail |txtQuantity_MouseMove", openOnNumbers, "", movesOver("txtQuantity")},
    {"frmRequestDetail |txtQuantity_MouseUp", openOnNumbers, "",
     stuck("txtQuantity", happens([](auto& m) { m.requestDetail().txtQuantity.onMouseUp({}); }))},
    {"frmRequestDetail |txtBadQuantity_MouseMove", openOnNumbers, "", movesOver("txtBadQuantity")},
    {"frmRequestDetail |cmdFirst_Click ", openLineEntry, "", happens([](auto& m) { m.requestDetail().cmdFirst.onClick(); })},
    {"frmRequestDetail |cmdPrev_Click ", openLineEntry, "", happens([](auto& m) { m.requestDetail().cmdPrev.onClick(); })},
    {"frmRequestDetail |cmdNext_Click ", openLineEntry, "", happens([](auto& m) { m.requestDetail().cmdNext.onClick(); })},
    {"frmRequestDetail |cmdLast_Click ", openLineEntry, "", happens([](auto& m) { m.requestDetail().cmdLast.onClick(); })},
    {"frmRequestDetail |cmdOk_Click ", openLineEntry, "", unseen(clicks("cmdOk"))},
    {"frmRequestDetail |cmdOk_Click ", openLineEntry, "clsUserAuditing.DataChanged", entersLine},
    {"frmRequestDetail |Form_KeyDown", openLineEntry, "",
     inTurn({happens([](auto& m) { m.requestDetail().lblNotCarried.setText("not carried"); }),
             stuck("lblNotCarried", presses(forms::kKeyHome))})},
    {"frmRequestDetail |cmdbarcode_KeyPress", openLineEntry, "", stuck("txtBarcode", happens(pressesSearch))},
    {"frmRequestDetail |fnGetDeptCurrID", openLineEntry, "DepCurrencyID", scans},
    {"basGRtoShop |fnGetSellingPrice", openLineEntry, "spSellingPriceFetch", scans},
    {"basGRtoShop |fnGetUnitCode", openLineEntry, "u.UnitCode", entersLine},
    {"basGRtoShop |FillPackingTypes", openLineEntry, "apackingtype ap", scans},
    {"basGRtoShop |FillPackingQuantities", openLineEntry, "pk.quantity", inTurn({scans, types("4\r")})},
    {"frmscanBc |Form_Load ", openLineEntry, "CommonModule.clsCommongen", goesOver("scan")},
    {"frmscanBc |txtBarcode_KeyPress ", openScan, "packingbarcode", types("1\r")},
    {"FrmFetch|Form_Load ", openLineEntry, "clsFormcolor.Applyformcolor", goesOver("fetch")},
    {"FrmFetch|Form_Activate ", openLineEntry, "defaultfetch", goesOver("fetch")},
    {"FrmFetch|txtFetch_KeyPress ", openFetch, "like", types("1\r")},
    {"FrmFetch|txtFetch_KeyUp ", openFetch, "", inTurn({picksOther("cboSearch", -1), enters("txtFetch", "a")})},
    {"FrmFetch|cmdOk_Click ", openFetch, "intersect", inTurn({happens(choosesSecond), clicks("cmdOk")})},
    // Printing.
    {"frmPrint |Form_Load", openRegister, "clsFormcolor.Applyformcolor", clicks("cmdPrev")},
    {"frmPrint|cmdOK_Click", openPrint, "Crystal.CRPE.Application", clicks("cmdOK")},
    {"FrmMaster|HeaderPrint ", openPrint, "acompanymaster", prints},
    {"FrmMaster|FooterPrint", openPrint, "ashopprintmessages", prints},
    {"basGoodsPurchase|FileCode ", openRegister, "", filesAway},
};
// clang-format on

TEST(Reports, NameTheRoutineThatFailed) {
    const CompanyFile company;
    for (const Fault& fault : kFaults) {
        SCOPED_TRACE(fault.place);
        Till till(company, {.screenId = 1611});
        fault.open(till);
        till.breaks(fault.broken);
        fault.act(till);
        while (till.user.message()) till.user.answers(forms::Answer::ok);
        const std::string place = basic::replaceAll(fault.place, "|", "|Margaret Ellis|");
        const std::vector<std::string> reports = till.calls("ErrorDetails.");
        ASSERT_FALSE(reports.empty());
        EXPECT_EQ(reports.front().substr(0, 24 + place.size() + 1), "ErrorDetails.ErrorTrack(" + place + "|");
        EXPECT_EQ(reports.size(), 1u) << reports.back();
    }
}

TEST(Reports, SayForWhomAndWhy) {
    struct Case {
        void (*fails)();
        const char* told;
    };
    const CompanyFile company;
    company.change("update loUsers set UserName = 'Somebody' where shopid <> 4 or Userid <> 3");
    Till till(company, {.userId = 3, .shopId = 4});
    till.opens();
    till.module.session.editMode = "E";
    for (const Case& c : {Case{[] { throw automation::RunTimeError(-9, "why", "a source"); }, "-9&|a source|why"},
                          {[] { throw std::bad_alloc(); }, "7&|goodsreq|Out of memory"},
                          {[] { throw std::logic_error("odd"); }, "5&|goodsreq|odd"},
                          {[] { throw 1; }, "5&|goodsreq|Unknown error"}}) {
        till.user.happens([&] { EXPECT_FALSE(trap(till.module, "here ", "there ", c.fails)); });
        till.user.answers(forms::Answer::ok);
        EXPECT_EQ(till.calls("ErrorDetails.").back(),
                  std::string("ErrorDetails.ErrorTrack(here |Priya Ramanathan-Whitlock|there |") + c.told + "|E|True)");
    }
    EXPECT_EQ(till.statements("select username from LOUSERS where userid=3 and shopid = 4").size(), 4u);
}

} // namespace
