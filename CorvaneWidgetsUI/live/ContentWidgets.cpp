// Kinds that show the user's own things: notes, conversions, calendars and reminders, links,
// folders, the shelf, emoji, collections, water and colours, and the connected kinds.

#include "CorvaneCore/platform/Calendar.hpp"
#include "CorvaneCore/platform/CalendarEvents.hpp"
#include "CorvaneCore/platform/DesktopActions.hpp"
#include "CorvaneCore/widgets/converter/UnitConversion.hpp"
#include "CorvaneStorage/storage/StoragePath.hpp"
#include "CorvaneStorage/widgets/ColourStore.hpp"
#include "CorvaneStorage/widgets/EmojiStore.hpp"
#include "CorvaneStorage/widgets/WaterStore.hpp"
#include "CorvaneWidgetsUI/clipboard/ClipboardModel.hpp"
#include "CorvaneWidgetsUI/github/GitHubModel.hpp"
#include "CorvaneWidgetsUI/live/ConnectedTiles.hpp"
#include "CorvaneWidgetsUI/live/LiveKinds.hpp"
#include "CorvaneWidgetsUI/live/RecentFiles.hpp"
#include "CorvaneWidgetsUI/usage/ClaudeUsageModel.hpp"
#include "CorvaneWidgetsUI/weather/WeatherModel.hpp"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>

namespace corvane::live {

namespace {

std::string plural(std::size_t count, std::string_view one, std::string_view many) {
    return std::to_string(count) + " " + std::string(count == 1 ? one : many);
}

std::string weekdayAndDay(CalendarDay day) {
    static constexpr std::array<const char*, 7> names = {"Mon", "Tue", "Wed", "Thu", "Fri", "Sat", "Sun"};
    auto weekday = ((day.dayNumber() + 3) % 7 + 7) % 7;
    return std::string(names[static_cast<std::size_t>(weekday)]) + " " + std::to_string(day.day);
}

/// "09:30" in the user's calendar: the time since that day's first moment, so a day that starts
/// late after a clock change still reads right for the rest of it.
std::string timeOfDay(Date date, const Calendar& calendar) {
    auto seconds = static_cast<long long>(std::floor(date - calendar.startOfDay(calendar.day(date))));
    char buffer[16];
    std::snprintf(buffer, sizeof buffer, "%02lld:%02lld", seconds / 3600 % 24, seconds / 60 % 60);
    return buffer;
}

/// Polls once a minute, on the minute, so times of day on the tile turn with the clock.
Date nextMinute(Date now) {
    return Date::fromUnixTime((std::floor(now.unixTime() / 60) + 1) * 60);
}

class NoteWidget final : public StillWidget {
  public:
    using StillWidget::StillWidget;

  protected:
    WidgetReading read(Date) override {
        const auto& text = widget_.settings<NoteSettings>()->text;
        std::vector<std::string> lines;
        std::size_t start = 0;
        while (start <= text.size() && lines.size() < 2) {
            auto end = text.find('\n', start);
            auto line = text.substr(start, end == std::string::npos ? std::string::npos : end - start);
            if (line.find_first_not_of(" \t\r") != std::string::npos) lines.push_back(line);
            if (end == std::string::npos) break;
            start = end + 1;
        }
        if (lines.empty()) return {.caption = "Empty note"};
        WidgetReading reading{.caption = lines[0]};
        if (lines.size() > 1) reading.detail = lines[1];
        return reading;
    }
};

class ConverterWidget final : public StillWidget {
  public:
    using StillWidget::StillWidget;

  protected:
    WidgetReading read(Date) override {
        const auto& settings = *widget_.settings<ConverterSettings>();
        auto result = UnitConversion::convert(settings.value, settings.category, settings.from, settings.to);
        if (!result) return troubled("unknown unit");
        return {.caption = UnitConversion::number(settings.value) + " " + settings.from + " = " +
                           UnitConversion::number(*result) + " " + settings.to,
                .detail = std::string(caseName(settings.category))};
    }
};

bool isSelected(const CalendarEvent& event, const CalendarSelection& selection) {
    if (selection.accountIDs.empty() && selection.calendarIDs.empty()) return true;
    return std::find(selection.calendarIDs.begin(), selection.calendarIDs.end(), event.calendarID) !=
               selection.calendarIDs.end() ||
           std::find(selection.accountIDs.begin(), selection.accountIDs.end(), event.accountID) !=
               selection.accountIDs.end();
}

class CalendarWidget final : public LiveWidget {
  public:
    CalendarWidget(DockWidget widget, CalendarEvents& events, const Calendar& calendar)
        : LiveWidget(std::move(widget)), events_(events), calendar_(calendar) {}

