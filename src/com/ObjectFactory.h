// Objects made by their ProgID through the machine's COM.
#pragma once

#include "automation/Object.h"

namespace com {

/// In-process and local servers. Error 429 with the ProgID in its description when there is none or it fails.
automation::ObjectFactory comObjectFactory();

} // namespace com
