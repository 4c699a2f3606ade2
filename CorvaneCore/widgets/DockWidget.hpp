#pragma once

#include "CorvaneCore/support/Uuid.hpp"
#include "CorvaneCore/widgets/WidgetSettings.hpp"
#include "CorvaneCore/workspace/DockItem.hpp"

#include <array>
#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <type_traits>
#include <variant>
#include <vector>

namespace corvane {

/// The kinds of widget, in declaration order. Their names are the JSON keys of the kind object.
enum class WidgetKind {
    collection,
    timer,
    pomodoro,
    music,
    calendar,
    battery,
    clock,
    stopwatch,
    countdown,
    timeProgress,
    activity,
    network,
    note,
    reminders,
    shortcut,
    airdrop,
    weather,
    claudeUsage,
    github,
    pet,
    colourPicker,
    clipboard,
    bookmarks,
    emoji,
    screenshots,
    files,
    shelf,
    water,
    converter,
    fans,
    keyboardLock,
};

template <> struct EnumCases<WidgetKind> {
    static constexpr std::string_view typeName = "WidgetKind";
    static constexpr std::array<std::string_view, 31> names = {
        "collection", "timer",     "pomodoro",     "music",       "calendar", "battery", "clock",
        "stopwatch",  "countdown", "timeProgress", "activity",    "network",  "note",    "reminders",
        "shortcut",   "airdrop",   "weather",      "claudeUsage", "github",   "pet",     "colourPicker",
        "clipboard",  "bookmarks", "emoji",        "screenshots", "files",    "shelf",   "water",
        "converter",  "fans",      "keyboardLock"};
};

/// A group of applications shown as one widget.
struct AppCollection {
    std::vector<AppEntry> apps;
    CollectionLayout layout = CollectionLayout::grid;

    bool operator==(const AppCollection&) const = default;
};

// The kinds without settings still need types of their own to stay apart in the variant.
struct StopwatchKind {
    bool operator==(const StopwatchKind&) const = default;
};
struct AirdropKind {
    bool operator==(const AirdropKind&) const = default;
};
struct FansKind {
    bool operator==(const FansKind&) const = default;
};

/// What a widget is, with the kind's settings. The alternatives follow `WidgetKind`.
struct DockWidgetKind {
    using Value =
        std::variant<AppCollection, TimerSettings, PomodoroSettings, MusicSettings, CalendarSettings,
                     BatterySettings, ClockSettings, StopwatchKind, CountdownSettings, TimeProgressSettings,
                     ActivitySettings, NetworkSettings, NoteSettings, ReminderSettings, ShortcutSettings,
                     AirdropKind, WeatherSettings, ClaudeUsageSettings, GitHubSettings, PetSettings,
                     ColourPickerSettings, ClipboardSettings, BookmarkSettings, EmojiSettings,
                     ScreenshotSettings, FilesSettings, ShelfSettings, WaterSettings, ConverterSettings,
                     FansKind, KeyboardLockSettings>;

    Value value;

    DockWidgetKind() = default;
    template <typename Payload>
    requires(!std::is_same_v<std::remove_cvref_t<Payload>, DockWidgetKind> &&
             std::is_constructible_v<Value, Payload&&>) DockWidgetKind(Payload&& payload)
        : value(std::forward<Payload>(payload)) {}

    /// A kind with every setting at its default.
    static DockWidgetKind defaults(WidgetKind which);

    WidgetKind which() const { return static_cast<WidgetKind>(value.index()); }
    std::string_view name() const { return caseName(which()); }
    /// The width a new widget of this kind gets; some kinds choose by their style.
    int defaultSpan() const;
    int maxSpan() const;

    bool operator==(const DockWidgetKind&) const = default;
};

static_assert(std::variant_size_v<DockWidgetKind::Value> == EnumCases<WidgetKind>::names.size());

/// One widget the user placed: what it is, its settings, and how many tiles wide it is.
struct DockWidget {
    using Kind = DockWidgetKind;
    using Collection = AppCollection;

