#pragma once

#include "CorvaneCore/bar/RunningApp.hpp"
#include "CorvaneCore/support/Uuid.hpp"

#include <cstdint>
#include <map>
#include <set>
#include <vector>

namespace corvane {

struct Profile;

/// Which workspaces own each running process: those it was launched or activated in. Kept for
/// the life of the process, never saved.
struct WorkspaceOwnership {
    std::map<std::int32_t, std::set<Uuid>> owners;

    std::set<Uuid> ownersOf(std::int32_t pid) const;
    void assign(std::int32_t pid, const Uuid& workspace) { owners[pid].insert(workspace); }
    void remove(std::int32_t pid) { owners.erase(pid); }
    /// Gives every unowned, unpinned running app to the workspace `placed` names for it, else
    /// to `active`. Pinned apps are never owned: their pinned tiles show them.
    void adopt(const std::vector<RunningApp>& running, const std::vector<Profile>& profiles, const Uuid& active,
               const std::map<std::int32_t, Uuid>& placed);

    bool operator==(const WorkspaceOwnership&) const = default;
};

} // namespace corvane
