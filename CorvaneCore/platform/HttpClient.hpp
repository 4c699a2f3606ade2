#pragma once

#include <cstddef>
#include <map>
#include <optional>
#include <string>

namespace corvane {

/// One HTTP GET.
struct HttpRequest {
    std::string url;
    /// Extra request headers, by name ("Accept"); the user agent goes in `userAgent`.
    std::map<std::string, std::string> headers;
    std::optional<std::string> userAgent;
    /// Seconds allowed to connect, and for the whole exchange.
    double connectTimeout = 12;
    double totalTimeout = 12;
    /// A body longer than this fails the request instead of filling memory.
    std::size_t maximumBodyBytes = 8 * 1024 * 1024;
    /// Off, a redirect arrives as the reply it is, with its target in `redirectLocation`, so
    /// that the caller can judge each hop before following it.
    bool followRedirects = true;
};

/// A reply that arrived, whatever its status.
struct HttpResponse {
    long status = 0;
    std::string body;
    /// The "Content-Type" header as sent, empty when absent.
    std::string contentType;
    /// The absolute address a redirect points to, when redirects are not followed.
    std::string redirectLocation;
};

/// Why no reply arrived: no network, a time-out, a malformed URL, a body over the limit.
struct HttpFailure {
    std::string description;
};

/// Either a reply or the reason there is none.
struct HttpResult {
    std::optional<HttpResponse> response;
    HttpFailure failure;

    bool ok() const { return response && response->status == 200; }
};

/// Blocking HTTP GETs. Safe from several threads at once; callers keep
/// requests off the main thread.
class HttpClient {
public:
    virtual ~HttpClient() = default;
    virtual HttpResult get(const HttpRequest& request) = 0;
};

} // namespace corvane
