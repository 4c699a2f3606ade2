#pragma once

#include "CorvaneCore/automation/WorkspaceOwnership.hpp"
#include "CorvaneCore/bar/DockTileModel.hpp"
#include "CorvaneCore/bar/RunningApp.hpp"
#include "CorvaneCore/support/Uuid.hpp"
#include "CorvaneCore/workspace/DockItem.hpp"

#include <array>
#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <set>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace corvane {

struct Profile;

/// The own bar's tiles: the active workspace, the running applications and the widgets merged
/// into one ordered list, rebuilt whenever any of them changes. Pure; main thread or any other.
struct WorkspaceDockLayout {
    /// Everything a layout is built from.
    struct Inputs {
        /// None: no workspace is active, and every running application shows.
        const Profile* active = nullptr;
        /// In the order the platform reports them; the earliest match lights a pinned tile.
        std::span<const RunningApp> running;
        /// None: no process is owned by any workspace.
        const WorkspaceOwnership* ownership = nullptr;
        std::optional<std::uint64_t> currentDesktop;
        /// The desktops shown on any display.
        std::set<std::uint64_t> visibleDesktops;
        bool filterByDesktop = false;
        bool addsLauncher = false;
        /// The user's chosen launcher; none picks the first of `launchers` on disk.
        std::optional<AppEntry> launcher;
        /// Bundle identifiers never shown as running tiles (apps that a widget stands in for).
        std::set<std::string> replacing;
        /// The widget that holds each slot.
        std::map<int, Uuid> slotOwners;
        /// Present when the app's own tile is wanted: the app's bundle path.
        std::optional<std::string> ownApp;
        /// Whether a file-system path exists; none asks the file system.
        std::function<bool(const std::string& path)> fileExists;
    };

    /// The application section, in display order.
    std::vector<DockTileModel> apps;
    /// Index in `apps` of the first unpinned running application.
    std::size_t runningStart = 0;
    /// The documents section: the workspace's files, folders and links.
    std::vector<DockTileModel> others;

    WorkspaceDockLayout() = default;
    explicit WorkspaceDockLayout(const Inputs& inputs);

    // The fixed entries keep their paths as Dock URL strings, the form the Dock itself stores.
    static const AppEntry& finder();
    static const AppEntry& appsLauncher();
    static const AppEntry& launchpad();
    /// [appsLauncher, launchpad].
    static const std::array<AppEntry, 2>& launchers();
    static constexpr std::string_view ownTileID = "own";

    /// A launcher by path (in URL or path form) or by bundle identifier; two absent bundle
    /// identifiers count as the same.
    static bool isLauncher(const AppEntry& entry);
    static bool isLauncher(std::string_view path);
    /// The first of `launchers` whose file-system path `exists` accepts.
    static std::optional<AppEntry> launcher(const std::function<bool(const std::string& path)>& exists);

    bool operator==(const WorkspaceDockLayout&) const = default;
};

} // namespace corvane
