// The one error type of the module: a run-time error with the number, source and description that the host's users
// know.
#pragma once

#include <stdexcept>
#include <string>
#include <utility>

namespace automation {

/// Numbers of the run-time errors that the module itself raises; a component's own numbers pass through unchanged.
enum ErrorNumber : long {
    kInvalidCall = 5,
    kOverflow = 6,
    kSubscriptOutOfRange = 9,
    kDivisionByZero = 11,
    kTypeMismatch = 13,
    kFileNotFound = 53,
    kPathAccess = 75,
    kPathNotFound = 76,
    kObjectNotSet = 91,
    kInvalidUseOfNull = 94,
    kCannotCreateObject = 429,
    kNoSuchMember = 438,
    kWrongNumberOfArguments = 450,
};

class RunTimeError : public std::runtime_error {
public:
    RunTimeError(long number, const std::string& description, std::string source = "goodsreq")
        : std::runtime_error(description), number_(number), source_(std::move(source)) {}

    /// The number users see; for an error that came from a COM component, its HRESULT.
    long number() const { return number_; }
    const std::string& source() const { return source_; }
    std::string description() const { return what(); }

private:
    long number_;
    std::string source_;
};

/// Raises one of the errors above with the description that belongs to its number.
[[noreturn]] void raise(ErrorNumber number);

} // namespace automation
