#pragma once

// Token counts of the Claude Code coding assistant, as its transcripts record them, and the
// totals the usage widget shows for a period.

#include "CorvaneCore/platform/Calendar.hpp"
#include "CorvaneCore/support/Date.hpp"
#include "CorvaneCore/widgets/WidgetSettings.hpp"

#include <nlohmann/json_fwd.hpp>

#include <array>
#include <compare>
#include <cstdint>
#include <iosfwd>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace corvane {

/// A message's id as a transcript line gives it: a request's, a message's or the line's own. Claude
/// Code's are some 30 characters, kept in the value itself so that a scan makes no allocation per
/// message; longer ones go to the heap. Compares, orders and converts as its text.
class ClaudeUsageId {
public:
    /// Ids of up to this many bytes are kept inline.
    static constexpr std::size_t inlineCapacity = 39;

    ClaudeUsageId() = default;
    ClaudeUsageId(std::string_view text) { assign(text); }
    ClaudeUsageId(const char* text) : ClaudeUsageId(std::string_view(text)) {}
    ClaudeUsageId(const std::string& text) : ClaudeUsageId(std::string_view(text)) {}

    std::string_view view() const {
        return size_ == onHeap ? std::string_view(heap_) : std::string_view(inline_.data(), size_);
    }
    operator std::string_view() const { return view(); }
    std::string string() const { return std::string(view()); }
    bool empty() const { return view().empty(); }

    friend bool operator==(const ClaudeUsageId& a, const ClaudeUsageId& b) { return a.view() == b.view(); }
    friend std::strong_ordering operator<=>(const ClaudeUsageId& a, const ClaudeUsageId& b) {
        return a.view().compare(b.view()) <=> 0;
    }
    friend std::ostream& operator<<(std::ostream& out, const ClaudeUsageId& id);

private:
    static constexpr std::uint8_t onHeap = 0xff;

    void assign(std::string_view text);

    std::array<char, inlineCapacity> inline_{};
    std::uint8_t size_ = 0;
    std::string heap_;
};

/// One assistant message with its token usage.
struct ClaudeUsageEntry {
    /// Claude Code writes a message several times while it streams; all copies share this key.
    ClaudeUsageId id;
    Date timestamp;
    /// Display name of the project the transcript belongs to.
    std::optional<std::string> project;
    std::int64_t inputTokens = 0;
    std::int64_t outputTokens = 0;
    std::int64_t cacheCreationTokens = 0;
    std::int64_t cacheReadTokens = 0;

    /// Sent, written and written into the cache; cache reads are left out on purpose, since they
    /// would dwarf everything else. Throws `std::overflow_error`.
    std::int64_t tokens() const;
    /// `tokens()` and the cache reads. Throws `std::overflow_error`.
    std::int64_t allTokens() const;

    bool operator==(const ClaudeUsageEntry&) const = default;
};

struct ClaudeUsageProject {
    std::string name;
    std::int64_t tokens = 0;

    bool operator==(const ClaudeUsageProject&) const = default;
};

struct ClaudeUsageTotals {
    std::int64_t tokens = 0;
    std::int64_t inputTokens = 0;
    std::int64_t outputTokens = 0;
    std::int64_t cacheCreationTokens = 0;
    std::int64_t cacheReadTokens = 0;
    /// Messages after de-duplication.
    std::int64_t messages = 0;
    std::optional<Date> lastActivity;
    /// Busiest first; ties by name.
    std::vector<ClaudeUsageProject> projects;

    /// Throws `std::overflow_error`.
    std::int64_t allTokens() const;
    /// The share of `budget` used, capped at 1; none without a budget of at least 1.
    std::optional<double> fraction(std::optional<std::int64_t> budget) const;

    bool operator==(const ClaudeUsageTotals&) const = default;
};

/// The totals' fields under their own names, `allTokens` included; dates as seconds since 2001.
nlohmann::json encodeClaudeUsageTotals(const ClaudeUsageTotals& totals);

/// The three periods, in the order the panel lists them.
inline constexpr std::array<ClaudeUsageScope, 3> allClaudeUsageScopes = {
    ClaudeUsageScope::block, ClaudeUsageScope::today, ClaudeUsageScope::week};

/// "Last 5 hours", "Today", "Last 7 days".
std::string_view title(ClaudeUsageScope scope);
/// "5-hour limit", "Weekly limit", "Tokens".
std::string_view title(ClaudeUsageShows shows);

/// Where the period of `scope` begins for `now`: a rolling five hours, the start of today, or
/// the start of the day six days before today.
Date start(ClaudeUsageScope scope, Date now, const Calendar& calendar);

namespace ClaudeUsage {

inline constexpr double blockSeconds = 18000;

// What the tile and panel say when there is nothing to count or show.
inline constexpr std::string_view notRunTile = "Claude Code has not run here";
inline constexpr std::string_view notRunPanel = "Claude Code has not run on this Mac, so there is nothing to count.";
inline constexpr std::string_view waitingTile = "Waiting for Claude Code";
inline constexpr std::string_view busiestProjects = "Busiest projects";
inline constexpr std::string_view connectedNote = "Claude Code is handing the numbers over";
inline constexpr std::string_view localNote = "Read from Claude Code's own files on this Mac. Nothing is sent anywhere.";

/// The tile's text when it has nothing to show: Claude Code never ran here, or the tile shows a
/// plan limit and none is fresh. None when all is well.
std::optional<std::string_view> trouble(bool isAvailable, bool hasRead, ClaudeUsageShows shows, bool showsWindow);
/// The token budgets the settings offer, smallest first.
inline constexpr std::array<std::int64_t, 5> budgetChoices = {5'000'000, 10'000'000, 25'000'000, 50'000'000,
                                                              100'000'000};

/// The totals of the entries stamped within the period of `scope` (now included, the future
/// not), each message counted once at its largest record. Throws `std::overflow_error` when a
/// sum does not fit, rather than showing a wrapped count.
ClaudeUsageTotals totals(const std::vector<ClaudeUsageEntry>& entries, ClaudeUsageScope scope, Date now,
                         const Calendar& calendar);
/// `totals` of entries kept in several lists, taken in order as one, without joining them.
ClaudeUsageTotals totalsAcross(std::span<const std::vector<ClaudeUsageEntry>> lists, ClaudeUsageScope scope, Date now,
                               const Calendar& calendar);

/// A compact token count: "950", "12.3k", "250k", "4.2M", "37M". (`short` is taken by C++.)
std::string shortText(std::int64_t tokens);

/// The project's name from the folder Claude Code files its transcripts under, which is the
/// project's path with "/" turned into "-": "-Users-ann-src-atlas" gives "atlas". Generated
/// hexadecimal suffixes are dropped. None when nothing is left.
std::optional<std::string> projectName(std::string_view folder);

} // namespace ClaudeUsage

} // namespace corvane
