#pragma once

#include "CorvaneCore/workspace/Profile.hpp"

#include <string>
#include <vector>

namespace corvane {

/// The workspace a command-line argument names: an id in any letter case, else a name matched
/// exactly, then exactly ignoring case, then as a unique prefix ignoring case. Throws a
/// one-line error when nothing matches or several do (listing them).
const Profile& resolveWorkspace(const std::vector<Profile>& profiles, const std::string& argument);

} // namespace corvane
