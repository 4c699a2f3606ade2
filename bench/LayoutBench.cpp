// One rebuild of the own bar's tile list: a 60-item workspace (apps, spacers, widget
// placeholders, one widget stack, files in the documents section) merged with 100 running
// applications, their ownership and the desktop filter. The bar does this on every app launch,
// quit and desktop change.

#include "CorvaneCore/bar/WorkspaceDockLayout.hpp"
#include "CorvaneCore/widgets/DockSlot.hpp"
#include "CorvaneCore/workspace/Profile.hpp"

#include <benchmark/benchmark.h>

using namespace corvane;

namespace {

struct Desk {
    Profile profile;
    std::vector<RunningApp> running;
    WorkspaceOwnership ownership;
    std::map<int, Uuid> slotOwners;

    Desk() {
        profile.id = Uuid::generate();
        profile.name = "Work";
        std::vector<Uuid> stacked;
        for (int i = 0; i < 60; ++i) {
            if (i % 10 == 9) {
                profile.items.push_back(SpacerVariant::small);
            } else if (i % 10 == 4) {
                auto widget = Uuid::generate();
                if (stacked.size() < 3) stacked.push_back(widget);
                profile.items.push_back(
                    AppEntry{"/Applications/Corvane Widget.app", DockSlot::widgetBundleIdentifier(widget)});
            } else if (i == 7) {
                slotOwners[2] = Uuid::generate();
                profile.items.push_back(
                    AppEntry{"/Applications/Corvane Slot.app", DockSlot::bundleIdentifier(2)});
            } else {
                profile.items.push_back(AppEntry{"/Applications/Tool " + std::to_string(i) + ".app",
                                                 "dev.example.tool" + std::to_string(i)});
            }
        }
        profile.stacks.push_back(WidgetStack{Uuid::generate(), stacked});
        for (int i = 0; i < 8; ++i)
            profile.others.push_back(FileEntry{"/Users/sam/Folder " + std::to_string(i), std::nullopt, true});
        // Every third running app is pinned; the rest are owned by this workspace or another.
        for (int pid = 100; pid < 200; ++pid) {
            int n = pid - 100;
            auto bundle = n % 3 == 0 ? "dev.example.tool" + std::to_string(n % 60)
                                     : "dev.example.app" + std::to_string(n);
            running.push_back(RunningApp{pid,
                                         bundle,
                                         "/Applications/App " + std::to_string(n) + ".app",
                                         "App " + std::to_string(n),
                                         {static_cast<std::uint64_t>(1 + n % 4)}});
            ownership.assign(pid, n % 2 ? profile.id : Uuid::generate());
        }
    }
};

void BM_LayoutWith100RunningApps(benchmark::State& state) {
    Desk desk;
    WorkspaceDockLayout::Inputs inputs{.active = &desk.profile,
                                       .running = desk.running,
                                       .ownership = &desk.ownership,
                                       .currentDesktop = 1,
                                       .visibleDesktops = {1, 2},
                                       .filterByDesktop = true,
                                       .addsLauncher = true,
                                       .replacing = {"com.spotify.client"},
                                       .slotOwners = desk.slotOwners,
                                       .ownApp = "/Applications/Corvane.app",
                                       .fileExists = [](const std::string&) { return true; }};
    for (auto _ : state) {
        WorkspaceDockLayout layout(inputs);
        benchmark::DoNotOptimize(layout);
    }
}
BENCHMARK(BM_LayoutWith100RunningApps)
    ->Unit(benchmark::kMicrosecond)
    ->Repetitions(5)
    ->ReportAggregatesOnly(true);

} // namespace
