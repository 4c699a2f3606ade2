#pragma once

namespace corvane {

/// Restarts the Dock so that it reads its preferences again. Blocks the calling thread.
class DockReloader {
public:
    virtual ~DockReloader() = default;
    /// Returns once a freshly started Dock can no longer overwrite what is written next.
    virtual void waitUntilSettled() = 0;
    /// Restarts the Dock and returns once a new Dock process runs. Throws `DockError`.
    virtual void reload() = 0;
};

} // namespace corvane
