#include "CorvaneApp/api/ApiServer.hpp"

#include "CorvaneApp/api/CommandApi.hpp"
#include "CorvaneApp/api/WebResources.hpp"

#include "CorvaneApp/api/HttpServer.hpp"

#include <random>

namespace corvane {

namespace {

constexpr std::string_view loopback = "127.0.0.1";

/// Compares in a time that does not depend on where the texts first differ.
bool sameSecret(std::string_view given, std::string_view secret) {
    if (given.size() != secret.size()) return false;
    unsigned char difference = 0;
    for (std::size_t i = 0; i < given.size(); ++i)
        difference |= static_cast<unsigned char>(given[i] ^ secret[i]);
    return difference == 0;
}

} // namespace

std::optional<int> refusal(const RequestFacts& request, int port, std::string_view secret, bool isCall) {
    auto host = std::string(loopback) + ":" + std::to_string(port);
    if (request.host != host) return 403;
    if (!request.origin.empty() && request.origin != "http://" + host) return 403;
    if (!isCall) return std::nullopt;
    constexpr std::string_view bearer = "Bearer ";
    if (secret.empty() || !request.authorization.starts_with(bearer) ||
        !sameSecret(request.authorization.substr(bearer.size()), secret))
        return 403;
    return std::nullopt;
}

std::string makeSecret() {
    std::random_device device;
    std::string secret;
    constexpr char digits[] = "0123456789abcdef";
    for (int i = 0; i < 32; ++i) {
        auto byte = device() & 0xFF;
        secret += digits[byte >> 4];
        secret += digits[byte & 0xF];
    }
    return secret;
}

ApiServer::ApiServer(CommandApi& api, std::string secret, int port)
    : api_(api), secret_(std::move(secret)), port_(port) {}

ApiServer::~ApiServer() { stop(); }

std::string ApiServer::url() const {
    return "http://" + std::string(loopback) + ":" + std::to_string(port_) + "/#token=" + secret_;
}

namespace {

HttpServer::Answer json(int status, std::string body) {
    return {status, "application/json", std::move(body), {{"Cache-Control", "no-store"}}};
}

} // namespace

bool ApiServer::start(std::string& error) {
    server_ = loadHttpServer(error);
    if (!server_) return false;

    auto screen = [this](const HttpServer::Request& request) -> std::optional<HttpServer::Answer> {
        bool isCall = request.path.starts_with("/api/");
        if (auto status = refusal({request.host, request.origin, request.authorization}, port_, secret_, isCall))
            return json(*status, R"({"error":"this request is not from Corvane's window"})");
        if (isCall && request.method != "POST") return json(405, R"({"error":"calls are POST requests"})");
        if (!isCall && request.method != "GET") return json(405, R"({"error":"pages are GET requests"})");
        return std::nullopt;
    };
    auto handle = [this](const HttpServer::Request& request) {
        if (request.path.starts_with("/api/")) {
            auto reply = api_.call(std::string_view(request.path).substr(5), request.body);
            return json(reply.status, std::move(reply.body));
        }
        const auto* file = findWebResource(request.path);
        if (!file) return HttpServer::Answer{404, "text/plain", "Not found", {}};
        return HttpServer::Answer{
            200,
            std::string(file->contentType),
            std::string(file->bytes),
            {{"Cache-Control", "no-store"},
             {"X-Content-Type-Options", "nosniff"},
             {"Content-Security-Policy", "default-src 'self'; img-src 'self' data:; style-src 'self'; "
                                         "script-src 'self'; connect-src 'self'; frame-ancestors 'none'"}}};
    };

    int port = server_->bind(std::string(loopback), port_, largestBody, screen, handle, error);
    if (port == 0) return false;
    port_ = port;
    thread_ = std::thread([this] { server_->run(); });
    return true;
}

void ApiServer::stop() {
    if (!thread_.joinable()) return;
    server_->stop();
    thread_.join();
}

} // namespace corvane
