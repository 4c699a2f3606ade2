#pragma once

#include <optional>
#include <string>

namespace corvane::LoginItem {

/// Registers the running application bundle to start at login, or withdraws it, through the
/// system's service management. Returns the system's reason when it refused; a bundle that needs
/// the user's approval in the system settings first counts as registered.
std::optional<std::string> setEnabled(bool enabled);

} // namespace corvane::LoginItem
