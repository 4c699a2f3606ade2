#include "CorvaneCore/looks/RGBColor.hpp"

#include "CorvaneCore/support/Text.hpp"

namespace corvane {

namespace {

std::optional<int> hexDigit(char c) {
    if (c >= '0' && c <= '9') return c - '0';
    if (c >= 'a' && c <= 'f') return c - 'a' + 10;
    if (c >= 'A' && c <= 'F') return c - 'A' + 10;
    return std::nullopt;
}

} // namespace

std::optional<RGBColor> RGBColor::parseHex(std::string_view text) {
    auto digits = text::trimmed(text);
    if (!digits.empty() && digits.front() == '#') digits.remove_prefix(1);
    if (digits.size() != 6) return std::nullopt;
    double channels[3];
    for (int i = 0; i < 3; ++i) {
        auto high = hexDigit(digits[2 * i]);
        auto low = hexDigit(digits[2 * i + 1]);
        if (!high || !low) return std::nullopt;
        channels[i] = (*high * 16 + *low) / 255.0;
    }
    return RGBColor{channels[0], channels[1], channels[2]};
}

RGBColor RGBColor::fromHex(std::string_view text) {
    return parseHex(text).value_or(neutralGray());
}

} // namespace corvane
