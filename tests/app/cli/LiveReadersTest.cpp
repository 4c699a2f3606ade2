// The connected widgets' readers as a running host calls them: again and again, from queues of
// their own.

#include "CorvaneApp/cli/LiveReaders.hpp"
#include "CorvaneApp/cli/ToolContext.hpp"
#include "CorvaneCore/widgets/DockWidget.hpp"
#include "CorvaneStorage/widgets/clipboard/ClipboardHistoryFile.hpp"
#include "fakes/CannedHttpClient.hpp"
#include "fakes/CapturingLog.hpp"
#include "fakes/FixedOffsetCalendar.hpp"
#include "fakes/InMemoryUserDefaults.hpp"
#include "fakes/ManualClock.hpp"
#include "fakes/RecordingNotifier.hpp"
#include "fakes/ScriptedProcessRunner.hpp"
#include "fakes/TemporaryDirectory.hpp"
#include "platform/posix/FileSecretStore.hpp"

#include <gtest/gtest.h>

#include <sstream>

using namespace corvane;

TEST(LiveReaders, TheClipboardHistoryIsOpenedAgainOnlyWhenItsFileChanged) {
    TemporaryDirectory data;
    CannedHttpClient http;
    ScriptedProcessRunner runner;
    RecordingNotifier notifier;
    CapturingLog log;
    ManualClock clock{Date::fromUnixTime(1711710000)};
    FixedOffsetCalendar calendar{0};
    int opened = 0;
    ToolServices services{
        .environment = {{"HOME", data.path().string()}},
        .notifier = notifier,
        .log = log,
        .clock = clock,
        .openDock = [](const std::optional<std::filesystem::path>&) { return DockAccess{}; },
        .openSecrets = [&](const std::filesystem::path& folder) -> std::unique_ptr<SecretStore> {
            ++opened;
            return std::make_unique<FileSecretStore>(folder);
        },
        .calendar = calendar,
        .http = http,
        .runner = runner,
        .openDefaults = [](const std::filesystem::path&) { return std::make_unique<InMemoryUserDefaults>(); },
    };
    std::ostringstream unprinted;
    ToolContext context{services, unprinted, data.path().string(), std::nullopt, nullptr, {}};
    LiveWidgetPorts ports{.clock = clock, .calendar = calendar};
    addConnectedReaders(ports, context);
    DockWidget widget(Uuid::generate(), "Clipboard", std::nullopt, DockWidget::Kind::defaults(WidgetKind::clipboard));

    // No history yet: nothing to open, and no key is made for a look.
    EXPECT_EQ(ports.clipboard(widget, clock.now()).caption, "Nothing copied yet");
    EXPECT_EQ(opened, 0);
    EXPECT_FALSE(std::filesystem::exists(data / "clipboard.json.enc"));

    FileSecretStore secrets(data.path());
    ClipboardHistoryFile file(data / "clipboard.json.enc", secrets);
    auto item = [](std::string text) { return ClipboardItem{.id = Uuid::generate(), .text = std::move(text)}; };
    file.write({item("first")});
    EXPECT_EQ(ports.clipboard(widget, clock.now()).caption, "1 item");
    EXPECT_EQ(ports.clipboard(widget, clock.now()).caption, "1 item");
    EXPECT_EQ(opened, 1);

    file.write({item("second"), item("first")});
    auto reading = ports.clipboard(widget, clock.now());
    EXPECT_EQ(reading.caption, "2 items");
    EXPECT_EQ(reading.detail, "second");
    EXPECT_EQ(opened, 2);

    // Forgotten: the tile is empty again, and a new history is read when it comes.
    std::filesystem::remove(file.url());
    EXPECT_EQ(ports.clipboard(widget, clock.now()).caption, "Nothing copied yet");
    file.write({item("third")});
    EXPECT_EQ(ports.clipboard(widget, clock.now()).detail, "third");
}
