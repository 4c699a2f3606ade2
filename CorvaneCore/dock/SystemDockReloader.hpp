#pragma once

#include "CorvaneCore/platform/Clock.hpp"
#include "CorvaneCore/platform/DockReloader.hpp"
#include "CorvaneCore/platform/ProcessRunner.hpp"
#include "CorvaneCore/platform/ProcessTable.hpp"
#include "CorvaneCore/platform/Sleeper.hpp"

#include <string>

namespace corvane {

struct DockReloadTiming {
    /// A Dock younger than this may still write its old state back.
    double settleInterval = 2.0;
    /// How long after the kill a new Dock must show up.
    double relaunchTimeout = 5.0;
    double pollInterval = 0.1;
};

/// Restarts the real Dock with killall and waits for the system to start a new one. The same
/// code on every system; only the ports differ.
class SystemDockReloader final : public DockReloader {
public:
    static constexpr const char* killallPath = "/usr/bin/killall";
    static constexpr const char* dockProcessName = "Dock";

    /// `processName` is the process looked for and killed; tests give a stand-in a name of its
    /// own so that running them on a Mac never restarts the real Dock.
    SystemDockReloader(const ProcessTable& processes, ProcessRunner& runner, const Clock& clock, Sleeper& sleeper,
                       DockReloadTiming timing = {}, std::string processName = dockProcessName)
        : processes_(processes), runner_(runner), clock_(clock), sleeper_(sleeper), timing_(timing),
          processName_(std::move(processName)) {}

    void waitUntilSettled() override;
    void reload() override;

private:
    const ProcessTable& processes_;
    ProcessRunner& runner_;
    const Clock& clock_;
    Sleeper& sleeper_;
    DockReloadTiming timing_;
    std::string processName_;
};

} // namespace corvane
