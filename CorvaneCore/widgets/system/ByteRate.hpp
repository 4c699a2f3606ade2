#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace corvane {

/// Rates from two readings of a growing byte counter, and how the tiles write them.
namespace ByteRate {

/// Bytes a second between two readings `seconds` apart. A counter that went down wrapped when
/// it was a 32-bit one (both readings fit 32 bits), else it restarted (the interface came up
/// again) and the interval says nothing: none. None too when no time passed.
std::optional<double> between(std::uint64_t earlier, std::uint64_t later, double seconds);

/// "0 B/s", "512 B/s", "1.2 KB/s", "34 MB/s": decimal units, one decimal below ten.
std::string text(double bytesPerSecond);

/// "4.1 GB", "512 MB": an amount of memory or data, the same way.
std::string amount(double bytes);

} // namespace ByteRate

} // namespace corvane
