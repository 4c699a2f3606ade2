#include "CorvaneWidgetsUI/usage/ClaudeUsageCache.hpp"
#include "CorvaneWidgetsUI/usage/ClaudeUsageSource.hpp"
#include "fakes/FixedOffsetCalendar.hpp"
#include "widgetsui/usage/TranscriptFixtures.hpp"

#include <gtest/gtest.h>

#include <array>
#include <thread>

using namespace corvane;

namespace {

ClaudeUsageCache sampleCache() {
    ClaudeUsageCache cache;
    cache.root = "/Users/ann/.claude/projects";
    ClaudeUsageCache::Transcript first{"/Users/ann/.claude/projects/-Users-ann-atlas/s.jsonl", {7, 42, 9000, -5, 77}, 8800, {}};
    for (int i = 0; i < 3; ++i)
        first.entries.push_back({ClaudeUsageCache::compactId("req_" + std::to_string(i)), june(i), "atlas", 10 * i,
                                 1'000'000'000'000LL, 0, i});
    // A moment no transcript stamps, kept to the bit all the same.
    first.entries.push_back({ClaudeUsageCache::compactId("odd"), Date{1.0 / 3}, "atlas", 1, 2, 3, 4});
    cache.transcripts.push_back(first);
    cache.transcripts.push_back({"/Users/ann/.claude/projects/x/empty.jsonl", {1, 2, 0, 0, 0}, 0, {}});
    cache.transcripts.push_back({"/Users/ann/.claude/projects/---/n.jsonl", {1, 3, 10, 0, 1}, 10,
                                 {{ClaudeUsageCache::compactId("n"), june(2.5), std::nullopt, 1, 1, 1, 1}}});
    return cache;
}

TEST(ClaudeUsageCache, DecodesWhatItEncodedAndNothingElse) {
    const auto cache = sampleCache();
    const auto bytes = cache.encode();
    EXPECT_EQ(ClaudeUsageCache::decode(bytes), cache);
    EXPECT_EQ(ClaudeUsageCache::compactId("req_1").view().size(), 8u);
    EXPECT_NE(ClaudeUsageCache::compactId("req_1"), ClaudeUsageCache::compactId("req_2"));

    for (std::size_t size = 0; size < bytes.size(); ++size)
        EXPECT_FALSE(ClaudeUsageCache::decode(bytes.substr(0, size))) << "cut at " << size;
    EXPECT_FALSE(ClaudeUsageCache::decode(bytes + '\0'));
    for (std::size_t at = 0; at < bytes.size(); ++at) {
        auto damaged = bytes;
        damaged[at] = static_cast<char>(damaged[at] ^ 0x10);
        EXPECT_FALSE(ClaudeUsageCache::decode(damaged)) << "byte " << at;
    }
}

/// A transcripts folder read three ways: by a source that keeps a cache (a new one each time, as
/// each run of the tool is), and from scratch, which must always agree.
struct Folder {
    TemporaryDirectory home;
    std::filesystem::path root = home / "projects";
    std::filesystem::path cacheFile = home / "data" / "claude-usage.cache";
    const FixedOffsetCalendar utc;
    Date now = june(24);

    std::filesystem::path session(const std::string& name, const std::string& text) {
        writeText(root / name, text);
        setModified(root / name, june(20));
        return root / name;
    }

    using Totals = std::array<ClaudeUsageTotals, 3>;
    Totals totals(ClaudeUsageSource& source) const {
        const auto lists = source.takeEntries(start(ClaudeUsageScope::week, now, utc));
        Totals result;
        for (std::size_t i = 0; i < allClaudeUsageScopes.size(); ++i)
            result[i] = ClaudeUsage::totalsAcross(lists, allClaudeUsageScopes[i], now, utc);
        return result;
    }
    Totals cached() const {
        ClaudeUsageSource source(root, 2, cacheFile);
        return totals(source);
    }
    Totals cold() const {
        ClaudeUsageSource source(root, 2);
        return totals(source);
    }
};

// Everything stamped in the week (june(-120) on) and some of it older; one message in two files,
// as a resumed session copies it, with a larger record in the copy.
void fill(Folder& f) {
    f.session("-Users-ann-atlas/a.jsonl", assistantLine("old", june(-200), 50, 0) + assistantLine("1", june(1), 10, 1) +
                                              assistantLine("1", june(1), 10, 5) + userLine(june(1.5), 6000) +
                                              assistantLine("2", june(22), 20, 2));
    f.session("-Users-ann-atlas/b.jsonl", assistantLine("1", june(1), 10, 9) + assistantLine("3", june(23), 30, 3, 7, 9));
    f.session("-Users-ann-cafe/c.jsonl", assistantLine("4", june(-100), 40, 4) + userLine(june(-99), 6000));
    f.session("-Users-ann-cafe/quiet.jsonl", userLine(june(2), 100));
}

} // namespace

