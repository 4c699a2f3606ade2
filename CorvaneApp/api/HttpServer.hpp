#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace corvane {

/// A small HTTP server, as the window's server needs one. It lives in a module of its own that is
/// opened only when a window is served: the HTTP library brings TLS and compression libraries
/// with it, and every other command would otherwise pay for loading them.
class HttpServer {
public:
    struct Request {
        std::string method, path;
        std::string host, origin, authorization;
        std::string body;
    };
    struct Answer {
        int status = 200;
        std::string contentType = "application/json";
        std::string body;
        std::vector<std::pair<std::string, std::string>> headers;
    };
    /// Sees every request before its body is read; an answer ends it there.
    using Screen = std::function<std::optional<Answer>(const Request&)>;
    using Handler = std::function<Answer(const Request&)>;

    virtual ~HttpServer() = default;
    /// Binds `host`:`port` (0: a free port) and returns the port, or 0 with the reason in `error`.
    /// Bodies over `largestBody` are answered 413 without reaching `handler`.
    virtual int bind(const std::string& host, int port, std::size_t largestBody, Screen screen, Handler handler,
                     std::string& error) = 0;
    /// Answers until `stop`; blocks the calling thread.
    virtual void run() = 0;
    /// Safe from any thread.
    virtual void stop() = 0;
};

/// A new server from the module beside this program (or the build's), or none with the reason in
/// `error`.
std::unique_ptr<HttpServer> loadHttpServer(std::string& error);

} // namespace corvane

/// The module's one entry point.
extern "C" corvane::HttpServer* corvaneMakeHttpServer();
