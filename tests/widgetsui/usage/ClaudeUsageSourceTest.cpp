#include "CorvaneWidgetsUI/usage/ClaudeUsageSource.hpp"
#include "fakes/FixedOffsetCalendar.hpp"
#include "widgetsui/usage/TranscriptFixtures.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <tuple>
#include <unistd.h>

using namespace corvane;

namespace {

struct Transcripts {
    TemporaryDirectory home;
    std::filesystem::path root = home / "projects";
    ClaudeUsageSource source{root};

    std::filesystem::path session(const std::string& folder, const std::string& name, const std::string& text,
                                  Date modified = june(1000)) {
        auto file = root / folder / name;
        writeText(file, text);
        setModified(file, modified);
        return file;
    }

    std::vector<std::string> ids(Date since) {
        std::vector<std::string> result;
        for (const auto& entry : source.entries(since)) result.push_back(entry.id.string());
        std::sort(result.begin(), result.end());
        return result;
    }
};

using Ids = std::vector<std::string>;

} // namespace

TEST(ClaudeUsageSource, DecodesUsageLinesAndSkipsEverythingElse) {
    auto line = assistantLine("1", june(0), 10, 20, 30, 40);
    auto entry = ClaudeUsageSource::entry(line, "atlas");
    ASSERT_TRUE(entry);
    EXPECT_EQ(*entry, (ClaudeUsageEntry{"req_1", june(0), "atlas", 10, 20, 30, 40}));

    // The id falls back from the request to the message to the line's own uuid.
    auto withoutRequest = R"({"message":{"id":"msg_9","usage":{"output_tokens":5}},"uuid":"u","timestamp":"2025-06-10T12:00:00Z"})";
    EXPECT_EQ(ClaudeUsageSource::entry(withoutRequest, std::nullopt)->id, "msg_9");
    auto onlyUuid = R"({"message":{"usage":{}},"uuid":"u","timestamp":"2025-06-10T12:00:00.5+02:00"})";
    auto uuidEntry = ClaudeUsageSource::entry(onlyUuid, std::nullopt);
    ASSERT_TRUE(uuidEntry);
    EXPECT_EQ(uuidEntry->id, "u");
    EXPECT_EQ(uuidEntry->timestamp, Date::fromUnixTime(1749549600.5));
    EXPECT_EQ(uuidEntry->tokens(), 0);
    // An empty id is no id: records that all carry "" are not one message.
    auto emptyRequest = R"({"message":{"id":"msg_9","usage":{}},"requestId":"","uuid":"u","timestamp":"2025-06-10T12:00:00Z"})";
    EXPECT_EQ(ClaudeUsageSource::entry(emptyRequest, std::nullopt)->id, "msg_9");
    auto emptyMessage = R"({"message":{"id":"","usage":{}},"uuid":"u","timestamp":"2025-06-10T12:00:00Z"})";
    EXPECT_EQ(ClaudeUsageSource::entry(emptyMessage, std::nullopt)->id, "u");

    for (std::string bad : {
             std::string(R"({"message":{"usage":{}},"timestamp":"2025-06-10T12:00:00Z"})"),   // no id at all
             std::string(R"({"message":{"usage":{}},"uuid":"u"})"),                           // no timestamp
             std::string(R"({"message":{"usage":null},"uuid":"u","timestamp":"2025-06-10T12:00:00Z"})"),
             std::string(R"({"usage":{},"uuid":"u","timestamp":"2025-06-10T12:00:00Z"})"),    // usage not in message
             std::string(R"({"message":{"usage":{}},"uuid":"u","timestamp":"yesterday"})"),
             std::string(R"({"message":{"usage":{"input_tokens":"5"}},"uuid":"u","timestamp":"2025-06-10T12:00:00Z"})"),
             std::string(R"({"message":{"usage":{"input_tokens":1.5}},"uuid":"u","timestamp":"2025-06-10T12:00:00Z"})"),
             std::string(R"({"message":{"usage":{}},"uuid":7,"timestamp":"2025-06-10T12:00:00Z"})"),
             std::string(R"({"message":{"usage":{}},"requestId":"","uuid":"","timestamp":"2025-06-10T12:00:00Z"})"),
             std::string(R"({"message":{"usage":{"output_tokens":-5}},"uuid":"u","timestamp":"2025-06-10T12:00:00Z"})"),
             std::string(R"({"message":{"usage":{"cache_read_input_tokens":-1}},"uuid":"u","timestamp":"2025-06-10T12:00:00Z"})"),
             std::string(R"({"message":{"usage":{}},"uuid":"u","timestamp":"2025-06-10T12:00:00Z"} trailing)"),
             line.substr(0, line.size() / 2), // half written
             std::string("[\"usage\"]"), std::string("\"usage\""), std::string(),
         })
        EXPECT_FALSE(ClaudeUsageSource::entry(bad, std::nullopt)) << bad;

    // Whatever the bytes, decoding returns.
    std::mt19937 random(7);
    for (int round = 0; round < 2000; ++round) {
        auto mutated = line;
        for (int flips = 0; flips < 1 + round % 8; ++flips)
            mutated[random() % mutated.size()] = static_cast<char>(random() % 256);
        if (round % 3 == 0) mutated.resize(random() % mutated.size());
        (void)ClaudeUsageSource::entry(mutated, "x");
    }
}

