#include "CorvaneCore/bar/WorkspaceDockLayout.hpp"

#include "CorvaneCore/dock/DockURLString.hpp"
#include "CorvaneCore/widgets/DockSlot.hpp"
#include "CorvaneCore/workspace/Profile.hpp"

#include <algorithm>
#include <filesystem>
#include <unordered_map>
#include <unordered_set>

namespace corvane {

namespace {

AppEntry fixedEntry(std::string_view path, std::string_view bundleIdentifier, std::string_view label) {
    return AppEntry{
        DockURLString::fileURLString(path, true), std::string(bundleIdentifier), std::string(label), {}};
}

// Items read from the Dock hold plain paths while the fixed entries hold URL strings; a path
// names the same bundle in either form. `plain` is already in path form. Most paths need no
// conversion, and this runs for every item on every rebuild.
bool samePath(std::string_view path, std::string_view plain) {
    if (!path.starts_with("file://") && !path.ends_with('/')) return path == plain;
    return DockURLString::path(path) == plain;
}

const std::string& finderPath() {
    static const std::string path = DockURLString::path(WorkspaceDockLayout::finder().path);
    return path;
}

const std::array<std::string, 2>& launcherPaths() {
    static const std::array<std::string, 2> paths{
        DockURLString::path(WorkspaceDockLayout::launchers()[0].path),
        DockURLString::path(WorkspaceDockLayout::launchers()[1].path)};
    return paths;
}

bool isFinder(const AppEntry& entry) {
    return entry.bundleIdentifier == WorkspaceDockLayout::finder().bundleIdentifier ||
           samePath(entry.path, finderPath());
}

bool defaultFileExists(const std::string& path) {
    std::error_code error;
    return std::filesystem::exists(path, error);
}

class Builder {
  public:
    explicit Builder(const WorkspaceDockLayout::Inputs& inputs)
        : in_(inputs), claimed_(inputs.running.size()) {}

    WorkspaceDockLayout build() {
        WorkspaceDockLayout layout;
        auto& tiles = layout.apps;
        const auto& finder = WorkspaceDockLayout::finder();
        tiles.push_back({"finder", DockTileModel::App{finder, claim(finder)}});
        if (auto launcher = launcherEntry())
            tiles.push_back({"launcher", DockTileModel::App{*launcher, claim(*launcher)}});
        if (in_.active) addItems(*in_.active, tiles);
        layout.runningStart = tiles.size();
        addRunning(tiles);
        if (in_.ownApp)
            tiles.push_back(
                {std::string(WorkspaceDockLayout::ownTileID), DockTileModel::App{{}, ownRunning()}});
        if (in_.active) addOthers(*in_.active, layout.others);
        return layout;
    }

  private:
    std::optional<AppEntry> launcherEntry() const {
        if (!in_.addsLauncher) return std::nullopt;
        if (in_.active)
            for (const auto& item : in_.active->items)
                if (auto entry = item.app(); entry && WorkspaceDockLayout::isLauncher(*entry))
                    return std::nullopt;
        if (in_.launcher) return in_.launcher;
        return WorkspaceDockLayout::launcher(in_.fileExists ? in_.fileExists : defaultFileExists);
    }

    /// The first unclaimed running app that matches, now claimed: one process lights one tile.
    std::optional<RunningApp> claim(const AppEntry& entry) {
        for (std::size_t i = 0; i < in_.running.size(); ++i) {
            const auto& app = in_.running[i];
            if (claimed_[i] || claimedPids_.contains(app.pid) || !app.matches(entry)) continue;
            claimed_[i] = true;
            claimedPids_.insert(app.pid);
            return app;
        }
        return std::nullopt;
    }

    /// The widget a placeholder's address stands for; none for a slot nobody holds.
    std::optional<Uuid> widgetOf(const WidgetAddress& address) const {
        if (auto id = address.widgetID()) return *id;
        auto owner = in_.slotOwners.find(*address.slotNumber());
        if (owner == in_.slotOwners.end()) return std::nullopt;
        return owner->second;
    }

    static DockTileModel widgetTile(std::size_t index, const WidgetAddress& address, const AppEntry& entry) {
        return {"widget-" + std::to_string(index) + "-" + address.key(),
                DockTileModel::Widget{address, entry}};
    }

