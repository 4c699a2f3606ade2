#include "CorvaneCore/platform/SystemFolders.hpp"

namespace corvane {

std::filesystem::path applicationSupportDirectory(const ProcessEnvironment& environment) {
    auto home = environment.find("HOME");
    return std::filesystem::path(home != environment.end() ? home->second : ".") / "Library" /
           "Application Support";
}

} // namespace corvane