TEST(ClaudeUsageSource, FirstReadKeepsTheWindowAndLeavesAHalfWrittenLineForLater) {
    Transcripts t;
    const Date since = june(0);
    auto half = assistantLine("live", june(5), 1, 1);
    auto text = assistantLine("old", june(-1), 1000, 0) + assistantLine("a", june(1), 10, 0) + userLine(june(2), 100) +
                "not json at all, \"usage\"\n" + assistantLine("b", june(3), 20, 0) + "{\"type\":\"summary\"}\n" +
                half.substr(0, 60);
    auto file = t.session("-Users-ann-src-atlas", "s1.jsonl", text);

    auto entries = t.source.entries(since);
    ASSERT_EQ(entries.size(), 2u);
    EXPECT_EQ(entries[0].id, "req_a");
    EXPECT_EQ(entries[0].project, "atlas");
    EXPECT_EQ(entries[1].id, "req_b");
    EXPECT_EQ(t.source.cursor(file)->offset, text.size() - 60) << "the unfinished line is not consumed";

    // Nothing new: the same answer, and the unfinished line still waits.
    EXPECT_EQ(t.source.entries(since).size(), 2u);
    append(file, half.substr(60) + assistantLine("c", june(6), 30, 0).substr(0, 30));
    EXPECT_EQ(t.ids(since), (Ids{"req_a", "req_b", "req_live"}));
    append(file, assistantLine("c", june(6), 30, 0).substr(30));
    EXPECT_EQ(t.ids(since), (Ids{"req_a", "req_b", "req_c", "req_live"}));
    EXPECT_EQ(t.source.cursor(file)->offset, std::filesystem::file_size(file));

    // A window that moves on drops what fell out of it.
    EXPECT_EQ(t.ids(june(2)), (Ids{"req_b", "req_c", "req_live"}));
}

TEST(ClaudeUsageSource, AWholeLastLineWithoutALineFeedCountsAndTheNextAppendStillReads) {
    Transcripts t;
    auto last = assistantLine("a", june(1), 10, 0);
    last.pop_back();
    auto file = t.session("p", "s.jsonl", last);
    EXPECT_EQ(t.ids(june(0)), (Ids{"req_a"}));
    EXPECT_EQ(t.source.cursor(file)->offset, last.size());
    append(file, "\n" + assistantLine("b", june(2), 10, 0));
    EXPECT_EQ(t.ids(june(0)), (Ids{"req_a", "req_b"}));
}

TEST(ClaudeUsageSource, BackwardReadCrossesChunksAndStopsAtTheWindow) {
    Transcripts t;
    const Date since = june(100);
    std::string text;
    // Old history, which the read must never reach: a line it would count if it did.
    text += assistantLine("ancient", june(200), 1, 0); // out of order on purpose: beyond the stop
    text += assistantLine("old", june(50), 1, 0);
    int expected = 0;
    std::vector<std::string> wanted;
    for (int i = 0; text.size() < 3 * ClaudeUsageSource::backwardChunkSize; ++i) {
        // Lines of every size, some longer than a chunk, so lines straddle chunk borders.
        text += userLine(june(100 + i), i % 7 == 3 ? ClaudeUsageSource::backwardChunkSize + 1000 : 5000 + 997 * i);
        text += assistantLine(std::to_string(i), june(100 + i), 1, 1);
        wanted.push_back("req_" + std::to_string(i));
        ++expected;
    }
    t.session("p", "big.jsonl", text);
    auto ids = t.ids(since);
    std::sort(wanted.begin(), wanted.end());
    EXPECT_EQ(ids, wanted);
    EXPECT_GT(expected, 10);
}

