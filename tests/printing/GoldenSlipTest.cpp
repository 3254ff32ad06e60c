// Whole slips, byte for byte, over the switches of the print settings.
#include "slip/SlipLayout.h"
#include "tests/printing/SlipWorld.h"
#include "tests/support/Golden.h"

#include <gtest/gtest.h>

namespace printing {
namespace {

struct Slip {
    const char* name;
    int request;
    Settings changes;
};

const Slip kSlips[] = {
    // clang-format off
    {"plain", kThreeLines, {}},
    {"costs", kThreeLines, {{"showcostintrans", "1"}}},
    {"selling_prices", kThreeLines, {{"showspintransrep", "1"}}},
    {"costs_and_selling_prices", kThreeLines, {{"showcostintrans", "1"}, {"showspintransrep", "1"}}},
    {"item_codes", kThreeLines, {{"showitemcodeinprint", "1"}}},
    {"item_codes_2_leaves_room_only", kThreeLines, {{"showitemcodeinprint", "2"}, {"showtotalqty", "1"}}},
    {"total_quantity", kThreeLines, {{"showtotalqty", "1"}}},
    {"total_quantity_and_cost", kThreeLines, {{"showtotalqty", "1"}, {"showcostintrans", "1"}, {"showitemcodeinprint", "1"}}},
    {"by_description", kThreeLines, {{"printinsavedorder", "2"}}},
    // Halves go to the even number: 32.5 dashes and 17.5.
    {"separator_one_blank_odd_width", kThreeLines, {{"spaceinlinecode", "1"}, {"pagewidth", "65"}}},
    {"separator_three_blanks", kThreeLines, {{"spaceinlinecode", "3"}, {"pagewidth", "70"}}},
    {"negative_numbers", kThreeLines,
     {{"spaceinlinecode", "-3"}, {"pagewidth", "-70"}, {"linetoskipfirst", "-1"}, {"linesafteraddress", "-1"}}},
    {"separator_of_one_dash_is_empty", kThreeLines, {{"spaceinlinecode", "79"}}},
    {"no_separators", kThreeLines,
     {{"printheadertopline", "0"}, {"printheaderbottomline", "0"}, {"printdetailbottomline", "0"}}},
    {"title_below", kThreeLines, {{"printtransnameabove", "0"}}},
    {"no_company", kThreeLines, {{"PrintCompanyName", "0"}, {"printtransnameabove", "0"}, {"printadd1", "-"}}},
    {"all_addresses_with_margin", kThreeLines, {{"printadd2", "1"}, {"headerleftmargin", "5"}, {"linesafteraddress", "2"}}},
    {"skipped_lines", kThreeLines, {{"linetoskipfirst", "4"}}},
    {"head_count_cuts_the_header", kThreeLines, {{"totalheadcount", "6"}}},
    {"head_count_cuts_the_skipped_lines", kThreeLines, {{"totalheadcount", "2"}, {"linetoskipfirst", "3"}}},
    {"head_count_filled", kThreeLines, {{"totalheadcount", "18"}, {"linesafterheader", "1"}}},
    {"header_higher_than_no_head_count", kThreeLines, {{"totalheadcount", "-5"}, {"linesafterheader", "1"}}},
    {"several_pages", kTwentyFiveLines, {}},
    {"several_pages_footer_on_each", kTwentyFiveLines, {{"printfooterineachpage", "1"}}},
    {"several_pages_costs_footer_on_each", kTwentyFiveLines,
     {{"printfooterineachpage", "1"}, {"showcostintrans", "1"}, {"showtotalqty", "1"}}},
    {"several_pages_without_lines", kTwentyFiveLines,
     {{"printheadertopline", "0"}, {"printheaderbottomline", "0"}, {"printdetailbottomline", "0"}}},
    {"several_pages_top_line_only", kTwentyFiveLines, {{"printheaderbottomline", "0"}, {"printdetailbottomline", "0"}}},
    {"several_pages_bottom_line_only", kTwentyFiveLines,
     {{"printheadertopline", "0"}, {"printheaderbottomline", "0"}, {"showtotalqty", "1"}}},
    {"switches_that_are_neither", kTwentyFiveLines,
     {{"printheadertopline", "3"}, {"printheaderbottomline", "4"}, {"printdetailbottomline", "2"},
      {"printfooterineachpage", "2"}, {"showcostintrans", "2"}, {"showtotalqty", "2"}, {"printtransnameabove", "2"},
      {"PrintCompanyName", "2"}, {"showspintransrep", "2"}, {"printadd2", "2"}}},
    {"exactly_full_pages", kTwentyFiveLines, {{"internalprintnoofrecords", "24"}}},
    {"three_pages", kTwentyFiveLines, {{"internalprintnoofrecords", "23"}}},
    {"exactly_one_page", kTenLines, {{"internalprintnoofrecords", "29"}}},
    {"one_line_too_many_for_a_page", kTenLines, {{"internalprintnoofrecords", "28"}}},
    {"two_lines_too_many_for_a_page", kTenLines, {{"internalprintnoofrecords", "27"}}},
    {"one_line_too_many_with_costs", kTwentyFiveLines, {{"internalprintnoofrecords", "45"}, {"showcostintrans", "1"}}},
    {"second_page_one_line_too_many_with_footer", kTwentyFiveLines,
     {{"internalprintnoofrecords", "25"}, {"printfooterineachpage", "1"}, {"linesafteraddress", "1"}}},
    {"second_page_two_lines_too_many_with_footer", kTwentyFiveLines,
     {{"internalprintnoofrecords", "24"}, {"printfooterineachpage", "1"}}},
    {"page_shorter_than_its_header", kThreeLines, {{"internalprintnoofrecords", "5"}}},
    {"one_line", kOneLine, {{"showtotalqty", "1"}}},
    {"no_lines", kNoLines, {}},
    {"no_lines_totals", kNoLines, {{"showtotalqty", "1"}, {"showcostintrans", "1"}}},
    {"several_packings", kSeveralPackings, {{"showtotalqty", "1"}}},
    {"long_names_and_units", kLongTexts, {{"showitemcodeinprint", "1"}, {"showcostintrans", "1"}}},
    {"letters_outside_ascii", kForeignLetters, {{"showspintransrep", "1"}}},
    {"widths_larger_than_the_page", kThreeLines, {{"pagewidth", "20"}, {"showitemcodeinprint", "1"}, {"showcostintrans", "1"}}},
};
// clang-format on

TEST(GoldenSlip, PrintsAsBefore) {
    for (const Slip& slip : kSlips) {
        SCOPED_TRACE(slip.name);
        SlipWorld world(slip.changes);
        const std::string printed = world.print(slip.request);
        EXPECT_TRUE(world.desktop.messages.empty()) << world.desktop.messages.front();
        support::expectGolden(std::string(PROJECT_DIR "/tests/printing/golden/") + slip.name + ".txt", printed);
    }
}

TEST(GoldenSlip, NoControlCharacterOfATextReachesThePrinter) {
    const std::string orders = "a\x1B@\x07z\tz\x7F\xC2\x9Bz\x01\r\nz\n\r\f", shown = "a @ z z  z  z   ";
    EXPECT_EQ(goodsreq::inOneLine(orders), shown);
    EXPECT_EQ(goodsreq::inOneLine("Cr\xC3\xA8me \xC2\xA0\xE2\x80\xBA"), "Cr\xC3\xA8me \xC2\xA0\xE2\x80\xBA");
    goodsreq::SlipSettings s;
    s.pageWidth = 40;
    s.unitWidth = s.showItemCode = s.showSellingPrice = 1;
    const goodsreq::HeaderSettings h;
    goodsreq::RequestFacts facts;
    facts.number = facts.remarks = facts.toShop = facts.city = orders;
    std::vector<std::string> lines = headerBody(h, 40, facts);
    lines.push_back(companyLine(h, orders));
    lines.push_back(
        detailLine(columnsOf(s), {1, orders, orders, orders, orders, 1, 1, orders})); // a view may give text
    for (const char* alignment : {"R", "M", ""}) lines.push_back(goodsreq::messageLine(orders, alignment, 40));
    for (const std::string& one : lines)
        EXPECT_EQ(one.find_first_of("\x1B\x07\t\x7F\x01\r\n"), std::string::npos) << one;
    EXPECT_EQ(goodsreq::messageLine(orders, "L", 40), orders); // shops keep orders for their printer there
}

} // namespace
} // namespace printing
