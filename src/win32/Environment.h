// What the desktop asks of the system: programs to start and the user's regional choices.
#pragma once

#include "basic/Locale.h"

#include <string>

namespace win32 {

/// Starts the program of this full path without waiting for it; it is looked for nowhere else. Error 53 when it is not
/// found, 5 when it cannot start.
void startProgram(const std::string& program, const std::string& arguments, bool maximised);

/// The user's choices, read when they are first asked for and after each change of which we are told: a register asks
/// for each cell.
const basic::Locale& userLocale();
void userLocaleChanged();

} // namespace win32
