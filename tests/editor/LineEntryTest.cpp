// Line entry from the number boxes to OK: filters, refusals, duplicates, walking through lines, the scanner.
#include "automation/RunTimeError.h"
#include "basic/Numbers.h"
#include "basic/Text.h"
#include "screens/lines/frmRequestDetail.h"
#include "screens/request/frmRequest.h"
#include "tests/editor/Till.h"

#include <gtest/gtest.h>

namespace {

using namespace editor;
using Names = std::vector<std::string>;

constexpr const char* kInteger = "Only Integer Quantity is allowed";

class LineEntry : public testing::Test {
protected:
    CompanyFile company;
    std::vector<SampleItem> items = support::requestableItems(company, 1, kSupplier, 10);

    static std::string buttons(Till& till) {
        std::string text;
        for (const char* name : {"cmdFirst", "cmdPrev", "cmdNext", "cmdLast"})
            text += till.user.enabled(name) ? '+' : '-';
        return text;
    }
};

TEST_F(LineEntry, TheNumberBoxesTakeNumbersOnly) {
    struct Case {
        const char *box, *keys, *text;
    };
    Till till(company, {.screenId = 1611});
    till.newRequest();
    till.addsLines();
    for (const Case& c : {Case{"txtQuantity", "1x2.3456", "12.345"},
                          {"txtQuantity", "-5", "5"},
                          {"txtQuantity", "1e5,", "15"},
                          {"txtQuantity", "1..5", "1.5"},
                          {"txtQuantity", "123456789012345678", "123456789012345678"},
                          {"txtQuantity", "1234567890123456789", "123456789012345678"},
                          {"txtBadQuantity", "-2.5", "-2.5"},
                          {"txtBadQuantity", "2-", "2"},
                          {"txtsellingprice", "3a.25", "3.25"}}) {
        till.user.enters(c.box, c.keys);
        EXPECT_EQ(till.user.text(c.box), c.text) << c.keys;
    }
    for (const Case& c : {Case{"txtQuantity", "12.5", "12.5"},
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
        till.user.enters(c.box, "7");
        till.user.happens([&] { till.user.control<forms::TextBox>(c.box)->selectAll(); });
        till.user.pastes(c.keys);
        EXPECT_EQ(till.user.text(c.box), c.text) << c.keys;
    }
    till.user.enters("txtQuantity", "1234.5");
    till.user.movesOver("txtQuantity");
    EXPECT_EQ(till.user.control("txtQuantity")->toolTip(), "1,234.500");
    till.user.happens([&] { till.user.control<forms::TextBox>("txtQuantity")->setText("1234.56789"); });
    till.user.movesOver("txtQuantity");
    EXPECT_EQ(till.user.control("txtQuantity")->toolTip(), "1,234.56789");
    till.user.clicks("txtQuantity");
    EXPECT_EQ(till.user.control("txtQuantity")->toolTip(), "1,234.568");
    till.user.enters("txtBadQuantity", "0.125");
    till.user.movesOver("txtBadQuantity");
    EXPECT_EQ(till.user.control("txtBadQuantity")->toolTip(), "0.125");
    EXPECT_EQ(till.errors(), Names{});
}

// A keypad types the decimal sign of the user's locale; packs, checks and the written line read one number.
TEST_F(LineEntry, ADecimalCommaIsReadTheSameEverywhere) {
    for (const char sign : {',', '.'}) {
        Till till(company, {.screenId = 1611});
        till.desktop.userLocale.decimalSeparator = sign;
        till.desktop.userLocale.groupSeparator = sign == ',' ? '.' : ',';
        till.newRequest();
        till.addsLines();
        till.user.enters("txtBarcode", items[0].barcode + "\r");
        till.user.enters("txtQuantity", std::string("2") + sign + "5\r");
        EXPECT_EQ(till.user.text("txtQuantity"), "2.5");
        const double packs = basic::val(till.user.list("lvwpacktype").at(0).at(2));
        till.user.focuses("txtBadQuantity");
        till.user.pastes(std::string("\t0") + sign + "5 \r\n");
        EXPECT_EQ(till.user.text("txtBadQuantity"), "0.5");
        till.user.enters("txtsellingprice", std::string("4") + sign + "25");
        till.user.clicks("cmdOk");
        till.user.clicks("cmdCancel");
        const auto line = till.user.list("lvwrequest").at(0);
        EXPECT_EQ(line[3] + " " + line[4] + " " + line[6], "2.500 0.500 4.250");
        till.user.selectsRow("lvwrequest", 1);
        till.user.types("\r");
        EXPECT_EQ(basic::val(till.user.list("lvwpacktype").at(0).at(2)), packs);
    }
    // What a component puts there, past every key: still one number.
    Till till(company);
    till.newRequest();
    till.addsLines();
    till.user.enters("txtBarcode", items[0].barcode + "\r");
    auto* box = till.user.control<forms::TextBox>("txtQuantity");
    till.user.happens([box] { box->setText("2,5"); });
    till.user.movesOver("txtQuantity");
    EXPECT_EQ(box->toolTip(), "2.000");
    till.user.focuses("txtQuantity");
    till.user.types("\r");
    till.user.clicks("cmdOk");
    till.user.clicks("cmdCancel");
    EXPECT_EQ(till.column(3), Names{"2.000"});
}

TEST_F(LineEntry, WholeQuantitiesWhereTheSiteWantsThem) {
    company.change("update aPAckageSettings set IntegerQuantity = 1");
    Till till(company);
    till.newRequest();
    till.addsLines();
    till.user.enters("txtBarcode", items[0].barcode + "\r");
    till.user.types("1.");
    till.user.answers(kInteger, Answer::ok);
    till.user.types("5");
    till.user.pastes("1.5");
    EXPECT_EQ(till.user.text("txtQuantity"), "15");
    till.user.enters("txtBadQuantity", "0.5");
    EXPECT_EQ(till.user.text("txtBadQuantity"), "0.5");
    till.user.happens([&] { till.user.control<forms::TextBox>("txtQuantity")->setText("1.0"); });
    till.user.clicks("cmdOk");
    till.user.answers(kInteger, Answer::ok);
    EXPECT_EQ(till.user.focus(), "txtQuantity");
    till.user.types("2");
    till.user.clicks("cmdOk");
    till.user.clicks("cmdCancel");
    EXPECT_EQ(till.column(3), (Names{"2.000"}));
    EXPECT_EQ(till.column(4), (Names{"0.500"}));
}

TEST_F(LineEntry, OkRefusesInOrderAndThenWritesTheLine) {
    for (const std::int32_t screen : {1507, 1611}) {
        Till till(company, {.screenId = screen});
        till.newRequest();
        till.addsLines();
        forms::ListView& list = till.module.request().lvwrequest;
        till.user.clicks("cmdOk");
        till.user.answers("Select an item.   ", Answer::ok);
        EXPECT_EQ(till.user.focus(), "cboItem");
        till.user.types(items[0].barcode + "\r"); // a code, although the focus is on the item
        EXPECT_EQ(till.user.text("cboItem"), items[0].description);
        till.user.focuses("cboItem");
        till.user.types("x");
        till.user.clicks("cmdOk");
        till.user.answers("Select an item.   ", Answer::ok);
        till.user.enters("txtBarcode", items[0].barcode + "\r");
        for (const char* nothing : {"0.0", "."}) {
            till.user.enters("txtQuantity", nothing);
            till.user.focuses("cmdOk");
            till.user.types("7"); // the first digit of the next code
            till.user.answers("Enter the quantity.   ", Answer::ok);
            EXPECT_EQ(till.user.focus(), "txtQuantity");
            EXPECT_EQ(till.user.text("txtBarcode"), items[0].barcode);
        }
        // A code in the box of a number, as after two scans without a quantity between; in 1611 also behind it.
        const auto asked = [&](const char* box, const std::string& code, const char* what = "quantity") {
            till.user.enters(box, code);
            till.user.focuses("cmdOk");
            till.user.types("\r");
            till.user.answers(std::string("Is the ") + what + " " + basic::valText(code) + " right?", Answer::no);
            EXPECT_EQ(till.user.focus(), box);
        };
        asked("txtQuantity", items[1].barcode);
        asked("txtQuantity", "01234565"); // a short one that begins with 0
        till.user.types("1234567.5");
        asked("txtBadQuantity", "12345678.25");
        till.user.types("0");
        if (screen == 1611) {
            asked("txtsellingprice", items[1].barcode, "price");
            for (const char* refused : {"0", "-1"}) {
                till.user.enters("txtsellingprice", refused);
                till.user.clicks("cmdOk");
                till.user.answers("Selling price cannot be sero.   ", Answer::ok);
            }
            till.user.types("4.5");
        }
        // A second OK while the first one is at work.
        till.connection->failOn([&](std::string_view statement) {
            if (statement.find("u.UnitCode") != std::string_view::npos) till.module.requestDetail().cmdOk.onClick();
            return false;
        });
        till.user.clicks("cmdOk");
        till.connection->failOn(nullptr);
        EXPECT_EQ(list.takeRevealed(), 1);
        EXPECT_EQ(till.user.focus(), "txtBarcode");
        EXPECT_TRUE(till.user.list("lvwpacktype").empty());
        for (const char* box : {"txtBarcode", "cboItem", "txtQuantity", "txtBadQuantity"})
            EXPECT_EQ(till.user.text(box), "");

        // The same item again, found by its description in any letters.
        const std::string stands = basic::ucase(items[0].description);
        till.user.happens([&] { list.item(1).setSubItem(goodsreq::kLineItemName, stands); });
        till.user.enters("txtBarcode", items[0].code + "\r");
        till.user.enters("txtQuantity", "9");
        till.user.clicks("cmdOk");
        till.user.answers(items[0].description + " Already Exists", Answer::ok);
        EXPECT_EQ(till.user.text("cboItem"), "");
        EXPECT_EQ(till.user.focus(), "txtBarcode");
        till.user.clicks("cmdCancel");
        EXPECT_FALSE(till.holds("Fetch.clsFetch")); // nor the session's connection with it
        EXPECT_EQ(till.user.list("lvwrequest"), (Rows{{"1", items[0].code, stands, "1234567.500", "0.000", items[0].id,
                                                       screen == 1611 ? "4.500" : "", items[0].unit}}));
    }
}

TEST_F(LineEntry, EditingWalksDownTheLinesAndClosesAfterTheLast) {
    for (const std::int32_t screen : {1507, 1611}) {
        Till till(company, {.screenId = screen});
        till.newRequest();
        till.enters({items[0], items[1], items[2]});
        const Names prices = till.column(6);
        till.changesLine(2);
        EXPECT_EQ(till.user.entries("cboItem"), Names{items[1].description});
        EXPECT_NE(till.user.list("lvwpacktype").at(0)[2], "");
        EXPECT_EQ(till.user.text("txtQuantity"), "2");
        EXPECT_EQ(till.user.text("txtBadQuantity"), "0");
        for (const char* fixed : {"cboItem", "cmdbarcode", "txtBarcode", "txtsellingprice"})
            EXPECT_FALSE(till.user.enabled(fixed)) << fixed;
        till.user.presses(forms::kKeyF3); // the item of a line stays
        EXPECT_EQ(till.user.form(), "frmRequestDetail");
        till.user.happens([&] { // even where a component switches on what leads to another
            till.module.requestDetail().txtBarcode.setEnabled(true);
            till.module.requestDetail().cmdbarcode.setEnabled(true);
        });
        till.user.enters("txtBarcode", items[5].barcode + "\r");
        till.user.presses(forms::kKeyF3);
        EXPECT_EQ(till.user.form(), "frmRequestDetail");
        EXPECT_EQ(till.user.entries("cboItem"), Names{items[1].description});
        for (const char* button : {"cmdOk", "cmdCancel"}) {
            till.user.focuses(button);
            till.user.types("2");
            till.user.answers("The item of a line that stands cannot be changed. Close, then scan it for a new line.",
                              Answer::ok);
        }
        till.user.enters("txtQuantity", "20");
        struct : forms::ControlView {
            void changed(forms::Control&, forms::Aspect aspect) override {
                if (aspect == forms::Aspect::selection) automation::raise(automation::kInvalidCall);
            }
        } stuck; // a list that cannot be scrolled
        till.module.request().lvwrequest.attach(&stuck);
        till.user.clicks("cmdOk");
        till.readsReport();
        till.module.request().lvwrequest.attach(nullptr);
        EXPECT_EQ(till.module.request().lvwrequest.tag().substr(0, 1), "C");
        for (const char* box : {"txtQuantity", "txtBadQuantity"}) {
            till.user.happens([&] { till.user.control<forms::TextBox>(box)->setText("1234567890123456"); });
            till.user.clicks("cmdOk");
            till.user.answers("At most 15 digits before the point can be stored. Correct the number.", Answer::ok);
            EXPECT_EQ(till.user.focus(), box);
            till.user.enters(box, "1");
        }
        till.user.enters("txtQuantity", "20000000");
        till.user.clicks("cmdOk");
        till.user.answers("Is the quantity 20000000 right?", Answer::yes);
        till.user.clicks("cmdPrev");
        till.user.clicks("cmdOk"); // it was answered before
        EXPECT_EQ(till.user.entries("cboItem"), Names{items[2].description});
        EXPECT_EQ(till.module.request().CurrentLineIndex, 3);
        EXPECT_EQ(buttons(till), "++--");
        EXPECT_EQ(till.user.focus(), "txtQuantity");
        till.user.types("30");
        till.user.clicks("cmdOk");
        ASSERT_EQ(till.user.form(), "frmRequest");
        EXPECT_EQ(till.column(3), (Names{"1.000", "20000000.000", "30.000"}));
        EXPECT_EQ(till.column(1), (Names{items[0].code, items[1].code, items[2].code}));
        EXPECT_EQ(till.column(6), prices);
        EXPECT_EQ(till.column(7), (Names{items[0].unit, items[1].unit, items[2].unit}));
    }
}

TEST_F(LineEntry, TheButtonsWalkThroughTheLines) {
    Till till(company);
    till.newRequest();
    till.enters({items[0]});
    till.changesLine(1);
    EXPECT_EQ(buttons(till), "----");
    till.user.clicks("cmdCancel");
    till.addsLines();
    EXPECT_EQ(buttons(till), "----");
    till.line(items[1], "2");
    till.line(items[2], "3");
    till.user.clicks("cmdCancel");
    till.changesLine(2);
    struct Step {
        const char* button;
        int row;
        const char* states;
    };
    EXPECT_EQ(buttons(till), "++++");
    for (const Step& s :
         {Step{"cmdNext", 3, "++--"}, {"cmdPrev", 2, "++++"}, {"cmdFirst", 1, "--++"}, {"cmdLast", 3, "++--"}}) {
        till.user.clicks(s.button);
        EXPECT_EQ(till.user.text("cboItem"), items[static_cast<std::size_t>(s.row) - 1].description) << s.button;
        EXPECT_EQ(till.user.text("txtQuantity"), std::to_string(s.row));
        EXPECT_EQ(till.module.request().CurrentLineIndex, s.row);
        EXPECT_EQ(till.module.request().lvwrequest.selectedIndex(), s.row);
        EXPECT_EQ(buttons(till), s.states) << s.button;
    }
}

// Whatever has the focus when the next code is scanned, and however the last one ended.
TEST_F(LineEntry, ThirtyScansInARowLoseNothing) {
    const auto many = support::requestableItems(company, 1, kSupplier, 30);
    for (std::size_t i = 2; i < many.size(); i += 3)
        company.change("delete aShopItemDetail where shopid = " + std::to_string(kSupplier) +
                       " and itemid = " + many[i].id);
    for (const std::int32_t screen : {1507, 1611}) {
        Till till(company, {.screenId = screen});
        till.newRequest();
        till.addsLines();
        Names taken, quantities;
        for (std::size_t i = 0; i < many.size(); ++i) {
            till.user.types(many[i].barcode + "\r");
            const bool refused = i % 3 == 2;
            EXPECT_EQ(till.user.text("lblNotCarried"), refused ? "Not carried by\r\nthe other shop" : "");
            if (refused) continue;
            // Through the boxes to OK; every other time its Enter is left to the next code.
            till.user.types(std::to_string(i + 11) + (screen == 1611 ? "\r\r\r" : "\r\r") + (i % 2 == 0 ? "\r" : ""));
            EXPECT_EQ(till.user.focus(), i % 2 == 0 ? "txtBarcode" : "cmdOk");
            if (i % 6 == 1) till.user.focuses(i % 4 == 1 ? "cmdCancel" : "lvwpacktype");
            taken.push_back(many[i].id);
            quantities.push_back(std::to_string(i + 11) + ".000");
        }
        EXPECT_EQ(till.said(), Names{});
        till.user.clicks("cmdCancel");
        EXPECT_EQ(till.column(5), taken);
        EXPECT_EQ(till.column(3), quantities);
    }
}

} // namespace
