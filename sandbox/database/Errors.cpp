#include "sandbox/database/Errors.h"

namespace sandbox {
namespace {

const char* description(DatabaseError number) {
    switch (number) {
    case kWrongArguments:
        return "Arguments are of the wrong type, are out of acceptable range, or are in conflict with one another.";
    case kNoCurrentRecord:
        return "Either BOF or EOF is True, or the current record has been deleted. Requested operation requires a "
               "current record.";
    case kNotAllowedHere: return "Operation is not allowed in this context.";
    case kInTransaction: return "Connection object cannot be explicitly closed while in a transaction.";
    case kReadOnly:
        return "Current Recordset does not support updating. This may be a limitation of the provider, or of the "
               "selected locktype.";
    case kItemNotFound: return "Item cannot be found in the collection corresponding to the requested name or ordinal.";
    case kWrongValueType: return "Application uses a value of the wrong type for the current operation.";
    case kObjectClosed: return "Operation is not allowed when the object is closed.";
    case kObjectOpen: return "Operation is not allowed when the object is open.";
    case kConnectionUnusable:
        return "The connection cannot be used to perform this operation. It is either closed or invalid in this "
               "context.";
    case kServerFailure: return "Connection failure";
    case kSyntaxError: return "The statement has an error.";
    case kConversionError: return "A value cannot be converted.";
    case kDataOverflow: return "A value is too large.";
    case kConstraintViolated: return "A constraint is violated.";
    case kMultipleStepErrors: return "Multiple-step operation generated errors. Check each status value.";
    case kRowChanged:
        return "Row cannot be located for updating. Some values may have been changed since it was last read.";
    case kTransactionInTransaction: return "Cannot start more transactions on this session.";
    case kNoTransaction: return "No transaction is active.";
    }
    return "Unspecified error";
}

} // namespace

void fail(DatabaseError number) { fail(number, description(number)); }

void fail(DatabaseError number, const std::string& description) {
    throw automation::RunTimeError(number, description, "Sandbox database");
}

} // namespace sandbox
