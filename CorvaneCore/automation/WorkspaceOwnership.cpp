#include "CorvaneCore/automation/WorkspaceOwnership.hpp"

#include "CorvaneCore/workspace/Profile.hpp"

namespace corvane {

std::set<Uuid> WorkspaceOwnership::ownersOf(std::int32_t pid) const {
    auto it = owners.find(pid);
    return it == owners.end() ? std::set<Uuid>{} : it->second;
}

void WorkspaceOwnership::adopt(const std::vector<RunningApp>& running, const std::vector<Profile>& profiles,
                               const Uuid& active, const std::map<std::int32_t, Uuid>& placed) {
    auto pinned = [&](const RunningApp& app) {
        for (const auto& profile : profiles)
            for (const auto& item : profile.items)
                if (auto entry = item.app(); entry && app.matches(*entry)) return true;
        return false;
    };
    for (const auto& app : running) {
        if (owners.contains(app.pid) || pinned(app)) continue;
        auto place = placed.find(app.pid);
        assign(app.pid, place != placed.end() ? place->second : active);
    }
}

} // namespace corvane
