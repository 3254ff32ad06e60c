// Expecting a run-time error.
#pragma once

#include "automation/Object.h"
#include "automation/RunTimeError.h"

#include <gtest/gtest.h>

struct Failure {
    long number = 0; ///< 0 where there was none
    std::string text = "no error";
    std::string source;
};

template <class Action> Failure failureOf(Action action) {
    try {
        action();
        return {};
    } catch (const automation::RunTimeError& error) {
        return {error.number(), error.description(), error.source()};
    }
}

/// The number of the error that `action` ends in, 0 when it ends well.
template <class Action> long errorOf(Action action) { return failureOf(action).number; }

template <class Pointer, class... A> long errorOfCall(const Pointer& object, const char* member, A... arguments) {
    return errorOf([&] { object->call(member, arguments...); });
}

template <class Pointer> long errorOfPut(const Pointer& object, const char* member, const automation::Value& value) {
    return errorOf([&] { object->put(member, value); });
}
