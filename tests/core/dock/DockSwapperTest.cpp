#include "CorvaneCore/dock/DockChangeDetector.hpp"
#include "CorvaneCore/dock/DockError.hpp"
#include "CorvaneCore/dock/DockSwapper.hpp"
#include "core/dock/DockFixtures.hpp"
#include "fakes/InMemoryDockBackend.hpp"
#include "fakes/ManualClock.hpp"
#include "fakes/ScriptedDockReloader.hpp"
#include "fakes/Thrown.hpp"

#include <gtest/gtest.h>

namespace corvane {
namespace {

DockItem app(std::string path) { return AppEntry{std::move(path), std::nullopt, std::nullopt, std::nullopt}; }

class DockSwapperTest : public ::testing::Test {
protected:
    DockSwapperTest() {
        // The Dock as it was before the swap.
        backend.tiles = DockPlistWriter::encode(DockSnapshot{{app("/Old.app")}, {}, {}});
        oldTiles = backend.tiles;
    }

    InMemoryDockBackend backend;
    ManualClock clock;
    ScriptedDockReloader reloader;
    DockSwapper swapper{DockPlistReader(backend, clock), DockPlistWriter(backend), reloader};
    DockTiles oldTiles;
    const DockSnapshot target{{app("/New.app"), SpacerVariant::flex}, {}, {}};
};

TEST_F(DockSwapperTest, SettlesWritesReloadsAndVerifiesOnce) {
    swapper.swap(target);
    EXPECT_EQ(reloader.calls, (std::vector<std::string>{"settle", "reload"}));
    EXPECT_EQ(backend.writeCount, 1);
    EXPECT_FALSE(DockChangeDetector::diff(target, swapper.snapshot()).hasChanges());
}

TEST_F(DockSwapperTest, ADockThatRestoresItsOldItemsOnceIsWrittenAgain) {
    int reloads = 0;
    reloader.onReload = [&] {
        if (++reloads == 1) backend.tiles = oldTiles;
    };
    swapper.swap(target);
    EXPECT_EQ(reloader.calls, (std::vector<std::string>{"settle", "reload", "settle", "reload"}));
    EXPECT_FALSE(DockChangeDetector::diff(target, swapper.snapshot()).hasChanges());
}

TEST_F(DockSwapperTest, ADockThatKeepsItsOldItemsFailsAfterTheRetry) {
    reloader.onReload = [&] { backend.tiles = oldTiles; };
    EXPECT_EQ(thrown<DockError>([&] { swapper.swap(target); }).value().errorDescription(),
              "Failed to reload dock because the Dock kept its previous items; try again");
    EXPECT_EQ(backend.writeCount, 2);
}

TEST_F(DockSwapperTest, AFailingStepEndsTheSwapWithItsError) {
    backend.failNextWrite = std::make_exception_ptr(DockError::plistWriteFailed("/x", "disk full"));
    EXPECT_THROW(swapper.swap(target), DockError);
    EXPECT_EQ(reloader.calls, std::vector<std::string>{"settle"});

    reloader.calls.clear();
    reloader.onReload = [] { throw DockError::dockReloadFailed("the Dock did not relaunch"); };
    EXPECT_THROW(swapper.swap(target), DockError);
    EXPECT_EQ(reloader.calls, (std::vector<std::string>{"settle", "reload"}));
}

TEST_F(DockSwapperTest, KeptTilesGoBackUndecodedLessGUIDAndAreVerifiedTheSameWay) {
    auto kept = testing::undecodableDockTiles();
    swapper.restore(kept);
    EXPECT_EQ(backend.tiles, testing::withoutGUIDs(kept));
    EXPECT_EQ(reloader.calls, (std::vector<std::string>{"settle", "reload"}));

    // Only the folder's place differs; the Dock showing the old tiles is still caught.
    auto moved = kept;
    std::swap(moved.others.front(), moved.others.back());
    reloader.onReload = [&] { backend.tiles = kept; };
    EXPECT_EQ(thrown<DockError>([&] { swapper.restore(moved); }).value().kind, DockError::Kind::dockReloadFailed);
    EXPECT_EQ(backend.writeCount, 3);
}

} // namespace
} // namespace corvane
