#include "CorvaneCore/widgets/system/ByteRate.hpp"

#include <array>
#include <cmath>
#include <cstdio>

namespace corvane::ByteRate {

std::optional<double> between(std::uint64_t earlier, std::uint64_t later, double seconds) {
    if (!(seconds > 0) || !std::isfinite(seconds)) return std::nullopt;
    std::uint64_t delta = 0;
    if (later >= earlier)
        delta = later - earlier;
    else if (earlier <= 0xFFFFFFFFull)
        delta = (0x100000000ull - earlier) + later;
    else
        return std::nullopt;
    return static_cast<double>(delta) / seconds;
}

std::string amount(double bytes) {
    static constexpr std::array<const char*, 5> units = {"B", "KB", "MB", "GB", "TB"};
    if (!std::isfinite(bytes) || bytes < 0) bytes = 0;
    std::size_t unit = 0;
    while (bytes >= 999.5 && unit + 1 < units.size()) {
        bytes /= 1000;
        ++unit;
    }
    char buffer[32];
    if (unit == 0 || bytes >= 9.95)
        std::snprintf(buffer, sizeof buffer, "%.0f %s", bytes, units[unit]);
    else
        std::snprintf(buffer, sizeof buffer, "%.1f %s", bytes, units[unit]);
    return buffer;
}

std::string text(double bytesPerSecond) {
    return amount(bytesPerSecond) + "/s";
}

} // namespace corvane::ByteRate
