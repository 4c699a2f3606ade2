#pragma once

#include "CorvaneCore/support/Text.hpp"

#include <cstddef>
#include <string>

namespace corvane {

/// Columns of the tool's tables, counted in characters so that "°" or "é" take one place.
inline std::size_t displayWidth(const std::string& text) {
    return text::utf8Characters(text).size();
}

/// `text` followed by spaces up to `width`.
inline std::string padded(const std::string& text, std::size_t width) {
    auto w = displayWidth(text);
    return text + std::string(w < width ? width - w : 0, ' ');
}

/// Spaces up to `width`, then `text`: numbers line up on their last digit.
inline std::string rightAligned(const std::string& text, std::size_t width) {
    auto w = displayWidth(text);
    return std::string(w < width ? width - w : 0, ' ') + text;
}

} // namespace corvane
