#include "CorvaneCore/dock/DockPlistPath.hpp"

namespace corvane::DockPlistPath {

std::filesystem::path userDockPlistURL(const ProcessEnvironment& environment) {
    auto home = environment.find("HOME");
    return std::filesystem::path(home != environment.end() ? home->second : ".") / "Library" / "Preferences" /
           userDockPlistFileName;
}

std::string userDockPlistPath(const ProcessEnvironment& environment) {
    return userDockPlistURL(environment).string();
}

} // namespace corvane::DockPlistPath
