#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <thread>

namespace corvane {

class CommandApi;
class HttpServer;

/// What a request to the window's server says about where it comes from.
struct RequestFacts {
    std::string_view host;
    /// Empty when the request carries no Origin.
    std::string_view origin;
    std::string_view authorization;
};

/// Why a request is refused before anything runs: 403 for a request that does not come from the
/// page this server handed out (wrong Host, foreign Origin, or a call without the secret); none
/// for one that may go on. Pages themselves need no secret (it travels in the URL's fragment, which
/// the browser never sends), only the right Host, so that a foreign name resolving to the loopback
/// address reads nothing.
std::optional<int> refusal(const RequestFacts& request, int port, std::string_view secret, bool isCall);

/// A fresh secret: 32 random bytes as hexadecimal.
std::string makeSecret();

/// The window's pages and calls, served on the loopback address only. The pages come from the
/// program itself; `POST /api/WORDS` runs a command through `api`.
class ApiServer {
public:
    static constexpr std::size_t largestBody = 1 << 20;

    /// `port` 0 takes a free one.
    ApiServer(CommandApi& api, std::string secret, int port = 0);
    ~ApiServer();
    ApiServer(const ApiServer&) = delete;
    ApiServer& operator=(const ApiServer&) = delete;

    /// Binds and starts answering on a thread of its own; false (with the reason in `error`) when
    /// the port cannot be had.
    bool start(std::string& error);
    void stop();

    int port() const { return port_; }
    /// The address to open: "http://127.0.0.1:PORT/#token=SECRET".
    std::string url() const;

private:
    CommandApi& api_;
    std::string secret_;
    int port_;
    std::unique_ptr<HttpServer> server_;
    std::thread thread_;
};

} // namespace corvane