TEST(ClaudeUsageSource, RewrittenOrTruncatedFilesAreReadAgainFromTheEnd) {
    Transcripts t;
    auto file = t.session("p", "s.jsonl",
                          assistantLine("a", june(1), 1, 0) + assistantLine("b", june(2), 1, 0) +
                              assistantLine("c", june(3), 1, 0));
    EXPECT_EQ(t.ids(june(0)).size(), 3u);
    writeText(file, assistantLine("d", june(4), 1, 0));
    EXPECT_EQ(t.ids(june(0)), (Ids{"req_d"}));
    writeText(file, "");
    EXPECT_TRUE(t.ids(june(0)).empty());
}

TEST(ClaudeUsageSource, OnlyRecentSessionsAreOpenedAndGoneOnesAreForgotten) {
    Transcripts t;
    // Modified before the window: never opened, whatever it says.
    auto stale = t.session("-Users-ann-old", "stale.jsonl", assistantLine("stale", june(5), 1, 0), june(-1));
    auto live = t.session("-Users-ann-new", "live.jsonl", assistantLine("live", june(5), 1, 0), june(5));
    t.session(".hidden", "h.jsonl", assistantLine("hidden", june(5), 1, 0));
    t.session("-Users-ann-new", "notes.txt", assistantLine("txt", june(5), 1, 0));
    t.session("-Users-ann-new", ".h.jsonl", assistantLine("dot", june(5), 1, 0));
    std::filesystem::create_directories(t.root / "-Users-ann-new" / "folder.jsonl");
    std::filesystem::create_symlink(t.root / "nowhere", t.root / "-Users-ann-new" / "dangling.jsonl");
    writeText(t.root / "stray.jsonl", assistantLine("stray", june(5), 1, 0));
    auto locked = t.session("-Users-ann-new", "locked.jsonl", assistantLine("locked", june(5), 1, 0));
    std::filesystem::permissions(locked, std::filesystem::perms::none);

    auto ids = t.ids(june(0));
    std::erase(ids, std::string("req_locked")); // readable anyway when the tests run as root
    EXPECT_EQ(ids, (Ids{"req_live"}));
    EXPECT_FALSE(t.source.cursor(stale));
    EXPECT_TRUE(t.source.isAvailable());

    std::filesystem::remove(live);
    EXPECT_TRUE(t.ids(june(0)).empty() || t.ids(june(0)) == Ids{"req_locked"});
    EXPECT_FALSE(t.source.cursor(live));

    ClaudeUsageSource missing(t.home / "nothing");
    EXPECT_FALSE(missing.isAvailable());
    EXPECT_TRUE(missing.entries(june(0)).empty());
    EXPECT_EQ(ClaudeUsageSource::defaultRoot({{"HOME", "/Users/ann"}}), "/Users/ann/.claude/projects");
}

TEST(ClaudeUsageSource, FindsUsageAtEveryAlignmentAndNotInsideEscapedText) {
    Transcripts t;
    std::string text;
    Ids wanted;
    for (int pad = 0; pad < 130; ++pad) {
        // Padding shifts each key to another place in the search's 64-byte rounds; the escaped
        // mention inside the text must not count.
        text += R"({"type":"user","message":{"content":"says \"usage\" )" + std::string(pad, 'u') + "\"}}\n";
        text += assistantLine(std::to_string(pad), june(1), 1, 0);
        wanted.push_back("req_" + std::to_string(pad));
    }
    t.session("p", "s.jsonl", text);
    auto ids = t.ids(june(0));
    std::sort(wanted.begin(), wanted.end());
    EXPECT_EQ(ids, wanted);
}

TEST(ClaudeUsageSource, ScansAlikeOnOneThreadOrSeveral) {
    Transcripts t;
    std::mt19937 random(3);
    for (int folder = 0; folder < 9; ++folder) {
        for (int session = 0; session < 1 + folder % 4; ++session) {
            std::string text;
            for (int line = 0; line < 20 + static_cast<int>(random() % 40); ++line) {
                const auto id = std::to_string(folder) + "-" + std::to_string(session) + "-" + std::to_string(line % 15);
                text += random() % 3 == 0 ? userLine(june(line), 100 + random() % 5000)
                                          : assistantLine(id, june(line - 10), static_cast<int>(random() % 100), line);
            }
            t.session("-Users-ann-p" + std::to_string(folder), "s" + std::to_string(session) + ".jsonl", text, june(30));
        }
    }
    auto sorted = [](std::vector<ClaudeUsageEntry> entries) {
        std::sort(entries.begin(), entries.end(), [](const auto& a, const auto& b) {
            return std::tie(a.id, a.timestamp.sinceReferenceDate, a.outputTokens, a.inputTokens) <
                   std::tie(b.id, b.timestamp.sinceReferenceDate, b.outputTokens, b.inputTokens);
        });
        return entries;
    };
    ClaudeUsageSource one(t.root, 1), three(t.root, 3);
    const auto expected = sorted(one.entries(june(0)));
    EXPECT_GT(expected.size(), 200u);
    EXPECT_EQ(sorted(three.entries(june(0))), expected);
    // Refreshes too: nothing new, then one session grown.
    EXPECT_EQ(sorted(three.entries(june(0))), expected);
    append(t.root / "-Users-ann-p4" / "s0.jsonl", assistantLine("late", june(31), 5, 5));
    EXPECT_EQ(sorted(three.entries(june(0))), sorted(one.entries(june(0))));
}

