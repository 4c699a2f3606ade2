#pragma once

#include <optional>

namespace corvane {

/// Whether some system Focus is on. The system tells only that, never which Focus it is.
class FocusStatusProvider {
public:
    virtual ~FocusStatusProvider() = default;
    /// None when the state is unknown, for example without the user's permission. Any thread.
    virtual std::optional<bool> isFocused() const = 0;
    virtual bool isAuthorized() const = 0;
};

} // namespace corvane
