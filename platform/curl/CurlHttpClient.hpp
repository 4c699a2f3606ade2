#pragma once

#include "CorvaneCore/platform/HttpClient.hpp"

namespace corvane {

/// HTTP GETs through libcurl, on macOS and elsewhere. Each request uses an easy handle of its
/// own, so requests on several threads never share state.
class CurlHttpClient final : public HttpClient {
public:
    CurlHttpClient();
    ~CurlHttpClient() override;
    CurlHttpClient(const CurlHttpClient&) = delete;
    CurlHttpClient& operator=(const CurlHttpClient&) = delete;

    HttpResult get(const HttpRequest& request) override;
};

} // namespace corvane
