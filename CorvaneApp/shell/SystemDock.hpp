#pragma once

#include "CorvaneCore/platform/Clock.hpp"
#include "CorvaneCore/platform/DockPreferencesBackend.hpp"
#include "CorvaneCore/platform/DockReloader.hpp"
#include "CorvaneCore/platform/ProcessRunner.hpp"
#include "CorvaneCore/platform/ProcessTable.hpp"
#include "CorvaneCore/platform/Sleeper.hpp"
#include "CorvaneCore/platform/SystemFolders.hpp"

#include <filesystem>
#include <functional>
#include <memory>
#include <optional>

namespace corvane {

/// How a process reaches a Dock: its preferences, how to restart it, and property-list files
/// for backups.
struct DockAccess {
    std::unique_ptr<DockPreferencesBackend> backend;
    std::unique_ptr<DockReloader> reloader;
    std::function<std::unique_ptr<DockPreferencesBackend>(const std::filesystem::path&)> files;
};

/// The Dock preferences file `dockPlist`, which nothing restarts; or, without one, the system's
/// Dock: on macOS the live Dock, restarted after each write; elsewhere the user's Dock
/// preferences file, with a process named Dock restarted only where one runs. The services
/// are borrowed and must outlive the result.
DockAccess openSystemDock(const ProcessEnvironment& environment, const std::optional<std::filesystem::path>& dockPlist,
                          ProcessTable& processes, ProcessRunner& runner, Clock& clock, Sleeper& sleeper);

} // namespace corvane
