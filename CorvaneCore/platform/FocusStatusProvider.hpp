#pragma once

#include <optional>

namespace corvane {

/// Whether the user lets this application read the Focus state.
enum class FocusAuthorization {
    /// Not asked yet: the system asks the user on `requestAuthorization`.
    notDetermined,
    /// Refused, in the system's settings or by a profile: only the user can change it there.
    denied,
    authorized,
    /// The system has no Focus state to read.
    unavailable,
};

/// Whether some system Focus is on. The system tells only that, never which Focus it is.
class FocusStatusProvider {
public:
    virtual ~FocusStatusProvider() = default;
    /// None when the state is unknown, for example without the user's permission. Any thread.
    virtual std::optional<bool> isFocused() const = 0;
    virtual FocusAuthorization authorization() const = 0;
    /// Asks the user, once, to let the state be read; the answer shows in `authorization` and
    /// in the next `isFocused`. Main thread.
    virtual void requestAuthorization() {}
};

} // namespace corvane
