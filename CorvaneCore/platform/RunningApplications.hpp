#pragma once

#include "CorvaneCore/bar/RunningApp.hpp"

#include <cstdint>
#include <functional>
#include <vector>

namespace corvane {

/// The running applications of the user's session. Main thread only.
class RunningApplications {
public:
    virtual ~RunningApplications() = default;

    /// Regular applications (those with a Dock tile), in the order the system reports them.
    virtual std::vector<RunningApp> regularApplications() = 0;
    virtual bool isHidden(std::int32_t pid) = 0;
    /// Asks the app to hide; false when it refused or is gone.
    virtual bool hide(std::int32_t pid) = 0;
    virtual void unhide(std::int32_t pid) = 0;
    /// Asks the app to quit, never forced: it may ask the user to save first.
    virtual void terminate(std::int32_t pid) = 0;
    /// Called with the process id whenever an application becomes the active one.
    virtual void onActivation(std::function<void(std::int32_t pid)> handler) = 0;
    /// Called on the main thread whenever an application starts or quits; several may come at
    /// once (a login starts many). Replaces any earlier handler, as `onActivation` does.
    virtual void onLaunchOrTermination(std::function<void()> handler) = 0;
};

} // namespace corvane
