#pragma once

#include "CorvaneCore/platform/Calendar.hpp"
#include "CorvaneCore/support/Date.hpp"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace corvane {

/// What was drunk on one day.
struct WaterDay {
    /// "YYYY-MM-DD" in the user's calendar.
    std::string day;
    /// Never negative.
    int millilitres = 0;

    bool operator==(const WaterDay&) const = default;
};

/// The record of pours behind the water widget: daily totals, oldest first, and when the last
/// glass went down. Every query takes the moment and calendar it is asked about.
struct WaterLog {
    static constexpr std::size_t historyLength = 60;
    /// Days shown by the week chart, today included.
    static constexpr int weekLength = 7;

    std::vector<WaterDay> days;
    std::optional<Date> lastPour;

    static std::string key(Date date, const Calendar& calendar) { return calendar.day(date).key(); }

    /// The day's millilitres; 0 when nothing was logged.
    int total(Date on, const Calendar& calendar) const;

    /// Adds to the day's total (appending the day when it is new), never going below zero. A
    /// positive amount is a pour and moves `lastPour`; only the newest `historyLength` days stay.
    void add(int millilitres, Date at, const Calendar& calendar);
    /// The undo of a pour: takes up to `millilitres` away from the day, leaving `lastPour` alone so
    /// the tank does not refill. A day with no entry is left without one.
    void remove(int millilitres, Date at, const Calendar& calendar);
    /// Resets the day: drops its entry, and `lastPour` when it fell on that day.
    void clear(Date at, const Calendar& calendar);

    /// The `weekLength` days ending on `now`'s day, oldest first, a missing day counting as 0.
    std::vector<WaterDay> week(Date now, const Calendar& calendar) const;

    /// How full the tank is, 0…1: each pour fills it and it drains linearly over `refillMinutes`
    /// (at least one); once the goal is met it stays full until the day ends.
    double tankLevel(Date now, int goal, int refillMinutes, const Calendar& calendar) const;
    /// When the next glass is due, while today has a pour and the goal is still ahead. The date
    /// stays put once the tank has drained, so the tile can say by how much the glass is overdue.
    std::optional<Date> nextGlass(Date now, int goal, int refillMinutes, const Calendar& calendar) const;

    bool operator==(const WaterLog&) const = default;
};

/// US fluid ounces, for display only: the log itself always counts millilitres.
namespace WaterAmount {
inline constexpr double millilitresPerOunce = 29.5735295625;
double ounces(int millilitres);
int millilitres(double ounces);
/// Ounces for a label: one decimal below 10 oz (a glass reads "8.5"), whole ounces from there.
std::string ouncesText(int millilitres);
} // namespace WaterAmount

/// The water file: pretty-printed, keys sorted. A missing key takes its default. Throws
/// `DecodingError`.
std::string waterLogText(const WaterLog& log);
WaterLog waterLogFromText(std::string_view text);

} // namespace corvane
