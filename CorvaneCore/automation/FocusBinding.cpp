#include "CorvaneCore/automation/FocusBinding.hpp"

#include <algorithm>

namespace corvane::FocusBinding {

const Profile* workspace(bool isFocused, const std::vector<Profile>& profiles) {
    auto it = std::find_if(profiles.begin(), profiles.end(),
                           [&](const Profile& p) { return p.focusModeBinding.has_value() == isFocused; });
    return it == profiles.end() ? nullptr : &*it;
}

bool anyBound(const std::vector<Profile>& profiles) {
    return std::any_of(profiles.begin(), profiles.end(), [](const Profile& p) { return p.focusModeBinding.has_value(); });
}

} // namespace corvane::FocusBinding
