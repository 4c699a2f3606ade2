// Changes the data folder's files the way the application does, for the tests that run it as a
// separate process: one that is killed at random moments, and two that write at once.
//
//   store-writer churn DIR           saves workspaces, widgets, the Dock file and both kinds of
//                                    backup in a loop, writing one byte to stdout after each round
//   store-writer widgets DIR TAG N   N rounds of: add a widget "TAG-i", then add one to the
//                                    counter kept in the widget "TAG-counter"

#include "CorvaneCore/dock/DockTiles.hpp"
#include "CorvaneStorage/backup/BackupManager.hpp"
#include "CorvaneStorage/backup/WorkspaceBackupStore.hpp"
#include "CorvaneStorage/widgets/WidgetStore.hpp"
#include "CorvaneStorage/workspace/ProfileStore.hpp"
#include "platform/posix/PlistFileBackend.hpp"
#include "platform/posix/SystemClock.hpp"

#include <cstdio>
#include <cstdlib>
#include <exception>
#include <string>
#include <unistd.h>

using namespace corvane;
namespace fs = std::filesystem;

namespace {

// Files of a realistic size, so that a kill often lands inside a write.
Profile workspace(long round) {
    Profile profile{Uuid::generate(), "Round " + std::to_string(round)};
    for (int i = 0; i < 8; ++i)
        profile.items.push_back(AppEntry{"/Applications/App " + std::to_string(i) + ".app", "com.example.app" + std::to_string(i)});
    profile.others.push_back(FileEntry{"/Users/someone/Downloads", {}, true});
    return profile;
}

DockTiles tiles(long round) {
    DockTiles result;
    for (int i = 0; i < 8; ++i)
        result.apps.push_back(PlistDictionary{
            {"tile-type", "file-tile"},
            {"tile-data", PlistDictionary{{"file-label", "App " + std::to_string(round + i)},
                                          {"file-data", PlistDictionary{{"_CFURLString", "file:///Applications/A.app/"},
                                                                        {"_CFURLStringType", 15}}}}}});
    return result;
}

void churn(const fs::path& dir) {
    SystemClock clock;
    PlistFileBackend dock(dir / "dock.plist");
    BackupManager dockBackups(dir / "backups", dock, [](const fs::path& file) { return std::make_unique<PlistFileBackend>(file); },
                              clock);
    WorkspaceBackupStore workspaceBackups(dir, 5);
    for (long round = 0;; ++round) {
        ProfileStore profiles(dir / "profiles.json");
        auto created = profiles.create(workspace(round));
        profiles.setActive(created.id);
        if (profiles.file().profiles.size() > 12) profiles.remove(profiles.file().profiles.front().id);

        WidgetStore widgets(dir / "widgets.json", dir / "collections.json");
        auto widget = widgets.create(DockWidget(Uuid::generate(), "Round " + std::to_string(round), std::nullopt,
                                                NoteSettings{std::string(100, 'x')}));
        widgets.claimSlot(widget.id);
        if (widgets.file().widgets.size() > 12) widgets.remove(widgets.file().widgets.front().id);

        dock.writeTiles(tiles(round));
        dockBackups.snapshot();
        dockBackups.prune(5);
        // A new date each round, so that every backup differs from the one before.
        workspaceBackups.backUp(WorkspaceBackup::Reason::manual, clock.now());

        if (::write(STDOUT_FILENO, ".", 1) != 1) return;
    }
}

void countWidgets(const fs::path& dir, const std::string& tag, int rounds) {
    WidgetStore store(dir / "widgets.json");
    const auto counterName = tag + "-counter";
    auto findCounter = [&]() -> const DockWidget* {
        for (const auto& widget : store.file().widgets)
            if (widget.name == counterName) return &widget;
        return nullptr;
    };
    store.reload();
    if (!findCounter()) store.create(DockWidget(Uuid::generate(), counterName, std::nullopt, NoteSettings{"0"}));
    for (int round = 0; round < rounds; ++round) {
        store.create(DockWidget(Uuid::generate(), tag + "-" + std::to_string(round), std::nullopt, NoteSettings{}));
        store.reload();
        auto counter = *findCounter();
        auto& note = std::get<NoteSettings>(counter.kind.value);
        note.text = std::to_string(std::stoi(note.text) + 1);
        store.update(counter);
    }
}

} // namespace

int main(int argc, char** argv) {
    try {
        std::string mode = argc > 2 ? argv[1] : "";
        if (mode == "churn" && argc == 3) {
            churn(argv[2]);
            return 0;
        }
        if (mode == "widgets" && argc == 5) {
            countWidgets(argv[2], argv[3], std::atoi(argv[4]));
            return 0;
        }
        std::fprintf(stderr, "usage: store-writer churn DIR | widgets DIR TAG ROUNDS\n");
        return 2;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "store-writer: %s\n", error.what());
        return 1;
    }
}
