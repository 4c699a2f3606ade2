#pragma once

#include "CorvaneCore/platform/Clock.hpp"
#include "CorvaneCore/platform/Log.hpp"
#include "CorvaneCore/platform/Notifier.hpp"
#include "CorvaneCore/platform/SystemFolders.hpp"

#include <filesystem>
#include <iosfwd>
#include <optional>
#include <stdexcept>
#include <string>

namespace corvane {

/// A command used the wrong way: exit status 2 instead of 1.
class UsageError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// The real services of the command-line tool, made in one place by `main`.
struct ToolServices {
    ProcessEnvironment environment;
    Notifier& notifier;
    Log& log;
    Clock& clock;
};

/// What every command receives: the services, the global options and where to print.
struct ToolContext {
    ToolServices& services;
    std::ostream& out;
    std::optional<std::string> dataDirOption;

    /// `--data-dir`, else `CORVANE_APP_SUPPORT_DIR`, else the default data folder.
    std::filesystem::path dataDirectory() const;
};

} // namespace corvane
