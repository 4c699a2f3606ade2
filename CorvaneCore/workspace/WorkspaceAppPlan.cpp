#include "CorvaneCore/workspace/WorkspaceAppPlan.hpp"

#include <algorithm>

namespace corvane {

bool WorkspaceAppPlan::app(const RunningApp& running, const Profile& belongsTo, const WorkspaceOwnership& ownership) {
    if (ownership.ownersOf(running.pid).contains(belongsTo.id)) return true;
    for (const auto& item : belongsTo.items) {
        auto entry = item.app();
        if (!entry) continue;
        if (running.bundleIdentifier && entry->bundleIdentifier && *running.bundleIdentifier == *entry->bundleIdentifier)
            return true;
        if (running.path && *running.path == entry->path) return true;
    }
    return false;
}

bool WorkspaceAppPlan::isProtected(const RunningApp& running) {
    return running.bundleIdentifier &&
           std::find(protectedBundleIdentifiers.begin(), protectedBundleIdentifiers.end(), *running.bundleIdentifier) !=
               protectedBundleIdentifiers.end();
}

WorkspaceAppPlan::WorkspaceAppPlan(const Profile& switchingTo, const std::vector<RunningApp>& running,
                                   const WorkspaceOwnership& ownership, const std::set<std::int32_t>& hiddenByCorvane,
                                   const std::set<std::int32_t>& keeping) {
    for (const auto& candidate : running) {
        bool belongs = app(candidate, switchingTo, ownership);
        if (belongs && hiddenByCorvane.contains(candidate.pid)) toUnhide.push_back(candidate.pid);
        if (!belongs && !isProtected(candidate) && !keeping.contains(candidate.pid)) outsiders.push_back(candidate);
    }
}

} // namespace corvane
