#include "platform/curl/CurlHttpClient.hpp"

#include <curl/curl.h>

#include <memory>
#include <mutex>

namespace corvane {

namespace {

struct Body {
    std::string text;
    std::size_t limit = 0;
    bool overLimit = false;
};

std::size_t appendBody(char* data, std::size_t size, std::size_t count, void* context) {
    auto& body = *static_cast<Body*>(context);
    const std::size_t bytes = size * count;
    if (body.text.size() + bytes > body.limit) {
        body.overLimit = true;
        return 0; // makes curl stop with a write error
    }
    body.text.append(data, bytes);
    return bytes;
}

long milliseconds(double seconds) {
    return seconds <= 0 ? 0L : static_cast<long>(seconds * 1000);
}

} // namespace

CurlHttpClient::CurlHttpClient() {
    static std::once_flag once;
    std::call_once(once, [] { curl_global_init(CURL_GLOBAL_DEFAULT); });
}

CurlHttpClient::~CurlHttpClient() = default;

HttpResult CurlHttpClient::get(const HttpRequest& request) {
    HttpResult result;
    std::unique_ptr<CURL, decltype(&curl_easy_cleanup)> easy(curl_easy_init(), curl_easy_cleanup);
    if (!easy) {
        result.failure.description = "cannot start an HTTP request";
        return result;
    }
    curl_slist* headerList = nullptr;
    for (const auto& [name, value] : request.headers)
        headerList = curl_slist_append(headerList, (name + ": " + value).c_str());
    std::unique_ptr<curl_slist, decltype(&curl_slist_free_all)> headers(headerList, curl_slist_free_all);

    Body body;
    body.limit = request.maximumBodyBytes;
    char errorText[CURL_ERROR_SIZE] = {};
    CURL* handle = easy.get();
    curl_easy_setopt(handle, CURLOPT_URL, request.url.c_str());
    curl_easy_setopt(handle, CURLOPT_HTTPGET, 1L);
    curl_easy_setopt(handle, CURLOPT_FOLLOWLOCATION, request.followRedirects ? 1L : 0L);
    curl_easy_setopt(handle, CURLOPT_MAXREDIRS, 5L);
    curl_easy_setopt(handle, CURLOPT_NOSIGNAL, 1L);
    curl_easy_setopt(handle, CURLOPT_ACCEPT_ENCODING, "");
    curl_easy_setopt(handle, CURLOPT_CONNECTTIMEOUT_MS, milliseconds(request.connectTimeout));
    curl_easy_setopt(handle, CURLOPT_TIMEOUT_MS, milliseconds(request.totalTimeout));
    curl_easy_setopt(handle, CURLOPT_WRITEFUNCTION, appendBody);
    curl_easy_setopt(handle, CURLOPT_WRITEDATA, &body);
    curl_easy_setopt(handle, CURLOPT_ERRORBUFFER, errorText);
    if (headers) curl_easy_setopt(handle, CURLOPT_HTTPHEADER, headers.get());
    if (request.userAgent) curl_easy_setopt(handle, CURLOPT_USERAGENT, request.userAgent->c_str());

    const CURLcode code = curl_easy_perform(handle);
    if (code != CURLE_OK) {
        if (body.overLimit) result.failure.description = "the reply is larger than the limit";
        else result.failure.description = errorText[0] ? errorText : curl_easy_strerror(code);
        return result;
    }
    HttpResponse response;
    curl_easy_getinfo(handle, CURLINFO_RESPONSE_CODE, &response.status);
    char* contentType = nullptr;
    curl_easy_getinfo(handle, CURLINFO_CONTENT_TYPE, &contentType);
    if (contentType) response.contentType = contentType;
    char* location = nullptr;
    curl_easy_getinfo(handle, CURLINFO_REDIRECT_URL, &location);
    if (location) response.redirectLocation = location;
    response.body = std::move(body.text);
    result.response = std::move(response);
    return result;
}

} // namespace corvane
