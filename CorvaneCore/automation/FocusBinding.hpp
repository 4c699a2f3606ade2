#pragma once

#include "CorvaneCore/workspace/Profile.hpp"

#include <vector>

namespace corvane::FocusBinding {

/// The workspace a Focus change brings: when a Focus turns on, the first workspace bound to
/// one; when it turns off, the first one bound to none. The binding's text is never compared:
/// the system does not say which Focus is on.
const Profile* workspace(bool isFocused, const std::vector<Profile>& profiles);

/// Whether any workspace is bound to a Focus at all.
bool anyBound(const std::vector<Profile>& profiles);

} // namespace corvane::FocusBinding