  protected:
    WidgetReading read(Date now) override {
        const auto& settings = *widget_.settings<CalendarSettings>();
        auto today = calendar_.day(now);
        auto date = weekdayAndDay(today);
        if (settings.style == CalendarTileStyle::date) return {.caption = date};
        auto until = calendar_.startOfDay(today.adding(std::max(1, settings.daysAhead)));
        auto found = events_.events(calendar_.startOfDay(today), until);
        if (!found) return {.caption = date, .trouble = "no access to calendars"};
        std::vector<CalendarEvent> upcoming;
        for (const auto& event : *found)
            if (event.end > now && isSelected(event, settings.calendars) &&
                (settings.showsAllDay || !event.isAllDay))
                upcoming.push_back(event);
        std::stable_sort(upcoming.begin(), upcoming.end(),
                         [](const CalendarEvent& a, const CalendarEvent& b) { return a.start < b.start; });
        std::optional<std::string> next;
        if (!upcoming.empty()) {
            const auto& first = upcoming.front();
            auto day = calendar_.day(first.start);
            std::string when = first.isAllDay       ? "all day"
                               : first.start <= now ? "now"
                                                    : timeOfDay(first.start, calendar_);
            if (!first.isAllDay && first.start > now && day != today) when = weekdayAndDay(day) + " " + when;
            next = first.title + " " + when;
        }
        switch (settings.style) {
        case CalendarTileStyle::nextEvent:
            return {.caption = next.value_or("No events")};
        case CalendarTileStyle::agenda: {
            WidgetReading reading{.caption = next.value_or("No events")};
            if (upcoming.size() > 1) reading.detail = "+" + std::to_string(upcoming.size() - 1) + " more";
            return reading;
        }
        default:
            return {.caption = date, .detail = next.value_or("No events")};
        }
    }
    std::optional<Date> plan(Date now) const override { return nextMinute(now); }

  private:
    CalendarEvents& events_;
    const Calendar& calendar_;
};

class RemindersWidget final : public LiveWidget {
  public:
    RemindersWidget(DockWidget widget, CalendarEvents& events, const Calendar& calendar)
        : LiveWidget(std::move(widget)), events_(events), calendar_(calendar) {}

  protected:
    WidgetReading read(Date now) override {
        const auto& settings = *widget_.settings<ReminderSettings>();
        auto found = events_.reminders();
        if (!found) return troubled("no access to reminders");
        auto today = calendar_.day(now);
        auto until = calendar_.startOfDay(today.adding(std::max(1, settings.daysAhead)));
        std::vector<ReminderItem> due;
        for (const auto& reminder : *found) {
            if (settings.listID && reminder.listID != *settings.listID) continue;
            if (reminder.isCompleted && !settings.showsCompleted) continue;
            if (reminder.due && *reminder.due < until) due.push_back(reminder);
        }
        std::stable_sort(due.begin(), due.end(),
                         [](const ReminderItem& a, const ReminderItem& b) { return *a.due < *b.due; });
        if (settings.style == ReminderTileStyle::count)
            return {.caption = std::to_string(due.size()),
                    .detail = due.size() == 1 ? "reminder" : "reminders"};
        if (due.empty()) return {.caption = "No reminders"};
        const auto& first = due.front();
        auto day = calendar_.day(*first.due);
        std::string when = *first.due < now && !first.isCompleted ? "overdue"
                           : day == today ? "today " + timeOfDay(*first.due, calendar_)
                                          : weekdayAndDay(day);
        WidgetReading reading{.caption = first.title, .detail = when};
        if (settings.style == ReminderTileStyle::list && due.size() > 1)
            reading.detail = when + ", +" + std::to_string(due.size() - 1) + " more";
        return reading;
    }
    std::optional<Date> plan(Date now) const override { return nextMinute(now); }

