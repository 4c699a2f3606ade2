#include "CorvaneCore/dock/DockError.hpp"
#include "CorvaneCore/dock/DockPlistWriter.hpp"
#include "CorvaneStorage/workspace/ProfileSwitcher.hpp"
#include "core/dock/DockFixtures.hpp"
#include "fakes/InMemoryDockBackend.hpp"
#include "fakes/ManualClock.hpp"
#include "fakes/ScriptedDockReloader.hpp"
#include "fakes/TemporaryDirectory.hpp"
#include "platform/posix/PlistFileBackend.hpp"
#include "fakes/Thrown.hpp"

#include <gtest/gtest.h>

using namespace corvane;
namespace fixtures = corvane::testing;

namespace {

struct Observer final : WorkspaceSwitchObserver {
    void workspaceDidSwitch(const Profile& to, const std::vector<Profile>& profiles) override {
        switchedTo.push_back(to.name);
        lastCount = profiles.size();
    }
    std::vector<std::string> switchedTo;
    std::size_t lastCount = 0;
};

class Switching : public ::testing::Test {
protected:
    Switching() {
        switcher.workspaceObserver = &observer;
        dock.tiles = DockPlistWriter::encode(original);
        work = store.create(workspace("Work", {"/Applications/Xcode.app", "/Applications/Terminal.app"}));
        play = store.create(workspace("Play", {"/Applications/Music.app"}));
    }
    static Profile workspace(std::string name, std::vector<std::string> apps) {
        Profile profile;
        profile.id = Uuid::generate();
        profile.name = std::move(name);
        for (auto& path : apps) profile.items.push_back(AppEntry{path});
        profile.others.push_back(FileEntry{"/Users/me/Downloads", std::nullopt, true});
        return profile;
    }
    std::vector<std::string> dockApps() {
        std::vector<std::string> paths;
        for (const auto& item : swapper.snapshot().apps) paths.push_back(item.app()->path);
        return paths;
    }
    std::size_t backupCount() { return backups.listBackups().size(); }

    TemporaryDirectory data;
    ManualClock clock;
    InMemoryDockBackend dock;
    ScriptedDockReloader reloader;
    DockSnapshot original{{AppEntry{"/Applications/Safari.app"}}, {}, Date{}};
    ProfileStore store{data / "profiles.json"};
    BackupManager backups{data / "backups", dock,
                          [](const std::filesystem::path& p) { return std::make_unique<PlistFileBackend>(p); }, clock};
    DockSwapper swapper{DockPlistReader(dock, clock), DockPlistWriter(dock), reloader};
    ProfileSwitcher switcher{store, swapper, backups, clock};
    Observer observer;
    Profile work, play;
};

} // namespace

TEST_F(Switching, SwitchBacksUpSwapsActivatesAndTellsTheObserver) {
    switcher.switchTo(work.id);
    EXPECT_EQ(dockApps(), (std::vector<std::string>{"/Applications/Xcode.app", "/Applications/Terminal.app"}));
    EXPECT_EQ(store.file().activeProfileId, work.id);
    EXPECT_EQ(ProfileStore(data / "profiles.json").file().activeProfileId, work.id);
    EXPECT_EQ(observer.switchedTo, std::vector<std::string>{"Work"});
    EXPECT_EQ(observer.lastCount, 2u);
    EXPECT_EQ(backupCount(), 1u);

    reloader.calls.clear();
    switcher.switchTo(work.id);
    EXPECT_TRUE(reloader.calls.empty()) << "switching to the active workspace does nothing";
    EXPECT_EQ(backupCount(), 1u);
    EXPECT_EQ(observer.switchedTo.size(), 1u);
}

TEST_F(Switching, AFailedSwapKeepsTheOldWorkspaceActiveAndUndoRestoresTheOldDock) {
    switcher.switchTo(play.id);
    auto before = dock.tiles;
    reloader.onReload = [&] { dock.tiles = before; }; // the Dock writes its old layout back, twice
    EXPECT_EQ(thrown<DockError>([&] { switcher.switchTo(work.id); }).value().kind, DockError::Kind::dockReloadFailed);
    EXPECT_EQ(store.file().activeProfileId, play.id);
    reloader.onReload = nullptr;

    clock.advance(1);
    switcher.switchTo(work.id);
    clock.advance(1);
    switcher.undoLastChange();
    EXPECT_EQ(dockApps(), std::vector<std::string>{"/Applications/Music.app"});
}

TEST_F(Switching, UnknownWorkspaceAndMissingBackupsFailWithTheirMessages) {
    auto stranger = Uuid::generate();
    EXPECT_EQ(thrown<DockError>([&] { switcher.switchTo(stranger); }).value().errorDescription(),
              "Failed to find profile with id " + stranger.string());
    EXPECT_THROW(switcher.activate(stranger), DockError);
    EXPECT_EQ(thrown<DockError>([&] { switcher.undoLastChange(); }).value().errorDescription(),
              "Cannot undo because there is no Dock backup yet");
}

TEST_F(Switching, ActivateLeavesTheDockAlone) {
    switcher.activate(play.id);
    EXPECT_EQ(store.file().activeProfileId, play.id);
    EXPECT_EQ(dockApps(), std::vector<std::string>{"/Applications/Safari.app"});
    EXPECT_EQ(observer.switchedTo, std::vector<std::string>{"Play"});
    EXPECT_TRUE(reloader.calls.empty());
}

