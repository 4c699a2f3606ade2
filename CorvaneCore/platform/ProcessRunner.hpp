#pragma once

#include <map>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

namespace corvane {

/// One run of a command-line tool.
struct ProcessRequest {
    /// An absolute path; no search through `PATH`.
    std::string executable;
    std::vector<std::string> arguments;
    /// The child's whole environment; none inherits this process's.
    std::optional<std::map<std::string, std::string>> environment;
    /// Seconds after which the tool is killed; none waits for as long as it runs.
    std::optional<double> timeout;
};

struct ProcessResult {
    /// The exit status, or the number of the signal that ended the tool.
    int status = 0;
    bool terminatedBySignal = false;
    bool timedOut = false;
    std::string standardOutput;
    std::string standardError;

    bool succeeded() const { return status == 0 && !terminatedBySignal && !timedOut; }
};

/// The tool could not be started at all; `what()` is the system's description.
class ProcessLaunchError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// Runs tools to completion. Blocks the calling thread; safe from several threads at once.
class ProcessRunner {
public:
    virtual ~ProcessRunner() = default;
    /// Runs `request` with both output streams drained as they fill. Throws `ProcessLaunchError`.
    virtual ProcessResult run(const ProcessRequest& request) = 0;
};

} // namespace corvane
