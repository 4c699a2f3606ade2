#pragma once

#include "CorvaneCore/platform/HttpClient.hpp"

#include <map>
#include <mutex>
#include <string>
#include <vector>

namespace corvane {

/// Answers GETs from canned replies by URL; an unknown URL fails like a network without a route.
/// Records every request.
class CannedHttpClient final : public HttpClient {
public:
    void reply(const std::string& url, long status, std::string body, std::string contentType = "") {
        std::lock_guard lock(mutex_);
        replies_[url] = HttpResponse{status, std::move(body), std::move(contentType)};
    }

    /// `url` answers 302 towards `target`; the fake follows it when the request asks to.
    void redirect(const std::string& url, const std::string& target) {
        std::lock_guard lock(mutex_);
        replies_[url] = HttpResponse{302, "", "", target};
    }

    HttpResult get(const HttpRequest& request) override {
        auto url = request.url;
        for (int hop = 0; request.followRedirects && hop < 5; ++hop) {
            std::lock_guard lock(mutex_);
            auto found = replies_.find(url);
            if (found == replies_.end() || found->second.redirectLocation.empty()) break;
            url = found->second.redirectLocation;
        }
        return answer(request, url);
    }

    std::vector<HttpRequest> requests() const {
        std::lock_guard lock(mutex_);
        return requests_;
    }

private:
    HttpResult answer(const HttpRequest& request, const std::string& url) {
        std::lock_guard lock(mutex_);
        requests_.push_back(request);
        HttpResult result;
        if (auto found = replies_.find(url); found != replies_.end()) result.response = found->second;
        else result.failure.description = "Could not resolve host";
        return result;
    }

    mutable std::mutex mutex_;
    std::map<std::string, HttpResponse> replies_;
    std::vector<HttpRequest> requests_;
};

} // namespace corvane
