#include "CorvaneCore/widgets/clipboard/WebAddress.hpp"

#include "CorvaneCore/support/Text.hpp"

#include <algorithm>
#include <cctype>

namespace corvane {

namespace {

bool isForbidden(unsigned char c) { return c <= 0x20 || c == 0x7F || c == '\\'; }

// "data:", "javascript:", "https:" and the like: a scheme before any "/", "?" or "#".
bool hasScheme(std::string_view reference) {
    auto colon = reference.find(':');
    if (colon == std::string_view::npos || colon == 0) return false;
    return std::all_of(reference.begin(), reference.begin() + static_cast<std::ptrdiff_t>(colon), [](char c) {
        return std::isalnum(static_cast<unsigned char>(c)) || c == '+' || c == '-' || c == '.';
    });
}

} // namespace

std::optional<WebAddress> WebAddress::parse(std::string_view text) {
    if (std::any_of(text.begin(), text.end(), [](char c) { return isForbidden(static_cast<unsigned char>(c)); }))
        return std::nullopt;
    auto separator = text.find("://");
    if (separator == std::string_view::npos) return std::nullopt;
    WebAddress address;
    address.scheme = text::lowercased(text.substr(0, separator));
    if (address.scheme != "http" && address.scheme != "https") return std::nullopt;

    auto afterScheme = text.substr(separator + 3);
    auto authorityEnd = afterScheme.find_first_of("/?#");
    auto authority = afterScheme.substr(0, authorityEnd);
    address.rest = authorityEnd == std::string_view::npos ? "" : std::string(afterScheme.substr(authorityEnd));
    // The host follows the last "@": what comes before it is user info, never a place to connect to.
    if (auto at = authority.rfind('@'); at != std::string_view::npos) authority.remove_prefix(at + 1);

    std::string_view host;
    std::string_view port;
    if (authority.starts_with('[')) {
        auto close = authority.find(']');
        if (close == std::string_view::npos) return std::nullopt;
        host = authority.substr(1, close - 1);
        auto after = authority.substr(close + 1);
        if (!after.empty() && !after.starts_with(':')) return std::nullopt;
        if (!after.empty()) port = after.substr(1);
        address.isIPv6Literal = true;
    } else {
        auto colon = authority.find(':');
        host = authority.substr(0, colon);
        if (colon != std::string_view::npos) port = authority.substr(colon + 1);
    }
    if (host.empty() || host.size() > 253) return std::nullopt;
    if (!std::all_of(port.begin(), port.end(), [](char c) { return c >= '0' && c <= '9'; }) || port.size() > 5)
        return std::nullopt;
    // Percent escapes in a host would be decoded by some resolvers and not by us.
    if (host.find('%') != std::string_view::npos && !address.isIPv6Literal) return std::nullopt;
    address.host = text::lowercased(host);
    address.port = std::string(port);
    return address;
}

std::string WebAddress::origin() const {
    return scheme + "://" + (isIPv6Literal ? "[" + host + "]" : host) + (port.empty() ? "" : ":" + port);
}

std::optional<std::string> WebAddress::resolve(std::string_view reference) const {
    auto trimmedReference = text::trimmed(reference);
    if (trimmedReference.empty()) return std::nullopt;
    std::string candidate;
    if (hasScheme(trimmedReference)) candidate = std::string(trimmedReference);
    else if (trimmedReference.starts_with("//")) candidate = scheme + ":" + std::string(trimmedReference);
    else if (trimmedReference.starts_with('/')) candidate = origin() + std::string(trimmedReference);
    else {
        auto path = rest.substr(0, rest.find_first_of("?#"));
        auto folder = path.substr(0, path.rfind('/') == std::string::npos ? 0 : path.rfind('/') + 1);
        candidate = origin() + (folder.empty() ? "/" : folder) + std::string(trimmedReference);
    }
    if (!parse(candidate)) return std::nullopt;
    return candidate;
}

} // namespace corvane
