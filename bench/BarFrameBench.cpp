// The bar's per-frame arithmetic while the lens moves across a 60-tile bar: both springs stepped,
// then the scale, push and drawn frame of every tile into a frame kept from the previous display
// frame. Heap allocations are counted through the replaced global operator new below and
// reported per frame; once the kept frame has grown to the tile count there should be none.

#include "CorvaneApp/render/BarCompositor.hpp"
#include "CorvaneApp/render/BarLayout.hpp"
#include "CorvaneApp/render/BarRenderer.hpp"
#include "CorvaneApp/render/WorkspaceBarScene.hpp"

#include <benchmark/benchmark.h>

#include <atomic>
#include <cstdlib>
#include <new>

namespace {

std::atomic<long long> allocationCount{0};

} // namespace

// These replacements are the program's one allocator, so memory from the new below is rightly
// given back with free; GCC cannot tell them from the library's and warns when it inlines them.
#if defined(__GNUC__) && !defined(__clang__)
#pragma GCC diagnostic ignored "-Wmismatched-new-delete"
#endif

void* operator new(std::size_t size) {
    allocationCount.fetch_add(1, std::memory_order_relaxed);
    if (void* memory = std::malloc(size ? size : 1)) return memory;
    throw std::bad_alloc();
}

void* operator new[](std::size_t size) {
    return operator new(size);
}

void operator delete(void* memory) noexcept {
    std::free(memory);
}

void operator delete[](void* memory) noexcept {
    std::free(memory);
}

void operator delete(void* memory, std::size_t) noexcept {
    std::free(memory);
}

void operator delete[](void* memory, std::size_t) noexcept {
    std::free(memory);
}

using namespace corvane;

namespace {

BarScene sixtyTiles() {
    std::vector<BarTile> tiles;
    for (int i = 0; i < 56; ++i) tiles.push_back({.label = "App " + std::to_string(i), .isRunning = i % 3 == 0});
    tiles.push_back({.kind = BarTile::Kind::separator});
    tiles.push_back({.kind = BarTile::Kind::folder, .label = "Projects"});
    tiles.push_back({.kind = BarTile::Kind::downloads, .label = "Downloads"});
    tiles.push_back({.kind = BarTile::Kind::trash, .label = "Trash"});
    DockStyle style;
    style.hoverEffect = HoverEffect::magnify;
    style.themeID = "rocket";
    return makeBarScene(std::move(tiles), style, style.applied(DockAppearance::systemDefault()), nullptr);
}

// The pointer sweeps along the bar and back, a few points per frame, as a hand would move it.
struct Sweep {
    double from;
    double to;
    double x;
    double step = 9;

    double next() {
        x += step;
        if (x > to || x < from) {
            step = -step;
            x += 2 * step;
        }
        return x;
    }
};

void BM_BarFrame60TilesLensMoving(benchmark::State& state) {
    auto scene = sixtyTiles();
    BarLayout layout(scene);
    DockLens lens;
    BarFrame frame;
    Sweep sweep{layout.centers().front(), layout.centers().back(), layout.centers().front()};
    lens.follow(sweep.x);
    layout.frame(lens, frame);
    long long before = allocationCount.load();
    for (auto _ : state) {
        lens.follow(sweep.next());
        lens.step(1.0 / 120);
        layout.frame(lens, frame);
        benchmark::DoNotOptimize(frame.tiles.data());
        benchmark::ClobberMemory();
    }
    auto frames = static_cast<double>(state.iterations());
    state.counters["allocations/frame"] = static_cast<double>(allocationCount.load() - before) / frames;
}
BENCHMARK(BM_BarFrame60TilesLensMoving)->Unit(benchmark::kMicrosecond);

// The same arithmetic through the lens's own per-tile calls, which take the anchor again for
// every tile, into a result list kept across frames.
void BM_LensScaleAndDisplacement60Tiles(benchmark::State& state) {
    auto scene = sixtyTiles();
    BarLayout layout(scene);
    const auto& centers = layout.centers();
    std::vector<double> separators = {centers.front() - 30, centers[56], centers.back() + 30};
    std::vector<std::pair<double, double>> result(centers.size());
    DockLens lens;
    Sweep sweep{centers.front(), centers.back(), centers.front()};
    lens.follow(sweep.x);
    long long before = allocationCount.load();
    for (auto _ : state) {
        lens.follow(sweep.next());
        lens.step(1.0 / 120);
        for (std::size_t i = 0; i < centers.size(); ++i)
            result[i] = {lens.scale(centers[i], scene.metrics), lens.displacement(centers[i], separators, scene.metrics)};
        benchmark::DoNotOptimize(result.data());
        benchmark::ClobberMemory();
    }
    auto frames = static_cast<double>(state.iterations());
    state.counters["allocations/frame"] = static_cast<double>(allocationCount.load() - before) / frames;
}
BENCHMARK(BM_LensScaleAndDisplacement60Tiles)->Unit(benchmark::kMicrosecond);

// For scale: drawing one such frame with Cairo into a fresh image.
void BM_BarDraw60Tiles(benchmark::State& state) {
    auto scene = sixtyTiles();
    BarLayout layout(scene);
    DockLens lens;
    lens.follow(layout.centers()[20]);
    for (int i = 0; i < 100 && !lens.isSettled(); ++i) lens.step(0.1);
    auto frame = layout.frame(lens);
    for (auto _ : state) {
        auto image = rasterizeBar(scene, layout, frame, {});
        benchmark::DoNotOptimize(image.pixels.data());
    }
}
BENCHMARK(BM_BarDraw60Tiles)->Unit(benchmark::kMillisecond);

} // namespace

namespace {

// What the bar's view does while the pointer moves: the lens arithmetic and a composited frame,
// tile art kept at its drawn size and only the changed stretch repainted. Two sweeps run first,
// as the pointer would have passed along the bar before.
void BM_BarCompositeFrame60TilesLensMoving(benchmark::State& state) {
    auto scene = sixtyTiles();
    BarLayout layout(scene);
    DockLens lens;
    BarFrame frame;
    BarCompositor compositor;
    Sweep sweep{layout.centers().front(), layout.centers().back(), layout.centers().front()};
    auto next = [&] {
        lens.follow(sweep.next());
        lens.step(1.0 / 120);
        layout.frame(lens, frame);
        return compositor.compose(scene, layout, frame);
    };
    auto warmUp = static_cast<int>(4 * (sweep.to - sweep.from) / sweep.step);
    for (int i = 0; i < warmUp; ++i) next();
    auto hits = compositor.cacheHits(), misses = compositor.cacheMisses();
    for (auto _ : state) benchmark::DoNotOptimize(next());
    auto found = static_cast<double>(compositor.cacheHits() - hits);
    state.counters["artFound"] = found / (found + static_cast<double>(compositor.cacheMisses() - misses));
    state.counters["artMB"] = static_cast<double>(compositor.cachedBytes()) / (1 << 20);
}
BENCHMARK(BM_BarCompositeFrame60TilesLensMoving)->Unit(benchmark::kMillisecond);

} // namespace
