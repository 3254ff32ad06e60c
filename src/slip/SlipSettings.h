// The print settings of the shop, as numbers: what the slip and the print dialog take from ShopSetting.txt.
#pragma once

#include "common/Module.h"

#include <string>

namespace goodsreq {

/// Reads keys of ShopSetting.txt beside the component. Each reading of a missing key shows its message; errors name the
/// key and the file.
class PrintSettings {
public:
    explicit PrintSettings(Module& module);

    /// Upper-cased and trimmed.
    std::string text(const std::string& key) const;
    /// A 16-bit number. Errors: 13 where it is missing, empty or no number, 6 out of range.
    int strict(const std::string& key) const;
    /// The number that the value begins with, halves rounded to even; 0 where there is none. Error 6 out of range.
    int lenient(const std::string& key) const;

private:
    Module& module_;
    std::string path_;
};

/// A switch is on when its number is 1; some numbers count in the arithmetic of pages as well, so all are kept as read.
struct SlipSettings {
    std::string port; ///< a printer port, a shared printer or a file
    int pageLines = 0;
    int pageWidth = 0; ///< all widths in characters
    int serialWidth = 0;
    int quantityWidth = 0;
    int unitWidth = 0;
    int rateWidth = 0;
    int amountWidth = 0;
    int showCost = 0;
    int showSellingPrice = 0;
    int showItemCode = 0;
    int savedOrder = 0; ///< 1 by item id, 2 by description
    int headerTopLine = 0;
    int headerBottomLine = 0;
    int detailBottomLine = 0;
    int separatorBlanks = 0;
    int footerOnEachPage = 0;
    int showTotalQuantity = 0;
};

/// Of the block above the first page's lines.
struct HeaderSettings {
    int leftMargin = 0;
    int linesToSkipFirst = 0;
    int totalHeadCount = 0; ///< height of the block in lines; below 1 it is as high as its lines make it
    int linesAfterAddress = 0;
    int linesAfterHeader = 0;
    int titleAbove = 0;
    int companyName = 0;
    int address1 = 0; ///< the addresses are read only when the company's name is printed
    int address2 = 0;
    int address3 = 0;
};

/// Errors 13 and 6 as of the readings; no key behind the failing one is read.
SlipSettings readSlipSettings(const PrintSettings& settings);
HeaderSettings readHeaderSettings(const PrintSettings& settings);

} // namespace goodsreq
