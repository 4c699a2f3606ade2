#include "CorvaneStorage/storage/DataFileError.hpp"
#include "CorvaneStorage/widgets/ColourStore.hpp"
#include "CorvaneStorage/widgets/EmojiStore.hpp"
#include "fakes/RecordingNotifier.hpp"
#include "fakes/TemporaryDirectory.hpp"

#include <gtest/gtest.h>

using namespace corvane;

TEST(ColourStore, ChangesSaveAnnounceAndBuildOnWhatOthersSaved) {
    TemporaryDirectory dir;
    RecordingNotifier notifier;
    ColourStore store(dir / "colours.json", &notifier);
    ColourStore other(dir / "colours.json");
    EXPECT_FALSE(std::filesystem::exists(dir / "colours.json"));

    PickedColour orange{Uuid::generate(), 255, 159, 10, Date{10}};
    PickedColour teal{Uuid::generate(), 0, 128, 128, Date{20}};
    store.add(orange, 24);
    other.add(teal, 24);
    store.togglePin(orange.id);
    ASSERT_EQ(store.history().colours.size(), 2u);
    other.clearUnpinned();
    store.reload();
    ASSERT_EQ(store.history().colours.size(), 1u);
    EXPECT_TRUE(store.history().colours[0].isPinned);
    store.remove(orange.id);
    EXPECT_TRUE(ColourStore(dir / "colours.json").history().colours.empty());
    EXPECT_EQ(notifier.posted,
              std::vector<std::string>(3, "dev.tessik.corvane.colours-changed"));
}

TEST(EmojiStore, KeepsRecentEmojiAcrossOpeningsAndAnnouncesChanges) {
    TemporaryDirectory dir;
    RecordingNotifier notifier;
    EmojiStore store(dir / "emoji.json", &notifier);
    store.add("🙂");
    store.add("🚀");
    EXPECT_EQ(EmojiStore(dir / "emoji.json").history().emoji, (std::vector<std::string>{"🚀", "🙂"}));
    store.clear();
    EXPECT_TRUE(EmojiStore(dir / "emoji.json").history().emoji.empty());
    EXPECT_EQ(notifier.posted, std::vector<std::string>(3, "dev.tessik.corvane.emoji-changed"));

    writeText(dir / "emoji.json", "not json");
    EXPECT_THROW(EmojiStore(dir / "emoji.json"), DataFileError);
}
