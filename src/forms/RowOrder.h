// The order in which rows stand once they are sorted.
#pragma once

#include <cstdint>
#include <functional>
#include <string_view>
#include <vector>

namespace forms {

/// For each place in the new order, which of the `count` cells comes there; cells that compare alike keep their order.
/// With `generic`, cells that are numbers compare as numbers and come before the others; the others compare by
/// compareText. Each cell is asked for once and has to stay until the order is made.
std::vector<std::uint32_t> sortedOrder(std::size_t count, const std::function<std::string_view(std::size_t)>& cellAt,
                                       bool generic, bool descending);

/// The one comparison of string sorting and string searching: upper-cased text by character code, case breaking ties.
int compareText(std::string_view a, std::string_view b);

} // namespace forms
