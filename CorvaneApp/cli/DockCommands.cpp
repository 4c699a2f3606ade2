#include "CorvaneApp/cli/DockCommands.hpp"

#include "CorvaneApp/cli/DockSession.hpp"
#include "CorvaneApp/cli/ToolContext.hpp"
#include "CorvaneApp/cli/WorkspaceArgument.hpp"
#include "CorvaneCore/dock/DockChangeDetector.hpp"
#include "CorvaneCore/dock/DockPlistReader.hpp"
#include "CorvaneCore/dock/DockPlistWriter.hpp"
#include "CorvaneCore/dock/DockSwapper.hpp"
#include "CorvaneCore/support/Iso8601.hpp"
#include "CorvaneCore/support/JsonCoding.hpp"
#include "CorvaneCore/workspace/ProfileCoding.hpp"
#include "CorvaneStorage/backup/BackupManager.hpp"
#include "CorvaneStorage/backup/WorkspaceBackupStore.hpp"
#include "CorvaneStorage/storage/StoragePath.hpp"
#include "CorvaneStorage/workspace/ProfileStore.hpp"
#include "CorvaneStorage/workspace/ProfileSwitcher.hpp"

#include <CLI/CLI.hpp>

#include <memory>
#include <ostream>

namespace corvane {

namespace {

std::string quoted(const std::string& name) { return "\"" + name + "\""; }

void printItems(const std::vector<DockItem>& items, std::ostream& out) {
    for (const auto& item : items) {
        out << "  " << item.displayName();
        if (auto app = item.app()) out << "  " << app->path;
        else if (auto file = item.file()) out << "  " << file->path << (file->isDirectory ? "  (folder)" : "");
        else if (auto url = item.url()) out << "  " << url->url;
        out << "\n";
    }
}

void printReport(const DockChangeDetector::Report& report, std::ostream& out) {
    if (!report.hasChanges()) {
        out << "No differences.\n";
        return;
    }
    for (const auto& item : report.added) out << "+ " << item.displayName() << "\n";
    for (const auto& item : report.removed) out << "- " << item.displayName() << "\n";
    if (report.reordered) out << "~ the order differs\n";
}

std::string backupName(const std::filesystem::path& path) { return path.filename().string(); }

} // namespace

void switchWorkspace(DockSession& session, const Profile& profile, std::ostream& out) {
    if (session.store.file().activeProfileId == profile.id) {
        out << quoted(profile.name) << " is already active; corvane apply puts it into the Dock again.\n";
        return;
    }
    if (session.usesOwnDock()) {
        session.switcher.activate(profile.id);
        out << "Activated " << quoted(profile.name)
            << "; the own Dock bar shows it and the macOS Dock is left alone (usesOwnDock is on).\n";
        return;
    }
    session.switcher.switchTo(profile.id);
    out << "Switched to " << quoted(profile.name) << ".\n";
}

void addDockCommands(CLI::App& app, ToolContext& context) {
    struct Arguments {
        bool json = false;
        std::string target;
    };
    auto args = std::make_shared<Arguments>();
    auto& out = context.out;

    auto* dock = app.add_subcommand("dock", "Show the Dock's current tiles as workspace items");
    dock->add_flag("--json", args->json, "Print {\"apps\": [...], \"others\": [...]} in the workspaces file's item form");
    dock->callback([&context, &out, args] {
        auto access = context.openDock();
        auto snapshot = DockPlistReader(*access.backend, context.services.clock).read();
        if (args->json) {
            out << prettyJson(Json::object({{"apps", encodeItems(snapshot.apps)}, {"others", encodeItems(snapshot.others)}}));
            return;
        }
        out << "Applications (" << snapshot.apps.size() << "):\n";
        printItems(snapshot.apps, out);
        out << "Documents (" << snapshot.others.size() << "):\n";
        printItems(snapshot.others, out);
    });

    auto* diff = app.add_subcommand("diff", "Compare the Dock with a workspace (the active one by default)");
    diff->add_option("WORKSPACE", args->target, "Id or name");
    diff->callback([&context, &out, args] {
        DockSession session(context);
        const auto& profiles = session.store.file().profiles;
        const Profile* profile = nullptr;
        if (!args->target.empty()) profile = &resolveWorkspace(profiles, args->target);
        else if (auto active = session.store.file().activeProfileId) profile = session.store.profile(*active);
        if (!profile) throw std::runtime_error("no workspace is active; name one");
        out << "The Dock against " << quoted(profile->name) << ":\n";
        printReport(DockChangeDetector::diff(profile->snapshot(context.services.clock.now()), session.swapper.snapshot()),
                    out);
    });

    auto* switching = app.add_subcommand("switch", "Put a workspace into the Dock and make it the active one");
    switching->add_option("WORKSPACE", args->target, "Id or name")->required();
    switching->callback([&context, &out, args] {
        DockSession session(context);
        switchWorkspace(session, resolveWorkspace(session.store.file().profiles, args->target), out);
    });

    auto* apply = app.add_subcommand("apply", "Put the active workspace into the Dock again if the Dock differs");
    apply->callback([&context, &out] {
        DockSession session(context);
        auto active = session.store.file().activeProfileId;
        if (!active) throw std::runtime_error("no workspace is active");
        auto name = session.store.profile(*active) ? session.store.profile(*active)->name : active->string();
        if (session.switcher.applyActiveProfile()) out << "Put " << quoted(name) << " back into the Dock.\n";
        else out << "The Dock already shows " << quoted(name) << ".\n";
    });

    auto* capture = app.add_subcommand("capture", "Save the Dock's current tiles into the active workspace");
    capture->callback([&context, &out] {
        DockSession session(context);
        auto active = session.store.file().activeProfileId;
        if (!active) throw std::runtime_error("no workspace is active");
        auto name = session.store.profile(*active) ? session.store.profile(*active)->name : active->string();
        if (session.switcher.captureCurrentDock()) out << "Saved the Dock into " << quoted(name) << ".\n";
        else out << quoted(name) << " already matches the Dock.\n";
    });

    auto* undo = app.add_subcommand("undo", "Put the Dock back as it was before the last change");
    undo->callback([&context, &out] {
        DockSession session(context);
        auto restored = session.switcher.undoLastChange();
        out << "Put back the Dock of " << backupName(restored) << ".\n";
    });

    auto* backups = app.add_subcommand("backups", "List, take or restore backups");
    backups->add_flag("--json", args->json, "Print the backups as JSON");
    backups->callback([&context, &out, args, backups] {
        if (!backups->get_subcommands().empty()) return;
        auto dataDirectory = context.dataDirectory();
        WorkspaceBackupStore workspaces(dataDirectory);
        auto workspaceBackups = workspaces.list();
        auto access = context.openDock();
        BackupManager dockBackups(StoragePath::backupsDirectory(dataDirectory), *access.backend, access.files,
                                  context.services.clock);
        auto dockFiles = dockBackups.listBackups();
        if (args->json) {
            auto list = Json::array();
            for (const auto& b : workspaceBackups)
                list.push_back({{"id", b.url.filename().string()}, {"date", iso8601(b.date)},
                                {"reason", std::string(rawValue(b.reason))}, {"path", b.url.string()}});
            auto docks = Json::array();
            for (const auto& f : dockFiles) docks.push_back({{"id", backupName(f)}, {"path", f.string()}});
            out << prettyJson(Json::object({{"workspaces", list}, {"dock", docks}}));
            return;
        }
        out << "Workspace backups (" << workspaceBackups.size() << "), newest first:\n";
        for (const auto& b : workspaceBackups)
            out << "  " << b.url.filename().string() << "  " << rawValue(b.reason) << "\n";
        out << "Dock backups (" << dockFiles.size() << "), newest first:\n";
        for (const auto& f : dockFiles) out << "  " << backupName(f) << "\n";
    });
    auto* take = backups->add_subcommand("take", "Back up the workspaces and the Dock now");
    take->callback([&context, &out] {
        WorkspaceBackupStore workspaces(context.dataDirectory());
        auto taken = workspaces.backUp(WorkspaceBackup::Reason::manual, context.services.clock.now());
        DockSession session(context);
        auto newest = session.backups.latestBackup();
        auto dockFile = session.backups.snapshot();
        out << (taken ? "Backed up the workspaces as " + taken->url.filename().string()
                      : std::string("The workspaces are unchanged since the last backup"))
            << (dockFile == newest ? "; the Dock is unchanged since " : "; the Dock as ") << backupName(dockFile)
            << ".\n";
    });
    auto* restore = backups->add_subcommand("restore", "Restore a workspace backup, or put a Dock backup back");
    restore->add_option("BACKUP", args->target, "A backup's id as backups lists it")->required();
    restore->callback([&context, &out, args] {
        if (args->target.starts_with("dock-")) {
            DockSession session(context);
            for (const auto& file : session.backups.listBackups())
                if (backupName(file) == args->target) {
                    session.switcher.restoreDockBackup(file);
                    out << "Put back the Dock of " << args->target << ".\n";
                    return;
                }
            throw std::runtime_error("no Dock backup is called " + args->target);
        }
        WorkspaceBackupStore workspaces(context.dataDirectory());
        for (const auto& backup : workspaces.list())
            if (backup.url.filename().string() == args->target) {
                workspaces.restore(backup, context.services.clock.now());
                out << "Restored the workspaces of " << args->target << ".\n";
                return;
            }
        throw std::runtime_error("no backup is called " + args->target + " (corvane backups lists them)");
    });
}

} // namespace corvane