TEST(ClaudeUsageCache, ARepeatedScanReadsOnlyWhatWasAppended) {
    Folder f;
    fill(f);
    const auto first = f.cached();
    EXPECT_EQ(first, f.cold());
    EXPECT_EQ(first[2].messages, 4);
    ASSERT_TRUE(std::filesystem::exists(f.cacheFile));

    // Bytes changed well before where the last scan stopped, with the file's size, name and date
    // kept: only a read of the whole file would see them, so the cache's answer shows it was used.
    const auto file = f.root / "-Users-ann-cafe/c.jsonl";
    auto text = readText(file);
    text.replace(text.find("\"input_tokens\":40"), 17, "\"input_tokens\":41");
    writeText(file, text);
    setModified(file, june(20));
    const auto unchanged = f.cached();
    EXPECT_EQ(unchanged, first);
    EXPECT_NE(unchanged, f.cold());
    std::filesystem::remove(f.cacheFile);
    EXPECT_EQ(f.cached(), f.cold()) << "deleting the cache changes no answer";

    append(f.root / "-Users-ann-atlas/a.jsonl", assistantLine("5", june(23.5), 5, 5));
    EXPECT_EQ(f.cached(), f.cold());
    EXPECT_EQ(f.cached()[2].messages, 5);
}

TEST(ClaudeUsageCache, AnyDoubtAboutAFileReadsItAgain) {
    Folder f;
    fill(f);
    f.cached();
    const auto a = f.root / "-Users-ann-atlas/a.jsonl", b = f.root / "-Users-ann-atlas/b.jsonl";
    auto check = [&](const char* change) {
        const auto cold = f.cold();
        EXPECT_EQ(f.cached(), cold) << change;
        EXPECT_EQ(f.cached(), cold) << change << ", from the cache it left";
    };

    append(a, assistantLine("6", june(23), 6, 6));
    check("appended");
    append(a, assistantLine("7", june(23), 7, 7).substr(0, 40));
    check("half a line appended");
    append(a, assistantLine("7", june(23), 7, 7).substr(40));
    check("the line finished");

    writeText(b, assistantLine("3", june(23), 30, 3, 7, 9));
    check("cut shorter");

    // The same size, written in place: first with a new date, then with the old one kept, which
    // leaves only the bytes where the last scan stopped to tell.
    auto text = readText(b);
    text.replace(text.find("\"input_tokens\":30"), 17, "\"input_tokens\":31");
    writeText(b, text);
    setModified(b, june(21));
    check("rewritten, the same size");
    text.replace(text.find("\"input_tokens\":31"), 17, "\"input_tokens\":32");
    writeText(b, text);
    setModified(b, june(21));
    check("rewritten, the same size and date");

    // Replaced by another file that begins with other bytes but ends as the old one did.
    text = readText(a);
    text.replace(text.find("\"input_tokens\":10"), 17, "\"input_tokens\":19");
    writeText(f.home / "replacement", text + assistantLine("8", june(23.9), 8, 8));
    std::filesystem::rename(f.home / "replacement", a);
    check("replaced by rename");

    std::filesystem::remove(b);
    check("deleted");
    f.session("-Users-ann-new/d.jsonl", assistantLine("9", june(22), 9, 9));
    check("a new file");
    f.now = june(60);
    check("a window that moved on");
}

TEST(ClaudeUsageCache, ADamagedOrForeignCacheIsIgnoredAndRebuilt) {
    Folder f;
    fill(f);
    f.cached();
    const auto good = readText(f.cacheFile);
    const auto expected = f.cold();
    for (const auto& damaged : {good.substr(0, good.size() / 2), std::string("not a cache"), std::string(),
                                good.substr(0, 40) + std::string(good.size() - 40, '\x7f')}) {
        writeText(f.cacheFile, damaged);
        EXPECT_EQ(f.cached(), expected);
        EXPECT_TRUE(ClaudeUsageCache::decode(readText(f.cacheFile))) << "rebuilt";
    }

    // Another root's cache neither answers for this one nor survives it.
    Folder other;
    other.session("-Users-bob-x/e.jsonl", assistantLine("x", june(22), 1, 1));
    std::filesystem::create_directories(other.cacheFile.parent_path());
    std::filesystem::copy_file(f.cacheFile, other.cacheFile);
    EXPECT_EQ(other.cached(), other.cold());
    EXPECT_EQ(ClaudeUsageCache::decode(readText(other.cacheFile))->root, other.root.string());
}

TEST(ClaudeUsageCache, TwoScansAtOnceEachLeaveAWholeCache) {
    Folder f;
    fill(f);
    const auto a = f.root / "-Users-ann-atlas/a.jsonl";
    std::vector<std::thread> scans;
    for (int scanner = 0; scanner < 2; ++scanner)
        scans.emplace_back([&] {
            for (int round = 0; round < 20; ++round) f.cached();
        });
    for (int line = 0; line < 20; ++line) append(a, assistantLine("w" + std::to_string(line), june(23), line, 1));
    for (auto& scan : scans) scan.join();
    EXPECT_TRUE(ClaudeUsageCache::decode(readText(f.cacheFile)));
    EXPECT_EQ(f.cached(), f.cold());
}
