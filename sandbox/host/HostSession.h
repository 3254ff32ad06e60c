// What the host program does: a session's connection, the module's class, its fields and Show, all late-bound.
#pragma once

#include "automation/Object.h"
#include "sandbox/data/SchemaText.h"
#include "sandbox/host/HostOptions.h"

namespace sandbox {

/// Makes the sandbox's database with the sample company in it. Leaves no half-made file behind.
/// Errors: the database's own.
void makeSampleCompany(const std::string& path, std::string_view schema = schemaText());

/// Makes it only where there is no such file. Returns whether it was made.
bool ensureCompany(const std::string& path);

/// What the connection object is opened with.
std::string connectionString(const HostOptions& options);

/// Creates connection and module by their ProgIDs, fills the module's fields and shows it; returns when it is closed.
/// The connection is closed at the end. Errors: what any of these objects raises.
void runSession(const HostOptions& options, const automation::ObjectFactory& create);

} // namespace sandbox
