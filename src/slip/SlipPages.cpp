#include "slip/SlipPages.h"

#include "basic/Conversion.h"

#include <algorithm>

namespace goodsreq {

int fitPage(const SlipSettings& s, int headerLines, int linesOnPage, int records) {
    const int rest = s.pageLines - s.headerTopLine - s.detailBottomLine - s.headerBottomLine - headerLines - 1;
    const int totals = s.showCost == 1 ? 2 : 0;
    if (linesOnPage - 2 - totals >= records) return linesOnPage - 2 - totals;
    if (s.footerOnEachPage == 1) return linesOnPage - 2 >= records - 1 ? records - 1 : rest - 2;
    return rest >= records ? records - 1 : rest;
}

SlipTotals printPages(const SlipSettings& s, int headerLines, int records, const SlipParts& parts) {
    const SlipColumns columns = columnsOf(s);
    const std::string separator = separatorLine(s.pageWidth, s.separatorBlanks);
    // The line under the details counts twice here.
    int linesOnPage = std::max(1, s.pageLines - headerLines - 2 * s.detailBottomLine - s.headerTopLine - 1);
    int lineOnPage = 1;
    SlipTotals totals;
    for (int printed = 0; printed < records;) {
        if (lineOnPage == 1) {
            linesOnPage = fitPage(s, headerLines, linesOnPage, records - printed);
            if (s.headerTopLine == 1) parts.print(separator);
            parts.print(headingLine(columns));
            parts.print(separator);
        }
        const SlipLine line = parts.line(printed);
        parts.print(detailLine(columns, line));
        totals.quantity += line.quantity.isNull() ? 0 : basic::cDbl(line.quantity);
        totals.cost += line.lineCost;
        ++printed;
        if (printed == records) break;
        if (lineOnPage == linesOnPage) {
            if (s.detailBottomLine == 1) parts.print(separator);
            if (s.footerOnEachPage == 1) parts.footer();
        }
        ++lineOnPage;
        if (lineOnPage > linesOnPage) {
            lineOnPage = 1;
            linesOnPage = s.pageLines - s.headerTopLine - s.detailBottomLine - s.headerBottomLine - 1;
            parts.formFeed();
        }
    }
    if (records > 0 && s.detailBottomLine == 1) parts.print(separator);
    return totals;
}

} // namespace goodsreq
