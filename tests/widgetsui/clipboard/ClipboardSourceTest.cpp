#include "CorvaneStorage/widgets/clipboard/ClipboardHistoryFile.hpp"
#include "fakes/ReadOnlyFolder.hpp"
#include "widgetsui/clipboard/ClipboardHarness.hpp"

#include <gtest/gtest.h>

using namespace corvane;

namespace {

std::vector<std::string> texts(const ClipboardState& state) {
    std::vector<std::string> result;
    for (const auto& item : state.items) result.push_back(item.text.value_or(item.fileURL.value_or("image")));
    return result;
}

} // namespace

TEST(ClipboardSource, CapturesEachNewCopyOnceButNotItsOwnWrites) {
    ClipboardSourceHarness h;
    auto state = h.source.state(h.settings, h.frontmost);
    EXPECT_TRUE(state.hasRead);
    EXPECT_TRUE(state.items.empty());

    state = h.copy("first");
    ASSERT_EQ(texts(state), (std::vector<std::string>{"first"}));
    EXPECT_EQ(state.items[0].sourceAppName, "TextEdit");
    EXPECT_EQ(state.items[0].byteSize, 5);
    EXPECT_EQ(state.items[0].capturedAt, h.clock.now());
    EXPECT_EQ(h.poll().items.size(), 1u); // nothing new on the pasteboard
    h.clock.advance(1);
    state = h.copy("second");
    EXPECT_EQ(texts(state), (std::vector<std::string>{"second", "first"}));
    EXPECT_EQ(state.unseenCount, 2);

    // Copying from the history puts the item back, and the next poll takes it for our own write.
    auto first = state.items[1].id;
    h.source.write(first);
    EXPECT_EQ(h.pasteboard.content().text, "first");
    EXPECT_EQ(h.source.lastWrittenChangeCount(), h.pasteboard.changeCount());
    state = h.poll();
    EXPECT_EQ(texts(state), (std::vector<std::string>{"second", "first"}));
    EXPECT_EQ(state.unseenCount, 2);
    EXPECT_EQ(h.source.markSeen().unseenCount, 0);

    // Copying the same text again elsewhere moves it up instead of adding it twice.
    h.clock.advance(1);
    state = h.copy("first");
    EXPECT_EQ(texts(state), (std::vector<std::string>{"first", "second"}));
    EXPECT_EQ(state.items[0].id, first);
    EXPECT_EQ(state.unseenCount, 1);

    // A secret goes back on the pasteboard concealed.
    h.copy("s3cr3t-T0ken");
    h.source.write(h.source.current().items[0].id);
    EXPECT_TRUE(h.pasteboard.content().concealed);
}

TEST(ClipboardSource, AcceptsCopiesUnderTheSettings) {
    ClipboardSourceHarness h;
    h.source.state(h.settings, h.frontmost);

    // Password managers mark their copies; only that marker counts.
    h.pasteboard.copyText("from a vault", {"public.utf8-plain-text", "org.nspasteboard.TransientType"});
    EXPECT_TRUE(h.poll().items.empty());
    h.pasteboard.copyText("concealed only", {"public.utf8-plain-text", "org.nspasteboard.ConcealedType"});
    EXPECT_EQ(h.poll().items.size(), 1u);
    h.settings.ignorePasswordManagers = false;
    h.pasteboard.copyText("from a vault", {"public.utf8-plain-text", "org.nspasteboard.TransientType"});
    EXPECT_EQ(h.poll().items.size(), 2u);

    // Long texts keep their first 200000 characters, counted as characters, not bytes.
    std::string longText;
    for (int i = 0; i < 200001; ++i) longText += "\u00e9";
    auto item = h.copy(longText).items[0];
    EXPECT_EQ(item.text->size(), 400000u);
    EXPECT_EQ(item.byteSize, 400000);

    auto token = h.copy("ghp_9aZ4kQ7pL2").items[0];
    EXPECT_TRUE(token.isSensitive);
    EXPECT_EQ(token.previewLine(), token.maskedLine());

    h.settings.maxImageBytes = 4;
    h.pasteboard.copy({{"public.png"}, std::nullopt, Bytes{1, 2, 3, 4, 5}, std::nullopt});
    EXPECT_EQ(h.poll().items.size(), 4u); // too big
    h.pasteboard.copy({{"public.png"}, std::nullopt, Bytes{1, 2, 3, 4}, "image.png"});
    auto image = h.poll().items[0];
    EXPECT_EQ(image.kind, ClipboardItem::Kind::image);
    EXPECT_EQ(image.byteSize, 4);

    // A copied file brings its name as text too; the file wins and its size is read from disk.
    writeText(h.dir / "notes.txt", "twelve bytes");
    auto url = "file://" + (h.dir / "notes.txt").string();
    h.pasteboard.copy({{"public.file-url", "public.utf8-plain-text"}, url, std::nullopt, "notes.txt"});
    auto file = h.poll().items[0];
    EXPECT_EQ(file.kind, ClipboardItem::Kind::file);
    EXPECT_EQ(file.fileURL, url);
    EXPECT_EQ(file.byteSize, 12);

    h.pasteboard.copy({{"com.example.private"}, std::nullopt, std::nullopt, std::nullopt});
    EXPECT_EQ(h.poll().items.size(), 6u); // nothing usable
}

