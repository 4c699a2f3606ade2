#pragma once

#include "CorvaneCore/platform/Clock.hpp"
#include "CorvaneCore/platform/Log.hpp"
#include "CorvaneCore/platform/Pasteboard.hpp"
#include "CorvaneCore/platform/Scheduler.hpp"
#include "CorvaneCore/platform/SecretStore.hpp"
#include "CorvaneCore/platform/SerialQueue.hpp"
#include "CorvaneCore/widgets/WidgetSettings.hpp"
#include "CorvaneCore/widgets/clipboard/ClipboardState.hpp"
#include "CorvaneStorage/widgets/clipboard/ClipboardHistoryFile.hpp"
#include "CorvaneWidgetsUI/clipboard/ClipboardOGSource.hpp"

#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace corvane {

/// The application in front when a copy was seen.
struct ClipboardFrontmostApp {
    std::optional<std::string> bundleID;
    std::optional<std::string> name;
};

/// What the clipboard source works with. Everything must outlive the source.
struct ClipboardSourceServices {
    Pasteboard& pasteboard;
    SecretStore& secrets;
    const Clock& clock;
    /// Delays the save; its work runs on the main queue and only hands the save to the work queue.
    Scheduler& scheduler;
    Log& log;
};

/// One clipboard widget's history: it watches the pasteboard, keeps the list within its limits,
/// fetches previews of copied links and saves the list sealed to "clipboard.json.enc".
///
/// Every operation runs on the work queue passed in, one at a time; none may be called from
/// anywhere else. The history stays in memory whatever happens to the file or the key; a
/// failure only shows as `trouble`.
class ClipboardSource {
public:
    /// A burst of copies is saved once.
    static constexpr double saveDelay = 1.0;
    /// The marker password managers put on what they copy.
    static constexpr std::string_view transientType = "org.nspasteboard.TransientType";
    static constexpr std::string_view logCategory = "clipboard";

    ClipboardSource(std::filesystem::path storeURL, ClipboardSourceServices services, ClipboardOGSource& ogSource,
                    SerialQueue& queue);
    ~ClipboardSource();
    ClipboardSource(const ClipboardSource&) = delete;
    ClipboardSource& operator=(const ClipboardSource&) = delete;

    /// Called on the work queue with the new state after work the source did on its own: a
    /// preview that arrived, a save.
    std::function<void(const ClipboardState&)> onUpdate;

    /// Reads the stored history the first time, then polls once.
    ClipboardState state(const ClipboardSettings& settings, const ClipboardFrontmostApp& frontmost);
    /// Captures what is new on the pasteboard.
    ClipboardState pollAndMerge(const ClipboardSettings& settings, const ClipboardFrontmostApp& frontmost);
    /// Puts the item back on the pasteboard without capturing it again.
    ClipboardState write(const Uuid& id);
    ClipboardState togglePin(const Uuid& id);
    ClipboardState remove(const Uuid& id);
    /// Removes everything that is not pinned.
    ClipboardState clearUnpinned();
    /// Empties the history, pins included, and removes the file and its key.
    ClipboardState forgetEverything();
    /// The user has seen the list.
    ClipboardState markSeen();
    ClipboardState current() const;

    /// Writes the history now when it changed since the last write (the scheduled save's work).
    void save();
    /// Saves what is pending and stops: no later save or preview is scheduled.
    void close();

    std::optional<std::int64_t> lastWrittenChangeCount() const { return lastWrittenChangeCount_; }

private:
    std::optional<ClipboardItem> detect(const ClipboardFrontmostApp& frontmost);
    std::optional<ClipboardItem> accept(ClipboardItem item, const ClipboardSettings& settings);
    /// Reads the file into memory; false (with trouble set) when it cannot.
    bool readStored();
    void scheduleSave();
    void schedulePreview(const ClipboardItem& item);
    void applyPreview(const Uuid& id, const std::optional<WebPreview>& preview);
    void setTrouble(std::optional<ClipboardTrouble> trouble, std::string_view logMessage = {});
    void publish();

    ClipboardHistoryFile file_;
    ClipboardSourceServices services_;
    ClipboardOGSource& ogSource_;
    SerialQueue& queue_;
    ClipboardSettings settings_;

    std::vector<ClipboardItem> items_;
    std::int64_t lastSeenChangeCount_ = 0;
    std::optional<std::int64_t> lastWrittenChangeCount_;
    int unseenCount_ = 0;
    /// The list as last written to disk.
    std::vector<ClipboardItem> lastSavedItems_;
    std::optional<ClipboardTrouble> trouble_;
    bool hasRead_ = false;
    /// The file's history is in `items_` (or there was no file): writing cannot lose anything.
    bool storedHistoryRead_ = false;
    /// The file exists but its content cannot be opened: it is set aside before the next write.
    bool storedHistoryUnreadable_ = false;
    bool closed_ = false;

    std::optional<Scheduler::Token> saveToken_;
    std::uint64_t saveGeneration_ = 0;

    /// Previews arrive on the preview queue; once closed, they are dropped there instead of
    /// reaching a work queue that may be gone.
    struct Inbox {
        std::mutex mutex;
        bool open = true;
    };
    std::shared_ptr<Inbox> inbox_ = std::make_shared<Inbox>();
};

} // namespace corvane
