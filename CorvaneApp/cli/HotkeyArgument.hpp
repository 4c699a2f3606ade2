#pragma once

#include "CorvaneCore/workspace/Hotkey.hpp"

#include <optional>
#include <string>

namespace corvane {

/// Reads a typed hotkey such as "ctrl+opt+1" or "cmd+shift+k": modifiers (ctrl/control,
/// opt/option/alt, cmd/command, shift, or their symbols) joined by "+", then one key. Throws
/// `UsageError` naming the part it does not know.
Hotkey parseHotkeyArgument(const std::string& spec);

/// Modifiers alone, as in a hotkey ("ctrl+opt"); none when a part is not a modifier.
std::optional<HotkeyModifiers> parseModifiersArgument(const std::string& spec);

} // namespace corvane