TEST(ClipboardSource, SavesABurstOnceAfterTheDelayAndTheNextLaunchReadsIt) {
    ClipboardSourceHarness h;
    h.source.state(h.settings, h.frontmost);
    h.copy("one");
    h.copy("two");
    h.source.togglePin(h.source.current().items[1].id);
    EXPECT_EQ(h.scheduler.pendingCount(), 1u); // one pending save, replaced each time
    h.settle(ClipboardSource::saveDelay - 0.1);
    EXPECT_FALSE(std::filesystem::exists(h.storeURL()));
    h.settle(0.1);
    ASSERT_TRUE(std::filesystem::exists(h.storeURL()));
    EXPECT_EQ(h.secrets.writes, 1);

    ClipboardSourceHarness next;
    std::filesystem::copy_file(h.storeURL(), next.storeURL());
    next.secrets.secrets = h.secrets.secrets;
    auto state = next.source.state(next.settings, next.frontmost);
    EXPECT_EQ(texts(state), (std::vector<std::string>{"one", "two"}));
    EXPECT_TRUE(state.items[0].isPinned);
    EXPECT_EQ(state.unseenCount, 0);
    EXPECT_EQ(state.trouble, std::nullopt);

    // Forgetting removes the file and its key.
    state = next.source.forgetEverything();
    EXPECT_TRUE(state.items.empty());
    EXPECT_FALSE(std::filesystem::exists(next.storeURL()));
    EXPECT_TRUE(next.secrets.secrets.empty());
}

TEST(ClipboardSource, WithoutPersistenceNothingIsReadOrWritten) {
    ClipboardSourceHarness h;
    h.settings.persistAcrossRestarts = false;
    writeText(h.storeURL(), std::string(28, 'x'));
    auto state = h.source.state(h.settings, h.frontmost);
    EXPECT_TRUE(state.hasRead);
    EXPECT_EQ(state.trouble, std::nullopt);
    h.copy("kept in memory");
    h.settle(5);
    EXPECT_EQ(readText(h.storeURL()), std::string(28, 'x'));
    EXPECT_TRUE(h.secrets.secrets.empty());
}

TEST(ClipboardSource, AnUnreadableFileIsReportedKeptAsideAndNeverWrittenOver) {
    ClipboardSourceHarness h;
    writeText(h.storeURL(), std::string(28, 'x'));
    h.secrets.secrets[{"dev.tessik.corvane.clipboard", "primary"}] = Bytes(32, 9);
    auto state = h.source.state(h.settings, h.frontmost);
    ASSERT_TRUE(state.trouble);
    EXPECT_EQ(state.trouble->kind, ClipboardTrouble::Kind::persistenceFailed);
    EXPECT_EQ(state.trouble->message, "Failed to read the encrypted clipboard because the file is incomplete");
    EXPECT_EQ(state.trouble->title(), "Cannot save the clipboard");
    EXPECT_TRUE(h.log.contains("clipboard load failed: Failed to read the encrypted clipboard because the file is "
                               "incomplete"));

    // Copying goes on; the first save keeps the damaged file beside the new one.
    h.copy("still works");
    h.settle(ClipboardSource::saveDelay);
    EXPECT_EQ(readText(ClipboardHistoryFile(h.storeURL(), h.secrets).damagedURL()), std::string(28, 'x'));
    EXPECT_EQ(ClipboardHistoryFile(h.storeURL(), h.secrets).read()->size(), 1u);
    EXPECT_EQ(h.source.current().trouble, std::nullopt);
}

TEST(ClipboardSource, AKeychainThatDoesNotAnswerKeepsTheFileUntilItDoes) {
    ClipboardSourceHarness h;
    ClipboardHistoryFile(h.storeURL(), h.secrets).write(
        {ClipboardItem{.id = Uuid::generate(), .capturedAt = h.clock.now(), .text = "stored"}});
    const auto stored = readText(h.storeURL());
    h.secrets.failWith = -25308;
    auto state = h.source.state(h.settings, h.frontmost);
    ASSERT_TRUE(state.trouble);
    EXPECT_TRUE(state.trouble->isKeychain());
    EXPECT_EQ(state.trouble->title(), "Cannot reach the Keychain");
    EXPECT_EQ(state.trouble->message, "Failed to access the Keychain because the system returned -25308");

    h.copy("new");
    h.settle(ClipboardSource::saveDelay);
    EXPECT_EQ(readText(h.storeURL()), stored);
    EXPECT_EQ(texts(h.source.current()), (std::vector<std::string>{"new"}));

    // Once the keychain answers, the next save reads the stored history in before writing.
    h.secrets.failWith.reset();
    h.copy("newer");
    h.settle(ClipboardSource::saveDelay);
    EXPECT_EQ(h.source.current().trouble, std::nullopt);
    EXPECT_EQ(ClipboardHistoryFile(h.storeURL(), h.secrets).read()->size(), 3u);
}

