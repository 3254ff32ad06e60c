// The lines of the printed slip: values in, text out. Widths and positions count characters.
#pragma once

#include "automation/Value.h"
#include "slip/SlipSettings.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace goodsreq {

/// Widths of the slip's columns, each with the blank in front of it; only the first column has none.
struct SlipColumns {
    int serial = 0;
    int code = 0;
    int description = 0; ///< what the others leave of the page; below 1 where they leave nothing
    int quantity = 0;
    int unit = 0;
    int rate = 0;
    int amount = 0;
    bool showsCode = false;
    bool showsCost = false;
    bool showsSellingPrice = false;
};
SlipColumns columnsOf(const SlipSettings& settings);

/// One line of the request. `sellingPrice` Null or Empty prints blank.
struct SlipLine {
    int number = 0; ///< from 1
    std::string code;
    std::string description;
    automation::Value quantity;
    std::string unit;
    double costPrice = 0;
    double lineCost = 0;
    automation::Value sellingPrice;
};
std::string headingLine(const SlipColumns& columns);
std::string detailLine(const SlipColumns& columns, const SlipLine& line);

/// Dashes over the page's width with `blanks` between each two; empty where there would be but one. Error 11 for -1.
std::string separatorLine(int pageWidth, int blanks);

/// None where neither costs nor quantities are totalled.
std::optional<std::string> totalLine(const SlipSettings& settings, double quantity, double cost);

/// The text with blanks before it, so that it stands in the middle of the page.
std::string centred(std::string_view text, int pageWidth);
/// A print message: "L" as it was written, "R" at the right, any other alignment centred; these in one line.
std::string messageLine(std::string_view text, std::string_view alignment, int pageWidth);

/// The text in one line: each line break and each control character, which a printer would take for an order, becomes
/// one blank.
std::string inOneLine(std::string_view text);

/// What stands above the company: skipped lines and title.
std::vector<std::string> headerOpening(const HeaderSettings& settings, int pageWidth);
/// The fields of the company that are printed, in their order.
std::vector<const char*> companyFields(const HeaderSettings& settings);
std::string companyLine(const HeaderSettings& settings, std::string_view text);

struct RequestFacts {
    std::string number;
    std::string date;
    std::string remarks;
    std::string toShop;
    std::string fromShop;
    std::string address;
    std::string city;
    std::string country;
    std::string telephone;
    std::string fax;
};
/// The request's own data, to the empty line under it.
std::vector<std::string> headerBody(const HeaderSettings& settings, int pageWidth, const RequestFacts& request);

} // namespace goodsreq
