#pragma once

#include <functional>

namespace corvane {

/// Tells when the desktop in front changes (the user moved to another Space).
class DesktopEvents {
public:
    virtual ~DesktopEvents() = default;
    /// The handler runs on the main thread, once per system notice; several notices may come
    /// while one desktop slides in. Replaces any earlier handler.
    virtual void onActiveDesktopChange(std::function<void()> handler) = 0;
};

} // namespace corvane
