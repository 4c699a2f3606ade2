// The HTTP server module, built on cpp-httplib: see HttpServer.hpp for why it stands apart.

#include "CorvaneApp/api/HttpServer.hpp"

#include <httplib.h>

#include <sys/socket.h>

namespace corvane {

namespace {

class HttplibServer final : public HttpServer {
public:
    int bind(const std::string& host, int port, std::size_t largestBody, Screen screen, Handler handler,
             std::string& error) override {
        // A thread for each connection a browser keeps open to one host (six in Chromium): a
        // kept-alive connection holds its thread, and a call on one more would wait for a
        // connection to time out. Calls still run one at a time, in the command layer.
        http_.new_task_queue = [] { return new httplib::ThreadPool(8); };
        http_.set_payload_max_length(largestBody);
        // Answers go out at once rather than waiting for the browser's delayed acknowledgement.
        http_.set_tcp_nodelay(true);
        // Only SO_REUSEADDR, for a quick restart: the library's default, SO_REUSEPORT, would let a
        // second server (another window, or another program of this user) bind the same port and
        // take some of the page's calls.
        http_.set_socket_options([](int socket) {
            int yes = 1;
            ::setsockopt(socket, SOL_SOCKET, SO_REUSEADDR, &yes, sizeof yes);
        });
        http_.set_pre_routing_handler([screen](const httplib::Request& request, httplib::Response& response) {
            // Nothing is compressed on the loopback: there is no network to save, and the library
            // answers a browser's "br" with Brotli at its slowest quality, about 8 ms for a page
            // of workspaces, most of a call's time. The request is the server's own object, handed
            // over as const; forgetting what the browser accepts leaves every answer plain.
            const_cast<httplib::Request&>(request).headers.erase("Accept-Encoding");
            if (auto answer = screen(facts(request))) {
                write(*answer, response);
                return httplib::Server::HandlerResponse::Handled;
            }
            return httplib::Server::HandlerResponse::Unhandled;
        });
        auto handle = [handler](const httplib::Request& request, httplib::Response& response) {
            auto full = facts(request);
            full.body = request.body;
            write(handler(full), response);
        };
        http_.Get(".*", handle);
        http_.Post(".*", handle);

        if (port == 0) {
            port = http_.bind_to_any_port(host);
            if (port <= 0) error = "no free port on " + host;
        } else if (!http_.bind_to_port(host, port)) {
            error = "port " + std::to_string(port) + " on " + host + " is taken";
        }
        return error.empty() ? port : 0;
    }

    void run() override { http_.listen_after_bind(); }
    void stop() override { http_.stop(); }

private:
    static Request facts(const httplib::Request& request) {
        return {request.method,
                request.path,
                request.get_header_value("Host"),
                request.get_header_value("Origin"),
                request.get_header_value("Authorization"),
                {}};
    }

    static void write(const Answer& answer, httplib::Response& response) {
        response.status = answer.status;
        for (const auto& [name, value] : answer.headers) response.set_header(name, value);
        response.set_content(answer.body, answer.contentType);
    }

    httplib::Server http_;
};

} // namespace

} // namespace corvane

extern "C" corvane::HttpServer* corvaneMakeHttpServer() { return new corvane::HttplibServer(); }
