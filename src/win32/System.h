// What the desktop asks of the system: programs to start and the user's regional choices.
#pragma once

#include "basic/Locale.h"

#include <string>

namespace win32 {

/// Starts a program (or opens a document) without waiting for it. Error 53 when it is not found, 5 when it cannot
/// start.
void startProgram(const std::string& commandLine, bool maximised);

/// The user's choices, read when they are first asked for and after each change of which we are told: a register asks
/// for each cell.
const basic::Locale& userLocale();
void userLocaleChanged();

} // namespace win32
