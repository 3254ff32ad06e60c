// Lines and pages of the slip, worked out by hand.
#include "printing/SlipPages.h"
#include "automation/RunTimeError.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace printing {
namespace {

using goodsreq::SlipLine;
using goodsreq::SlipSettings;

SlipSettings plain() {
    SlipSettings s;
    s.pageLines = 30;
    s.pageWidth = 40;
    s.serialWidth = 6;
    s.quantityWidth = 10;
    s.unitWidth = 5;
    s.rateWidth = 8;
    s.amountWidth = 9;
    return s;
}

SlipLine tin() {
    SlipLine line;
    line.number = 7;
    line.code = "AB-0007";
    line.description = "Paint, masonry, white";
    line.quantity = automation::Decimal{"2.5"};
    line.unit = "TIN";
    line.costPrice = 1.005;
    line.lineCost = 2.5125;
    line.sellingPrice = automation::Currency{39900};
    return line;
}

TEST(SlipLayout, Separators) {
    std::string twenty = "-";
    for (int i = 1; i < 20; ++i) twenty += " -";
    struct Case {
        int width, blanks;
        std::string line;
    };
    const Case cases[] = {
        {40, 0, std::string(40, '-')},
        {40, 1, twenty},
        {5, 1, "- -"},      // 2.5 dashes: halves to the even
        {7, 1, "- - - -"},  // 3.5 dashes
        {10, 3, "-   -"},   // 2.5
        {3, 2, ""},         // one dash
        {0, 0, ""},
        {-40, 0, ""},
        {40, -2, ""},       // a negative number of dashes
        {-40, -3, std::string(20, '-')},
    };
    for (const Case& c : cases) EXPECT_EQ(goodsreq::separatorLine(c.width, c.blanks), c.line) << c.width << "/" << c.blanks;
    EXPECT_THROW(goodsreq::separatorLine(40, -1), automation::RunTimeError);
}

TEST(SlipLayout, Columns) {
    SlipSettings s = plain();
    // 6, then a blank and 18, a blank and 9, a blank and 4
    EXPECT_EQ(goodsreq::headingLine(columnsOf(s)), "Sl.No  Item Description    Quantity Unit");
    EXPECT_EQ(goodsreq::detailLine(columnsOf(s), tin()), "     7 Paint, masonry, wh     2.500  TIN");
    s.showItemCode = 1; // 8 characters for the code, which the description loses
    EXPECT_EQ(goodsreq::detailLine(columnsOf(s), tin()), "     7 AB-0007 Paint, mas     2.500  TIN");
    s.showItemCode = 2;
    EXPECT_EQ(goodsreq::detailLine(columnsOf(s), tin()), "     7 Paint, mas     2.500  TIN");
    s.showItemCode = 0;
    s.pageWidth = 60;
    s.showCost = 1;
    EXPECT_EQ(goodsreq::columnsOf(s).description, 60 - 6 - 10 - 5 - 8 - 9);
    EXPECT_EQ(goodsreq::detailLine(columnsOf(s), tin()), "     7 Paint, masonry, white     2.500  TIN    1.01     2.51");
    s.showSellingPrice = 1;
    EXPECT_EQ(goodsreq::detailLine(columnsOf(s), tin()), "     7 Paint, masonr     2.500  TIN    1.01     2.51    3.99");
    EXPECT_EQ(goodsreq::headingLine(columnsOf(s)), "Sl.No  Item Description  Quantity Unit Cost Pr Total Cost Sell Pr");
}

TEST(SlipLayout, WidthsCountCharacters) {
    SlipLine line = tin();
    line.description = "Crème brûlée, größer als nötig";
    EXPECT_EQ(goodsreq::detailLine(columnsOf(plain()), line), "     7 Crème brûlée, größ     2.500  TIN");
}

TEST(SlipLayout, ALongUnitPushesTheLine) {
    SlipLine line = tin();
    line.unit = "CARTON";
    EXPECT_EQ(goodsreq::detailLine(columnsOf(plain()), line), "     7 Paint, masonry, wh     2.500 CARTON");
}

TEST(SlipLayout, Totals) {
    SlipSettings s = plain();
    EXPECT_FALSE(goodsreq::totalLine(s, 1, 2));
    s.showCost = 1;
    s.pageWidth = 60;
    EXPECT_EQ(goodsreq::totalLine(s, 1, 2.345), std::string(60 - 16, ' ') + "Grand Total:2.35");
    s.showTotalQuantity = 1;
    //         S + C + D = 28, Q = 10, U + R + A = 22
    EXPECT_EQ(goodsreq::totalLine(s, 1, 2.345), std::string(14, ' ') + "Grand Total:       1.000" + std::string(18, ' ') + "2.35");
    s.showCost = 0;
    EXPECT_EQ(goodsreq::totalLine(s, 0, 2), std::string(31, ' ') + "Grand Total:       0.000");
}

TEST(SlipLayout, MessagesAndTitles) {
    EXPECT_EQ(goodsreq::messageLine("Thank you", "L", 20), "Thank you");
    EXPECT_EQ(goodsreq::messageLine("Thank\r\nyou", "L", 20), "Thank\r\nyou"); // for who writes two lines
    EXPECT_EQ(goodsreq::messageLine("Thank\r\nyou", "R", 20), "           Thank you");
    EXPECT_EQ(goodsreq::messageLine("Thank you", "R", 20), "           Thank you");
    EXPECT_EQ(goodsreq::messageLine("Thank you", "M", 20), "      Thank you"); // 10 - 4
    EXPECT_EQ(goodsreq::messageLine("Thank you", "", 21), "      Thank you");  // 6.5, to the even
    EXPECT_EQ(goodsreq::messageLine("Thank you", "M", 4), "Thank you");
    goodsreq::HeaderSettings h;
    h.titleAbove = 1;
    const auto title = [&](int width) { return headerOpening(h, width, {}).at(0); };
    EXPECT_EQ(title(40), std::string(7, ' ') + "Request from shop to shop" + std::string(8, ' ')); // position 8
    EXPECT_EQ(title(41), std::string(7, ' ') + "Request from shop to shop" + std::string(9, ' ')); // 8.5
    EXPECT_EQ(title(10), "Request fr");
    EXPECT_EQ(title(-3), "");
    h.titleAbove = 0;
    const std::vector<std::string> body = headerBody(h, 40, {});
    EXPECT_EQ(body.at(body.size() - 2), std::string(14, ' ') + "Request From Shop T0o Shop");
    EXPECT_EQ(body.back(), "");
}

TEST(SlipPages, FitsWhatIsLeft) {
    struct Case {
        const char* what;
        int headerLines, limit, records, cost, footer, lines;
        int expected;
    };
    // 30 lines a page; top, under-heading and bottom lines are each `lines`.
    const Case cases[] = {
        {"all fit, with two lines for the foot", 9, 17, 15, 0, 0, 1, 15},
        {"all fit with room to spare", 9, 17, 3, 0, 0, 1, 15},
        {"costs take two more", 9, 17, 13, 1, 0, 1, 13},
        {"not with costs: the page's own count, header included", 9, 17, 14, 1, 0, 1, 13},
        {"one too many: 30 - 3 - 9 - 1 = 17 would do, so all but one", 9, 17, 16, 0, 0, 1, 15},
        {"far too many: 17", 9, 17, 25, 0, 0, 1, 17},
        {"footer on each page, one too many: all but one", 9, 17, 16, 0, 1, 1, 15},
        {"footer on each page, far too many: 17 - 2", 9, 17, 25, 0, 1, 1, 15},
        {"no lines about", 9, 20, 25, 0, 0, 0, 20},
        {"a header higher than the page", 40, 1, 5, 0, 0, 1, -14},
    };
    for (const Case& c : cases) {
        SlipSettings s = plain();
        s.showCost = c.cost;
        s.footerOnEachPage = c.footer;
        s.headerTopLine = s.headerBottomLine = s.detailBottomLine = c.lines;
        EXPECT_EQ(goodsreq::fitPage(s, c.headerLines, c.limit, c.records), c.expected) << c.what;
    }
}

/// The slip as one letter a line: H heading, - separator, d detail, F footer, | form feed.
std::string shape(const SlipSettings& settings, int headerLines, int records) {
    std::string drawn;
    goodsreq::printPages(settings, headerLines, records,
                         {[](int index) {
                              SlipLine line = tin();
                              line.number = index + 1;
                              return line;
                          },
                          [&] { drawn += 'F'; },
                          [&](const std::string& text) {
                              drawn += text.starts_with("Sl.No") ? 'H' : text.empty() || text[0] == '-' ? '-' : 'd';
                          },
                          [&] { drawn += '|'; }});
    return drawn;
}

std::string details(int count) { return std::string(static_cast<std::size_t>(count), 'd'); }

TEST(SlipPages, Shapes) {
    SlipSettings s = plain();
    s.headerTopLine = s.headerBottomLine = s.detailBottomLine = 1;
    EXPECT_EQ(shape(s, 9, 0), "");
    EXPECT_EQ(shape(s, 9, 1), "-H-d-");
    // 30 - 9 - 1 - 1 - 1 - 1 = 17 lines, two of them kept for the foot.
    EXPECT_EQ(shape(s, 9, 15), "-H-" + details(15) + "-");
    EXPECT_EQ(shape(s, 9, 16), "-H-" + details(15) + "-|-H-d-");
    EXPECT_EQ(shape(s, 9, 25), "-H-" + details(17) + "-|-H-" + details(8) + "-");
    s.footerOnEachPage = 1;
    EXPECT_EQ(shape(s, 9, 25), "-H-" + details(15) + "-F|-H-" + details(10) + "-");
    // A page too short for anything still gets a line each, without its foot.
    s.pageLines = 3;
    EXPECT_EQ(shape(s, 9, 3), "-H-d|-H-d|-H-d-");
    s.pageLines = -32768;
    EXPECT_EQ(shape(s, 9, 2), "-H-d|-H-d-");
}

TEST(SlipPages, AddUp) {
    const auto totals = goodsreq::printPages(plain(), 0, 4, {[](int) { return tin(); }, [] {}, [](const std::string&) {}, [] {}});
    EXPECT_DOUBLE_EQ(totals.quantity, 10);
    EXPECT_DOUBLE_EQ(totals.cost, 10.05);
}

} // namespace
} // namespace printing
