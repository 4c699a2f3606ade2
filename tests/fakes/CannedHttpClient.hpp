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

    HttpResult get(const HttpRequest& request) override {
        std::lock_guard lock(mutex_);
        requests_.push_back(request);
        HttpResult result;
        if (auto found = replies_.find(request.url); found != replies_.end()) result.response = found->second;
        else result.failure.description = "Could not resolve host";
        return result;
    }

    std::vector<HttpRequest> requests() const {
        std::lock_guard lock(mutex_);
        return requests_;
    }

private:
    mutable std::mutex mutex_;
    std::map<std::string, HttpResponse> replies_;
    std::vector<HttpRequest> requests_;
};

} // namespace corvane
