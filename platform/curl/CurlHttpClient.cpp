#include "platform/curl/CurlHttpClient.hpp"

#include <curl/curl.h>

#include <dlfcn.h>

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

/// libcurl, opened and set up on the first request. Linked, it would load with the two dozen
/// libraries it needs (TLS, Kerberos, LDAP, ...) and set up TLS in every run of the tool, online
/// or not: most of the start-up time of a command that never goes online.
struct Curl {
    decltype(&curl_global_init) global_init = nullptr;
    decltype(&curl_easy_init) easy_init = nullptr;
    decltype(&curl_easy_cleanup) easy_cleanup = nullptr;
    decltype(&curl_easy_setopt) easy_setopt = nullptr;
    decltype(&curl_easy_perform) easy_perform = nullptr;
    decltype(&curl_easy_getinfo) easy_getinfo = nullptr;
    decltype(&curl_easy_strerror) easy_strerror = nullptr;
    decltype(&curl_slist_append) slist_append = nullptr;
    decltype(&curl_slist_free_all) slist_free_all = nullptr;
};

/// None when libcurl is not installed.
const Curl* curl() {
    static const std::unique_ptr<const Curl> loaded = [] () -> std::unique_ptr<const Curl> {
        void* library = nullptr;
        for (const char* name : {"libcurl.so.4", "libcurl.4.dylib", "libcurl.so", "libcurl.dylib"})
            if ((library = ::dlopen(name, RTLD_NOW | RTLD_LOCAL))) break;
        if (!library) return nullptr;
        auto api = std::make_unique<Curl>();
        bool complete = true;
        auto bind = [&](auto& function, const char* symbol) {
            function = reinterpret_cast<std::remove_reference_t<decltype(function)>>(::dlsym(library, symbol));
            complete = complete && function;
        };
        bind(api->global_init, "curl_global_init");
        bind(api->easy_init, "curl_easy_init");
        bind(api->easy_cleanup, "curl_easy_cleanup");
        bind(api->easy_setopt, "curl_easy_setopt");
        bind(api->easy_perform, "curl_easy_perform");
        bind(api->easy_getinfo, "curl_easy_getinfo");
        bind(api->easy_strerror, "curl_easy_strerror");
        bind(api->slist_append, "curl_slist_append");
        bind(api->slist_free_all, "curl_slist_free_all");
        if (!complete || api->global_init(CURL_GLOBAL_DEFAULT) != CURLE_OK) return nullptr;
        return api;
    }();
    return loaded.get();
}

} // namespace

CurlHttpClient::CurlHttpClient() = default;

CurlHttpClient::~CurlHttpClient() = default;

HttpResult CurlHttpClient::get(const HttpRequest& request) {
    HttpResult result;
    const Curl* api = curl();
    if (!api) {
        result.failure.description = "cannot start an HTTP request without libcurl";
        return result;
    }
    std::unique_ptr<CURL, decltype(api->easy_cleanup)> easy(api->easy_init(), api->easy_cleanup);
    if (!easy) {
        result.failure.description = "cannot start an HTTP request";
        return result;
    }
    curl_slist* headerList = nullptr;
    for (const auto& [name, value] : request.headers)
        headerList = api->slist_append(headerList, (name + ": " + value).c_str());
    std::unique_ptr<curl_slist, decltype(api->slist_free_all)> headers(headerList, api->slist_free_all);

    Body body;
    body.limit = request.maximumBodyBytes;
    char errorText[CURL_ERROR_SIZE] = {};
    CURL* handle = easy.get();
    api->easy_setopt(handle, CURLOPT_URL, request.url.c_str());
    api->easy_setopt(handle, CURLOPT_HTTPGET, 1L);
    api->easy_setopt(handle, CURLOPT_FOLLOWLOCATION, request.followRedirects ? 1L : 0L);
    api->easy_setopt(handle, CURLOPT_MAXREDIRS, 5L);
    api->easy_setopt(handle, CURLOPT_NOSIGNAL, 1L);
    api->easy_setopt(handle, CURLOPT_ACCEPT_ENCODING, "");
    api->easy_setopt(handle, CURLOPT_CONNECTTIMEOUT_MS, milliseconds(request.connectTimeout));
    api->easy_setopt(handle, CURLOPT_TIMEOUT_MS, milliseconds(request.totalTimeout));
    api->easy_setopt(handle, CURLOPT_WRITEFUNCTION, appendBody);
    api->easy_setopt(handle, CURLOPT_WRITEDATA, &body);
    api->easy_setopt(handle, CURLOPT_ERRORBUFFER, errorText);
    if (headers) api->easy_setopt(handle, CURLOPT_HTTPHEADER, headers.get());
    if (request.userAgent) api->easy_setopt(handle, CURLOPT_USERAGENT, request.userAgent->c_str());

    const CURLcode code = api->easy_perform(handle);
    if (code != CURLE_OK) {
        if (body.overLimit) result.failure.description = "the reply is larger than the limit";
        else result.failure.description = errorText[0] ? errorText : api->easy_strerror(code);
        return result;
    }
    HttpResponse response;
    api->easy_getinfo(handle, CURLINFO_RESPONSE_CODE, &response.status);
    char* contentType = nullptr;
    api->easy_getinfo(handle, CURLINFO_CONTENT_TYPE, &contentType);
    if (contentType) response.contentType = contentType;
    char* location = nullptr;
    api->easy_getinfo(handle, CURLINFO_REDIRECT_URL, &location);
    if (location) response.redirectLocation = location;
    response.body = std::move(body.text);
    result.response = std::move(response);
    return result;
}

} // namespace corvane
