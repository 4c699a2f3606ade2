#pragma once

#include <map>
#include <string>

namespace corvane {

/// The system's own per-application desktop assignments, the "app-bindings" dictionary of the
/// "com.apple.spaces" preferences.
class SpacesPreferences {
public:
    virtual ~SpacesPreferences() = default;
    /// Entries whose value is not text are left out; none at all when the domain cannot be read.
    virtual std::map<std::string, std::string> appBindings() const = 0;
    /// Throws `std::runtime_error` when the domain cannot be written.
    virtual void setAppBindings(const std::map<std::string, std::string>& bindings) = 0;
};

} // namespace corvane
