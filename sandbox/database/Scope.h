// The names that an expression can see: the sources of its select and of those around it.
#pragma once

#include "sandbox/database/Translator.h"

namespace sandbox {

struct ScopeSource {
    std::string alias;
    std::vector<OutputColumn> columns;
};

struct Scope {
    std::vector<ScopeSource> sources;
    const Scope* outer = nullptr;

    struct Found {
        const ScopeSource* source;
        const OutputColumn* column;
    };
    /// Errors: -2147217900 for a name that is unknown or ambiguous.
    Found find(const std::string& qualifier, const std::string& name) const;
};

} // namespace sandbox
