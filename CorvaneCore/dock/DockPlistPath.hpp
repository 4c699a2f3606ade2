#pragma once

#include "CorvaneCore/platform/SystemFolders.hpp"

#include <filesystem>
#include <string>
#include <string_view>

namespace corvane {

/// Where the Dock keeps its preferences. Every Dock preferences error quotes this file, whichever
/// backend failed, because it is what the user can look at.
namespace DockPlistPath {

inline constexpr std::string_view userDockPlistFileName = "com.apple.dock.plist";

/// The home folder (from `HOME`) + "Library/Preferences/com.apple.dock.plist".
std::filesystem::path userDockPlistURL(const ProcessEnvironment& environment);
std::string userDockPlistPath(const ProcessEnvironment& environment);

} // namespace DockPlistPath

} // namespace corvane