    /// The global range of any span; each kind narrows the top.
    static constexpr int minSpan = 1;
    static constexpr int maxSpanOfAnyKind = 4;

    Uuid id;
    std::string name;
    /// The macOS Dock slot 1…12 the widget occupies when the macOS Dock is in use.
    std::optional<int> slot;
    Kind kind;
    /// Width in tiles, within 1…`kind.maxSpan()`.
    int span = minSpan;

    DockWidget() = default;
    /// Without a span the kind's default is used; either way the span is clamped.
    DockWidget(Uuid id, std::string name, std::optional<int> slot, Kind kind, std::optional<int> span = {});

    /// `span` brought within 1…`kind.maxSpan()`.
    static int clampedSpan(long long span, const Kind& kind);

    template <typename Settings> const Settings* settings() const {
        return std::get_if<Settings>(&kind.value);
    }
    /// Replaces the payload only when the widget already carries that kind of settings; none,
    /// or settings of another kind, change nothing.
    template <typename Settings> void setSettings(const std::optional<Settings>& settings) {
        if (!settings) return;
        if (auto* current = std::get_if<Settings>(&kind.value)) *current = *settings;
    }

    const TimerSettings* timerSettings() const { return settings<TimerSettings>(); }
    const PomodoroSettings* pomodoroSettings() const { return settings<PomodoroSettings>(); }
    const MusicSettings* musicSettings() const { return settings<MusicSettings>(); }
    const CalendarSettings* calendarSettings() const { return settings<CalendarSettings>(); }
    const WeatherSettings* weatherSettings() const { return settings<WeatherSettings>(); }
    const ClaudeUsageSettings* claudeUsageSettings() const { return settings<ClaudeUsageSettings>(); }
    const GitHubSettings* githubSettings() const { return settings<GitHubSettings>(); }
    const PetSettings* petSettings() const { return settings<PetSettings>(); }
    const ColourPickerSettings* colourPickerSettings() const { return settings<ColourPickerSettings>(); }
    const ClipboardSettings* clipboardSettings() const { return settings<ClipboardSettings>(); }
    const BookmarkSettings* bookmarkSettings() const { return settings<BookmarkSettings>(); }
    const EmojiSettings* emojiSettings() const { return settings<EmojiSettings>(); }
    const ScreenshotSettings* screenshotSettings() const { return settings<ScreenshotSettings>(); }
    const FilesSettings* filesSettings() const { return settings<FilesSettings>(); }
    const ShelfSettings* shelfSettings() const { return settings<ShelfSettings>(); }
    const WaterSettings* waterSettings() const { return settings<WaterSettings>(); }
    const ConverterSettings* converterSettings() const { return settings<ConverterSettings>(); }
    const NoteSettings* noteSettings() const { return settings<NoteSettings>(); }

    /// The collection's layout; none for other kinds.
    std::optional<CollectionLayout> collectionLayout() const;
    void setCollectionLayout(std::optional<CollectionLayout> layout);
    /// The collection's applications; none for other kinds.
    const std::vector<AppEntry>* apps() const;
    void setApps(const std::optional<std::vector<AppEntry>>& apps);

    /// Bundle identifiers of the applications this widget stands in for in a workspace: the
    /// music players for a music widget, nothing for the others.
    std::vector<std::string> replacesApps() const;

    bool operator==(const DockWidget&) const = default;
};

} // namespace corvane

template <> struct std::hash<corvane::DockWidget> {
    // Equal widgets agree on these fields, which is all a hash needs; the settings are left out.
    std::size_t operator()(const corvane::DockWidget& widget) const noexcept {
        std::size_t h = std::hash<corvane::Uuid>{}(widget.id);
        auto mix = [&h](std::size_t value) { h ^= value + 0x9e3779b97f4a7c15ull + (h << 6) + (h >> 2); };
        mix(std::hash<std::string>{}(widget.name));
        mix(widget.slot ? static_cast<std::size_t>(*widget.slot) + 1 : 0);
        mix(static_cast<std::size_t>(widget.kind.value.index()));
        mix(static_cast<std::size_t>(widget.span));
        return h;
    }
};
