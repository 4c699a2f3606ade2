#include "CorvaneApp/api/ApiServer.hpp"

#include "CorvaneApp/api/CommandApi.hpp"
#include "CorvaneApp/api/WebResources.hpp"

#include <httplib.h>

#include <array>
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

struct ApiServer::Server {
    httplib::Server http;
};

ApiServer::ApiServer(CommandApi& api, std::string secret, int port)
    : api_(api), secret_(std::move(secret)), port_(port), server_(std::make_unique<Server>()) {}

ApiServer::~ApiServer() { stop(); }

std::string ApiServer::url() const {
    return "http://" + std::string(loopback) + ":" + std::to_string(port_) + "/#token=" + secret_;
}

bool ApiServer::start(std::string& error) {
    auto& http = server_->http;
    // Two threads: calls run one at a time anyway, and a page asks for a handful of files at once.
    http.new_task_queue = [] { return new httplib::ThreadPool(2); };
    http.set_payload_max_length(largestBody);
    http.set_keep_alive_max_count(100);

    auto answer = [](httplib::Response& response, int status, const std::string& body) {
        response.status = status;
        response.set_header("Cache-Control", "no-store");
        response.set_content(body, "application/json");
    };

    http.set_pre_routing_handler([this, answer](const httplib::Request& request, httplib::Response& response) {
        // Kept here, since the facts only point into them.
        auto host = request.get_header_value("Host");
        auto origin = request.get_header_value("Origin");
        auto authorization = request.get_header_value("Authorization");
        bool isCall = request.path.starts_with("/api/");
        if (auto status = refusal({host, origin, authorization}, port_, secret_, isCall)) {
            answer(response, *status, R"({"error":"this request is not from Corvane's window"})");
            return httplib::Server::HandlerResponse::Handled;
        }
        return httplib::Server::HandlerResponse::Unhandled;
    });

    http.Post(R"(/api/([a-z/-]+))", [this, answer](const httplib::Request& request, httplib::Response& response) {
        auto reply = api_.call(request.matches[1].str(), request.body);
        answer(response, reply.status, reply.body);
    });
    http.Get(R"(/(.*))", [](const httplib::Request& request, httplib::Response& response) {
        const auto* file = findWebResource(request.matches[1].str());
        if (!file) {
            response.status = 404;
            response.set_content("Not found", "text/plain");
            return;
        }
        response.set_header("Cache-Control", "no-store");
        response.set_header("X-Content-Type-Options", "nosniff");
        response.set_header("Content-Security-Policy",
                            "default-src 'self'; img-src 'self' data:; style-src 'self'; script-src 'self'; "
                            "connect-src 'self'; frame-ancestors 'none'");
        response.set_content(std::string(file->bytes), std::string(file->contentType));
    });

    if (port_ == 0) {
        port_ = http.bind_to_any_port(std::string(loopback));
        if (port_ <= 0) {
            error = "no free port on " + std::string(loopback);
            port_ = 0;
            return false;
        }
    } else if (!http.bind_to_port(std::string(loopback), port_)) {
        error = "port " + std::to_string(port_) + " on " + std::string(loopback) + " is taken";
        return false;
    }
    thread_ = std::thread([this] { server_->http.listen_after_bind(); });
    return true;
}

void ApiServer::stop() {
    if (!thread_.joinable()) return;
    server_->http.stop();
    thread_.join();
}

} // namespace corvane
