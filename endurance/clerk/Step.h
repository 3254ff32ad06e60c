// What clerks do, as plain data: any part of a list of steps is a list of steps.
#pragma once

#include <cstddef>
#include <iterator>
#include <string_view>
#include <vector>

namespace endurance::clerk {

/// The verbs stand in Acts.cpp, and in Run.cpp those of the world around the tills. The numbers choose among what is
/// there at that time; a step that is not possible then does nothing.
struct Step {
    int till = 0;
    std::string_view verb;
    int a = 0, b = 0, c = 0;
};
using Steps = std::vector<Step>;

/// The one of a list that a number chooses.
template <class T, std::size_t n> const T& of(const T (&list)[n], int number) {
    return list[static_cast<std::size_t>(number) % n];
}
template <class List> const auto& of(const List& list, int number) {
    return *std::next(std::begin(list), number % static_cast<long>(std::size(list)));
}

} // namespace endurance::clerk
