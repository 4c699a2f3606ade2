#include "CorvaneStorage/widgets/clipboard/ClipboardHistoryFile.hpp"
#include "CorvaneWidgetsUI/clipboard/ClipboardModel.hpp"
#include "CorvaneWidgetsUI/live/LiveWidget.hpp"
#include "fakes/FixedOffsetCalendar.hpp"
#include "widgetsui/clipboard/ClipboardHarness.hpp"

#include <gtest/gtest.h>

using namespace corvane;

namespace {

struct ModelHarness : ClipboardPlatform {
    std::vector<ManualSerialQueue*> queues;
    DockWidget widget{Uuid::generate(), "Clipboard", std::nullopt, ClipboardSettings{}};

    ClipboardServices services() {
        return {pasteboard, secrets, http, clock, scheduler, scheduler, log, storeURL(),
                [this] {
                    auto queue = std::make_unique<ManualSerialQueue>();
                    queues.push_back(queue.get());
                    return queue;
                },
                [] { return ClipboardFrontmostApp{"com.apple.Safari", "Safari"}; }};
    }
    /// Runs background work and delivers its results on the main queue until all is quiet.
    void settle(double seconds = 0) {
        scheduler.advance(seconds);
        for (;;) {
            int ran = 0;
            for (auto* queue : queues) ran += queue->runAll();
            if (ran == 0) break;
            scheduler.runPending();
        }
    }
};

} // namespace

TEST(ClipboardModel, PollsTwiceASecondAndPublishesOnTheMainQueue) {
    ModelHarness h;
    ClipboardModel model(h.widget, h.services());
    int changes = 0;
    model.onChange = [&] { ++changes; };
    EXPECT_FALSE(model.hasRead());
    EXPECT_EQ(model.panelMessage()->title, "Loading clipboard\u2026");
    h.settle();
    EXPECT_TRUE(model.hasRead());
    EXPECT_EQ(model.panelMessage()->title, "Nothing copied yet");

    h.pasteboard.copyText("hello");
    h.settle(ClipboardModel::pollInterval - 0.01);
    EXPECT_TRUE(model.items().empty()); // not polled yet
    h.settle(0.01);
    ASSERT_EQ(model.items().size(), 1u);
    EXPECT_EQ(model.items()[0].sourceAppName, "Safari");
    EXPECT_EQ(model.unseenCount(), 1);
    EXPECT_EQ(model.tileCount(), 1);

    // Polls do not pile up behind work that has not run yet.
    h.scheduler.advance(5 * ClipboardModel::pollInterval);
    EXPECT_EQ(h.queues[0]->pendingCount(), 2u); // one poll, and the save that fell due
    h.settle();

    model.setSearchText("nothing like it");
    EXPECT_TRUE(model.shownItems().empty());
    EXPECT_EQ(model.panelMessage()->title, "Try a different word.");
    model.setSearchText("HELL");
    EXPECT_EQ(model.shownItems().size(), 1u);

    model.panelOpened();
    h.settle();
    EXPECT_EQ(model.unseenCount(), 0);

    model.togglePin(model.items()[0].id);
    h.settle();
    EXPECT_TRUE(model.items()[0].isPinned);
    model.clearUnpinned();
    h.settle();
    EXPECT_EQ(model.items().size(), 1u);
    EXPECT_GE(changes, 5);
}

TEST(ClipboardModel, AHostThatWatchesThePasteboardShowsTheLiveHistoryOnTheTile) {
    ModelHarness h;
    FixedOffsetCalendar calendar{0};
    auto services = h.services();
    LiveWidgetPorts ports{.clock = h.clock, .calendar = calendar, .pasteboardWatch = &services};
    auto tile = makeLiveWidget(h.widget, ports);
    tile->tick(h.clock.now());
    EXPECT_EQ(tile->reading().caption, "\u2026");
    h.settle();
    h.pasteboard.copyText("hello");
    h.settle(ClipboardModel::pollInterval);
    EXPECT_TRUE(tile->tick(h.clock.now()));
    EXPECT_EQ(tile->reading(), (WidgetReading{.caption = "1 item", .detail = "hello"}));
    EXPECT_EQ(tile->nextTick(), h.clock.now() + 1);
}

TEST(ClipboardModel, ClosingSavesWhatIsPendingAndDropsLateResults) {
    ModelHarness h;
    {
        ClipboardModel model(h.widget, h.services());
        h.settle();
        h.pasteboard.copyText("last words");
        h.settle(ClipboardModel::pollInterval);
        ASSERT_EQ(model.items().size(), 1u);
        EXPECT_EQ(h.scheduler.pendingCount(), 2u); // the next poll and the save
        model.write(model.items()[0].id);
    }
    h.queues.clear(); // gone with the model, after running what they held
    // Late results reach nothing, and no timer is left running.
    h.settle(10);
    EXPECT_EQ(h.scheduler.pendingCount(), 0u);
    auto stored = ClipboardHistoryFile(h.storeURL(), h.secrets).read();
    ASSERT_TRUE(stored);
    EXPECT_EQ(stored->at(0).text, "last words");
}

TEST(ClipboardModel, NewSettingsApplyAtOnce) {
    ModelHarness h;
    ClipboardModel model(h.widget, h.services());
    h.settle();
    for (auto text : {"a", "b", "c"}) {
        h.pasteboard.copyText(text);
        h.settle(ClipboardModel::pollInterval);
    }
    ASSERT_EQ(model.items().size(), 3u);
    auto widget = h.widget;
    widget.setSettings(std::optional(ClipboardSettings{.historyLimit = 2}));
    model.setWidget(widget);
    h.settle();
    ASSERT_EQ(model.items().size(), 2u);
    EXPECT_EQ(model.items()[0].text, "c");
}
