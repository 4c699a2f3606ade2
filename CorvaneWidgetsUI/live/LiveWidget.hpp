#pragma once

// One live model per placed widget, whatever its kind: what the tile shows now, when that next
// changes, and what a click does. A host (the bar, `corvane widgets now`) makes them with
// `makeLiveWidget`, ticks each at its `nextTick`, and redraws only the tiles whose `tick`
// answered true.

#include "CorvaneCore/support/Date.hpp"
#include "CorvaneCore/widgets/DockWidget.hpp"
#include "CorvaneWidgetsUI/live/MachineSources.hpp"

#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace corvane {

class Calendar;
struct ClipboardServices;
class Clock;
class UserAlerts;
class UserDefaults;

/// What a widget's tile shows at one moment. A reading never makes a value up: where its source
/// failed or is missing, `trouble` says so and the value fields stay empty.
struct WidgetReading {
    /// The tile's main text: "82%", "10:42", "4:59", "Stand-up 10:00".
    std::string caption;
    /// A second, smaller line ("Charging", "Oslo", "↓ 1.2 MB/s"), when the kind has one.
    std::optional<std::string> detail;
    /// How far along a bar or ring is, 0…1, for kinds that draw one.
    std::optional<double> progress;
    /// Why there is nothing to show: "not available here", "not connected", "no access".
    std::optional<std::string> trouble;

    bool operator==(const WidgetReading&) const = default;
};

/// The troubles every kind may show.
namespace WidgetTrouble {
/// Its source does not exist on this system.
inline constexpr std::string_view notAvailableHere = "not available here";
/// A connected kind whose host gave it no source.
inline constexpr std::string_view notConnected = "not connected";
} // namespace WidgetTrouble

/// The live model of one placed widget. Main thread.
class LiveWidget {
  public:
    explicit LiveWidget(DockWidget widget) : widget_(std::move(widget)) {}
    virtual ~LiveWidget() = default;
    LiveWidget(const LiveWidget&) = delete;
    LiveWidget& operator=(const LiveWidget&) = delete;

    const DockWidget& widget() const { return widget_; }
    /// What the tile shows as of the last `tick` (empty before the first).
    const WidgetReading& reading() const { return reading_; }
    /// When the reading may next change by itself: a clock at the next minute (second when it
    /// shows seconds), activity in two seconds, a note never (none). A host ticks then.
    std::optional<Date> nextTick() const { return next_; }

    /// Reads the sources as of `now` and plans the next tick; true when the reading changed.
    bool tick(Date now);
    /// New settings of the same widget; the reading follows at once. True when it changed. A
    /// widget of another kind is refused (false): the host makes a new model for it.
    bool setWidget(DockWidget widget, Date now);
    /// The kind's main click action: pause a timer, add a glass, play/pause music, run the
    /// shortcut… True when the reading changed; kinds without an action do nothing.
    bool activate(Date now);

  protected:
    /// The reading as of `now`. Sources are read here, so kinds that take rates (activity,
    /// network) see one call per tick.
    virtual WidgetReading read(Date now) = 0;
    /// The next moment the reading can change by itself after a read at `now`; none for never.
    virtual std::optional<Date> plan(Date now) const = 0;
    /// Runs before the reading is taken again for new settings.
    virtual void settingsChanged() {}
    /// The click action; the reading is taken again afterwards.
    virtual void act(Date /*now*/) {}

    DockWidget widget_;

  private:
    bool refresh(Date now);

    WidgetReading reading_;
    std::optional<Date> next_;
};

/// A slow reader of a connected kind (weather, GitHub, coding-assistant usage, clipboard
/// history): it may touch the network, a tool or files. The command-line tool passes readers
/// that work at once; a host on the main thread passes ones that answer from the last result
/// of its background work.
using ConnectedReader = std::function<WidgetReading(const DockWidget&, Date now)>;

/// Everything the live models read and act through. Pointers left empty are sources this
/// system or host does not have: the kinds that need them show `WidgetTrouble::notAvailableHere`
/// (or `notConnected`). Everything given must outlive the models.
struct LiveWidgetPorts {
    const Clock& clock;
    /// The user's calendar: which day "today" is, where midnight falls.
    const Calendar& calendar;

    /// Time-keeping widgets keep their runs here and ring through `alerts`; without alerts
    /// the timer, stopwatch and pomodoro are not available.
    UserAlerts* alerts = nullptr;
    UserDefaults* defaults = nullptr;

    /// The machine's readings and actions. Its `load` is shared by the activity widgets and the
    /// pets: pass a `SharedSystemLoad`, so that their processor readings do not cut each other's
    /// intervals short.
    MachineSources machine;

    /// The data folder, where the water, colour and emoji files live; empty leaves those kinds
    /// without their files.
    std::filesystem::path dataDirectory;
    /// Where new screenshots land, and the Downloads folder that a files widget shows by
    /// default; empty when not known.
    std::filesystem::path screenshotsFolder;
    std::filesystem::path downloadsFolder;

    ConnectedReader weather;
    ConnectedReader github;
    ConnectedReader claudeUsage;
    ConnectedReader clipboard;
    /// Where a host that keeps running watches the pasteboard: its clipboard widgets keep the
    /// history themselves, as copies happen. Without it they show the saved history through
    /// `clipboard`.
    const ClipboardServices* pasteboardWatch = nullptr;
};

/// The live model of any widget. Every kind has one; the reading of a kind without its
/// source says so.
std::unique_ptr<LiveWidget> makeLiveWidget(const DockWidget& widget, const LiveWidgetPorts& ports);

} // namespace corvane
