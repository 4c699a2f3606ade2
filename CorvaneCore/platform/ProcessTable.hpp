#pragma once

#include "CorvaneCore/support/Date.hpp"

#include <optional>
#include <string>

namespace corvane {

/// A running process as the process table shows it.
struct ProcessInfo {
    int pid = 0;
    std::string name;
    Date startTime;

    bool operator==(const ProcessInfo&) const = default;
};

/// The system's list of processes. Any thread.
class ProcessTable {
public:
    virtual ~ProcessTable() = default;
    /// The most recently started live process of the current user whose name is `name`
    /// (zombies do not count); none when there is no such process.
    virtual std::optional<ProcessInfo> find(const std::string& name) const = 0;
};

} // namespace corvane
