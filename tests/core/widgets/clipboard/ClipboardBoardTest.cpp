#include "CorvaneCore/widgets/clipboard/ClipboardBoard.hpp"

#include <gtest/gtest.h>

using namespace corvane;

namespace {

constexpr double kDay = 86400;
const Date kNow{800000000};

ClipboardItem copied(std::string text, double daysAgo, bool pinned = false) {
    ClipboardItem item{.id = Uuid::generate(), .capturedAt = kNow - daysAgo * kDay, .isPinned = pinned};
    item.text = std::move(text);
    return item;
}

std::vector<std::string> texts(const std::vector<ClipboardItem>& items) {
    std::vector<std::string> result;
    for (const auto& item : items) result.push_back(item.text.value_or("?"));
    return result;
}

} // namespace

TEST(ClipboardBoard, RetentionAgesOutAndTrimsOnlyUnpinnedItems) {
    ClipboardSettings settings; // 30 days, 200 items
    auto kept = ClipboardBoard::applyRetention(
        {copied("old", 31), copied("pinned old", 60, true), copied("recent", 29.9), copied("new", 0)}, settings, kNow);
    EXPECT_EQ(texts(kept), (std::vector<std::string>{"pinned old", "new", "recent"}));

    settings.historyLimit = 3;
    kept = ClipboardBoard::applyRetention({copied("a", 5), copied("b", 4, true), copied("c", 3), copied("d", 2, true),
                                           copied("e", 1)},
                                          settings, kNow);
    EXPECT_EQ(texts(kept), (std::vector<std::string>{"d", "b", "e"}));

    // Pinned items beyond the limit stay; everything unpinned goes.
    settings.historyLimit = 1;
    kept = ClipboardBoard::applyRetention({copied("a", 1, true), copied("b", 2, true), copied("c", 0)}, settings, kNow);
    EXPECT_EQ(texts(kept), (std::vector<std::string>{"a", "b"}));

    // A zero limit or zero days would empty the history at once; both count as one.
    settings = {.historyLimit = 0, .retentionDays = 0};
    kept = ClipboardBoard::applyRetention({copied("a", 0.5), copied("b", 0.2)}, settings, kNow);
    EXPECT_EQ(texts(kept), (std::vector<std::string>{"b"}));
}

TEST(ClipboardBoard, CopyingTheSameTextAgainMovesTheEarlierItemUpWithItsPinAndPreview) {
    auto first = copied("hello", 3);
    first.ogTitle = "kept";
    auto items = ClipboardBoard::insert({}, first);
    items = ClipboardBoard::insert(items, copied("other", 2));
    auto again = copied("hello", 0);
    again.sourceAppName = "Notes";
    items = ClipboardBoard::insert(items, again);
    ASSERT_EQ(texts(items), (std::vector<std::string>{"hello", "other"}));
    EXPECT_EQ(items[0].id, first.id);
    EXPECT_EQ(items[0].capturedAt, kNow);
    EXPECT_EQ(items[0].ogTitle, "kept");
    EXPECT_EQ(items[0].sourceAppName, "Notes");

    // A pinned item stays above a newer capture.
    items[1].isPinned = true;
    items = ClipboardBoard::insert(items, copied("newest", 0));
    EXPECT_EQ(texts(items), (std::vector<std::string>{"other", "newest", "hello"}));
}

TEST(ClipboardBoard, SearchMatchesEveryWordIgnoringCaseButNeverInsideSecrets) {
    auto link = copied("https://example.com/docs", 1);
    link.ogTitle = "Swift Documentation";
    auto secret = copied("Sup3rSecret!", 2);
    secret.isSensitive = true;
    secret.sourceAppName = "1Password";
    ClipboardItem file{.id = Uuid::generate(), .kind = ClipboardItem::Kind::file, .fileURL = "file:///Users/ada/Budget.xlsx"};
    std::vector<ClipboardItem> items{link, secret, file, copied("Meeting notes for Monday", 3)};

    EXPECT_EQ(ClipboardBoard::search(items, "  ").size(), 4u);
    EXPECT_EQ(texts(ClipboardBoard::search(items, "swift DOCS")), (std::vector<std::string>{"https://example.com/docs"}));
    EXPECT_EQ(texts(ClipboardBoard::search(items, "monday notes")), (std::vector<std::string>{"Meeting notes for Monday"}));
    EXPECT_EQ(ClipboardBoard::search(items, "budget")[0].id, file.id);
    EXPECT_TRUE(ClipboardBoard::search(items, "Secret").empty());
    EXPECT_EQ(ClipboardBoard::search(items, "1password")[0].id, secret.id);
}

TEST(ClipboardBoard, PanelSaysLoadingThenEmptyThenNoMatch) {
    ClipboardState state;
    EXPECT_EQ(ClipboardBoard::panelMessage(state, "")->title, "Loading clipboard\u2026");
    state.hasRead = true;
    auto empty = ClipboardBoard::panelMessage(state, "");
    EXPECT_EQ(empty->title, "Nothing copied yet");
    EXPECT_EQ(empty->detail, "Copy something on your Mac and it will show up here.");
    state.items = {copied("apple", 0)};
    EXPECT_EQ(ClipboardBoard::panelMessage(state, ""), std::nullopt);
    EXPECT_EQ(ClipboardBoard::panelMessage(state, "pear")->title, "Try a different word.");
    EXPECT_EQ(ClipboardBoard::tileCount(state), 1);
}
