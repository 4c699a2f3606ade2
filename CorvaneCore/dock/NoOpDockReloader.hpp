#pragma once

#include "CorvaneCore/platform/DockReloader.hpp"

#include <mutex>

namespace corvane {

/// Counts reloads and touches no Dock: for work on a copy of the preferences file.
class NoOpDockReloader final : public DockReloader {
public:
    void waitUntilSettled() override {}
    void reload() override {
        std::lock_guard lock(mutex_);
        ++callCount_;
    }
    /// Any thread.
    int callCount() const {
        std::lock_guard lock(mutex_);
        return callCount_;
    }

private:
    mutable std::mutex mutex_;
    int callCount_ = 0;
};

} // namespace corvane
