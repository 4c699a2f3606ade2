#include "CorvaneCore/support/DecodingError.hpp"
#include "CorvaneCore/widgets/colour/ColourHistory.hpp"
#include "CorvaneCore/widgets/emoji/EmojiHistory.hpp"

#include <gtest/gtest.h>

using namespace corvane;

namespace {

PickedColour grey(int level, bool pinned = false) {
    return PickedColour{Uuid::generate(), level, level, level, Date{1000.0 + level}, pinned};
}

std::vector<int> levels(const ColourHistory& history) {
    std::vector<int> result;
    for (const auto& c : history.colours) result.push_back(c.red);
    return result;
}

} // namespace

TEST(ColourHistory, RepickingMovesTheColourToTheFrontKeepingItsPin) {
    ColourHistory history;
    for (int level : {1, 2, 3}) history.add(grey(level), 24);
    history.togglePin(history.colours[2].id); // grey 1
    auto again = grey(1);
    history.add(again, 24);
    EXPECT_EQ(levels(history), (std::vector<int>{1, 3, 2}));
    EXPECT_EQ(history.latest()->id, again.id);
    EXPECT_TRUE(history.latest()->isPinned);
}

TEST(ColourHistory, TrimClampsTheLimitAndNeverDropsPinnedColours) {
    struct Case {
        int limit;
        std::size_t kept;
    };
    for (auto [limit, kept] : {Case{100, 60}, Case{2, 4}, Case{24, 24}, Case{-3, 4}}) {
        ColourHistory history;
        for (int level = 0; level < 70; ++level) history.add(grey(level), 100);
        history.trim(limit);
        EXPECT_EQ(history.colours.size(), kept) << limit;
        EXPECT_EQ(history.colours.front().red, 69) << limit;
    }

    // Pinned colours at the old end survive; the unpinned ones nearest them go first.
    ColourHistory history;
    history.add(grey(0, true), 60);
    history.add(grey(1, true), 60);
    for (int level = 2; level < 8; ++level) history.add(grey(level), 60);
    history.trim(4);
    EXPECT_EQ(levels(history), (std::vector<int>{7, 6, 1, 0}));
    history.add(grey(8), 4);
    EXPECT_EQ(levels(history), (std::vector<int>{8, 7, 1, 0}));
}

TEST(ColourHistory, RemoveTakesPinnedEntriesTooWhileClearKeepsThem) {
    ColourHistory history;
    for (int level : {1, 2, 3, 4}) history.add(grey(level, level % 2 == 0), 24);
    history.remove(history.colours[0].id); // grey 4, pinned
    EXPECT_EQ(levels(history), (std::vector<int>{3, 2, 1}));
    history.togglePin(history.colours[0].id);
    history.togglePin(history.colours[1].id); // grey 2 unpinned again
    history.clearUnpinned();
    EXPECT_EQ(levels(history), (std::vector<int>{3}));
    history.remove(Uuid::generate());
    EXPECT_EQ(history.colours.size(), 1u);
    EXPECT_EQ(ColourHistory{}.latest(), nullptr);
}

TEST(ColourHistory, FileRoundTripsAndReadsLeniently) {
    ColourHistory history;
    history.add(grey(10, true), 24);
    history.add(PickedColour{Uuid::generate(), 255, 159, 10, Date{123.5}}, 24);
    EXPECT_EQ(colourHistoryFromText(colourHistoryText(history)), history);

    auto read = colourHistoryFromText(
        R"({"colours": [{"id": "0B0B27A4-38C2-4C8D-9E0E-3F1D2A7B6C5D", "red": 300, "green": -4, "blue": 7}]})");
    ASSERT_EQ(read.colours.size(), 1u);
    EXPECT_EQ(read.version, ColourHistory::currentVersion);
    EXPECT_EQ(read.colours[0].red, 255);
    EXPECT_EQ(read.colours[0].green, 0);
    EXPECT_FALSE(read.colours[0].isPinned);
    EXPECT_EQ(colourHistoryFromText("{}"), ColourHistory{});
    EXPECT_THROW(colourHistoryFromText(R"({"colours": [{"id": "nope", "red": 1, "green": 2, "blue": 3}]})"),
                 DecodingError);
}

TEST(EmojiHistory, MostRecentFirstOnceEachAndCapped) {
    EmojiHistory history;
    for (auto symbol : {"🙂", "🚀", "🙂", "", "🎉"}) history.add(symbol);
    EXPECT_EQ(history.emoji, (std::vector<std::string>{"🎉", "🙂", "🚀"}));
    for (int i = 0; i < 40; ++i) history.add("e" + std::to_string(i));
    ASSERT_EQ(history.emoji.size(), EmojiHistory::limit);
    EXPECT_EQ(history.emoji.front(), "e39");
    EXPECT_EQ(history.emoji.back(), "e16");

    EXPECT_EQ(emojiHistoryFromText(emojiHistoryText(history)), history);
    EXPECT_EQ(emojiHistoryFromText(R"({"emoji": ["a", "b", "a", "c"]})").emoji,
              (std::vector<std::string>{"a", "b", "c"}));
    history.clear();
    EXPECT_TRUE(history.emoji.empty());
}
