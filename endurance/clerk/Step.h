// What clerks do, as plain data: any part of a list of steps is a list of steps.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace endurance::clerk {

enum class Verb {
    // The world.
    shows,     ///< the host shows the register: a is the user, b shop and screen, c locale, date and habits
    fault,     ///< a is the kind, b the count, c the member
    rival,     ///< someone else changes a request: a which, b how
    setting,   ///< a package setting changes
    readsLate, ///< a component reads a member of a form that it kept
    // Anywhere.
    answers, ///< the box that is up
    menu,    ///< the menu that is up
    ok,
    cancel,
    frame,
    // Register.
    adds,
    edits,
    deletes,
    prints,
    refreshes,
    sorts,
    seeks,
    // Editor.
    shop,
    addsLines,
    changesLine,
    removesLine,
    remarks,
    date,
    ticks,
    // Line entry, and the dialogs over it.
    scans,
    quantity,
    badQuantity,
    price,
    enters, ///< Enter in the quantity box
    walks,
    fetches,
    dialog, ///< F11
    pastes,
    searches,
    again, ///< Enter in the search box as it stands
    picks,
    column,
    // The reason of a deletion; the print dialog.
    reason,
    option,
};
inline constexpr int kVerbs = static_cast<int>(Verb::option) + 1;
extern const char* const kVerbNames[kVerbs];

/// The numbers choose among what is there at that time; a step that is not possible then does nothing.
struct Step {
    int till = 0;
    Verb verb = Verb::shows;
    int a = 0, b = 0, c = 0;
};
using Steps = std::vector<Step>;

/// As it stands in a list of steps in C++.
std::string asCode(const Step& step);

/// The one of a list that a number chooses.
template <class T, std::size_t n> const T& of(const T (&list)[n], int number) {
    return list[static_cast<std::size_t>(number) % n];
}
template <class T> const T& of(const std::vector<T>& list, int number) {
    return list[static_cast<std::size_t>(number) % list.size()];
}

} // namespace endurance::clerk
