// The manifest of the stand-ins that a machine needs which has some of the suite's components itself.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace sandbox {

/// The ProgIDs of the classes in an assembly's manifest, in its order.
std::vector<std::string> progIdsOf(std::string_view manifest);

/// The manifest of the whole sandbox under another assembly's name, without the classes of these ProgIDs (in any case).
std::string manifestWithout(std::string_view sandboxManifest, std::string_view assembly,
                            const std::vector<std::string>& progIds);

} // namespace sandbox
