#include "automation/RunTimeError.h"

namespace automation {
namespace {

const char* descriptionOf(ErrorNumber number) {
    switch (number) {
    case kInvalidCall: return "Invalid procedure call or argument";
    case kOverflow: return "Overflow";
    case kSubscriptOutOfRange: return "Subscript out of range";
    case kDivisionByZero: return "Division by zero";
    case kTypeMismatch: return "Type mismatch";
    case kFileNotFound: return "File not found";
    case kPathAccess: return "Path/File access error";
    case kPathNotFound: return "Path not found";
    case kObjectNotSet: return "Object variable or With block variable not set";
    case kInvalidUseOfNull: return "Invalid use of Null";
    case kCannotCreateObject: return "ActiveX component can't create object";
    case kNoSuchMember: return "Object doesn't support this property or method";
    case kWrongNumberOfArguments: return "Wrong number of arguments or invalid property assignment";
    }
    return "Application-defined or object-defined error";
}

} // namespace

void raise(ErrorNumber number) { throw RunTimeError(number, descriptionOf(number)); }

} // namespace automation
