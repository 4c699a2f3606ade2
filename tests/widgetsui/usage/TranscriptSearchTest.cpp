#include "CorvaneWidgetsUI/usage/TranscriptSearch.hpp"

#include <gtest/gtest.h>

#include <random>
#include <string>

using namespace corvane;
using TranscriptSearch::Level;

namespace {

/// JSON-looking bytes that tempt the search: quotes, 'u's and near misses of the key.
std::string noise(std::mt19937& random, std::size_t size) {
    static const std::string pieces[] = {"\"", "u", "\"uuid\":\"", "\"user\"", "\"usages\"", "\"usag\"", "\\\"usage\\\"",
                                         "usage\"", "\"Usage\"", "x", "\n", "{\"model\":\"", " "};
    std::string text;
    while (text.size() < size) text += pieces[random() % std::size(pieces)];
    text.resize(size);
    return text;
}

} // namespace

TEST(TranscriptSearch, EveryLevelFindsTheFirstKeyWhereverItLies) {
    const auto& levels = TranscriptSearch::availableLevels();
    ASSERT_FALSE(levels.empty());
    EXPECT_EQ(levels.front(), Level::portable);
    std::mt19937 random(11);
    for (int round = 0; round < 3000; ++round) {
        // Keys at every offset from a round's start and end, in buffers of every length around
        // the 64-byte rounds and their 80-byte tail.
        auto text = noise(random, random() % 300);
        if (round % 4 != 0) text.insert(random() % (text.size() + 1), TranscriptSearch::usageKey);
        if (round % 7 == 0) text.insert(random() % (text.size() + 1), TranscriptSearch::usageKey);
        const auto expected = text.find(TranscriptSearch::usageKey);
        const char* begin = text.data();
        const char* end = begin + text.size();
        for (auto level : levels) {
            const char* hit = TranscriptSearch::findUsageKey(begin, end, level);
            EXPECT_EQ(hit ? static_cast<std::size_t>(hit - begin) : std::string::npos, expected)
                << "level " << static_cast<int>(level) << " in " << text;
        }
        const char* best = TranscriptSearch::findUsageKey(begin, end);
        EXPECT_EQ(best ? static_cast<std::size_t>(best - begin) : std::string::npos, expected);
    }
}

TEST(TranscriptSearch, LastLineFeedAtEveryDistanceFromTheEnd) {
    std::mt19937 random(5);
    for (std::size_t size = 0; size < 200; ++size) {
        std::string text(size, 'x');
        for (int feeds = 0; feeds < 3; ++feeds) {
            const char* hit = TranscriptSearch::lastLineFeed(text.data(), text.data() + text.size());
            EXPECT_EQ(hit ? static_cast<std::size_t>(hit - text.data()) : std::string::npos, text.rfind('\n'));
            if (size > 0) text[random() % size] = '\n';
        }
    }
}
