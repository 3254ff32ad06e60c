// Lines and pages of the slip, worked out by hand.
#include "slip/SlipPages.h"
#include "tests/basic/ExpectError.h"

namespace printing {
namespace {

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

TEST(SlipLayout, Separators) {
    const std::tuple<int, int, std::string> cases[] = {
        {5, 1, "- -"},     // 2.5 dashes: halves to the even
        {7, 1, "- - - -"}, // 3.5 dashes
        {10, 3, "-   -"},  // 2.5
        {0, 0, ""},
        {-40, 0, ""},
        {40, -2, ""}, // a negative number of dashes
        {-40, -3, std::string(20, '-')},
    };
    for (const auto& [width, blanks, line] : cases)
        EXPECT_EQ(goodsreq::separatorLine(width, blanks), line) << width << "/" << blanks;
    EXPECT_NE(errorOf([] { goodsreq::separatorLine(40, -1); }), 0);
}

TEST(SlipLayout, MessagesAndTitles) {
    EXPECT_EQ(goodsreq::messageLine("Thank\r\nyou", "L", 20), "Thank\r\nyou"); // for who writes two lines
    EXPECT_EQ(goodsreq::messageLine("Thank\r\nyou", "R", 20), "           Thank you");
    for (const char* text : {"Thank you", "Thank\ryou", "Thank\nyou", "Thank\fyou"}) {
        EXPECT_EQ(goodsreq::messageLine(text, "R", 20), "           Thank you");
        EXPECT_EQ(goodsreq::messageLine(text, "M", 20), "      Thank you"); // 10 - 4
    }
    EXPECT_EQ(goodsreq::messageLine("Thank\n\r", "R", 9), "  Thank  ");
    EXPECT_EQ(goodsreq::messageLine("Thank you", "", 21), "      Thank you"); // 6.5, to the even
    EXPECT_EQ(goodsreq::messageLine("Thank you", "M", 4), "Thank you");
    goodsreq::HeaderSettings h;
    h.titleAbove = 1;
    const auto title = [&](int width) { return headerOpening(h, width).at(0); };
    EXPECT_EQ(title(41), std::string(7, ' ') + "Request from shop to shop" + std::string(9, ' ')); // 8.5
    EXPECT_EQ(title(10), "Request fr");
    EXPECT_EQ(title(-3), "");
    const std::size_t height = headerBody(h, 40, {}).size();
    h.linesToSkipFirst = h.linesAfterAddress = -1; // no fewer than none
    EXPECT_EQ(headerOpening(h, 40).size(), 1u);
    EXPECT_EQ(headerBody(h, 40, {}).size(), height);
}

TEST(SlipLayout, NoControlCharacterOfATextReachesThePrinter) {
    const std::string orders = "a\x1B@\x07z\tz\x7F\xC2\x9Bz\x01\r\nz", shown = "a @ z z  z  z";
    EXPECT_EQ(goodsreq::inOneLine(orders), shown);
    EXPECT_EQ(goodsreq::inOneLine("Cr\xC3\xA8me \xC2\xA0\xE2\x80\xBA"), "Cr\xC3\xA8me \xC2\xA0\xE2\x80\xBA");
    goodsreq::SlipLine line{1, orders, orders, orders, orders, 1, 1, orders}; // a view may give a number as text
    SlipSettings s = plain();
    s.showItemCode = s.showSellingPrice = 1;
    EXPECT_EQ(detailLine(columnsOf(s), line).find_first_of("\x1B\x07\t\x7F\x01\r\n"), std::string::npos);
    goodsreq::HeaderSettings h;
    goodsreq::RequestFacts facts;
    facts.number = facts.remarks = facts.toShop = facts.city = orders;
    std::vector<std::string> lines = headerBody(h, 40, facts);
    lines.push_back(goodsreq::companyLine(h, orders));
    for (const char* alignment : {"R", "M"}) lines.push_back(goodsreq::messageLine(orders, alignment, 40));
    for (const std::string& one : lines)
        EXPECT_EQ(one.find_first_of("\x1B\x07\t\x7F\x01\r\n"), std::string::npos) << one;
    EXPECT_EQ(goodsreq::messageLine(orders, "L", 40), orders); // shops keep orders for their printer there
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
        {"two too many, which is just what would do: all but one", 9, 17, 17, 0, 0, 1, 16},
        {"far too many: 17", 9, 17, 25, 0, 0, 1, 17},
        {"footer on each page, one too many: all but one", 9, 17, 16, 0, 1, 1, 15},
        {"footer on each page, two too many: 17 - 2", 9, 17, 17, 0, 1, 1, 15},
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

} // namespace
} // namespace printing
