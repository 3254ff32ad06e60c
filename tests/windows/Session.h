// A session on a company that a test has made, with the component out of its DLL, and what a person enters there.
#pragma once

#include "automation/Object.h"
#include "tests/windows/RealUser.h"

#include <cstdint>
#include <string>
#include <vector>

namespace support {

/// Writes the sample company to a scratch file of that name, which is replaced, and answers its path.
std::string sampleCompany(const std::string& name);
/// The sandbox's connection to a company's file, made by its ProgID. COM is started for this thread.
automation::ObjectPtr openConnection(const std::string& companyFile);
/// An object of the component with a session of shop 1 on that connection, ready for "Show".
automation::ObjectPtr makeModule(const automation::ObjectPtr& connection, std::int16_t user,
                                 std::int32_t interfaceId = 1507);

/// The shop that stands first in the list that shop 1 chooses from.
inline constexpr int kFirstOffered = 5;
/// Barcodes of items that shop 1 may request from it; by item.
std::vector<std::string> requestableBarcodes(automation::Object& connection);

// By keys.

/// From the register that stands to a new request to that shop, whose list of lines then has the focus.
void beginsRequest(RealUser& user);
/// From there to line entry.
void beginsLines(RealUser& user);
/// In line entry: an item by its barcode, a quantity, OK.
void entersLine(RealUser& user, const std::string& barcode);
/// Leaves the register by its button.
void closesRegister(RealUser& user);

} // namespace support
