#include "CorvaneCore/dock/DockURLString.hpp"

#include <optional>

namespace corvane::DockURLString {

namespace {

constexpr std::string_view kFileScheme = "file://";

// What a URL path may hold unescaped: the unreserved characters, the sub-delimiters, ":", "@"
// and "/". Foundation escapes exactly the others when it makes a file URL.
bool isPathCharacter(unsigned char c) {
    if ((c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9')) return true;
    return std::string_view("-._~!$&'()*+,;=:@/").find(static_cast<char>(c)) != std::string_view::npos;
}

int hexDigit(char c) {
    if (c >= '0' && c <= '9') return c - '0';
    if (c >= 'a' && c <= 'f') return c - 'a' + 10;
    if (c >= 'A' && c <= 'F') return c - 'A' + 10;
    return -1;
}

std::optional<std::string> percentDecoded(std::string_view text) {
    std::string out;
    out.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        auto c = static_cast<unsigned char>(text[i]);
        if (c == '%') {
            if (i + 2 >= text.size()) return std::nullopt;
            int high = hexDigit(text[i + 1]), low = hexDigit(text[i + 2]);
            if (high < 0 || low < 0) return std::nullopt;
            out.push_back(static_cast<char>(high * 16 + low));
            i += 2;
        } else if (c <= ' ' || c >= 0x7F || c == '"' || c == '<' || c == '>' || c == '\\' || c == '^' ||
                   c == '`' || c == '{' || c == '|' || c == '}') {
            // Not valid inside a URL: the text is no URL at all.
            return std::nullopt;
        } else {
            out.push_back(static_cast<char>(c));
        }
    }
    return out;
}

std::optional<std::string> filePath(std::string_view url) {
    auto rest = url.substr(kFileScheme.size());
    auto slash = rest.find('/');
    auto path = slash == std::string_view::npos ? std::string_view{} : rest.substr(slash);
    if (auto end = path.find_first_of("?#"); end != std::string_view::npos) path = path.substr(0, end);
    return percentDecoded(path);
}

} // namespace

std::string fileURLString(std::string_view path, bool isDirectory) {
    static constexpr char kHex[] = "0123456789ABCDEF";
    std::string url(kFileScheme);
    for (unsigned char c : path) {
        if (isPathCharacter(c)) {
            url.push_back(static_cast<char>(c));
        } else {
            url.push_back('%');
            url.push_back(kHex[c >> 4]);
            url.push_back(kHex[c & 0xF]);
        }
    }
    if (isDirectory && !url.ends_with('/')) url.push_back('/');
    return url;
}

std::string path(std::string_view urlString) {
    if (urlString.starts_with(kFileScheme))
        if (auto decoded = filePath(urlString)) return normalize(*decoded);
    return normalize(urlString);
}

std::string normalize(std::string_view path) {
    while (path.size() >= 2 && path.ends_with('/')) path.remove_suffix(1);
    return std::string(path);
}

} // namespace corvane::DockURLString
