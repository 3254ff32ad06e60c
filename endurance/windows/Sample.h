// The sample company for programs that work the DLL, and a request that is entered there.
#pragma once

#include "automation/Object.h"
#include "tests/windows/Clerk.h"

#include <string>
#include <vector>

namespace endurance {

/// Writes it to that file, which is replaced, and answers the file's name.
std::string sampleCompany(const std::string& path);

/// The shop that stands first in the list that shop 1 chooses from.
inline constexpr int kFirstOffered = 5;

/// Barcodes of items that shop 1 may request from it; by item.
std::vector<std::string> requestableBarcodes(automation::Object& connection);

/// From the register that stands to line entry for a new request to it, by keys. False where a window does not come.
bool beginsRequest(support::Clerk& clerk);
/// In line entry: an item by its barcode, a quantity, OK.
bool entersLine(support::Clerk& clerk, const std::string& barcode);

} // namespace endurance