  private:
    CalendarEvents& events_;
    const Calendar& calendar_;
};

class BookmarksWidget final : public StillWidget {
  public:
    BookmarksWidget(DockWidget widget, DesktopActions* desktop)
        : StillWidget(std::move(widget)), desktop_(desktop) {}

  protected:
    void act(Date) override {
        const auto& settings = *widget_.settings<BookmarkSettings>();
        if (desktop_ && !settings.links.empty())
            desktop_->open(settings.links.front().address, settings.browserBundleIdentifier);
    }
    WidgetReading read(Date) override {
        const auto& links = widget_.settings<BookmarkSettings>()->links;
        if (links.empty()) return {.caption = "No links"};
        const auto& first = links.front();
        return {.caption = plural(links.size(), "link", "links"),
                .detail = first.title && !first.title->empty() ? *first.title : first.address};
    }

  private:
    DesktopActions* desktop_;
};

/// The newest files of a folder; a click opens (or reveals) the newest.
class FolderWidget final : public PolledWidget {
  public:
    static constexpr double interval = 10;
    FolderWidget(DockWidget widget, std::filesystem::path fallback, DesktopActions* desktop)
        : PolledWidget(std::move(widget), interval), fallback_(std::move(fallback)), desktop_(desktop) {}

  protected:
    void act(Date) override {
        if (!desktop_ || newest_.empty()) return;
        bool reveals = false;
        if (const auto* files = widget_.settings<FilesSettings>())
            reveals = files->click == FileClick::reveal;
        if (const auto* shots = widget_.settings<ScreenshotSettings>())
            reveals = shots->click == ScreenshotClick::reveal;
        reveals ? desktop_->reveal(newest_) : desktop_->open(newest_, std::nullopt);
    }

    WidgetReading read(Date) override {
        const auto* shots = widget_.settings<ScreenshotSettings>();
        const auto* files = widget_.settings<FilesSettings>();
        const auto& chosen = shots ? shots->folderPath : files->folderPath;
        std::filesystem::path folder = chosen ? std::filesystem::path(*chosen) : fallback_;
        newest_.clear();
        if (folder.empty()) return troubled(WidgetTrouble::notAvailableHere);
        auto listing = RecentFiles::newest(
            folder, static_cast<std::size_t>(std::max(1, shots ? shots->shownCount : files->shownCount)),
            shots ? RecentFiles::Filter::screenshots : RecentFiles::Filter::any);
        if (!listing) return troubled("folder not found");
        if (listing->empty())
            return {.caption = shots ? "No screenshots" : "Empty folder",
                    .detail = folder.filename().string()};
        newest_ = listing->front().path.string();
        auto latest = listing->front().path.filename().string();
        if (shots) {
            if (!shots->tileShowsLatest)
                return {.caption = plural(listing->size(), "screenshot", "screenshots")};
            return {.caption = latest, .detail = plural(listing->size(), "screenshot", "screenshots")};
        }
        if (files->showsNewCount && files->seenAt) {
            auto fresh =
                std::count_if(listing->begin(), listing->end(), [&](const RecentFiles::Entry& entry) {
                    return entry.modified > *files->seenAt;
                });
            if (fresh > 0) return {.caption = std::to_string(fresh) + " new", .detail = latest};
        }
        return {.caption = latest, .detail = folder.filename().string()};
    }

  private:
    std::filesystem::path fallback_;
    DesktopActions* desktop_;
    std::string newest_;
};

class ShelfWidget final : public PolledWidget {
  public:
    ShelfWidget(DockWidget widget, DesktopActions* desktop)
        : PolledWidget(std::move(widget), 10), desktop_(desktop) {}

  protected:
    void act(Date) override {
        const auto& settings = *widget_.settings<ShelfSettings>();
        if (!desktop_ || present_.empty()) return;
        settings.click == FileClick::reveal ? desktop_->reveal(present_.front())
                                            : desktop_->open(present_.front(), std::nullopt);
    }
    WidgetReading read(Date) override {
        present_.clear();
        std::error_code error;
        for (const auto& path : widget_.settings<ShelfSettings>()->shelf.paths)
            if (std::filesystem::exists(path, error)) present_.push_back(path);
        if (present_.empty()) return {.caption = "Empty shelf"};
        return {.caption = plural(present_.size(), "item", "items"),
                .detail = std::filesystem::path(present_.front()).filename().string()};
    }

