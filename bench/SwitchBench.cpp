// One workspace switch on the file backend with the no-op reloader: read the Dock, back it up,
// write, verify, prune and save. Switches alternate between two 150-tile workspaces.

#include "CorvaneCore/dock/DockPlistWriter.hpp"
#include "CorvaneCore/dock/NoOpDockReloader.hpp"
#include "CorvaneStorage/workspace/ProfileSwitcher.hpp"
#include "fakes/TemporaryDirectory.hpp"
#include "platform/posix/PlistFileBackend.hpp"
#include "platform/posix/SystemClock.hpp"

#include <benchmark/benchmark.h>

using namespace corvane;

namespace {

Profile workspace(const std::string& name, int tiles) {
    Profile profile;
    profile.id = Uuid::generate();
    profile.name = name;
    for (int i = 0; i < tiles; ++i) {
        if (i % 10 == 9) profile.items.push_back(SpacerVariant::small);
        else profile.items.push_back(AppEntry{"/Applications/" + name + " Tool " + std::to_string(i) + ".app",
                                              "dev.example." + name + std::to_string(i)});
    }
    profile.others.push_back(FileEntry{"/Users/sam/Downloads", std::nullopt, true});
    return profile;
}

void BM_SwitchBetweenTwo150TileWorkspaces(benchmark::State& state) {
    TemporaryDirectory dir;
    SystemClock clock;
    PlistFileBackend dock(dir / "com.apple.dock.plist");
    NoOpDockReloader reloader;
    ProfileStore store(dir / "profiles.json");
    BackupManager backups(dir / "backups", dock, [](const std::filesystem::path& p) {
        return std::make_unique<PlistFileBackend>(p);
    }, clock);
    DockSwapper swapper(DockPlistReader(dock, clock), DockPlistWriter(dock), reloader);
    ProfileSwitcher switcher(store, swapper, backups, clock);
    auto a = store.create(workspace("Work", 150));
    auto b = store.create(workspace("Play", 150));
    DockPlistWriter(dock).write(a.snapshot(clock.now()));
    bool toB = true;
    for (auto _ : state) {
        switcher.switchTo(toB ? b.id : a.id);
        toB = !toB;
    }
}
BENCHMARK(BM_SwitchBetweenTwo150TileWorkspaces)->Unit(benchmark::kMillisecond)->Repetitions(5)->ReportAggregatesOnly(true);

} // namespace
