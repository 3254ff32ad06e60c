// Expecting a run-time error by its number.
#pragma once

#include "automation/RunTimeError.h"

#include <gtest/gtest.h>

/// The number of the error that `action` ends in, 0 when it ends well.
template <class Action> long errorOf(Action action) {
    try {
        action();
        return 0;
    } catch (const automation::RunTimeError& error) {
        return error.number();
    }
}
