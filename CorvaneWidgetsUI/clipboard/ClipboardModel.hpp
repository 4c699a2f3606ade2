#pragma once

#include "CorvaneCore/platform/HttpClient.hpp"
#include "CorvaneCore/widgets/DockWidget.hpp"
#include "CorvaneCore/widgets/clipboard/ClipboardBoard.hpp"
#include "CorvaneWidgetsUI/clipboard/ClipboardSource.hpp"

#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace corvane {

/// What the live clipboard widget needs from the platform. Everything must outlive the model.
struct ClipboardServices {
    Pasteboard& pasteboard;
    SecretStore& secrets;
    HttpClient& http;
    const Clock& clock;
    Scheduler& scheduler;
    MainQueue& mainQueue;
    Log& log;
    /// "clipboard.json.enc" in the data folder.
    std::filesystem::path storeURL;
    /// Makes the background queues: one for the history's work, one for web previews.
    std::function<std::unique_ptr<SerialQueue>()> makeQueue;
    /// The application in front, asked on the main thread at each poll; may be left empty.
    std::function<ClipboardFrontmostApp()> frontmostApplication;
};

/// The live clipboard widget: it polls the pasteboard twice a second through its source, and
/// holds what the tile and the panel show. The source's work runs on a background queue; its
/// results arrive here on the main thread. Main thread.
class ClipboardModel {
public:
    static constexpr double pollInterval = 0.5;

    /// Starts polling at once; the first poll reads the stored history.
    ClipboardModel(DockWidget widget, ClipboardServices services);
    /// Saves what is pending before it returns.
    ~ClipboardModel();
    ClipboardModel(const ClipboardModel&) = delete;
    ClipboardModel& operator=(const ClipboardModel&) = delete;

    const DockWidget& widget() const { return widget_; }
    ClipboardSettings settings() const;
    /// Display order.
    const std::vector<ClipboardItem>& items() const { return state_.items; }
    int unseenCount() const { return state_.unseenCount; }
    const std::optional<ClipboardTrouble>& trouble() const { return state_.trouble; }
    bool hasRead() const { return state_.hasRead; }
    const std::string& searchText() const { return searchText_; }
    /// The items the search lets through.
    std::vector<ClipboardItem> shownItems() const { return ClipboardBoard::search(state_.items, searchText_); }
    /// What the panel shows instead of a list, if anything.
    std::optional<ClipboardPanelMessage> panelMessage() const {
        return ClipboardBoard::panelMessage(state_, searchText_);
    }
    int tileCount() const { return ClipboardBoard::tileCount(state_); }

    /// Called on the main thread after every change that arrived.
    std::function<void()> onChange;

    /// New settings take effect at once (retention included).
    void setWidget(DockWidget widget);
    void setSearchText(std::string text);
    /// Opening the panel shows everything: nothing is unseen afterwards.
    void panelOpened();
    void write(const Uuid& id);
    void togglePin(const Uuid& id);
    void remove(const Uuid& id);
    void clearUnpinned();
    void forgetEverything();

private:
    template <typename Operation> void run(Operation operation, bool isPoll = false);
    void tick();
    ClipboardFrontmostApp frontmost() const;
    void apply(ClipboardState state);

    DockWidget widget_;
    ClipboardServices services_;
    ClipboardState state_;
    std::string searchText_;
    std::optional<Scheduler::Token> timer_;
    bool pollInFlight_ = false;
    /// Work posted to the main queue checks this before touching the model.
    std::shared_ptr<bool> alive_ = std::make_shared<bool>(true);

    std::unique_ptr<SerialQueue> queue_;
    std::unique_ptr<ClipboardOGSource> ogSource_;
    std::unique_ptr<ClipboardSource> source_;
};

} // namespace corvane
