#pragma once

#include <gtest/gtest.h>

#include <optional>

namespace corvane {

/// The `Error` that `action` throws. When it throws nothing the test fails and the result is empty,
/// so `.value()` ends the test there.
template <typename Error, typename Action> std::optional<Error> thrown(Action&& action) {
    try {
        action();
    } catch (const Error& error) {
        return error;
    }
    ADD_FAILURE() << "nothing was thrown";
    return std::nullopt;
}

} // namespace corvane