TEST(ClaudeUsageSource, TakingTheEntriesHandsThemOverAndStartsAfresh) {
    Transcripts t;
    auto file = t.session("p", "s.jsonl", assistantLine("a", june(1), 1, 0) + assistantLine("b", june(2), 1, 0));
    const auto kept = t.source.entries(june(0));
    EXPECT_EQ(t.source.takeEntries(june(0)), (std::vector<std::vector<ClaudeUsageEntry>>{kept}));
    EXPECT_FALSE(t.source.cursor(file));
    // Read from scratch again, not only what was appended since.
    append(file, assistantLine("c", june(3), 1, 0));
    EXPECT_EQ(t.ids(june(0)), (Ids{"req_a", "req_b", "req_c"}));
}

TEST(ClaudeUsageSource, ABackwardReadKeepsLinesLongerThanItsBuffer) {
    Transcripts t;
    // A line of several megabytes between usage lines: the piece carried from chunk to chunk
    // outgrows the room the read walks down through.
    auto text = assistantLine("before", june(1), 1, 0) + userLine(june(2), 5 * ClaudeUsageSource::backwardChunkSize + 123) +
                assistantLine("after", june(3), 1, 0);
    auto huge = assistantLine("huge", june(4), 7, 0);
    huge.insert(huge.find("Done."), std::string(9 * ClaudeUsageSource::backwardChunkSize, 'z'));
    text += huge + assistantLine("last", june(5), 1, 0);
    t.session("p", "s.jsonl", text);
    EXPECT_EQ(t.ids(june(0)), (Ids{"req_after", "req_before", "req_huge", "req_last"}));
}

namespace {

/// A sub-agent's message as its parent session mirrors it while the agent runs.
std::string progressLine(const std::string& requestId, Date at, int input, int output) {
    auto nested = assistantLine(requestId, at, input, output);
    nested.pop_back(); // its line feed
    return R"({"parentUuid":"p","isSidechain":false,"type":"progress","data":{"message":)" + nested +
           R"(,"type":"agent_progress"},"uuid":"outer-)" + requestId + R"(","timestamp":")" + iso8601(at) + "\"}\n";
}

} // namespace

TEST(ClaudeUsageSource, SubAgentsCountFromTheirOwnTranscriptsOrTheirParentsMirrorOnce) {
    Transcripts t;
    // One session whose sub-agent kept its transcript, and one whose sub-agent's file is gone.
    t.session("-Users-ann-atlas", "s1.jsonl", assistantLine("main", june(1), 10, 1) + progressLine("agent", june(2), 20, 2));
    t.session("-Users-ann-atlas", "s1/subagents/agent-a1.jsonl", assistantLine("agent", june(2), 20, 2));
    t.session("-Users-ann-atlas", "s2.jsonl", progressLine("lost", june(3), 30, 3));
    t.session("-Users-ann-atlas", "s2/tool-results/out.jsonl", assistantLine("elsewhere", june(3), 1, 1));
    const FixedOffsetCalendar utc;
    auto entries = t.source.entries(june(0));
    EXPECT_EQ(t.ids(june(0)), (Ids{"req_agent", "req_agent", "req_lost", "req_main"}))
        << "only <session>/subagents holds transcripts of the session's own";
    for (const auto& entry : entries) EXPECT_EQ(entry.project, ClaudeUsage::projectName("-Users-ann-atlas")) << entry.id;
    auto week = ClaudeUsage::totals(entries, ClaudeUsageScope::week, june(4), utc);
    EXPECT_EQ(week.inputTokens, 60) << "the agent's message, in both places, once";
    EXPECT_EQ(week.outputTokens, 6);

    // The folder is followed as it grows, like any other transcript.
    append(t.root / "-Users-ann-atlas/s1/subagents/agent-a1.jsonl", assistantLine("agent2", june(3), 5, 5));
    EXPECT_EQ(t.ids(june(0)), (Ids{"req_agent", "req_agent", "req_agent2", "req_lost", "req_main"}));
}
