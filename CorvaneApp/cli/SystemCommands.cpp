#include "CorvaneApp/cli/SystemCommands.hpp"

#include "CorvaneApp/cli/TextColumns.hpp"
#include "CorvaneApp/cli/Tool.hpp"
#include "CorvaneApp/cli/ToolContext.hpp"
#include "CorvaneApp/looks/AppBundle.hpp"
#include "CorvaneCore/automation/DesktopBinding.hpp"
#include "CorvaneCore/support/JsonCoding.hpp"
#include "CorvaneCore/support/Text.hpp"
#include "CorvaneStorage/storage/StoragePath.hpp"
#include "CorvaneStorage/workspace/ProfileStore.hpp"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <memory>
#include <ostream>
#include <set>

namespace corvane {

namespace {

struct InstalledApp {
    std::string name, path;
    std::optional<std::string> bundleIdentifier;
};

/// The folders the Finder's Applications holds, the user's own last.
std::vector<std::filesystem::path> applicationFolders(const ProcessEnvironment& environment) {
    std::vector<std::filesystem::path> folders{"/Applications", "/Applications/Utilities",
                                               "/System/Applications", "/System/Applications/Utilities"};
    if (auto home = environment.find("HOME"); home != environment.end() && !home->second.empty())
        folders.push_back(std::filesystem::path(home->second) / "Applications");
    return folders;
}

std::vector<InstalledApp> installedApps(const ProcessEnvironment& environment) {
    std::vector<InstalledApp> apps;
    std::set<std::string> seen;
    for (const auto& folder : applicationFolders(environment)) {
        std::error_code error;
        for (std::filesystem::directory_iterator it(folder, error), end; !error && it != end;
             it.increment(error)) {
            auto path = it->path();
            if (!text::lowercased(path.filename().string()).ends_with(".app") || !it->is_directory(error))
                continue;
            if (!seen.insert(path.string()).second) continue;
            auto bundle = AppBundle::read(path);
            apps.push_back({bundle.bundleName.value_or(bundle.name), path.string(), bundle.bundleIdentifier});
        }
    }
    std::sort(apps.begin(), apps.end(), [](const InstalledApp& a, const InstalledApp& b) {
        auto left = text::lowercased(a.name), right = text::lowercased(b.name);
        return left != right ? left < right : a.path < b.path;
    });
    return apps;
}

struct PermissionFacts {
    Permission permission;
    std::string_view name, reason, pane, settingsURL;
};

constexpr PermissionFacts kPermissions[] = {
    {Permission::accessibility, "Accessibility",
     "Corvane reads where windows and their title bars are, so that its own Dock bar can keep out of their "
     "way.",
     "Privacy & Security > Accessibility",
     "x-apple.systempreferences:com.apple.preference.security?Privacy_Accessibility"},
    {Permission::focusStatus, "Focus status",
     "Corvane sees when a Focus turns on or off, so that it can bring the workspace bound to that Focus.",
     "Privacy & Security > Focus", "x-apple.systempreferences:com.apple.preference.security?Privacy_Focus"},
    {Permission::notifications, "Notifications",
     "Corvane tells you when a timer or a pomodoro phase ends, and when water is due.", "Notifications",
     "x-apple.systempreferences:com.apple.preference.notifications"},
};

std::string_view stateText(PermissionState state) {
    switch (state) {
    case PermissionState::allowed:
        return "allowed";
    case PermissionState::notAllowed:
        return "not allowed";
    case PermissionState::notAsked:
        return "not asked";
    case PermissionState::notNeeded:
        return "not needed";
    case PermissionState::unknown:
        return "unknown";
    }
    return "unknown";
}

struct Desktop {
    std::string uuid;
    std::optional<std::uint32_t> display;
    std::optional<int> number;
    bool current = false;
    const Profile* workspace = nullptr;
};

/// The window server's desktops where it answers; elsewhere only the workspaces know of any.
std::vector<Desktop> knownDesktops(DesktopServer* server, const std::vector<Profile>& profiles,
                                   bool& fromSystem) {
    std::vector<Desktop> desktops;
    if (server)
        for (const auto& display : server->displays())
            for (const auto& space : display.desktops)
                desktops.push_back({space.uuid, display.id, space.number, display.current == space,
                                    DesktopBinding::profile(space.uuid, profiles)});
    fromSystem = !desktops.empty();
    if (fromSystem) return desktops;
    std::set<std::string> seen;
    for (const auto& profile : profiles)
        for (const auto& uuid : profile.desktopUUIDs)
            if (seen.insert(uuid).second)
                desktops.push_back({uuid, {}, {}, false, DesktopBinding::profile(uuid, profiles)});
    return desktops;
}

struct Arguments {
    bool json = false;
};

} // namespace

void addSystemCommands(CLI::App& app, ToolContext& context) {
    auto& out = context.out;
    auto args = std::make_shared<Arguments>();

    auto* apps = app.add_subcommand("apps", "The installed applications: name, bundle identifier and path");
    apps->add_flag("--json", args->json,
                   "Print them as a list of objects with name, path and bundleIdentifier");
    apps->callback([&context, &out, args] {
        auto found = installedApps(context.services.environment);
        if (args->json) {
            auto list = Json::array();
            for (const auto& each : found) {
                Json entry = {{"name", each.name}, {"path", each.path}};
                if (each.bundleIdentifier) entry["bundleIdentifier"] = *each.bundleIdentifier;
                list.push_back(std::move(entry));
            }
            out << prettyJson(list);
            return;
        }
        if (found.empty()) {
            out << "No applications are installed here.\n";
            return;
        }
        std::size_t nameWidth = 4, idWidth = 9;
        for (const auto& each : found) {
            nameWidth = std::max(nameWidth, displayWidth(each.name));
            idWidth = std::max(idWidth, displayWidth(each.bundleIdentifier.value_or("-")));
        }
        out << padded("NAME", nameWidth) << "  " << padded("BUNDLE ID", idWidth) << "  PATH\n";
        for (const auto& each : found)
            out << padded(each.name, nameWidth) << "  "
                << padded(each.bundleIdentifier.value_or("-"), idWidth) << "  " << each.path << "\n";
    });

    auto* desktops =
        app.add_subcommand("desktops", "The desktops (Spaces) known, and the workspace each brings");
    desktops->add_flag("--json", args->json, "Print them as a list of objects");
    desktops->callback([&context, &out, args] {
        ProfileStore store(StoragePath::profilesFileURL(context.dataDirectory()));
        bool fromSystem = false;
        auto found = knownDesktops(context.services.desktops, store.file().profiles, fromSystem);
        if (args->json) {
            auto list = Json::array();
            for (const auto& desktop : found) {
                Json entry = {{"uuid", desktop.uuid}, {"current", desktop.current}};
                if (desktop.display) entry["display"] = *desktop.display;
                if (desktop.number) entry["number"] = *desktop.number;
                if (desktop.workspace) {
                    entry["workspace"] = desktop.workspace->id.string();
                    entry["workspaceName"] = desktop.workspace->name;
                }
                list.push_back(std::move(entry));
            }
            out << prettyJson(list);
            return;
        }
        if (!fromSystem)
            out << (found.empty()
                        ? "No desktops known: the system tells none here, and no workspace is bound to one.\n"
                        : "The system tells no desktops here; the workspaces are bound to these:\n");
        for (const auto& desktop : found) {
            std::string place = desktop.number ? "Desktop " + std::to_string(*desktop.number) : "Desktop";
            if (desktop.display) place += " of display " + std::to_string(*desktop.display);
            out << (desktop.current ? "* " : "  ") << place << "  " << desktop.uuid << "  "
                << (desktop.workspace ? "brings \"" + desktop.workspace->name + "\""
                                      : std::string("no workspace"))
                << "\n";
        }
    });

    auto* permissions = app.add_subcommand(
        "permissions", "Each permission Corvane asks for: its state, why, and where to grant it");
    permissions->add_flag("--json", args->json, "Print them as a list of objects");
    permissions->callback([&context, &out, args] {
        const auto* states = context.services.permissions;
        auto list = Json::array();
        for (const auto& facts : kPermissions) {
            auto state = states ? states->state(facts.permission) : PermissionState::notNeeded;
            if (!args->json) {
                out << facts.name << ": " << stateText(state) << "\n  " << facts.reason << "\n";
                if (state != PermissionState::notNeeded) out << "  System Settings > " << facts.pane << "\n";
                continue;
            }
            list.push_back({{"name", std::string(facts.name)},
                            {"state", std::string(stateText(state))},
                            {"reason", std::string(facts.reason)},
                            {"pane", std::string(facts.pane)},
                            {"settingsURL", std::string(facts.settingsURL)}});
        }
        if (args->json) out << prettyJson(list);
    });

    app.add_subcommand("version", "Print Corvane's version")->callback([&out] {
        out << toolVersion() << "\n";
    });
}

} // namespace corvane