    void addItems(const Profile& profile, std::vector<DockTileModel>& tiles) {
        // Stacks of fewer than two widgets are no stacks at all.
        std::unordered_map<Uuid, std::size_t> stackOf;
        for (std::size_t s = 0; s < profile.stacks.size(); ++s)
            if (profile.stacks[s].members.size() >= 2)
                for (const auto& member : profile.stacks[s].members)
                    stackOf.emplace(member, s);

        std::vector<std::optional<WidgetAddress>> addresses(profile.items.size());
        std::unordered_map<Uuid, DockTileModel> memberTiles;
        for (std::size_t i = 0; i < profile.items.size(); ++i) {
            auto entry = profile.items[i].app();
            if (!entry) continue;
            addresses[i] = WidgetAddress::fromBundleIdentifier(entry->bundleIdentifier);
            if (!addresses[i]) continue;
            if (auto widget = widgetOf(*addresses[i]); widget && stackOf.contains(*widget))
                memberTiles.emplace(*widget, widgetTile(i, *addresses[i], *entry));
        }

        std::vector<bool> emitted(profile.stacks.size());
        for (std::size_t i = 0; i < profile.items.size(); ++i) {
            const auto& item = profile.items[i];
            if (auto spacer = item.spacer()) {
                tiles.push_back({"spacer-" + std::to_string(i), *spacer});
                continue;
            }
            auto entry = item.app();
            if (!entry) continue; // files and links show in the documents section only
            if (const auto& address = addresses[i]) {
                auto widget = widgetOf(*address);
                auto stack = widget ? stackOf.find(*widget) : stackOf.end();
                if (stack == stackOf.end()) {
                    tiles.push_back(widgetTile(i, *address, *entry));
                    continue;
                }
                if (emitted[stack->second]) continue;
                const auto& record = profile.stacks[stack->second];
                std::vector<DockTileModel> members;
                for (const auto& member : record.members)
                    if (auto tile = memberTiles.find(member); tile != memberTiles.end())
                        members.push_back(tile->second);
                if (members.size() < 2) {
                    tiles.push_back(widgetTile(i, *address, *entry));
                    continue;
                }
                tiles.push_back({"stack-" + std::to_string(i) + "-" + record.id.string(),
                                 DockTileModel::Stack{record.id, std::move(members)}});
                emitted[stack->second] = true;
                continue;
            }
            if (isFinder(*entry)) continue; // the Finder tile is always first already
            tiles.push_back({"pinned-" + std::to_string(i) + "-" + entry->path,
                             DockTileModel::App{*entry, claim(*entry)}});
        }
    }

    bool shows(const RunningApp& app) const {
        if (claimedPids_.contains(app.pid)) return false;
        if (app.bundleIdentifier &&
            (DockSlot::isCorvane(*app.bundleIdentifier) || in_.replacing.contains(*app.bundleIdentifier)))
            return false;
        // Without a workspace there is nothing to own apps or to tie them to desktops.
        if (!in_.active) return true;
        if (!in_.ownership) return false;
        auto owners = in_.ownership->owners.find(app.pid);
        if (owners == in_.ownership->owners.end() || !owners->second.contains(in_.active->id)) return false;
        if (!in_.filterByDesktop || !in_.currentDesktop || app.desktops.empty()) return true;
        if (app.desktops.contains(*in_.currentDesktop)) return true;
        return std::any_of(app.desktops.begin(), app.desktops.end(),
                           [&](std::uint64_t desktop) { return in_.visibleDesktops.contains(desktop); });
    }

    void addRunning(std::vector<DockTileModel>& tiles) const {
        for (const auto& app : in_.running)
            if (shows(app))
                tiles.push_back({"pid-" + std::to_string(app.pid), DockTileModel::App{std::nullopt, app}});
    }

    /// The app's own process when it is in the list, so that the own tile lights like any other.
    std::optional<RunningApp> ownRunning() const {
        for (const auto& app : in_.running)
            if (app.bundleIdentifier == DockSlot::appBundleIdentifier) return app;
        return RunningApp{0, std::string(DockSlot::appBundleIdentifier), *in_.ownApp, "Corvane", {}};
    }

    static void addOthers(const Profile& profile, std::vector<DockTileModel>& tiles) {
        for (std::size_t i = 0; i < profile.others.size(); ++i) {
            const auto& item = profile.others[i];
            if (auto file = item.file())
                tiles.push_back({"other-" + std::to_string(i) + "-" + file->path, *file});
            else if (auto link = item.url())
                tiles.push_back({"other-" + std::to_string(i) + "-" + link->url, *link});
        }
    }

    const WorkspaceDockLayout::Inputs& in_;
    std::vector<bool> claimed_;
    std::unordered_set<std::int32_t> claimedPids_;
};

} // namespace

WorkspaceDockLayout::WorkspaceDockLayout(const Inputs& inputs)
    : WorkspaceDockLayout(Builder(inputs).build()) {}

const AppEntry& WorkspaceDockLayout::finder() {
    static const AppEntry entry =
        fixedEntry("/System/Library/CoreServices/Finder.app", "com.apple.finder", "Finder");
    return entry;
}

const AppEntry& WorkspaceDockLayout::appsLauncher() {
    return launchers()[0];
}

const AppEntry& WorkspaceDockLayout::launchpad() {
    return launchers()[1];
}

const std::array<AppEntry, 2>& WorkspaceDockLayout::launchers() {
    static const std::array<AppEntry, 2> entries{
        fixedEntry("/System/Applications/Apps.app", "com.apple.apps.launcher", "Apps"),
        fixedEntry("/System/Applications/Launchpad.app", "com.apple.launchpad.launcher", "Launchpad")};
    return entries;
}

bool WorkspaceDockLayout::isLauncher(const AppEntry& entry) {
    for (std::size_t i = 0; i < launchers().size(); ++i)
        if (samePath(entry.path, launcherPaths()[i]) ||
            launchers()[i].bundleIdentifier == entry.bundleIdentifier)
            return true;
    return false;
}

bool WorkspaceDockLayout::isLauncher(std::string_view path) {
    return std::any_of(launcherPaths().begin(), launcherPaths().end(),
                       [&](const std::string& launcher) { return samePath(path, launcher); });
}

std::optional<AppEntry>
WorkspaceDockLayout::launcher(const std::function<bool(const std::string& path)>& exists) {
    for (const auto& entry : launchers())
        if (exists(DockURLString::path(entry.path))) return entry;
    return std::nullopt;
}

} // namespace corvane
