#include "CorvaneCore/platform/SystemFolders.hpp"

#include <pwd.h>
#include <unistd.h>

extern char** environ;

namespace corvane {

ProcessEnvironment currentEnvironment() {
    ProcessEnvironment environment;
    for (char** entry = environ; entry && *entry; ++entry) {
        std::string text(*entry);
        auto equals = text.find('=');
        if (equals != std::string::npos) environment.emplace(text.substr(0, equals), text.substr(equals + 1));
    }
    if (!environment.contains("HOME"))
        if (const passwd* user = getpwuid(getuid()); user && user->pw_dir) environment["HOME"] = user->pw_dir;
    return environment;
}

} // namespace corvane