  private:
    DesktopActions* desktop_;
    std::vector<std::string> present_;
};

class CollectionWidget final : public StillWidget {
  public:
    using StillWidget::StillWidget;

  protected:
    WidgetReading read(Date) override {
        const auto& apps = *widget_.apps();
        if (apps.empty()) return {.caption = "No apps"};
        std::string names;
        for (std::size_t i = 0; i < apps.size() && i < 3; ++i) {
            auto name = apps[i].displayName ? *apps[i].displayName
                                            : std::filesystem::path(apps[i].path).stem().string();
            names += (names.empty() ? "" : ", ") + name;
        }
        if (apps.size() > 3) names += ", …";
        return {.caption = plural(apps.size(), "app", "apps"), .detail = names};
    }
};

class WaterWidget final : public LiveWidget {
  public:
    WaterWidget(DockWidget widget, const std::filesystem::path& dataDirectory, const Calendar& calendar)
        : LiveWidget(std::move(widget)), calendar_(calendar),
          store_(StoragePath::waterFileURL(dataDirectory), calendar) {}

  protected:
    void act(Date now) override {
        const auto& settings = *widget_.settings<WaterSettings>();
        if (settings.glass > 0) store_.add(inMillilitres(settings.glass), now);
    }
    WidgetReading read(Date now) override {
        const auto& settings = *widget_.settings<WaterSettings>();
        store_.reload();
        const auto& log = store_.log();
        int total = log.total(now, calendar_), goal = std::max(1, inMillilitres(settings.goal));
        int glass = std::max(1, inMillilitres(settings.glass));
        WidgetReading reading{.progress = std::clamp(static_cast<double>(total) / goal, 0.0, 1.0)};
        if (settings.showsCountOnTile) {
            auto glasses = [&](int ml) {
                return static_cast<int>(std::lround(static_cast<double>(ml) / glass));
            };
            reading.caption =
                std::to_string(glasses(total)) + "/" + std::to_string(std::max(1, glasses(goal)));
        } else {
            reading.caption = amount(total) + " / " + amount(goal);
        }
        if (total >= goal)
            reading.detail = "Goal reached";
        else if (auto next = log.nextGlass(now, goal, settings.refillMinutes, calendar_))
            reading.detail = *next <= now
                                 ? "Glass due"
                                 : "Next glass in " +
                                       std::to_string(static_cast<long long>(std::ceil((*next - now) / 60))) +
                                       " min";
        return reading;
    }
    std::optional<Date> plan(Date now) const override { return nextMinute(now); }

  private:
    int inMillilitres(int amount) const {
        return widget_.settings<WaterSettings>()->unit == WaterUnit::ounces ? WaterAmount::millilitres(amount)
                                                                            : amount;
    }
    std::string amount(int millilitres) const {
        return widget_.settings<WaterSettings>()->unit == WaterUnit::ounces
                   ? WaterAmount::ouncesText(millilitres) + " oz"
                   : std::to_string(millilitres) + " ml";
    }

    const Calendar& calendar_;
    WaterStore store_;
};

class ColourWidget final : public PolledWidget {
  public:
    ColourWidget(DockWidget widget, const std::filesystem::path& dataDirectory)
        : PolledWidget(std::move(widget), 30), store_(StoragePath::coloursFileURL(dataDirectory)) {}

  protected:
    WidgetReading read(Date) override {
        store_.reload();
        const auto* latest = store_.history().latest();
        if (!latest) return {.caption = "No colour yet"};
        return {.caption = formattedColour(widget_.settings<ColourPickerSettings>()->format, *latest),
                .detail = plural(store_.history().colours.size(), "colour", "colours")};
    }

  private:
    ColourStore store_;
};

class EmojiWidget final : public PolledWidget {
  public:
    EmojiWidget(DockWidget widget, const std::filesystem::path& dataDirectory)
        : PolledWidget(std::move(widget), 30), store_(StoragePath::emojiFileURL(dataDirectory)) {}

  protected:
    WidgetReading read(Date) override {
        store_.reload();
        const auto& recent = store_.history().emoji;
        if (recent.empty()) return {.caption = "No recent emoji"};
        std::string shown;
        auto count = static_cast<std::size_t>(
            std::max(1, std::min(widget_.settings<EmojiSettings>()->recentLimit, widget_.span * 2)));
        for (std::size_t i = 0; i < recent.size() && i < count; ++i)
            shown += (shown.empty() ? "" : " ") + recent[i];
        return {.caption = shown, .detail = "Recent"};
    }

