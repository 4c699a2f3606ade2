#pragma once

#include <array>
#include <compare>
#include <cstdint>
#include <cstring>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace corvane {

/// A 128-bit identifier, written in its canonical upper-case 8-4-4-4-12 form.
struct Uuid {
    std::array<std::uint8_t, 16> bytes{};

    /// Accepts the canonical form in any letter case; anything else is none.
    static std::optional<Uuid> parse(std::string_view text);
    /// A random (version 4) identifier from the system's entropy source.
    static Uuid generate();

    std::string string() const;
    bool operator==(const Uuid&) const = default;
    // Spelled out rather than defaulted: not every standard library compares arrays with <=>.
    std::strong_ordering operator<=>(const Uuid& other) const {
        return std::memcmp(bytes.data(), other.bytes.data(), bytes.size()) <=> 0;
    }
};

} // namespace corvane

template <> struct std::hash<corvane::Uuid> {
    std::size_t operator()(const corvane::Uuid& uuid) const noexcept {
        std::size_t h = 1469598103934665603ull;
        for (auto b : uuid.bytes) h = (h ^ b) * 1099511628211ull;
        return h;
    }
};