TEST_F(Switching, ApplyAndCaptureActOnlyOnRealDifferences) {
    switcher.switchTo(work.id);
    reloader.calls.clear();
    EXPECT_FALSE(switcher.applyActiveProfile());
    EXPECT_FALSE(switcher.captureCurrentDock());
    EXPECT_TRUE(reloader.calls.empty());

    // The user drags Safari into the Dock.
    auto edited = store.profile(work.id)->snapshot(clock.now());
    edited.apps.push_back(AppEntry{"/Applications/Safari.app"});
    dock.tiles = DockPlistWriter::encode(edited);
    EXPECT_TRUE(switcher.captureCurrentDock());
    EXPECT_EQ(store.profile(work.id)->items.size(), 3u);
    EXPECT_FALSE(switcher.captureCurrentDock());

    dock.tiles = DockPlistWriter::encode(original);
    EXPECT_TRUE(switcher.applyActiveProfile());
    EXPECT_EQ(dockApps().size(), 3u);
}

TEST_F(Switching, KeepsTheNewestTwentyDockBackups) {
    for (int i = 0; i < 12; ++i) {
        clock.advance(1);
        switcher.switchTo(work.id);
        clock.advance(1);
        switcher.switchTo(play.id);
    }
    EXPECT_EQ(backupCount(), 20u);
}

TEST_F(Switching, ADockThatStillMatchesTheNewestBackupIsNotCopiedAgain) {
    auto first = backups.snapshot();
    clock.advance(1);
    EXPECT_EQ(backups.snapshot(), first);
    switcher.switchTo(work.id); // the Dock before it is the one just backed up
    EXPECT_EQ(backupCount(), 1u);

    clock.advance(1);
    switcher.switchTo(play.id);
    EXPECT_EQ(backupCount(), 2u);
    clock.advance(1);
    switcher.undoLastChange(); // backs up Play's Dock, then puts Work's back
    EXPECT_EQ(dockApps(), (std::vector<std::string>{"/Applications/Xcode.app", "/Applications/Terminal.app"}));
    EXPECT_EQ(backupCount(), 3u);

    // A newest backup that cannot be read proves nothing about the Dock.
    writeText(backups.listBackups().front(), "not a plist");
    clock.advance(1);
    auto fresh = backups.snapshot();
    EXPECT_EQ(backupCount(), 4u);
    EXPECT_EQ(backups.listBackups().front(), fresh);
}

TEST_F(Switching, UndoAndRestorePutBackExactlyTheTilesThatCouldNotBeDecoded) {
    const auto before = fixtures::undecodableDockTiles();
    dock.tiles = before;
    EXPECT_THROW(swapper.snapshot(), DockError) << "the Dock itself cannot be read as items";

    switcher.switchTo(work.id);
    EXPECT_EQ(dockApps(), (std::vector<std::string>{"/Applications/Xcode.app", "/Applications/Terminal.app"}));
    auto taken = backups.listBackups().front();
    EXPECT_EQ(backups.tiles(taken), before) << "the backup holds the tiles, GUIDs and all";

    clock.advance(1);
    switcher.undoLastChange();
    EXPECT_EQ(dock.tiles, fixtures::withoutGUIDs(before));

    clock.advance(1);
    switcher.switchTo(play.id);
    clock.advance(1);
    switcher.restoreDockBackup(taken);
    EXPECT_EQ(dock.tiles, fixtures::withoutGUIDs(before));
}

TEST_F(Switching, NothingIsWrittenUnlessTheBackupReadsBackAsTheDock) {
    writeText(data / "backups" / "dock-2001-01-01T00-00-00.000Z.plist", "<plist><dict><key>persistent-apps</key>");
    EXPECT_EQ(thrown<DockError>([&] { switcher.undoLastChange(); }).value().errorDescription(),
              "Failed to decode dock plist at " + (data / "backups" / "dock-2001-01-01T00-00-00.000Z.plist").string() +
                  " because it is not a Dock backup: it is not a property list");
    EXPECT_EQ(dock.writeCount, 0);

    // A backup file that loses the documents section on the way cannot put this Dock back.
    struct LossyFile final : DockPreferencesBackend {
        explicit LossyFile(std::filesystem::path path) : file(std::move(path)) {}
        DockTiles readTiles() override { return file.readTiles(); }
        void writeTiles(const DockTiles& tiles) override { file.writeTiles(DockTiles{tiles.apps, {}}); }
        std::filesystem::path url() const override { return file.url(); }
        PlistFileBackend file;
    };
    dock.tiles = fixtures::sampleDockTiles();
    BackupManager lossy{data / "lossy", dock, [](const std::filesystem::path& p) { return std::make_unique<LossyFile>(p); },
                        clock};
    ProfileSwitcher careful{store, swapper, lossy, clock};
    auto error = thrown<DockError>([&] { careful.switchTo(work.id); }).value().errorDescription();
    EXPECT_TRUE(error.ends_with("because the backup just taken does not hold the Dock's tiles, so the Dock was left unchanged"))
        << error;
    EXPECT_EQ(dock.writeCount, 0);
    EXPECT_EQ(dock.tiles, fixtures::sampleDockTiles());
    EXPECT_FALSE(store.file().activeProfileId);
}
