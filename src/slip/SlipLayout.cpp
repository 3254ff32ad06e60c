#include "slip/SlipLayout.h"

#include "automation/RunTimeError.h"
#include "basic/Format.h"
#include "basic/Text.h"

#include <algorithm>

namespace goodsreq {

using basic::padLeft;
using basic::padRight;
using basic::space;

namespace {

constexpr const char* kQuantityFormat = "0.000";
constexpr const char* kMoneyFormat = "0.00";
constexpr std::string_view kTitleAbove = "Request from shop to shop";
constexpr std::string_view kTitleBelow = "Request From Shop T0o Shop";

bool isOn(int setting) { return setting == 1; }

/// The nearest whole number to `dividend` / `divisor`, halves to the even one.
int rounded(int dividend, int divisor) {
    if (divisor == 0) automation::raise(automation::kDivisionByZero);
    if (divisor < 0) {
        dividend = -dividend;
        divisor = -divisor;
    }
    const int below = dividend >= 0 ? dividend / divisor : -((divisor - 1 - dividend) / divisor);
    const int twiceRest = 2 * (dividend - below * divisor);
    return twiceRest > divisor || (twiceRest == divisor && below % 2 != 0) ? below + 1 : below;
}

void addRight(std::string& row, std::string_view text, int width) {
    const std::string line = inOneLine(text);
    row.append(" ").append(space(width - 1 - basic::len(line))).append(line);
}

void addLeft(std::string& row, std::string_view text, int width) {
    const std::string cut = basic::left(inOneLine(text), std::max(width - 1, 0));
    row.append(" ").append(cut).append(space(width - 1 - basic::len(cut)));
}

struct Cells {
    std::string serial;
    std::string_view code, description;
    std::string quantity;
    std::string_view unit;
    std::string costPrice, lineCost, sellingPrice;
};

std::string row(const SlipColumns& c, const Cells& cells) {
    std::string text = cells.serial;
    if (c.showsCode) addLeft(text, cells.code, c.code);
    addLeft(text, cells.description, c.description);
    addRight(text, cells.quantity, c.quantity);
    addRight(text, cells.unit, c.unit);
    if (c.showsCost) {
        addRight(text, cells.costPrice, c.rate);
        addRight(text, cells.lineCost, c.amount);
    }
    if (c.showsSellingPrice) addRight(text, cells.sellingPrice, c.rate);
    return text;
}

} // namespace

SlipColumns columnsOf(const SlipSettings& s) {
    SlipColumns c;
    c.serial = s.serialWidth;
    c.quantity = s.quantityWidth;
    c.unit = s.unitWidth;
    c.rate = s.rateWidth;
    c.amount = s.amountWidth;
    c.showsCode = isOn(s.showItemCode);
    c.showsCost = isOn(s.showCost);
    c.showsSellingPrice = isOn(s.showSellingPrice);
    // Any number but 0 keeps the code's room free, although only 1 prints it.
    c.code = s.showItemCode != 0 ? s.unitWidth + 3 : 0;
    c.description = s.pageWidth - c.serial - c.quantity - c.unit - c.code;
    if (c.showsCost) c.description -= c.rate + c.amount;
    if (c.showsSellingPrice) c.description -= c.rate;
    return c;
}

std::string headingLine(const SlipColumns& columns) {
    // Headings are padded to their columns and never cut.
    std::string text = padRight("Sl.No", columns.serial);
    if (columns.showsCode) text += " " + padRight("Code", columns.code - 1);
    text += " " + padRight("Item Description", columns.description - 1);
    addRight(text, "Quantity", columns.quantity);
    addRight(text, "Unit", columns.unit);
    if (columns.showsCost) {
        addRight(text, "Cost Pr", columns.rate);
        addRight(text, "Total Cost", columns.amount);
    }
    if (columns.showsSellingPrice) addRight(text, "Sell Pr", columns.rate);
    return text;
}

std::string detailLine(const SlipColumns& columns, const SlipLine& line) {
    const auto money = [](bool shown, const automation::Value& amount) {
        return shown ? basic::format(amount, kMoneyFormat) : std::string();
    };
    return row(columns,
               {padLeft(std::to_string(line.number), columns.serial), line.code, line.description,
                basic::format(line.quantity, kQuantityFormat), line.unit, money(columns.showsCost, line.costPrice),
                money(columns.showsCost, line.lineCost), money(columns.showsSellingPrice, line.sellingPrice)});
}

std::string separatorLine(int pageWidth, int blanks) {
    const int dashes = rounded(pageWidth, blanks + 1);
    std::string text;
    if (dashes < 2) return text;
    const std::string gap = space(blanks);
    text.reserve(static_cast<std::size_t>(dashes) * (1 + gap.size()));
    for (int i = 0; i < dashes; ++i) {
        if (i > 0) text += gap;
        text += '-';
    }
    return text;
}

std::optional<std::string> totalLine(const SlipSettings& s, double quantity, double cost) {
    const SlipColumns c = columnsOf(s);
    const std::string costText = basic::format(cost, kMoneyFormat);
    if (isOn(s.showTotalQuantity)) {
        std::string text = padLeft("Grand Total:  ", c.serial + c.code + c.description);
        text += padLeft(basic::format(quantity, kQuantityFormat), c.quantity);
        if (c.showsCost) text += padLeft(costText, c.unit + c.rate + c.amount);
        return text;
    }
    if (c.showsCost) return padLeft("Grand Total:" + costText, s.pageWidth);
    return std::nullopt;
}

std::string centred(std::string_view text, int pageWidth) {
    const int half = basic::len(text) / 2;
    return space(rounded(pageWidth - 2 * half, 2)) + std::string(text);
}

std::string messageLine(std::string_view text, std::string_view alignment, int pageWidth) {
    if (alignment == "L") return std::string(text);
    const std::string line = inOneLine(text);
    if (alignment == "R") return padLeft(line, pageWidth);
    return centred(line, pageWidth);
}

std::string inOneLine(std::string_view text) {
    std::string line;
    line.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        const auto byte = static_cast<unsigned char>(text[i]);
        const auto next = static_cast<unsigned char>(i + 1 < text.size() ? text[i + 1] : 0);
        if (byte == '\r' && next == '\n') continue;
        const bool upper = byte == 0xC2 && next >= 0x80 && next < 0xA0; // U+0080 to U+009F
        line += byte < ' ' || byte == 0x7F || upper ? ' ' : text[i];
        i += upper;
    }
    return line;
}

