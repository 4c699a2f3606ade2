#pragma once

#include "CorvaneCore/workspace/Profile.hpp"

#include <optional>
#include <vector>

namespace corvane::WorkspaceCycle {

/// The workspace `step` places after `after` (the first one when `after` is absent or unknown),
/// wrapping both ways; none with fewer than two workspaces, a zero step, or a full turn.
std::optional<Profile> next(const std::optional<Uuid>& after, const std::vector<Profile>& profiles, int step);

} // namespace corvane::WorkspaceCycle
