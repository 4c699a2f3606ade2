#pragma once

#include "CorvaneCore/platform/HttpClient.hpp"
#include "CorvaneCore/platform/SerialQueue.hpp"
#include "CorvaneCore/support/Base64.hpp"

#include <cstddef>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>

namespace corvane {

/// What a copied link's page shows of itself.
struct WebPreview {
    std::optional<std::string> title;
    std::optional<std::string> description;
    std::optional<Bytes> imageData;

    bool operator==(const WebPreview&) const = default;
};

/// Fetches web previews of copied links, one at a time on its own queue.
class ClipboardOGSource {
public:
    static constexpr std::string_view userAgent = "CorvaneBot/0.1";
    static constexpr std::string_view accept = "text/html,application/xhtml+xml";
    /// A preview is a nicety: a slow server gets little patience.
    static constexpr double connectTimeout = 5;
    static constexpr double totalTimeout = 10;
    /// Meta tags sit at the top, but a page is only read whole; big pages still fit.
    static constexpr std::size_t maximumPageBytes = 2'000'000;
    static constexpr std::size_t maximumImageBytes = 1'000'000;

    using Completion = std::function<void(std::optional<WebPreview>)>;

    ClipboardOGSource(HttpClient& http, std::unique_ptr<SerialQueue> queue) : http_(http), queue_(std::move(queue)) {}
    /// Drops a request still waiting and waits for the one under way.
    ~ClipboardOGSource();
    ClipboardOGSource(const ClipboardOGSource&) = delete;
    ClipboardOGSource& operator=(const ClipboardOGSource&) = delete;

    /// Fetches `url`'s preview on the source's queue and calls `completion` there. Only one
    /// request waits at a time: a newer one replaces it (its completion is never called). Any thread.
    void request(std::string url, Completion completion);

    /// The page's preview, or none when the page cannot be had or says nothing. Blocking.
    std::optional<WebPreview> fetch(const std::string& url);
    /// The image at `url` when it is a raster image within the size limit. Blocking.
    std::optional<Bytes> fetchImage(const std::string& url);

    /// Redirects followed by hand, at most this many, each target judged like the first address:
    /// a public page must not lead the request to a machine on the user's network.
    static constexpr int maximumRedirects = 5;

private:
    /// The reply to `request` after its redirects; none when a hop leads somewhere not fetchable
    /// or the last reply is not a success.
    std::optional<HttpResponse> getFetchable(HttpRequest request);

    void runNext();

    HttpClient& http_;
    std::mutex mutex_;
    std::optional<std::pair<std::string, Completion>> waiting_;
    // Last, so that it is gone (its work done) before the rest.
    std::unique_ptr<SerialQueue> queue_;
};

} // namespace corvane
