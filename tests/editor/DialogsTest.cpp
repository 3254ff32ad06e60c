// The two dialogs over line entry: one takes a scanned code, the other finds an item by a part of what is known of it.
#include "component/Component.h"
#include "screens/fetch/FrmFetch.h"
#include "screens/lines/frmRequestDetail.h"
#include "screens/lines/frmscanBc.h"
#include "screens/request/frmRequest.h"
#include "tests/editor/Till.h"

namespace {

using namespace editor;
using forms::kKeyF11;

class Dialogs : public EditorTest<3> {
protected:
    const std::string of = " where itemid = " + item.id;

    /// From nothing to line entry with a dialog over it.
    static User& opens(Till& till, const char* dialog) {
        sandbox::openOverLineEntry(till.module, dialog);
        return till.newRequest().addsLines().user.presses(kKeyF11);
    }
    static std::string chosenItem(Till& till) {
        const forms::ComboBox& combo = till.module.requestDetail().cboItem;
        return combo.hasSelection() ? std::to_string(combo.selectedData()) : "";
    }
    /// Line entry has the item, and waits for its quantity.
    void expectItem(Till& till) const {
        ASSERT_EQ(till.user.form(), "frmRequestDetail");
        EXPECT_EQ(chosenItem(till), item.id);
        EXPECT_EQ(till.user.entries("cboItem"), Names{item.description});
        EXPECT_EQ(till.module.requestDetail().strItemCode, item.code);
        EXPECT_FALSE(till.user.rows("lvwpacktype").empty());
        EXPECT_EQ(till.user.focus(), "txtQuantity");
    }
};

class Scan : public Dialogs {
protected:
    void SetUp() override { company.change("update miscsettings set AllowItemCodeDuplication = 0"); }
};

// The dialog does not ask whether the supplying shop carries the item; OK does.
TEST_F(Scan, AnItemThatTheSupplierDoesNotCarryIsNotWritten) {
    company.change("delete ashopitemdetail" + of + " and shopid = 2");
    Till till(company);
    opens(till, "scan").types(item.barcode + "\r").enters("txtQuantity", "3");
    EXPECT_EQ(till.oksAndReads("Item not in shop 2").user.focus(), "txtBarcode");
    EXPECT_EQ(till.lines().count(), 0);
}

// Line entry asks more of a code.
TEST_F(Scan, AsksOfACodeOnlyThatItIsOne) {
    const std::string shortcut = "update ashopitemdetail set shortcutno = ";
    // clang-format off
    for (const auto& [what, change, typed, found] : Table<Text, std::string, std::string, bool>{
             {"codes shared says miscsettings", "update miscsettings set AllowItemCodeDuplication = 1", item.code, false},
             {"miscsettings says nothing", "delete miscsettings", item.code, false},
             {"codes shared, by line entry", "update aPAckageSettings set AllowItemCodeDuplication = 1", item.code, true},
             {"a shortcut number of seven figures", shortcut + "7654321" + of, "7654321", true},
             {"more figures than the shortcut number", shortcut + "7654" + of, "7654321", false},
             {"figures before a comma", shortcut + "7654" + of, "7654,321", true},
         }) {
        // clang-format on
        SCOPED_TRACE(what);
        const CompanyFile own;
        own.change("update miscsettings set AllowItemCodeDuplication = 0;" + change);
        Till till(own);
        opens(till, "scan").types(typed + "\r");
        if (!found) till.user.answers("Scan valid barcode", Answer::ok);
        EXPECT_EQ(chosenItem(till), found ? item.id : "");
        EXPECT_EQ(till.user.form(), found ? "frmRequestDetail" : "frmscanBc");
    }
}

TEST_F(Scan, StaysOpenForAnotherCode) {
    Till till(company);
    EXPECT_EQ(opens(till, "scan").types("\r").form(), "frmscanBc");
    EXPECT_TRUE(till.said().empty());
    std::int16_t enter = forms::kKeyReturn;
    till.user.happens([&] { till.module.scanBarcode().txtBarcode.onKeyPress(enter); });
    EXPECT_EQ(enter, 0) << "a box of one line would beep";
    till.user.types("no' such code\r").answers("Scan valid barcode", Answer::ok);
    EXPECT_EQ(till.user.focus(), "txtBarcode");
    EXPECT_EQ(till.user.text("txtBarcode"), "no such code");
    till.breaks("packingbarcode");
    till.user.types(item.barcode + "\r"); // over the selected text
    EXPECT_EQ(till.readsReport().user.text("txtBarcode"), item.barcode);
    till.breaks("");
    till.user.types("\r");
    expectItem(till);
}

TEST_F(Scan, ClosesWithoutAChoice) {
    Till till(company);
    EXPECT_EQ(opens(till, "scan").focuses("CmdClose").types("7").text("txtBarcode"), "7"); // not the button's
    EXPECT_EQ(till.user.clicks("CmdClose").form(), "frmRequestDetail");
    EXPECT_EQ(till.user.presses(kKeyF11).presses(forms::kKeyEscape).form(), "frmRequestDetail");
    EXPECT_EQ(chosenItem(till), "");
    EXPECT_FALSE(till.holds("CommonModule.clsCommongen")); // nor what it asked with
    // What another screen asks of the dialog without showing it.
    till.user.happens([&] {
        goodsreq::frmscanBc& scan = forms::touch(till.module.scanBarcode());
        EXPECT_EQ(std::to_string(scan.DisplayBarcodeItemDetails(item.barcode)), item.id);
        EXPECT_EQ(chosenItem(till), item.id);
        EXPECT_EQ(scan.DisplayBarcodeItemDetails("", 987654), 987654);
        EXPECT_EQ(chosenItem(till), "");
    });
}

class FetchDialog : public Dialogs {
protected:
    static User& searches(Till& till, const std::string& column, const std::string& text) {
        return till.user.picks("cboFetch", column).enters("txtFetch", "").pastes(text).types("\r");
    }
    static forms::Grid& grid(Till& till) { return till.module.fetchItem().flexMaster; }
    /// Each column's heading and width.
    static Names headings(Till& till) {
        Names texts;
        for (int col = 0; col < grid(till).cols(); ++col)
            texts.push_back(std::string(grid(till).cell(0, col)) + "|" + std::to_string(grid(till).colWidth(col)));
        return texts;
    }
};

TEST_F(FetchDialog, FindsByEachColumnAndHandsTheItemOver) {
    company.change("update aitem set brand = 'Northwold', modelno = 'NW-77', part_code = 'P/5'" + of);
    for (const auto& [column, text] : Table<Text, std::string>{{"ItemCode", item.code},
                                                               {"ItemDescription", item.description},
                                                               {"Brand", "orthwo"},
                                                               {"ModelNo", "nw-77"},
                                                               {"Part_Code", " P/5 "}}) {
        SCOPED_TRACE(column);
        Till till(company);
        opens(till, "fetch");
        till.desktop.pointers.clear();
        ASSERT_EQ(searches(till, column, text).rows("flexMaster"),
                  (Rows{{item.id, item.code, item.description, "Northwold", "NW-77", "P/5"}}));
        EXPECT_EQ(till.user.text("txtFetch"), "");
        EXPECT_EQ(till.desktop.pointers, (std::vector{forms::Pointer::hourglass, forms::Pointer::normal}));
        till.user.focuses("flexMaster").types("\r");
        expectItem(till);
    }
}

TEST_F(FetchDialog, StaysAwayFromALineThatStands) {
    for (const std::string dialog : {"fetch", "scan"}) {
        Till till(company);
        sandbox::openOverLineEntry(till.module, dialog);
        till.newRequest().enters(items).changesLine(1).user.presses(kKeyF11);
        EXPECT_EQ(till.user.form(), "frmRequestDetail") << dialog;
        till.user.happens([&] { till.module.requestDetail().cmdbarcode.setEnabled(true); }).presses(kKeyF11);
        if (dialog == "scan")
            till.user.types(other.barcode + "\r");
        else
            searches(till, "ItemCode", other.code).clicks("cmdOk");
        EXPECT_EQ(till.user.form(), "frmRequestDetail") << dialog;
        EXPECT_EQ(chosenItem(till), item.id);
    }
}

TEST_F(FetchDialog, HeadsItsColumns) {
    Till till(company);
    opens(till, "fetch"); // nobody reads the item ids of the first column
    searches(till, "ItemCode", item.code);
    EXPECT_EQ(headings(till), (Names{"|0", "Item Code|2640", " Item Description|5748", "Brand|2790", " Model No|1164",
                                     "Part_Code|1050"}));
    searches(till, "ItemCode", "no such code");
    EXPECT_EQ(headings(till), (Names{"|0", "Item Code|2640", " Item Description|4278", "Brand|2790", " Model No|1332",
                                     " Part Code|1044"}));
    EXPECT_EQ(till.user.rows("flexMaster"), (Rows{{"", "", "", "", "", ""}}));
}

TEST_F(FetchDialog, OpensWithTheShopsColumnAndKeepsTheClerksChoice) {
    for (const auto& [setting, chosen] : Table<Text, Text>{{"'Brand'", "Brand"},
                                                           {"'Part_code'", "Part_Code"},
                                                           {"'nothing'", "ItemDescription"},
                                                           {"null", "ItemDescription"}}) {
        company.change(std::string("update LOsSettings set defaultfetch = ") + setting + " where ShopID = 1");
        Till till(company);
        EXPECT_EQ(opens(till, "fetch").text("cboFetch"), chosen);
        EXPECT_EQ(till.user.focus(), "txtFetch");
        till.breaks("like");
        till.user.picks("cboFetch", "ModelNo").enters("txtFetch", "7'\r");
        till.readsReport().breaks("");
        EXPECT_EQ(till.texts({"cboFetch", "txtFetch"}), (Names{"ModelNo", "7'"})); // as typed, for another try
    }
}

// A component may put choices of its own into the boxes; what they say goes into no statement.
TEST_F(FetchDialog, TakesAChoiceByItsNumberOnly) {
    Till till(company);
    opens(till, "fetch");
    for (const char* box : {"cboFetch", "cboColNames"})
        for (const std::int32_t number : {0, 6, -1, 2}) {
            till.user.happens([&] {
                auto* combo = till.user.control<forms::ComboBox>(box);
                combo->addItem("1; delete aitem", number);
                combo->setListIndex(combo->newIndex());
            });
            till.user.enters("txtFetch", "a\r");
            if (number != 2) till.readsReport("Error 9: ");
            EXPECT_FALSE(till.user.message());
        }
    const std::string sent = till.statements("select distinct(a.itemid)").back();
    EXPECT_TRUE(sent.ends_with(" and v.itemdescription like '%a%' order by ItemDescription")) << sent;
}

TEST_F(FetchDialog, TakesAnyTextForAPattern) {
    company.change("update aitem set brand = 'half [50%] off_cut'" + of);
    Till till(company);
    opens(till, "fetch");
    for (const auto& [text, found] : Table<std::string, bool>{
             {"half%off", true}, {"[x5]0", true}, {std::string(4000, 'x'), false}, {"'; delete aitem --", false}}) {
        searches(till, "Brand", text);
        EXPECT_FALSE(till.user.message());
        EXPECT_EQ(till.user.column("flexMaster", 0), Names{found ? item.id : ""}) << text;
    }
    std::int16_t enter = forms::kKeyReturn;
    till.user.happens([&] { till.module.fetchItem().txtFetch.onKeyPress(enter); });
    EXPECT_EQ(enter, 0) << "a box of one line would beep";
    EXPECT_NE(company.value("select count(*) from aitem"), "0");
}

TEST_F(FetchDialog, ShowsTheLastMatchAndMovesToWhatIsTyped) {
    Till till(company);
    opens(till, "fetch").picks("cboColNames", "ItemDescription");
    till.desktop.pointers.clear();
    searches(till, "ItemDescription", "");
    EXPECT_EQ(till.desktop.pointers, (std::vector{forms::Pointer::hourglass, forms::Pointer::normal}));
    const Names found = till.user.column("flexMaster", 2);
    ASSERT_GT(found.size(), 10u);
    EXPECT_EQ(grid(till).row(), static_cast<int>(found.size()));
    EXPECT_EQ(grid(till).topRow(), grid(till).row());
    till.user.picks("cboSearch", "ItemDescription").enters("txtFetch", found[4].substr(0, found[4].size() - 1));
    EXPECT_EQ(grid(till).cell(grid(till).row(), 2).substr(0, 3), found[4].substr(0, 3));
    EXPECT_LE(grid(till).row(), 5);
    till.user.focuses("cboColNames");
    for (const char* next : {"cboSearch", "flexMaster"}) EXPECT_EQ(till.user.types("\r").focus(), next);
}

TEST_F(FetchDialog, HandsNothingOverWithoutAnItem) {
    Till till(company);
    opens(till, "fetch").clicks("cmdOk"); // nothing was searched for
    ASSERT_EQ(till.user.form(), "frmRequestDetail");
    EXPECT_FALSE(till.holds("CommonModule.clsCommonGen"));
    EXPECT_EQ(chosenItem(till), "");
    till.user.types(item.barcode + "\r").presses(kKeyF11);
    searches(till, "ItemCode", "no such code").clicks("cmdOk").presses(kKeyF11);
    searches(till, "ItemCode", "").clicks("CmdClose").presses(kKeyF11);
    searches(till, "ItemCode", other.code).happens([&] { grid(till).setRow(0); }); // the heading
    EXPECT_EQ(till.user.clicks("cmdOk").form(), "frmRequestDetail");
    for (const char* none : {"0", "-5"}) {
        till.user.presses(kKeyF11);
        searches(till, "ItemCode", other.code).happens([&] { grid(till).setCell(1, 0, none); }).clicks("cmdOk");
    }
    EXPECT_EQ(chosenItem(till), item.id);
}

TEST_F(FetchDialog, AnItemThatLineEntryRefusesLeavesItEmpty) {
    // The search asks for this shop's items in the other shop's categories; line entry wants both shops to carry them.
    company.change("delete ashopitemdetail" + of + " and shopid = 2");
    for (const bool asked : {true, false}) {
        Till till(company);
        opens(till, "fetch");
        searches(till, "ItemCode", item.code);
        ASSERT_EQ(till.user.column("flexMaster", 0), Names{item.id});
        if (!asked) till.breaks("intersect"); // whether it is carried cannot be asked
        till.user.clicks("cmdOk");
        if (!asked) till.readsReport().user.presses(forms::kKeyEscape);
        ASSERT_EQ(till.user.form(), "frmRequestDetail");
        EXPECT_EQ(till.user.entries("cboItem"), Names{});
        EXPECT_EQ(till.user.text("txtBarcode"), "");
        EXPECT_EQ(till.module.requestDetail().strItemCode, "");
        EXPECT_TRUE(till.user.rows("lvwpacktype").empty());
    }
}

} // namespace