TEST(ClipboardSource, AFailedWriteKeepsTheHistoryInMemoryAndTheNextSaveRecovers) {
    ClipboardSourceHarness h;
    h.source.state(h.settings, h.frontmost);
    h.copy("precious");
    {
        ReadOnlyFolder readOnly(h.dir.path());
        h.settle(ClipboardSource::saveDelay);
    }
    auto state = h.source.current();
    ASSERT_TRUE(state.trouble);
    EXPECT_EQ(state.trouble->kind, ClipboardTrouble::Kind::persistenceFailed);
    EXPECT_NE(state.trouble->message.find("clipboard.json.enc"), std::string::npos);
    EXPECT_EQ(texts(state), (std::vector<std::string>{"precious"}));
    EXPECT_FALSE(std::filesystem::exists(h.storeURL()));

    h.copy("more");
    h.settle(ClipboardSource::saveDelay);
    EXPECT_EQ(h.source.current().trouble, std::nullopt);
    EXPECT_EQ(ClipboardHistoryFile(h.storeURL(), h.secrets).read()->size(), 2u);
}

TEST(ClipboardSource, FetchesPreviewsOnlyForPublicLinksAndOnlyTheLatestWaitingOne) {
    ClipboardSourceHarness h;
    h.source.state(h.settings, h.frontmost);
    h.http.reply("https://example.com/a", 200,
                 R"(<meta property="og:title" content="Page A"><meta property="og:image" content="/a.png">)",
                 "text/html; charset=utf-8");
    h.http.reply("https://example.com/a.png", 200, "PNG", "image/png");

    h.copy("https://example.com/b"); // replaced by the next before it starts
    h.copy("https://example.com/a");
    h.copy("http://192.168.1.1/admin");
    h.settle();
    auto requests = h.http.requests();
    ASSERT_EQ(requests.size(), 2u);
    EXPECT_EQ(requests[0].url, "https://example.com/a");
    EXPECT_EQ(requests[0].headers.at("Accept"), "text/html,application/xhtml+xml");
    EXPECT_EQ(requests[0].userAgent, "CorvaneBot/0.1");
    EXPECT_EQ(requests[1].url, "https://example.com/a.png");

    auto state = h.source.current();
    ASSERT_EQ(state.items.size(), 3u);
    const auto& link = state.items[1];
    EXPECT_EQ(link.text, "https://example.com/a");
    EXPECT_EQ(link.ogTitle, "Page A");
    EXPECT_EQ(link.ogImageData, (Bytes{'P', 'N', 'G'}));
    EXPECT_EQ(link.ogFetchedAt, h.clock.now());
    EXPECT_TRUE(link.shouldShowOGPreview());

    // The preview is saved with the item.
    h.settle(ClipboardSource::saveDelay);
    EXPECT_EQ(ClipboardHistoryFile(h.storeURL(), h.secrets).read()->at(1).ogTitle, "Page A");

    h.settings.fetchWebsitePreviews = false;
    h.copy("https://example.com/c");
    h.settle();
    EXPECT_EQ(h.http.requests().size(), 2u);
}

TEST(ClipboardSource, PreviewsFollowRedirectsOnlyTowardsPublicHosts) {
    ClipboardSourceHarness h;
    h.source.state(h.settings, h.frontmost);
    h.http.redirect("https://short.example/x", "https://example.com/long");
    h.http.reply("https://example.com/long", 200, R"(<title>Long page</title>)", "text/html");
    h.http.redirect("https://short.example/y", "http://10.0.0.1/router");
    h.http.reply("http://10.0.0.1/router", 200, R"(<title>Router</title>)", "text/html");

    h.copy("https://short.example/x");
    h.settle();
    h.copy("https://short.example/y");
    h.settle();

    std::vector<std::string> asked;
    for (const auto& request : h.http.requests()) {
        EXPECT_FALSE(request.followRedirects);
        asked.push_back(request.url);
    }
    EXPECT_EQ(asked, (std::vector<std::string>{"https://short.example/x", "https://example.com/long",
                                               "https://short.example/y"}));
    auto state = h.source.current();
    ASSERT_EQ(state.items.size(), 2u);
    EXPECT_EQ(state.items[1].ogTitle, "Long page");
    EXPECT_EQ(state.items[0].ogTitle, std::nullopt);
}
