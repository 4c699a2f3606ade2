#include "CorvaneWidgetsUI/clipboard/ClipboardOGSource.hpp"

#include "CorvaneCore/support/Text.hpp"
#include "CorvaneCore/widgets/clipboard/ClipboardItem.hpp"
#include "CorvaneCore/widgets/clipboard/WebAddress.hpp"
#include "CorvaneCore/widgets/clipboard/WebPreviewPage.hpp"

namespace corvane {

ClipboardOGSource::~ClipboardOGSource() {
    {
        std::lock_guard lock(mutex_);
        waiting_.reset();
    }
    queue_.reset();
}

void ClipboardOGSource::request(std::string url, Completion completion) {
    bool alreadyQueued = false;
    {
        std::lock_guard lock(mutex_);
        alreadyQueued = waiting_.has_value();
        waiting_.emplace(std::move(url), std::move(completion));
    }
    if (!alreadyQueued) queue_->async([this] { runNext(); });
}

void ClipboardOGSource::runNext() {
    std::optional<std::pair<std::string, Completion>> next;
    {
        std::lock_guard lock(mutex_);
        next.swap(waiting_);
    }
    if (!next) return;
    auto preview = fetch(next->first);
    next->second(std::move(preview));
}

std::optional<WebPreview> ClipboardOGSource::fetch(const std::string& url) {
    auto address = WebAddress::parse(text::trimmed(url));
    if (!address || !ClipboardItem::isFetchableHost(url)) return std::nullopt;
    HttpRequest request{std::string(text::trimmed(url)), {{"Accept", std::string(accept)}}, std::string(userAgent),
                        connectTimeout, totalTimeout, maximumPageBytes};
    auto response = getFetchable(std::move(request));
    if (!response) return std::nullopt;
    const auto& contentType = response->contentType;
    if (!contentType.empty() && text::lowercased(contentType).find("html") == std::string::npos) return std::nullopt;

    auto page = WebPreviewPage::read(response->body);
    WebPreview preview{page.title, page.description, std::nullopt};
    if (page.imageReference)
        if (auto imageURL = address->resolve(*page.imageReference)) preview.imageData = fetchImage(*imageURL);
    if (!preview.title && !preview.description && !preview.imageData) return std::nullopt;
    return preview;
}

std::optional<Bytes> ClipboardOGSource::fetchImage(const std::string& url) {
    if (!ClipboardItem::isFetchableHost(url)) return std::nullopt;
    HttpRequest request{url, {{"Accept", "image/*"}}, std::string(userAgent), connectTimeout, totalTimeout,
                        maximumImageBytes};
    auto response = getFetchable(std::move(request));
    if (!response || response->body.empty()) return std::nullopt;
    auto type = text::lowercased(response->contentType);
    // Vector images would need a renderer the tile does not have.
    if (!type.empty() && (!type.starts_with("image/") || type.starts_with("image/svg"))) return std::nullopt;
    return Bytes(response->body.begin(), response->body.end());
}

std::optional<HttpResponse> ClipboardOGSource::getFetchable(HttpRequest request) {
    request.followRedirects = false;
    for (int hop = 0; hop <= maximumRedirects; ++hop) {
        auto result = http_.get(request);
        if (!result.response) return std::nullopt;
        const auto status = result.response->status;
        if (status == 200) return std::move(*result.response);
        const auto& target = result.response->redirectLocation;
        if (status < 300 || status >= 400 || target.empty() || !ClipboardItem::isFetchableHost(target))
            return std::nullopt;
        request.url = target;
    }
    return std::nullopt;
}

} // namespace corvane
