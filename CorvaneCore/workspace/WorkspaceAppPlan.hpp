#pragma once

#include "CorvaneCore/automation/WorkspaceOwnership.hpp"
#include "CorvaneCore/bar/RunningApp.hpp"
#include "CorvaneCore/workspace/Profile.hpp"

#include <array>
#include <set>
#include <string_view>
#include <vector>

namespace corvane {

/// What a switch does to the running applications: which to hide or quit, which to show again.
struct WorkspaceAppPlan {
    static constexpr std::array<std::string_view, 3> protectedBundleIdentifiers = {
        "com.apple.finder", "com.apple.dock", "dev.tessik.Corvane"};

    std::vector<RunningApp> outsiders;
    std::vector<std::int32_t> toUnhide;

    /// Owned by the workspace, or pinned in its applications section by bundle id or path.
    static bool app(const RunningApp& running, const Profile& belongsTo, const WorkspaceOwnership& ownership);
    static bool isProtected(const RunningApp& running);

    /// `keeping` holds the processes another display shows, which stay visible.
    WorkspaceAppPlan(const Profile& switchingTo, const std::vector<RunningApp>& running,
                     const WorkspaceOwnership& ownership, const std::set<std::int32_t>& hiddenByCorvane,
                     const std::set<std::int32_t>& keeping);
};

} // namespace corvane
