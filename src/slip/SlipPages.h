// The slip's pages: how many lines each takes, and what stands above and below them.
#pragma once

#include "slip/SlipLayout.h"

#include <functional>
#include <string>

namespace goodsreq {

/// How many request lines go on a page whose first line comes next. `linesOnPage` is the page's own limit, `records`
/// what is still to print. The header's height counts on every page, although only the first one has the header.
int fitPage(const SlipSettings& settings, int headerLines, int linesOnPage, int records);

/// Where the pages take their contents from, and where they go.
struct SlipParts {
    std::function<SlipLine(int index)> line; ///< the request's lines, each asked for once, from 0 on
    std::function<void()> footer;
    std::function<void(const std::string& text)> print; ///< one line of the slip, without its end
    std::function<void()> formFeed;
};

struct SlipTotals {
    double quantity = 0;
    double cost = 0;
};

/// Prints the pages of `records` lines after a header of `headerLines`, without the totals and the last footer, and
/// gives what they add up to.
SlipTotals printPages(const SlipSettings& settings, int headerLines, int records, const SlipParts& parts);

} // namespace goodsreq
