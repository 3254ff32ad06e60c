// Fuzzes what reads the shop's print settings: the file's lines, and every layout that numbers from it can ask for.
#include "automation/RunTimeError.h"
#include "basic/Conversion.h"
#include "basic/Numbers.h"
#include "slip/SettingsFile.h"
#include "slip/SlipPages.h"

#include <cstdint>
#include <cstdlib>
#include <string>
#include <vector>

namespace {

using goodsreq::SlipSettings;

/// The setting as a 16-bit number, however the file has it; 0 where it has none.
int number(std::string_view content, std::string_view key) {
    const auto value = goodsreq::findSetting(content, key);
    if (!value) return 0;
    if (value->data() < content.data() || value->data() + value->size() > content.data() + content.size()) std::abort();
    try {
        return basic::cInt(basic::val(*value));
    } catch (const automation::RunTimeError&) {
        return -1;
    }
}

SlipSettings settingsOf(std::string_view content) {
    using S = SlipSettings;
    static constexpr int S::*kMembers[] = {
        &S::pageLines,        &S::pageWidth,       &S::serialWidth,      &S::quantityWidth,
        &S::unitWidth,        &S::rateWidth,       &S::amountWidth,      &S::showCost,
        &S::showItemCode,     &S::headerTopLine,   &S::headerBottomLine, &S::detailBottomLine,
        &S::showSellingPrice, &S::separatorBlanks, &S::footerOnEachPage, &S::showTotalQuantity};
    SlipSettings s;
    for (const char* key = "pwsquracithbekfg"; const auto member : kMembers) s.*member = number(content, {key++, 1});
    return s;
}

/// No line is longer than all widths and the page together ask for.
constexpr std::size_t kLongestLine = 8 * 32768 * 2 + 1000;
constexpr int kRecords = 20;

/// A line of the slip: nothing in it is an order to the printer, and it is no longer than that and the text in it.
void plain(const std::string& line, std::size_t text = 0) {
    if (line.size() > kLongestLine + 2 * text) std::abort();
    for (const char c : line)
        if (static_cast<unsigned char>(c) < ' ' || c == 0x7F) std::abort();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string content(reinterpret_cast<const char*>(data), size);
    const SlipSettings s = settingsOf(content);
    const int headerLines = number(content, "l") & 0x7FFF;
    int details = 0, lines = 0, feeds = 0;
    const auto print = [&](const std::string& text) {
        plain(text);
        ++lines;
    };
    const auto detail = [&](int index) {
        ++details;
        goodsreq::SlipLine line;
        line.number = index + 1;
        line.code = content.substr(0, 40);
        line.description = content.substr(content.size() / 2, 100);
        line.unit = content.substr(0, 12);
        line.quantity = 1.5;
        line.sellingPrice = content.substr(0, 30);
        return line;
    };
    try {
        goodsreq::printPages(s, headerLines, kRecords, {detail, [&] { ++lines; }, print, [&] { ++feeds; }});
        if (details != kRecords || feeds >= kRecords || lines > kRecords * 6 + 2) std::abort();
        goodsreq::totalLine(s, 1, 2);
        goodsreq::HeaderSettings h;
        h.titleAbove = s.showCost;
        h.companyName = 1;
        h.leftMargin = s.rateWidth;
        h.linesToSkipFirst = number(content, "n") % 100;
        h.linesAfterAddress = number(content, "m") % 100;
        std::vector<std::string> rest = goodsreq::headerBody(
            h, s.pageWidth, {content, content, content, content, content, content, content, content, content, content});
        rest.push_back(goodsreq::companyLine(h, content));
        rest.push_back(goodsreq::messageLine(content, "M", s.pageWidth));
        for (const std::string& text : goodsreq::headerOpening(h, s.pageWidth)) rest.push_back(text);
        for (const std::string& text : rest) plain(text, content.size());
    } catch (const automation::RunTimeError& error) {
        if (error.number() != automation::kDivisionByZero || s.separatorBlanks != -1) std::abort();
    }
    return 0;
}
