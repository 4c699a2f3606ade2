#include "CorvaneCore/automation/WorkspaceCycle.hpp"

namespace corvane::WorkspaceCycle {

std::optional<Profile> next(const std::optional<Uuid>& after, const std::vector<Profile>& profiles, int step) {
    auto n = static_cast<long long>(profiles.size());
    if (n < 2 || step == 0) return std::nullopt;
    long long current = 0;
    for (long long i = 0; i < n; ++i)
        if (after && profiles[static_cast<std::size_t>(i)].id == *after) {
            current = i;
            break;
        }
    auto target = ((current + step) % n + n) % n;
    if (target == current) return std::nullopt;
    return profiles[static_cast<std::size_t>(target)];
}

} // namespace corvane::WorkspaceCycle
