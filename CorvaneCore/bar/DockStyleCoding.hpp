#pragma once

// JSON form of the bar's style, as the application's settings keep it.

#include "CorvaneCore/bar/DockStyle.hpp"

#include <nlohmann/json_fwd.hpp>

#include <string>
#include <string_view>

namespace corvane {

/// Every field under its own name; unset optional fields are left out.
nlohmann::json encodeDockStyle(const DockStyle& style);
/// Never fails. Each key that is missing, of the wrong type or an unknown enumeration text takes
/// its default, so settings written by older and newer versions both load.
DockStyle decodeDockStyle(const nlohmann::json& object);

/// Pretty-printed with sorted keys.
std::string dockStyleText(const DockStyle& style);
/// Text that is not JSON at all gives the default style.
DockStyle dockStyleFromText(std::string_view text);

} // namespace corvane
