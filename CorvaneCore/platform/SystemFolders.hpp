#pragma once

#include <filesystem>
#include <map>
#include <string>

namespace corvane {

using ProcessEnvironment = std::map<std::string, std::string>;

/// The process's environment variables.
ProcessEnvironment currentEnvironment();

/// The user's folder for application data: "~/Library/Application Support" on macOS,
/// `$XDG_DATA_HOME` or "~/.local/share" elsewhere. Pure: the home folder comes from `HOME`.
std::filesystem::path applicationSupportDirectory(const ProcessEnvironment& environment);

} // namespace corvane
