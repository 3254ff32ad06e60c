// Stand-ins for the components that the suite installs on a shop's machine, made by their ProgIDs.
#pragma once

#include "automation/Object.h"
#include "forms/Desktop.h"

#include <string>
#include <vector>

namespace sandbox {

struct Surroundings {
    forms::Desktop* desktop = nullptr;               ///< where messages and dialogs are shown; outlives the stand-ins
    std::string logFolder;                           ///< where errors.log is written; no log where it is empty
    std::vector<std::string>* reportCalls = nullptr; ///< what the report engine is told, for tests; outlives it
};

/// The stand-in of that ProgID (in any case), or ADO's Connection or Recordset over the sandbox's database. Null for
/// any other.
automation::ObjectPtr createStandIn(std::string_view progId, const Surroundings& surroundings);

/// Makes stand-ins only: error 429 for any other ProgID.
automation::ObjectFactory standInFactory(Surroundings surroundings);

/// Every ProgID that is stood in for, ADO's two last.
const std::vector<std::string>& standInProgIds();

} // namespace sandbox
