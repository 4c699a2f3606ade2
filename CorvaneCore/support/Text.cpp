#include "CorvaneCore/support/Text.hpp"

#include <algorithm>
#include <array>

namespace corvane::text {

namespace {
// Unicode white space that shows up in pasted names: no-break space, line and paragraph
// separators, and the ideographic space.
constexpr std::array<std::string_view, 4> kWideSpaces = {"\xC2\xA0", "\xE2\x80\xA8", "\xE2\x80\xA9",
                                                         "\xE3\x80\x80"};

bool isAsciiSpace(char c) { return c == ' ' || c == '\t' || c == '\n' || c == '\r' || c == '\v' || c == '\f'; }

std::size_t wideSpacePrefix(std::string_view text) {
    for (auto s : kWideSpaces)
        if (text.starts_with(s)) return s.size();
    return 0;
}

std::size_t wideSpaceSuffix(std::string_view text) {
    for (auto s : kWideSpaces)
        if (text.ends_with(s)) return s.size();
    return 0;
}
} // namespace

std::string_view trimmed(std::string_view text) {
    for (;;) {
        if (!text.empty() && isAsciiSpace(text.front())) text.remove_prefix(1);
        else if (auto n = wideSpacePrefix(text)) text.remove_prefix(n);
        else break;
    }
    for (;;) {
        if (!text.empty() && isAsciiSpace(text.back())) text.remove_suffix(1);
        else if (auto n = wideSpaceSuffix(text)) text.remove_suffix(n);
        else break;
    }
    return text;
}

std::string lowercased(std::string_view text) {
    std::string out(text);
    std::transform(out.begin(), out.end(), out.begin(),
                   [](unsigned char c) { return static_cast<char>(c >= 'A' && c <= 'Z' ? c + 32 : c); });
    return out;
}

std::string uppercased(std::string_view text) {
    std::string out;
    out.reserve(text.size());
    for (auto character : utf8Characters(text)) {
        char32_t c = codePoint(character);
        if (c >= 'a' && c <= 'z') out.push_back(static_cast<char>(c - 32));
        else if (c >= 0xE0 && c <= 0xFE && c != 0xF7) out += utf8Encode(c - 0x20);
        else out += character;
    }
    return out;
}

char32_t codePoint(std::string_view character) {
    auto byte = [&](std::size_t i) { return static_cast<char32_t>(static_cast<unsigned char>(character[i])); };
    switch (character.size()) {
    case 2: return ((byte(0) & 0x1F) << 6) | (byte(1) & 0x3F);
    case 3: return ((byte(0) & 0x0F) << 12) | ((byte(1) & 0x3F) << 6) | (byte(2) & 0x3F);
    case 4: return ((byte(0) & 0x07) << 18) | ((byte(1) & 0x3F) << 12) | ((byte(2) & 0x3F) << 6) | (byte(3) & 0x3F);
    default: return character.empty() ? 0 : byte(0);
    }
}

std::string utf8Encode(char32_t c) {
    std::string out;
    if (c < 0x80) out.push_back(static_cast<char>(c));
    else if (c < 0x800) {
        out.push_back(static_cast<char>(0xC0 | (c >> 6)));
        out.push_back(static_cast<char>(0x80 | (c & 0x3F)));
    } else if (c < 0x10000) {
        out.push_back(static_cast<char>(0xE0 | (c >> 12)));
        out.push_back(static_cast<char>(0x80 | ((c >> 6) & 0x3F)));
        out.push_back(static_cast<char>(0x80 | (c & 0x3F)));
    } else {
        out.push_back(static_cast<char>(0xF0 | (c >> 18)));
        out.push_back(static_cast<char>(0x80 | ((c >> 12) & 0x3F)));
        out.push_back(static_cast<char>(0x80 | ((c >> 6) & 0x3F)));
        out.push_back(static_cast<char>(0x80 | (c & 0x3F)));
    }
    return out;
}

bool isLetterOrDigit(std::string_view character) {
    if (character.size() == 1) {
        unsigned char c = static_cast<unsigned char>(character[0]);
        return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
    }
    char32_t c = codePoint(character);
    return (c >= 0xC0 && c <= 0x24F && c != 0xD7 && c != 0xF7) // Latin-1 and Latin Extended-A/B letters
           || (c >= 0x370 && c <= 0x3FF) || (c >= 0x400 && c <= 0x4FF) // Greek, Cyrillic
           || (c >= 0x3040 && c <= 0x30FF) || (c >= 0x4E00 && c <= 0x9FFF) || (c >= 0xAC00 && c <= 0xD7A3);
}

bool equalsIgnoringCase(std::string_view a, std::string_view b) { return lowercased(a) == lowercased(b); }

bool startsWithIgnoringCase(std::string_view text, std::string_view prefix) {
    return text.size() >= prefix.size() && equalsIgnoringCase(text.substr(0, prefix.size()), prefix);
}

std::vector<std::string> split(std::string_view text, char separator) {
    std::vector<std::string> parts;
    std::size_t start = 0;
    for (;;) {
        auto end = text.find(separator, start);
        parts.emplace_back(text.substr(start, end - start));
        if (end == std::string_view::npos) break;
        start = end + 1;
    }
    return parts;
}

std::string lastPathComponent(std::string_view path) {
    while (path.size() > 1 && path.back() == '/') path.remove_suffix(1);
    if (path == "/") return "/";
    auto slash = path.rfind('/');
    return std::string(slash == std::string_view::npos ? path : path.substr(slash + 1));
}

std::vector<std::string_view> utf8Characters(std::string_view text) {
    std::vector<std::string_view> out;
    for (std::size_t i = 0; i < text.size();) {
        auto lead = static_cast<unsigned char>(text[i]);
        std::size_t length = lead < 0x80 ? 1 : (lead >> 5) == 0x6 ? 2 : (lead >> 4) == 0xE ? 3 : (lead >> 3) == 0x1E ? 4 : 1;
        if (i + length > text.size()) length = 1;
        for (std::size_t j = 1; j < length; ++j)
            if ((static_cast<unsigned char>(text[i + j]) & 0xC0) != 0x80) {
                length = 1;
                break;
            }
        out.push_back(text.substr(i, length));
        i += length;
    }
    return out;
}

} // namespace corvane::text
