#pragma once

// How much of the plan's allowance is gone, as Claude Code hands it to its status-line command.

#include "CorvaneCore/support/Date.hpp"
#include "CorvaneCore/widgets/WidgetSettings.hpp"

#include <nlohmann/json_fwd.hpp>

#include <optional>
#include <string>
#include <string_view>

namespace corvane {

class JsonReader;

/// One plan-limit window.
struct ClaudeUsageWindow {
    /// 0–100.
    double usedPercentage = 0;
    std::optional<Date> resetsAt;

    bool hasReset(Date now) const { return resetsAt && *resetsAt <= now; }

    bool operator==(const ClaudeUsageWindow&) const = default;
};

struct ClaudeUsageLimits {
    std::optional<ClaudeUsageWindow> fiveHour;
    std::optional<ClaudeUsageWindow> sevenDay;
    std::optional<std::string> subscriptionType;
    /// When the payload was written.
    Date readAt;

    bool isEmpty() const { return !fiveHour && !sevenDay; }
    /// The window `shows` picks; none for `tokens`.
    const std::optional<ClaudeUsageWindow>& window(ClaudeUsageShows shows) const;

    bool operator==(const ClaudeUsageLimits&) const = default;
};

/// Keys "fiveHour", "sevenDay", "subscriptionType", "readAt"; windows "usedPercentage",
/// "resetsAt"; dates as seconds since 2001.
nlohmann::json encodeClaudeUsageLimits(const ClaudeUsageLimits& limits);
ClaudeUsageLimits decodeClaudeUsageLimits(const JsonReader& reader);

namespace ClaudeUsageLimitsFormat {

/// Past this age a payload says nothing about the plan any more: Claude Code has not redrawn
/// its status line for half a day.
inline constexpr double freshSeconds = 43200;
inline constexpr std::string_view accentHex = "#D97757";
inline constexpr std::string_view warningHex = "#FF453A";
/// From this share on (0–1) the panel draws a window in the warning colour.
inline constexpr double warningFraction = 0.9;

/// The limits in a status-line payload, read at `readAt`. None when the bytes are not such a
/// payload or hold neither window. Never throws, whatever the bytes.
std::optional<ClaudeUsageLimits> limits(std::string_view payload, Date readAt);

/// "42m", "3h 12m", "2d 5h" until `resetsAt`; none when it is absent or not after `now`.
std::optional<std::string> untilReset(std::optional<Date> resetsAt, Date now);

/// The window a tile shows: the one `shows` picks, from limits no older than `freshSeconds`, as
/// long as it has not reset.
std::optional<ClaudeUsageWindow> shownWindow(const std::optional<ClaudeUsageLimits>& limits, ClaudeUsageShows shows,
                                             Date now);

} // namespace ClaudeUsageLimitsFormat

} // namespace corvane