  private:
    EmojiStore store_;
};

class ConnectedWidget final : public PolledWidget {
  public:
    ConnectedWidget(DockWidget widget, double interval, ConnectedReader reader)
        : PolledWidget(std::move(widget), interval), reader_(std::move(reader)) {}

  protected:
    WidgetReading read(Date now) override { return reader_(widget_, now); }

  private:
    ConnectedReader reader_;
};

/// The clipboard widget of a host that watches the pasteboard: the model keeps the history as
/// copies happen, on its own poll, and the tile follows at its next tick.
class WatchingClipboardWidget final : public PolledWidget {
  public:
    WatchingClipboardWidget(DockWidget widget, const ClipboardServices& services)
        : PolledWidget(widget, tileInterval), model_(std::move(widget), services) {}

  protected:
    WidgetReading read(Date) override { return ConnectedTiles::clipboard(model_); }
    void settingsChanged() override { model_.setWidget(widget_); }

  private:
    static constexpr double tileInterval = 1;
    ClipboardModel model_;
};

} // namespace

std::unique_ptr<LiveWidget> makeContentWidget(const DockWidget& widget, const LiveWidgetPorts& ports) {
    auto missing = [&](std::string_view trouble) { return std::make_unique<MissingWidget>(widget, trouble); };
    auto connected = [&](const ConnectedReader& reader, double interval) -> std::unique_ptr<LiveWidget> {
        if (!reader) return missing(WidgetTrouble::notConnected);
        return std::make_unique<ConnectedWidget>(widget, interval, reader);
    };
    switch (widget.kind.which()) {
    case WidgetKind::note:
        return std::make_unique<NoteWidget>(widget);
    case WidgetKind::converter:
        return std::make_unique<ConverterWidget>(widget);
    case WidgetKind::calendar:
        if (!ports.machine.events) return missing(WidgetTrouble::notAvailableHere);
        return std::make_unique<CalendarWidget>(widget, *ports.machine.events, ports.calendar);
    case WidgetKind::reminders:
        if (!ports.machine.events) return missing(WidgetTrouble::notAvailableHere);
        return std::make_unique<RemindersWidget>(widget, *ports.machine.events, ports.calendar);
    case WidgetKind::bookmarks:
        return std::make_unique<BookmarksWidget>(widget, ports.machine.desktop);
    case WidgetKind::screenshots:
        return std::make_unique<FolderWidget>(widget, ports.screenshotsFolder, ports.machine.desktop);
    case WidgetKind::files:
        return std::make_unique<FolderWidget>(widget, ports.downloadsFolder, ports.machine.desktop);
    case WidgetKind::shelf:
        return std::make_unique<ShelfWidget>(widget, ports.machine.desktop);
    case WidgetKind::collection:
        return std::make_unique<CollectionWidget>(widget);
    case WidgetKind::water:
        if (ports.dataDirectory.empty()) return missing(WidgetTrouble::notAvailableHere);
        return std::make_unique<WaterWidget>(widget, ports.dataDirectory, ports.calendar);
    case WidgetKind::colourPicker:
        if (ports.dataDirectory.empty()) return missing(WidgetTrouble::notAvailableHere);
        return std::make_unique<ColourWidget>(widget, ports.dataDirectory);
    case WidgetKind::emoji:
        if (ports.dataDirectory.empty()) return missing(WidgetTrouble::notAvailableHere);
        return std::make_unique<EmojiWidget>(widget, ports.dataDirectory);
    case WidgetKind::weather:
        return connected(ports.weather, WeatherModel::refreshInterval);
    case WidgetKind::github:
        return connected(ports.github, GitHubModel::refreshInterval);
    case WidgetKind::claudeUsage:
        return connected(ports.claudeUsage, ClaudeUsageModel::refreshSeconds);
    case WidgetKind::clipboard:
        if (ports.pasteboardWatch) return std::make_unique<WatchingClipboardWidget>(widget, *ports.pasteboardWatch);
        return connected(ports.clipboard, 2);
    default:
        return missing(WidgetTrouble::notAvailableHere);
    }
}

} // namespace corvane::live
