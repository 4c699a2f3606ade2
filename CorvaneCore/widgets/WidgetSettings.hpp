#pragma once

// The settings record that each widget kind carries, with the small enumerations they use.
// Field defaults are the values a widget gets when it is created and when the widgets file
// leaves a field out.

#include "CorvaneCore/support/Date.hpp"
#include "CorvaneCore/support/Uuid.hpp"
#include "CorvaneCore/workspace/Hotkey.hpp"

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace corvane {

/// The case names of an enumeration, in declaration order. They are its JSON form, so a
/// specialisation must list every case exactly as the files spell it.
template <typename Enum> struct EnumCases;

template <typename Enum>
concept NamedEnum = requires {
    EnumCases<Enum>::typeName;
    EnumCases<Enum>::names;
};

template <NamedEnum Enum> constexpr std::string_view caseName(Enum value) {
    return EnumCases<Enum>::names[static_cast<std::size_t>(value)];
}

template <NamedEnum Enum> constexpr std::optional<Enum> fromCaseName(std::string_view name) {
    const auto& names = EnumCases<Enum>::names;
    for (std::size_t i = 0; i < names.size(); ++i)
        if (names[i] == name) return static_cast<Enum>(i);
    return std::nullopt;
}

#define CORVANE_ENUM_CASES(Enum, ...)                                                                        \
    template <> struct EnumCases<Enum> {                                                                     \
        static constexpr std::string_view typeName = #Enum;                                                  \
        static constexpr std::array names = {__VA_ARGS__};                                                   \
    }

enum class CollectionLayout { grid, horizontal, vertical };
CORVANE_ENUM_CASES(CollectionLayout, std::string_view("grid"), std::string_view("horizontal"),
                   std::string_view("vertical"));

// ---- timer and pomodoro

struct TimerSettings {
    static constexpr std::array<double, 5> defaultPresets = {300, 600, 900, 1500, 2700};
    static constexpr std::string_view defaultTintHex = "#FF9F0A";

    /// Durations in seconds offered as one-click countdowns.
    std::vector<double> presets{defaultPresets.begin(), defaultPresets.end()};
    std::string tintHex{defaultTintHex};

    bool operator==(const TimerSettings&) const = default;
};

struct PomodoroSettings {
    double focus = 1500;
    double shortBreak = 300;
    double longBreak = 900;
    int cyclesBeforeLongBreak = 4;
    bool startsBreaksAutomatically = false;
    bool ringsAtTheEnd = true;

    bool operator==(const PomodoroSettings&) const = default;
};

// ---- system and calendar widgets

struct MusicSettings {
    bool showsArtwork = true;

    bool operator==(const MusicSettings&) const = default;
};

enum class CalendarTileStyle { nextEvent, dateAndNext, agenda, date };
CORVANE_ENUM_CASES(CalendarTileStyle, std::string_view("nextEvent"), std::string_view("dateAndNext"),
                   std::string_view("agenda"), std::string_view("date"));

/// Which calendars a calendar widget reads; both lists empty means all of them.
struct CalendarSelection {
    std::vector<std::string> accountIDs;
    std::vector<std::string> calendarIDs;

    bool operator==(const CalendarSelection&) const = default;
};

struct CalendarSettings {
    int daysAhead = 7;
    bool showsAllDay = true;
    bool turnsTextSideways = false;
    CalendarTileStyle style = CalendarTileStyle::dateAndNext;
    CalendarSelection calendars;

    bool operator==(const CalendarSettings&) const = default;
};

enum class BatteryTileStyle { status, ring, icon };
CORVANE_ENUM_CASES(BatteryTileStyle, std::string_view("status"), std::string_view("ring"),
                   std::string_view("icon"));

struct BatterySettings {
    bool showsPercentage = true;
    BatteryTileStyle style = BatteryTileStyle::status;

    bool operator==(const BatterySettings&) const = default;
};

struct ClockSettings {
    /// An IANA zone; none follows the Mac's own zone.
    std::optional<std::string> timeZoneID;
    bool showsSeconds = false;
    /// None follows the system's 12/24-hour setting.
    std::optional<bool> uses24Hour;
    bool isAnalog = false;

    bool operator==(const ClockSettings&) const = default;
};

struct CountdownSettings {
    /// The reference date stands for "not chosen yet"; the editor sets a real target.
    Date target;
    bool countsUpAfter = false;

    bool operator==(const CountdownSettings&) const = default;
};

namespace TimeProgress {
enum class Scope { day, week, month, year };
} // namespace TimeProgress
CORVANE_ENUM_CASES(TimeProgress::Scope, std::string_view("day"), std::string_view("week"),
                   std::string_view("month"), std::string_view("year"));

struct TimeProgressSettings {
    TimeProgress::Scope scope = TimeProgress::Scope::day;

    bool operator==(const TimeProgressSettings&) const = default;
};

enum class ActivityTileStyle { bars, numbers, rings };
CORVANE_ENUM_CASES(ActivityTileStyle, std::string_view("bars"), std::string_view("numbers"),
                   std::string_view("rings"));

struct ActivitySettings {
    bool showsCPU = true;
    bool showsMemory = true;
    ActivityTileStyle style = ActivityTileStyle::bars;

    bool operator==(const ActivitySettings&) const = default;
};

enum class NetworkTileStyle { numbers, chart };
CORVANE_ENUM_CASES(NetworkTileStyle, std::string_view("numbers"), std::string_view("chart"));

struct NetworkSettings {
    /// A BSD interface name such as "en0"; none follows the primary interface.
    std::optional<std::string> interface;
    NetworkTileStyle style = NetworkTileStyle::numbers;

    bool operator==(const NetworkSettings&) const = default;
};

struct NoteSettings {
    std::string text;
    std::string colorHex = "#FFD60A";

    bool operator==(const NoteSettings&) const = default;
};

enum class ReminderTileStyle { next, list, count };
CORVANE_ENUM_CASES(ReminderTileStyle, std::string_view("next"), std::string_view("list"),
                   std::string_view("count"));

struct ReminderSettings {
    /// None reads every list.
    std::optional<std::string> listID;
    bool showsCompleted = false;
    int daysAhead = 7;
    ReminderTileStyle style = ReminderTileStyle::next;

    bool operator==(const ReminderSettings&) const = default;
};

struct ShortcutSettings {
    /// The name of the Shortcuts shortcut to run.
    std::string name;
    std::string symbolName = "bolt.fill";
    std::string colorHex = "#0A84FF";

    bool operator==(const ShortcutSettings&) const = default;
};

struct KeyboardLockSettings {
    bool locksPointer = false;
    /// How long the unlock keys must be held.
    int holdSeconds = 3;
    /// A lock lifts itself after this long, so that nobody is shut out for good; 0 never lifts it.
    int autoUnlockMinutes = 5;
    bool playsSound = true;

    bool operator==(const KeyboardLockSettings&) const = default;
};

// ---- connected widgets

enum class WeatherUnit { celsius, fahrenheit };
CORVANE_ENUM_CASES(WeatherUnit, std::string_view("celsius"), std::string_view("fahrenheit"));

enum class WeatherTileStyle { current, conditions, forecast };
CORVANE_ENUM_CASES(WeatherTileStyle, std::string_view("current"), std::string_view("conditions"),
                   std::string_view("forecast"));

struct WeatherSettings {
    std::optional<std::string> cityName;
    /// Nothing is fetched until both are set.
    std::optional<double> latitude;
    std::optional<double> longitude;
    WeatherUnit unit = WeatherUnit::celsius;
    bool showsApparent = false;
    WeatherTileStyle style = WeatherTileStyle::current;

    bool operator==(const WeatherSettings&) const = default;
};

enum class ClaudeUsageShows { fiveHourLimit, weeklyLimit, tokens };
CORVANE_ENUM_CASES(ClaudeUsageShows, std::string_view("fiveHourLimit"), std::string_view("weeklyLimit"),
                   std::string_view("tokens"));

enum class ClaudeUsageScope { block, today, week };
CORVANE_ENUM_CASES(ClaudeUsageScope, std::string_view("block"), std::string_view("today"),
                   std::string_view("week"));

struct ClaudeUsageSettings {
    ClaudeUsageShows shows = ClaudeUsageShows::tokens;
    ClaudeUsageScope scope = ClaudeUsageScope::block;
    /// The user's own token budget, if any.
    std::optional<std::int64_t> budget;

    bool operator==(const ClaudeUsageSettings&) const = default;
};

enum class GitHubShows { myPullRequests, waitingOnYou, contributions };
CORVANE_ENUM_CASES(GitHubShows, std::string_view("myPullRequests"), std::string_view("waitingOnYou"),
                   std::string_view("contributions"));

struct GitHubSettings {
    GitHubShows shows = GitHubShows::myPullRequests;
    /// "owner/name" strings; empty means every repository.
    std::vector<std::string> repositories;
    bool includesDrafts = true;
    /// Items shown; values below 1 count as 1 where it is used.
    int limit = 5;

    bool operator==(const GitHubSettings&) const = default;
};

// ---- pet, colours, clipboard

enum class PetSpecies { cat, dog, bird, dragon, dino, warriorGirl, warriorBoy, santa, ghost };
CORVANE_ENUM_CASES(PetSpecies, std::string_view("cat"), std::string_view("dog"), std::string_view("bird"),
                   std::string_view("dragon"), std::string_view("dino"), std::string_view("warriorGirl"),
                   std::string_view("warriorBoy"), std::string_view("santa"), std::string_view("ghost"));

enum class PetMetric { cpu, memory };
CORVANE_ENUM_CASES(PetMetric, std::string_view("cpu"), std::string_view("memory"));

enum class PetRange { tile, dock };
CORVANE_ENUM_CASES(PetRange, std::string_view("tile"), std::string_view("dock"));

enum class PetSize { small, medium, large };
CORVANE_ENUM_CASES(PetSize, std::string_view("small"), std::string_view("medium"), std::string_view("large"));

struct PetSettings {
    PetSpecies species = PetSpecies::cat;
    /// Which of the species' coats; none is the species' first.
    std::optional<std::string> coatID;
    PetMetric follows = PetMetric::cpu;
    PetRange range = PetRange::tile;
    PetSize size = PetSize::medium;
    bool showsReading = false;
    bool staysWhenDockHides = false;

    bool operator==(const PetSettings&) const = default;
};

enum class ColourFormat { hex, hexLowercase, rgb, hsl, swiftUI, nsColor, cssVariable };
CORVANE_ENUM_CASES(ColourFormat, std::string_view("hex"), std::string_view("hexLowercase"),
                   std::string_view("rgb"), std::string_view("hsl"), std::string_view("swiftUI"),
                   std::string_view("nsColor"), std::string_view("cssVariable"));

struct ColourPickerSettings {
    static constexpr int minHistoryLimit = 4;
    static constexpr int maxHistoryLimit = 60;

    ColourFormat format = ColourFormat::hex;
    bool copiesOnPick = true;
    /// Kept within `minHistoryLimit`…`maxHistoryLimit` whenever it is read from a file.
    int historyLimit = 24;
    std::optional<Hotkey> hotkey;

    bool operator==(const ColourPickerSettings&) const = default;
};

struct ClipboardSettings {
    int historyLimit = 200;
    int retentionDays = 30;
    bool persistAcrossRestarts = true;
    bool showLastPreviewOnTile = true;
    /// "Skip password manager copies".
    bool ignorePasswordManagers = true;
    std::int64_t maxImageBytes = 2000000;
    bool fetchWebsitePreviews = true;

    bool operator==(const ClipboardSettings&) const = default;
};

// ---- links, emoji, files

struct Bookmark {
    Uuid id;
    std::string address;
    std::optional<std::string> title;

    bool operator==(const Bookmark&) const = default;
};

struct BookmarkSettings {
    std::vector<Bookmark> links;
    /// None opens links in the default browser.
    std::optional<std::string> browserBundleIdentifier;

    bool operator==(const BookmarkSettings&) const = default;
};

enum class EmojiSkinTone { none, light, mediumLight, medium, mediumDark, dark };
CORVANE_ENUM_CASES(EmojiSkinTone, std::string_view("none"), std::string_view("light"),
                   std::string_view("mediumLight"), std::string_view("medium"),
                   std::string_view("mediumDark"), std::string_view("dark"));

struct EmojiSettings {
    EmojiSkinTone skinTone = EmojiSkinTone::none;
    int recentLimit = 24;
    bool closesAfterCopy = true;

    bool operator==(const EmojiSettings&) const = default;
};

enum class ScreenshotClick { open, reveal, copy };
CORVANE_ENUM_CASES(ScreenshotClick, std::string_view("open"), std::string_view("reveal"),
                   std::string_view("copy"));

struct ScreenshotSettings {
    /// None follows the system's screenshot location.
    std::optional<std::string> folderPath;
    int shownCount = 24;
    ScreenshotClick click = ScreenshotClick::open;
    bool tileShowsLatest = true;

    bool operator==(const ScreenshotSettings&) const = default;
};

enum class FileClick { open, reveal };
CORVANE_ENUM_CASES(FileClick, std::string_view("open"), std::string_view("reveal"));

struct FilesSettings {
    /// None shows the Downloads folder.
    std::optional<std::string> folderPath;
    int shownCount = 12;
    FileClick click = FileClick::open;
    bool showsNewCount = true;
    /// When the user last looked; files newer than this count as new.
    std::optional<Date> seenAt;

    bool operator==(const FilesSettings&) const = default;
};

struct DropZoneShelf {
    std::vector<std::string> paths;

    bool operator==(const DropZoneShelf&) const = default;
};

struct ShelfSettings {
    DropZoneShelf shelf;
    FileClick click = FileClick::open;
    bool removesOnDragOut = false;

    bool operator==(const ShelfSettings&) const = default;
};

// ---- water and converter

enum class WaterUnit { millilitres, ounces };
CORVANE_ENUM_CASES(WaterUnit, std::string_view("millilitres"), std::string_view("ounces"));

enum class WaterTileStyle { tank, glass };
CORVANE_ENUM_CASES(WaterTileStyle, std::string_view("tank"), std::string_view("glass"));

struct WaterSettings {
    /// Daily goal and one glass, in `unit`.
    int goal = 2000;
    int glass = 250;
    WaterUnit unit = WaterUnit::millilitres;
    bool showsCountOnTile = true;
    WaterTileStyle style = WaterTileStyle::tank;
    int refillMinutes = 45;

    bool operator==(const WaterSettings&) const = default;
};

enum class ConversionCategory { length, mass, temperature, volume, speed, area, data };
CORVANE_ENUM_CASES(ConversionCategory, std::string_view("length"), std::string_view("mass"),
                   std::string_view("temperature"), std::string_view("volume"), std::string_view("speed"),
                   std::string_view("area"), std::string_view("data"));

struct ConverterSettings {
    /// The unit symbols a converter of `category` starts with: a metric unit and its everyday
    /// counterpart.
    static std::pair<std::string_view, std::string_view> defaultUnits(ConversionCategory category);

    ConversionCategory category = ConversionCategory::length;
    std::string from{defaultUnits(ConversionCategory::length).first};
    std::string to{defaultUnits(ConversionCategory::length).second};
    double value = 1.0;

    bool operator==(const ConverterSettings&) const = default;
};

inline std::pair<std::string_view, std::string_view>
ConverterSettings::defaultUnits(ConversionCategory category) {
    switch (category) {
    case ConversionCategory::length:
        return {"m", "ft"};
    case ConversionCategory::mass:
        return {"kg", "lb"};
    case ConversionCategory::temperature:
        return {"°C", "°F"};
    case ConversionCategory::volume:
        return {"L", "gal"};
    case ConversionCategory::speed:
        return {"km/h", "mph"};
    case ConversionCategory::area:
        return {"m²", "ft²"};
    case ConversionCategory::data:
        return {"MB", "GB"};
    }
    return {"m", "ft"};
}

#undef CORVANE_ENUM_CASES

} // namespace corvane
