#pragma once

#include "CorvaneApp/render/BarLayout.hpp"
#include "CorvaneApp/render/WorkspaceBarScene.hpp"
#include "CorvaneCore/bar/DockVisibility.hpp"
#include "CorvaneCore/bar/ScrollSteps.hpp"
#include "CorvaneCore/bar/WheelNotches.hpp"
#include "CorvaneCore/bar/WorkspaceDockLayout.hpp"
#include "CorvaneCore/platform/Scheduler.hpp"
#include "CorvaneCore/workspace/Profile.hpp"

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace corvane {

/// What a click on a tile asks of the shell, which carries it out.
struct BarClick {
    enum class Kind {
        /// Bring the running application forward.
        activateApp,
        /// Start the application at `target`.
        launchApp,
        openFile,
        /// Open the folder at `target` as a stack.
        openStack,
        openLink,
        openWidget,
        openWidgetStack,
        openTrash,
        /// The app's own tile: its main window.
        showApp,
    };

    Kind kind = Kind::showApp;
    /// A path or a URL.
    std::string target;
    std::optional<std::int32_t> pid;
    /// A widget, or a widget stack.
    std::optional<Uuid> id;

    bool operator==(const BarClick&) const = default;
};

/// A screen as the system lists them: the one with the menu bar first.
struct BarScreen {
    /// Global coordinates, y up.
    Rect frame;
    /// Pixels per point.
    double scale = 1;

    bool operator==(const BarScreen&) const = default;
};

/// The own Dock bar's window as a model: where the panel sits, which tile is under the pointer,
/// what clicks, drags and scrolls mean, how the magnifying lens moves, and when the bar shows or
/// hides. The panel forwards its events here in view coordinates (points, top-down, origin at
/// the view's top left) and draws `frame()`; every decision is taken here. Main thread.
class BarWindowController {
public:
    /// A press must move this far before it becomes a drag.
    static constexpr double dragThreshold = 4;
    /// How long the pointer waits at the edge before a hidden bar comes, unless the user chose.
    static constexpr double defaultRevealDelay = 0.25;

    struct Callbacks {
        std::function<void(const BarClick&)> onClick;
        /// The active workspace's items after a drag moved, pinned or removed a tile.
        std::function<void(std::vector<DockItem> items)> onItemsChanged;
        /// A scroll gesture stepped through the workspaces: +1 next, −1 previous.
        std::function<void(int step)> onStep;
        /// The bar shows or hides.
        std::function<void(bool shown)> onVisibilityChange;
    };

    /// Everything the bar shows: the layout it was built from (for edits), the active workspace
    /// (none when no workspace is active: nothing can be edited then), the scene and what each of
    /// its tiles stands for, and how long the screen is along the bar.
    struct Content {
        WorkspaceDockLayout layout;
        std::optional<Profile> workspace;
        BarScene scene;
        std::vector<BarTileOrigin> origins;
        double screenLength = 0;
    };

    BarWindowController(Scheduler& scheduler, Callbacks callbacks);
    ~BarWindowController();
    BarWindowController(const BarWindowController&) = delete;
    BarWindowController& operator=(const BarWindowController&) = delete;

    /// New tiles, look or screen: the lens keeps following the pointer over them.
    void show(Content content);

    /// Live widgets show new text: their tiles take it in place, and the layout stays. Returns
    /// whether any tile changed.
    bool updateCaptions(const std::vector<Uuid>& widgets,
                        const std::function<std::optional<std::string>(const Uuid& widget)>& caption);

    const BarScene& scene() const { return content_.scene; }
    const BarLayout& layout() const { return *layout_; }
    const BarFrame& frame() const { return frame_; }

    /// The panel's frame on a screen (global coordinates, y up): on the bar's edge, centred
    /// along it, as large as the view.
    Rect panelFrame(const Rect& screen) const;

    /// The screen the bar belongs on: the one with the menu bar, where the system's own Dock
    /// starts too. None while no screen is connected.
    static std::optional<BarScreen> home(const std::vector<BarScreen>& screens);

    /// The tile whose drawn frame holds `point`; the hovered tile first, since it lies on top.
    std::optional<std::size_t> tileAt(Point point) const;

    void pointerMoved(Point point);
    void pointerExited();
    void pressed(Point point);
    void dragged(Point point);
    void released(Point point);
    /// A scroll of `delta` points at event time `at` (seconds): `precise` for trackpads and
    /// smooth scrolling, otherwise a notched wheel.
    void scrolled(double delta, double at, bool precise);
    /// Steps the lens by `seconds` and lays the frame out again; true while it still moves, so
    /// the view knows to keep its display link running.
    bool tick(double seconds);

    /// During a drag: the tile dragged and the place in the application section it would go.
    std::optional<std::size_t> draggedTile() const;
    std::optional<std::ptrdiff_t> dropIndex() const { return drag_ && drag_->moving ? std::optional(drag_->to) : std::nullopt; }

    /// Shows, hides, or after `revealDelay` seconds shows when the pointer is still at the edge.
    void updateVisibility(const DockVisibility::Input& input, double revealDelay);
    bool isShown() const { return shown_; }

private:
    struct Drag {
        std::size_t tile;
        Point from;
        bool moving = false;
        std::ptrdiff_t to = 0;
    };

    double along(Point point) const;
    std::optional<BarClick> click(std::size_t tile) const;
    /// The index in the application section before which a tile dropped at `point` goes.
    std::ptrdiff_t appsIndexAt(Point point) const;
    const DockTileModel* model(std::size_t tile) const;
    void setShown(bool shown);

    Scheduler& scheduler_;
    Callbacks callbacks_;
    Content content_;
    std::unique_ptr<BarLayout> layout_;
    DockLens lens_;
    BarFrame frame_;
    std::optional<Drag> drag_;
    ScrollSteps scrollSteps_;
    WheelNotches wheelNotches_;
    bool shown_ = true;
    std::optional<DockVisibility::Input> visibility_;
    std::optional<Scheduler::Token> reveal_;
};

} // namespace corvane
