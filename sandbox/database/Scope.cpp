#include "sandbox/database/Scope.h"

#include "sandbox/database/Errors.h"

namespace sandbox {

Scope::Found Scope::find(const std::string& qualifier, const std::string& name) const {
    bool qualifierKnown = qualifier.empty();
    for (const Scope* scope = this; scope; scope = scope->outer) {
        const ScopeSource* source = nullptr;
        const OutputColumn* column = nullptr;
        for (const ScopeSource& candidate : scope->sources) {
            if (!qualifier.empty() && !automation::sameName(candidate.alias, qualifier)) continue;
            qualifierKnown = true;
            for (const OutputColumn& each : candidate.columns) {
                if (!automation::sameName(each.name, name)) continue;
                if (column) fail(kSyntaxError, "Ambiguous column name '" + name + "'.");
                source = &candidate;
                column = &each;
            }
        }
        if (column) return {source, column};
    }
    if (!qualifierKnown)
        fail(kSyntaxError,
             "The column prefix '" + qualifier + "' does not match with a table name or alias name used in the query.");
    fail(kSyntaxError, "Invalid column name '" + name + "'.");
}

} // namespace sandbox
