// The coding-assistant usage scan over a made-up transcripts folder of 60 days: the first scan
// (every file of the week read backwards to the window's start), on the scan's workers and on one
// thread, and a refresh after 1 MB was appended to one session, which should cost about the same
// whatever the folder's size. Then the same for the tool, whose every run is a new source: a run
// from scratch, and a run that starts from the cache the run before kept, after 1 MB was appended.

#include "CorvaneCore/widgets/usage/ClaudeUsage.hpp"
#include "CorvaneWidgetsUI/usage/ClaudeUsageSource.hpp"
#include "UsageCorpus.hpp"
#include "fakes/FixedOffsetCalendar.hpp"
#include "fakes/TemporaryDirectory.hpp"

#include <benchmark/benchmark.h>

#include <map>
#include <optional>
#include <memory>

using namespace corvane;

namespace {

// 2026-01-15T12:00:00Z: corpus and scans share this moment, so no run depends on the wall clock.
constexpr double corpusNow = 1768478400;

struct Corpus {
    TemporaryDirectory folder;
    std::filesystem::path root = folder / "projects";
};

/// One corpus per size for the whole run, generated on first use and removed at exit.
const Corpus& corpus(std::int64_t megabytes) {
    static std::map<std::int64_t, std::unique_ptr<Corpus>> corpora;
    auto& slot = corpora[megabytes];
    if (!slot) {
        slot = std::make_unique<Corpus>();
        bench::CorpusOptions options;
        options.root = slot->root;
        options.bytes = static_cast<std::uint64_t>(megabytes) << 20;
        options.now = corpusNow;
        bench::CorpusWriter(options).write();
    }
    return *slot;
}

struct Refresh {
    const FixedOffsetCalendar calendar;
    const Date now = Date::fromUnixTime(corpusNow);

    /// What a model's refresh computes: the week's entries and every period's totals.
    std::int64_t operator()(ClaudeUsageSource& source) const {
        auto entries = source.entries(start(ClaudeUsageScope::week, now, calendar));
        std::int64_t tokens = 0;
        for (auto scope : allClaudeUsageScopes) tokens += ClaudeUsage::totals(entries, scope, now, calendar).tokens;
        return tokens + static_cast<std::int64_t>(entries.size());
    }
};

/// A megabyte of what a live session of the busiest project writes next.
std::string appendedMegabyte() {
    bench::CorpusOptions options;
    options.now = corpusNow;
    bench::CorpusWriter writer(options);
    std::string megabyte;
    std::uint64_t lines = 0;
    writer.session(megabyte, 1 << 20, corpusNow - 2 * 86400, "/Users/ann/src/live", lines);
    return megabyte;
}

/// What `corvane usage` computes: the week's entries and every period's totals.
std::int64_t toolRun(const std::filesystem::path& root, std::optional<std::filesystem::path> cacheFile) {
    const FixedOffsetCalendar calendar;
    const Date now = Date::fromUnixTime(corpusNow);
    ClaudeUsageSource source(root, 0, std::move(cacheFile));
    const auto lists = source.takeEntries(start(ClaudeUsageScope::week, now, calendar));
    std::int64_t tokens = 0;
    for (auto scope : allClaudeUsageScopes) tokens += ClaudeUsage::totalsAcross(lists, scope, now, calendar).tokens;
    return tokens;
}

void BM_UsageFirstScan(benchmark::State& state) {
    const auto& folder = corpus(state.range(0));
    Refresh refresh;
    for (auto _ : state) {
        ClaudeUsageSource source(folder.root);
        benchmark::DoNotOptimize(refresh(source));
    }
}
BENCHMARK(BM_UsageFirstScan)->Arg(128)->Arg(1024)->Unit(benchmark::kMillisecond);

// The same on the caller's thread alone: what the scan's workers gain.
void BM_UsageFirstScanOnOneThread(benchmark::State& state) {
    const auto& folder = corpus(state.range(0));
    Refresh refresh;
    for (auto _ : state) {
        ClaudeUsageSource source(folder.root, 1);
        benchmark::DoNotOptimize(refresh(source));
    }
}
BENCHMARK(BM_UsageFirstScanOnOneThread)->Arg(1024)->Unit(benchmark::kMillisecond);

void BM_UsageRefreshAfterAppendingOneMegabyte(benchmark::State& state) {
    const auto& folder = corpus(state.range(0));
    Refresh refresh;
    ClaudeUsageSource source(folder.root);
    // A live session of the corpus's busiest project, and a megabyte of what it writes next.
    auto live = std::filesystem::directory_iterator(folder.root)->path() / "live-session.jsonl";
    const auto megabyte = appendedMegabyte();
    std::ofstream(live, std::ios::binary) << megabyte;
    refresh(source);

    for (auto _ : state) {
        state.PauseTiming();
        std::ofstream(live, std::ios::binary | std::ios::app) << megabyte;
        state.ResumeTiming();
        benchmark::DoNotOptimize(refresh(source));
    }
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * megabyte.size()));
    std::filesystem::remove(live);
}
// A fixed count: every iteration leaves the session a megabyte longer.
BENCHMARK(BM_UsageRefreshAfterAppendingOneMegabyte)->Arg(128)->Arg(1024)->Iterations(30)->Unit(benchmark::kMillisecond);

void BM_UsageToolRunFromScratch(benchmark::State& state) {
    const auto& folder = corpus(state.range(0));
    for (auto _ : state) benchmark::DoNotOptimize(toolRun(folder.root, std::nullopt));
}
BENCHMARK(BM_UsageToolRunFromScratch)->Arg(1024)->Unit(benchmark::kMillisecond);

void BM_UsageToolRunFromItsCacheAfterAppendingOneMegabyte(benchmark::State& state) {
    const auto& folder = corpus(state.range(0));
    TemporaryDirectory data;
    const auto cacheFile = data / "claude-usage.cache";
    auto live = std::filesystem::directory_iterator(folder.root)->path() / "live-cached-session.jsonl";
    const auto megabyte = appendedMegabyte();
    std::ofstream(live, std::ios::binary) << megabyte;
    toolRun(folder.root, cacheFile);

    for (auto _ : state) {
        state.PauseTiming();
        std::ofstream(live, std::ios::binary | std::ios::app) << megabyte;
        state.ResumeTiming();
        benchmark::DoNotOptimize(toolRun(folder.root, cacheFile));
    }
    state.counters["cacheBytes"] = static_cast<double>(std::filesystem::file_size(cacheFile));
    std::filesystem::remove(live);
}
BENCHMARK(BM_UsageToolRunFromItsCacheAfterAppendingOneMegabyte)->Arg(1024)->Iterations(30)->Unit(benchmark::kMillisecond);

} // namespace
