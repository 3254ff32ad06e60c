// Error numbers of the sandbox's database, as callers of the real data access interface know them.
#pragma once

#include "automation/RunTimeError.h"

#include <string>

namespace sandbox {

enum DatabaseError : long {
    // Of the objects themselves.
    kWrongArguments = 3001,
    kNoCurrentRecord = 3021,
    kNotAllowedHere = 3219,
    kInTransaction = 3246,
    kReadOnly = 3251,
    kItemNotFound = 3265,
    kWrongValueType = 3421,
    kObjectClosed = 3704,
    kObjectOpen = 3705,
    kConnectionUnusable = 3709,
    // Of the server, as HRESULTs.
    kServerFailure = -2147467259,            // 0x80004005: dead connection, unusable file, time-out
    kSyntaxError = -2147217900,              // 0x80040E14: the statement is wrong
    kConversionError = -2147217913,          // 0x80040E07: a value does not convert
    kDataOverflow = -2147217833,             // 0x80040E57: a value does not fit
    kConstraintViolated = -2147217873,       // 0x80040E2F
    kMultipleStepErrors = -2147217887,       // 0x80040E21: a value that its field cannot hold
    kRowChanged = -2147217864,               // 0x80040E38
    kTransactionInTransaction = -2147168237, // 0x8004D013
    kNoTransaction = -2147168242,            // 0x8004D00E
};

/// Raises the error with the text that belongs to its number.
[[noreturn]] void fail(DatabaseError number);
[[noreturn]] void fail(DatabaseError number, const std::string& description);

} // namespace sandbox
