// What a server writes into the registry, and how it takes that back.
#pragma once

#include "com/Server.h"

namespace com {

enum class Scope { machine, user };

/// Writes the classes, their ProgIDs and the type library. A failure raises the system's error, such as access denied.
void writeRegistration(const Server& server, Scope scope);

/// Takes back what writeRegistration() wrote. A ProgID that meanwhile belongs to another server stays; what is not
/// there any more is no error.
void removeRegistration(const Server& server, Scope scope);

} // namespace com
