#pragma once

#include "CorvaneCore/automation/WorkspaceOwnership.hpp"
#include "CorvaneCore/platform/Log.hpp"
#include "CorvaneCore/platform/RunningApplications.hpp"
#include "CorvaneCore/workspace/Profile.hpp"

#include <functional>
#include <optional>
#include <set>
#include <utility>
#include <vector>

namespace corvane {

/// Hides, quits or brings back running applications after a switch, by the target workspace's
/// rule for other workspaces' apps. Main thread only.
class WorkspaceAppsController {
public:
    /// The active workspace (if any) and the whole list.
    using WorkspaceSource = std::function<std::pair<std::optional<Profile>, std::vector<Profile>>()>;
    /// Processes that must stay visible because another display shows their workspace.
    using ShownElsewhere = std::function<std::set<std::int32_t>()>;

    WorkspaceAppsController(RunningApplications& applications, Log& log, WorkspaceSource workspace,
                            ShownElsewhere shownElsewhere = {});

    void workspaceDidSwitch(const Profile& target, const std::vector<Profile>& profiles);
    /// An app that becomes active outside the active workspace joins it, so that switching back
    /// does not hide it.
    void appActivated(std::int32_t pid);

    WorkspaceOwnership ownership;
    std::set<std::int32_t> hiddenByCorvane;
    std::optional<Uuid> lastSwitch;

private:
    void apply(const Profile& target);

    RunningApplications& applications_;
    Log& log_;
    WorkspaceSource workspace_;
    ShownElsewhere shownElsewhere_;
};

} // namespace corvane
