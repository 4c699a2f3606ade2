#pragma once

#include "CorvaneCore/automation/AppDesktopBindings.hpp"
#include "CorvaneCore/platform/DesktopServer.hpp"
#include "CorvaneCore/platform/Log.hpp"
#include "CorvaneCore/platform/RunningApplications.hpp"
#include "CorvaneCore/platform/SpacesPreferences.hpp"

#include <optional>
#include <string>

namespace corvane {

/// Puts an application on one desktop or on all of them, the way the Dock's "Assign To" menu
/// does: the system's desktop settings keep the choice, and the window server moves the
/// application's windows at once when it can. Main thread.
class AppDesktopAssigner {
public:
    AppDesktopAssigner(SpacesPreferences& preferences, DesktopServer& server, RunningApplications& applications,
                       Log& log)
        : preferences_(preferences), server_(server), applications_(applications), log_(log) {}

    std::optional<AppDesktopAssignment> assignment(const std::string& bundleIdentifier) const;
    /// Writes the choice (none removes it); throws when the settings cannot be written, and then
    /// nothing has moved.
    void assign(const std::optional<AppDesktopAssignment>& assignment, const std::string& bundleIdentifier);

private:
    SpacesPreferences& preferences_;
    DesktopServer& server_;
    RunningApplications& applications_;
    Log& log_;
};

} // namespace corvane
