// Line entry from the number boxes to OK: filters, refusals, duplicates, walking through lines, the scanner.
#include "automation/RunTimeError.h"
#include "basic/Numbers.h"
#include "basic/Text.h"
#include "screens/lines/frmRequestDetail.h"
#include "screens/request/frmRequest.h"
#include "tests/editor/Till.h"

namespace {

using namespace editor;

constexpr const char* kInteger = "Only Integer Quantity is allowed";

class LineEntry : public EditorTest<6> {
protected:
    const Items three{items.begin(), items.begin() + 3};

    static std::string buttons(Till& till) {
        std::string text;
        for (const char* name : {"cmdFirst", "cmdPrev", "cmdNext", "cmdLast"})
            text += till.user.enabled(name) ? '+' : '-';
        return text;
    }
};

TEST_F(LineEntry, TheNumberBoxesTakeNumbersOnly) {
    Till till(company, {.screenId = 1611});
    till.newRequest().addsLines();
    for (const auto& [box, keys, text] :
         Table<Text, Text, Text>{{"txtQuantity", "1x2.3456", "12.345"},
                                 {"txtQuantity", "-5", "5"},
                                 {"txtQuantity", "1e5,", "15"},
                                 {"txtQuantity", "1..5", "1.5"},
                                 {"txtQuantity", "123456789012345678", "123456789012345678"},
                                 {"txtQuantity", "1234567890123456789", "123456789012345678"},
                                 {"txtBadQuantity", "-2.5", "-2.5"},
                                 {"txtBadQuantity", "2-", "2"},
                                 {"txtsellingprice", "3a.25", "3.25"}})
        EXPECT_EQ(till.user.enters(box, keys).text(box), text) << keys;
    for (const auto& [box, keys, text] :
         Table<std::string, Text, Text>{{"txtQuantity", "12.5", "12.5"},
                                        {"txtQuantity", "-5", "7"},
                                        {"txtQuantity", "1e5", "7"},
                                        {"txtQuantity", "..", "7"},
                                        {"txtQuantity", "1.2345", "7"},
                                        {"txtQuantity", "123456789012345.678", "123456789012345.678"},
                                        {"txtQuantity", "1234567890123456789", "7"},
                                        {"txtBadQuantity", "-4", "-4"},
                                        {"txtBadQuantity", "4 pcs", "7"},
                                        {"txtBadQuantity", "4-5", "7"},
                                        {"txtsellingprice", "GBP 4", "7"}}) {
        till.user.enters(box, "7").presses(forms::kKeyHome).presses(forms::kKeyEnd, forms::kShift);
        EXPECT_EQ(till.user.pastes(keys).text(box), text) << keys;
    }
    const auto tip = [&](const char* box) { return till.user.movesOver(box).control(box)->toolTip(); };
    till.user.enters("txtQuantity", "1234.5");
    EXPECT_EQ(tip("txtQuantity"), "1,234.500");
    till.puts("txtQuantity", "1234.56789");
    EXPECT_EQ(tip("txtQuantity"), "1,234.56789");
    EXPECT_EQ(till.user.clicks("txtQuantity").control("txtQuantity")->toolTip(), "1,234.568");
    till.puts("txtBadQuantity", "1234.56789");
    EXPECT_EQ(tip("txtBadQuantity"), "1,234.56789");
}

// A keypad types the decimal sign of the user's locale; packs, checks and the written line read one number.
TEST_F(LineEntry, ADecimalCommaIsReadTheSameEverywhere) {
    for (const std::string sign : {",", "."}) {
        Till till(company, {.screenId = 1611});
        till.desktop.userLocale.decimalSeparator = sign[0];
        const auto packs = [&] { return basic::val(till.user.rows("lvwpacktype").at(0).at(2)); };
        till.newRequest().addsLines().scans(item.barcode).user.enters("txtQuantity", "2" + sign + "5\r");
        EXPECT_EQ(till.user.text("txtQuantity"), "2.5");
        const double entered = packs();
        till.user.focuses("txtBadQuantity").pastes("\t0" + sign + "2 \r\n").types("5"); // behind it
        EXPECT_EQ(till.user.text("txtBadQuantity"), "0.25");
        till.user.enters("txtsellingprice", "4" + sign + "25").clicks("cmdOk");
        const auto line = till.backToEditor().user.rows("lvwrequest").at(0);
        EXPECT_EQ(line[3] + " " + line[4] + " " + line[6], "2.500 0.250 4.250");
        till.changesLine(1);
        EXPECT_EQ(packs(), entered);
    }
    // What a component puts there, past every key: still one number.
    Till till(company);
    till.newRequest().addsLines().scans(item.barcode).puts("txtQuantity", "2,5").user.movesOver("txtQuantity");
    EXPECT_EQ(till.user.control("txtQuantity")->toolTip(), "2.000");
    till.user.focuses("txtQuantity").types("\r");
    EXPECT_EQ(basic::val(till.user.rows("lvwpacktype").at(0).at(2)), 2);
    till.user.clicks("cmdOk");
    EXPECT_EQ(till.backToEditor().column(3), Names{"2.000"});
}

TEST_F(LineEntry, WholeQuantitiesWhereTheSiteWantsThem) {
    company.change("update aPAckageSettings set IntegerQuantity = 1");
    Till till(company, {.screenId = 1611});
    till.newRequest().addsLines().scans(item.barcode).user.types("1.").answers(kInteger, Answer::ok);
    EXPECT_EQ(till.user.types("5").pastes("1.5").text("txtQuantity"), "15");
    EXPECT_EQ(till.user.enters("txtBadQuantity", "0.5").text("txtBadQuantity"), "0.5");
    till.puts("txtQuantity", "1.0").puts("txtsellingprice", "0").oksAndReads("Selling price cannot be sero.   ");
    EXPECT_EQ(till.puts("txtsellingprice", "1").oksAndReads(kInteger).user.focus(), "txtQuantity");
    till.user.types("2").clicks("cmdOk");
    till.backToEditor();
    EXPECT_EQ(till.column(3), Names{"2.000"});
    EXPECT_EQ(till.column(4), Names{"0.500"});
}

TEST_F(LineEntry, OkRefusesInOrderAndThenWritesTheLine) {
    for (const std::int32_t screen : {1507, 1611}) {
        Till till(company, {.screenId = screen});
        till.newRequest().addsLines();
        EXPECT_EQ(till.oksAndReads("Select an item.   ").user.focus(), "cboItem");
        till.user.happens([&] {
            forms::ComboBox& box = till.module.requestDetail().cboItem;
            box.addItem("  ", 7);
            box.setListIndex(0);
        });
        till.oksAndReads("Select an item.   ").user.happens([&] { till.module.requestDetail().cboItem.clear(); });
        till.user.focuses("cboItem");
        till.user.types(item.barcode + "\r"); // a code, although the focus is on the item
        EXPECT_EQ(till.user.text("cboItem"), item.description);
        till.user.focuses("cboItem").types("x");
        till.oksAndReads("Select an item.   ").scans(item.barcode);
        till.puts("txtsellingprice", screen == 1611 ? "0" : "1234567890123456")
            .puts("txtBadQuantity", "1234567890123456");
        for (const char* nothing : {"0.0", ".", "0000000000000000"}) {
            till.user.enters("txtQuantity", nothing).focuses("cmdOk").types("7"); // the first digit of the next code
            till.user.answers("Enter the quantity.   ", Answer::ok);
            EXPECT_EQ(till.user.focus(), "txtQuantity");
            EXPECT_EQ(till.user.text("txtBarcode"), item.barcode);
        }
        till.puts("txtBadQuantity", "").puts("txtsellingprice", screen == 1611 ? "1" : "1234567890123456"); // hidden
        // A code in the box of a number, as after two scans without a quantity between; in 1611 also behind it.
        const auto asked = [&](const char* box, const std::string& code, const char* what = "quantity") {
            till.user.enters(box, code).focuses("cmdOk").types("\r");
            till.user.answers(std::string("Is the ") + what + " " + basic::valText(code) + " right?", Answer::no);
            EXPECT_EQ(till.user.focus(), box);
        };
        asked("txtQuantity", other.barcode);
        asked("txtQuantity", "01234565"); // a short one that begins with 0
        till.user.types("1234567.5");
        asked("txtBadQuantity", "12345678.25");
        till.user.types("0");
        if (screen == 1611) {
            asked("txtsellingprice", other.barcode, "price");
            for (const char* refused : {"0", "-1"}) {
                till.user.enters("txtsellingprice", refused);
                till.oksAndReads("Selling price cannot be sero.   ");
            }
            till.user.types("4.5");
        }
        // A second OK while the first one is at work.
        till.watches([&](std::string_view statement) {
            if (statement.find("u.UnitCode") != statement.npos) till.module.requestDetail().cmdOk.onClick();
        });
        till.user.clicks("cmdOk");
        till.breaks("");
        EXPECT_EQ(till.lines().takeRevealed(), 1);
        EXPECT_EQ(till.user.focus(), "txtBarcode");
        EXPECT_TRUE(till.user.rows("lvwpacktype").empty());
        EXPECT_EQ(till.texts({"txtBarcode", "cboItem", "txtQuantity", "txtBadQuantity"}), Names(4));

        // The same item again, found by its description in any letters.
        const std::string stands = basic::ucase(item.description);
        till.putsCell(1, goodsreq::kLineItemName, stands).putsCell(1, goodsreq::kLineItemId, other.id);
        till.user.happens([&] { till.lines().setTag("Loaded"); });
        till.scans(item.code).user.enters("txtQuantity", "0");
        till.oksAndReads("Enter the quantity.   ").user.enters("txtQuantity", "9");
        EXPECT_EQ(till.oksAndReads(item.description + " Already Exists").user.text("cboItem"), "");
        EXPECT_EQ(till.user.focus(), "txtBarcode");
        EXPECT_EQ(till.lines().tag().substr(0, 1), "C");
        till.backToEditor();
        EXPECT_FALSE(till.holds("Fetch.clsFetch")); // nor the session's connection with it
        EXPECT_EQ(till.user.rows("lvwrequest"), (Rows{{"1", item.code, stands, "1234567.500", "0.000", other.id,
                                                       screen == 1611 ? "4.500" : "", item.unit}}));
    }
}

TEST_F(LineEntry, EditingWalksDownTheLinesAndClosesAfterTheLast) {
    for (const std::int32_t screen : {1507, 1611}) {
        Till till(company, {.screenId = screen});
        till.newRequest().enters(three);
        if (screen == 1611) till.putsCell(2, goodsreq::kLinePrice, "77.000");
        const Names prices = till.column(6);
        till.changesLine(2);
        EXPECT_EQ(till.user.entries("cboItem"), Names{other.description});
        EXPECT_NE(till.user.rows("lvwpacktype").at(0)[2], "");
        EXPECT_EQ(till.texts({"txtQuantity", "txtBadQuantity"}), (Names{"2", "0"}));
        for (const char* fixed : {"cboItem", "cmdbarcode", "txtBarcode", "txtsellingprice"})
            EXPECT_FALSE(till.user.enabled(fixed)) << fixed;
        // The item of a line stays, even where a component switches on what leads to another.
        EXPECT_EQ(till.user.presses(forms::kKeyF3).form(), "frmRequestDetail");
        till.user.happens([&] {
            till.module.requestDetail().txtBarcode.setEnabled(true);
            till.module.requestDetail().cmdbarcode.setEnabled(true);
        });
        EXPECT_EQ(till.scans(items[5].barcode).user.presses(forms::kKeyF3).form(), "frmRequestDetail");
        EXPECT_EQ(till.user.entries("cboItem"), Names{other.description});
        for (const char* button : {"cmdOk", "cmdCancel"})
            till.user.focuses(button).types("2").answers(
                "The item of a line that stands cannot be changed. Close, then scan it for a new line.", Answer::ok);
        struct : forms::ControlView {
            void changed(forms::Control&, forms::Aspect aspect) override {
                if (aspect == forms::Aspect::selection) automation::raise(automation::kInvalidCall);
            }
        } stuck; // a list that cannot be scrolled
        till.lines().attach(&stuck);
        till.user.enters("txtQuantity", "20").clicks("cmdOk");
        till.readsReport().lines().attach(nullptr);
        EXPECT_EQ(till.lines().tag().substr(0, 1), "C");
        for (const char* box : {"txtQuantity", "txtBadQuantity"}) {
            till.puts(box, "1234567890123456");
            till.oksAndReads("At most 15 digits before the point can be stored. Correct the number.");
            EXPECT_EQ(till.user.focus(), box);
            till.user.enters(box, "1");
        }
        till.user.enters("txtQuantity", "20000000").clicks("cmdOk");
        till.user.answers("Is the quantity 20000000 right?", Answer::yes);
        till.user.clicks("cmdPrev").clicks("cmdOk"); // it was answered before
        EXPECT_EQ(till.user.entries("cboItem"), Names{items[2].description});
        EXPECT_EQ(till.module.request().CurrentLineIndex, 3);
        EXPECT_EQ(buttons(till), "++--");
        EXPECT_EQ(till.user.focus(), "txtQuantity");
        EXPECT_EQ(till.user.types("30").clicks("cmdOk").form(), "frmRequest");
        EXPECT_EQ(till.column(3), (Names{"1.000", "20000000.000", "30.000"}));
        EXPECT_EQ(till.column(6), prices);
    }
}

TEST_F(LineEntry, TheButtonsWalkThroughTheLines) {
    Till till(company);
    EXPECT_EQ(buttons(till.newRequest().enters({item}).changesLine(1)), "----");
    EXPECT_EQ(buttons(till.backToEditor().addsLines()), "----");
    till.line(other, "2").line(items[2], "3").backToEditor();
    EXPECT_EQ(buttons(till.changesLine(2)), "++++");
    for (const auto& [button, row, states] : Table<Text, int, Text>{
             {"cmdNext", 3, "++--"}, {"cmdPrev", 2, "++++"}, {"cmdFirst", 1, "--++"}, {"cmdLast", 3, "++--"}}) {
        EXPECT_EQ(till.user.clicks(button).text("cboItem"), items[static_cast<std::size_t>(row) - 1].description);
        EXPECT_EQ(till.user.text("txtQuantity"), std::to_string(row));
        EXPECT_EQ(till.module.request().CurrentLineIndex, row);
        EXPECT_EQ(till.lines().selectedIndex(), row);
        EXPECT_EQ(buttons(till), states) << button;
    }
}

// Whatever has the focus: a line that stands in the boxes is written, and the code is the next one's.
TEST_F(LineEntry, ACodeIsScannedFromAnywhere) {
    Till till(company);
    till.newRequest().addsLines().user.focuses("cmdCancel");
    const char* const places[] = {"lvwpacktype", "cmdOk", "cmdCancel"};
    for (std::size_t i = 0; i < 3; ++i)
        till.user.types(items[i].barcode + "\r" + std::to_string(i + 11)).focuses(places[i]);
    EXPECT_EQ(till.user.types(items[3].barcode + "\r").text("cboItem"), items[3].description);
    EXPECT_EQ(till.said(), Names{});
    EXPECT_EQ(till.backToEditor().column(5), (Names{item.id, other.id, items[2].id}));
    EXPECT_EQ(till.column(3), (Names{"11.000", "12.000", "13.000"}));
}

} // namespace
