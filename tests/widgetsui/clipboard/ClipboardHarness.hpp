#pragma once

#include "CorvaneStorage/storage/StoragePath.hpp"
#include "CorvaneWidgetsUI/clipboard/ClipboardSource.hpp"
#include "fakes/CannedHttpClient.hpp"
#include "fakes/CapturingLog.hpp"
#include "fakes/FakePasteboard.hpp"
#include "fakes/InMemorySecretStore.hpp"
#include "fakes/ManualScheduler.hpp"
#include "fakes/ManualSerialQueue.hpp"
#include "fakes/TemporaryDirectory.hpp"

namespace corvane {

/// The platform of a clipboard source, all of it by hand: time and the main queue move when the
/// test says, background work runs when the test says.
struct ClipboardPlatform {
    TemporaryDirectory dir;
    ManualClock clock;
    ManualScheduler scheduler{clock};
    FakePasteboard pasteboard;
    InMemorySecretStore secrets;
    CannedHttpClient http;
    CapturingLog log;

    std::filesystem::path storeURL() const { return StoragePath::clipboardFileURL(dir.path()); }
    ClipboardSourceServices sourceServices() { return {pasteboard, secrets, clock, scheduler, log}; }
};

/// One source over the platform, with its two queues.
struct ClipboardSourceHarness : ClipboardPlatform {
    ManualSerialQueue work;
    ManualSerialQueue* previews = new ManualSerialQueue;
    ClipboardOGSource og{http, std::unique_ptr<SerialQueue>(previews)};
    ClipboardSource source{storeURL(), sourceServices(), og, work};
    ClipboardSettings settings;
    ClipboardFrontmostApp frontmost{"com.apple.TextEdit", "TextEdit"};

    ~ClipboardSourceHarness() {
        source.close();
        work.runAll();
    }

    ClipboardState poll() { return source.pollAndMerge(settings, frontmost); }
    ClipboardState copy(const std::string& text) {
        pasteboard.copyText(text);
        return poll();
    }
    /// Moves time on and runs whatever falls due, background work included, until all is quiet.
    void settle(double seconds = 0) {
        scheduler.advance(seconds);
        while (work.runAll() + previews->runAll() > 0) scheduler.runPending();
    }
};

} // namespace corvane
