#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace corvane {

/// The parts of an absolute http or https address that decide where a request goes. Deliberately
/// strict: anything a browser would repair (white space, back slashes, control characters) is
/// refused, so that what we check is what the HTTP library connects to.
struct WebAddress {
    /// "http" or "https", lower case.
    std::string scheme;
    /// Lower case, without user info, port or brackets; an IPv6 literal keeps its colons.
    std::string host;
    bool isIPv6Literal = false;
    /// Digits only; empty for the scheme's default.
    std::string port;
    /// Everything from the first "/", "?" or "#" after the host; may be empty.
    std::string rest;

    static std::optional<WebAddress> parse(std::string_view text);

    /// `reference` taken relative to this address: absolute, scheme-relative ("//host/…"),
    /// rooted ("/…") or relative to the current folder. Only http and https results count.
    std::optional<std::string> resolve(std::string_view reference) const;
    /// scheme "://" host, with brackets for IPv6, and ":" port when there is one.
    std::string origin() const;
};

} // namespace corvane
