// The order in which rows stand once they are sorted.
#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

namespace forms {

/// For each place in the new order, which of the cells comes there; cells that compare alike keep their order.
/// With `generic`, cells that are numbers compare as numbers and come before the others; the others compare by
/// compareText.
std::vector<std::size_t> sortedOrder(const std::vector<std::string_view>& cells, bool generic, bool descending);

/// The one comparison of string sorting and string searching: upper-cased text by character code, case breaking ties.
int compareText(std::string_view a, std::string_view b);

} // namespace forms