std::vector<std::string> headerOpening(const HeaderSettings& s, int pageWidth) {
    std::vector<std::string> lines(static_cast<std::size_t>(std::max(s.linesToSkipFirst, 0)));
    if (isOn(s.titleAbove)) {
        const int length = basic::len(kTitleAbove);
        // Written into a line of blanks, which it never makes longer.
        const int position = std::max(1, rounded(pageWidth - length + 1, 2));
        const std::string text = space(position - 1) + std::string(kTitleAbove);
        lines.push_back(basic::left(padRight(text, pageWidth), std::max(pageWidth, 0)));
    }
    return lines;
}

std::vector<const char*> companyFields(const HeaderSettings& s) {
    std::vector<const char*> fields;
    if (!isOn(s.companyName)) return fields;
    fields.push_back("name");
    if (isOn(s.address1)) fields.push_back("Address1");
    if (isOn(s.address2)) fields.push_back("Address2");
    if (isOn(s.address3)) fields.push_back("Address3");
    return fields;
}

std::string companyLine(const HeaderSettings& s, std::string_view text) {
    return space(s.leftMargin) + inOneLine(text);
}

std::vector<std::string> headerBody(const HeaderSettings& s, int pageWidth, const RequestFacts& request) {
    const std::string margin = space(s.leftMargin);
    std::vector<std::string> lines;
    const auto add = [&](const std::string& text) { lines.push_back(margin + inOneLine(text)); };
    add("From : " + request.fromShop);
    add("Request No     : " + request.number);
    add(request.address);
    add(request.city + " , " + request.country);
    add("Tel:" + request.telephone + "  Fax: " + request.fax);
    add("Request Date   : " + request.date);
    add("To : " + request.toShop);
    lines.resize(lines.size() + static_cast<std::size_t>(std::max(s.linesAfterAddress, 0)));
    add("Remarks      : " + request.remarks);
    if (!isOn(s.titleAbove)) lines.push_back(padLeft(kTitleBelow, pageWidth));
    lines.emplace_back();
    return lines;
}

} // namespace goodsreq
