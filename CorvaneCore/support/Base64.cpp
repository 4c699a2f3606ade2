#include "CorvaneCore/support/Base64.hpp"

namespace corvane {

namespace {
constexpr char kAlphabet[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";

int sextet(char c) {
    if (c >= 'A' && c <= 'Z') return c - 'A';
    if (c >= 'a' && c <= 'z') return c - 'a' + 26;
    if (c >= '0' && c <= '9') return c - '0' + 52;
    if (c == '+') return 62;
    if (c == '/') return 63;
    return -1;
}
} // namespace

std::string base64Encode(const Bytes& bytes) {
    std::string out;
    out.reserve((bytes.size() + 2) / 3 * 4);
    std::size_t i = 0;
    for (; i + 2 < bytes.size(); i += 3) {
        std::uint32_t n = (bytes[i] << 16) | (bytes[i + 1] << 8) | bytes[i + 2];
        out += kAlphabet[n >> 18];
        out += kAlphabet[(n >> 12) & 63];
        out += kAlphabet[(n >> 6) & 63];
        out += kAlphabet[n & 63];
    }
    if (std::size_t rest = bytes.size() - i; rest > 0) {
        std::uint32_t n = bytes[i] << 16;
        if (rest == 2) n |= bytes[i + 1] << 8;
        out += kAlphabet[n >> 18];
        out += kAlphabet[(n >> 12) & 63];
        out += rest == 2 ? kAlphabet[(n >> 6) & 63] : '=';
        out += '=';
    }
    return out;
}

std::optional<Bytes> base64Decode(std::string_view text) {
    if (text.size() % 4 != 0) return std::nullopt;
    Bytes out;
    out.reserve(text.size() / 4 * 3);
    for (std::size_t i = 0; i < text.size(); i += 4) {
        bool last = i + 4 == text.size();
        int a = sextet(text[i]), b = sextet(text[i + 1]);
        if (a < 0 || b < 0) return std::nullopt;
        int c = text[i + 2] == '=' && last && text[i + 3] == '=' ? -2 : sextet(text[i + 2]);
        int d = text[i + 3] == '=' && last ? -2 : sextet(text[i + 3]);
        if (c == -1 || d == -1 || (c == -2 && d != -2)) return std::nullopt;
        std::uint32_t n = (a << 18) | (b << 12) | ((c < 0 ? 0 : c) << 6) | (d < 0 ? 0 : d);
        out.push_back(static_cast<std::uint8_t>(n >> 16));
        if (c >= 0) out.push_back(static_cast<std::uint8_t>((n >> 8) & 0xFF));
        if (d >= 0) out.push_back(static_cast<std::uint8_t>(n & 0xFF));
    }
    return out;
}

} // namespace corvane
