#include "CorvaneCore/platform/SystemFolders.hpp"

namespace corvane {

std::filesystem::path applicationSupportDirectory(const ProcessEnvironment& environment) {
    // Relative values are invalid by the XDG rules and are ignored.
    if (auto it = environment.find("XDG_DATA_HOME"); it != environment.end() && it->second.starts_with("/"))
        return it->second;
    auto home = environment.find("HOME");
    return std::filesystem::path(home != environment.end() ? home->second : ".") / ".local" / "share";
}

} // namespace corvane
