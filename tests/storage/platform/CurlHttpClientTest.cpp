// The libcurl adapter against a one-shot HTTP server on the loopback interface.

#include "platform/curl/CurlHttpClient.hpp"

#include <gtest/gtest.h>

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <string>
#include <thread>

using namespace corvane;

namespace {

/// Accepts one connection, keeps the request it read and answers with `reply`.
class OneShotServer {
public:
    explicit OneShotServer(std::string reply) : reply_(std::move(reply)) {
        listener_ = ::socket(AF_INET, SOCK_STREAM, 0);
        sockaddr_in address{};
        address.sin_family = AF_INET;
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        ::bind(listener_, reinterpret_cast<sockaddr*>(&address), sizeof address);
        ::listen(listener_, 1);
        socklen_t length = sizeof address;
        ::getsockname(listener_, reinterpret_cast<sockaddr*>(&address), &length);
        port_ = ntohs(address.sin_port);
        thread_ = std::thread([this] { serve(); });
    }
    ~OneShotServer() {
        thread_.join();
        ::close(listener_);
    }

    std::string url(const std::string& path) const { return "http://127.0.0.1:" + std::to_string(port_) + path; }
    const std::string& request() const { return request_; }

private:
    void serve() {
        const int connection = ::accept(listener_, nullptr, nullptr);
        if (connection < 0) return;
        char buffer[4096];
        while (request_.find("\r\n\r\n") == std::string::npos) {
            const auto count = ::read(connection, buffer, sizeof buffer);
            if (count <= 0) break;
            request_.append(buffer, static_cast<std::size_t>(count));
        }
        ::send(connection, reply_.data(), reply_.size(), MSG_NOSIGNAL);
        ::close(connection);
    }

    std::string reply_;
    int listener_ = -1;
    int port_ = 0;
    std::string request_;
    std::thread thread_;
};

std::string httpReply(const std::string& status, const std::string& body) {
    return "HTTP/1.1 " + status + "\r\nContent-Type: text/html; charset=utf-8\r\nContent-Length: " +
           std::to_string(body.size()) + "\r\nConnection: close\r\n\r\n" + body;
}

} // namespace

TEST(CurlHttpClientTest, SendsHeadersAndReadsStatusBodyAndContentType) {
    OneShotServer server(httpReply("200 OK", "<title>Hi</title>"));
    CurlHttpClient client;
    HttpRequest request{server.url("/page?q=1")};
    request.headers["Accept"] = "text/html,application/xhtml+xml";
    request.userAgent = "CorvaneBot/0.1";
    const auto result = client.get(request);

    ASSERT_TRUE(result.ok()) << result.failure.description;
    EXPECT_EQ(result.response->body, "<title>Hi</title>");
    EXPECT_EQ(result.response->contentType, "text/html; charset=utf-8");
    EXPECT_NE(server.request().find("GET /page?q=1 HTTP/1.1"), std::string::npos);
    EXPECT_NE(server.request().find("Accept: text/html,application/xhtml+xml"), std::string::npos);
    EXPECT_NE(server.request().find("User-Agent: CorvaneBot/0.1"), std::string::npos);
}

TEST(CurlHttpClientTest, OtherStatusesArriveButAreNotOk) {
    OneShotServer server(httpReply("404 Not Found", "gone"));
    const auto result = CurlHttpClient().get(HttpRequest{server.url("/")});
    ASSERT_TRUE(result.response);
    EXPECT_EQ(result.response->status, 404);
    EXPECT_FALSE(result.ok());

    // A redirect left unfollowed arrives with its absolute target.
    OneShotServer redirecting("HTTP/1.1 302 Found\r\nLocation: /next\r\nContent-Length: 0\r\nConnection: close\r\n\r\n");
    HttpRequest request{redirecting.url("/first")};
    request.followRedirects = false;
    const auto redirect = CurlHttpClient().get(request);
    ASSERT_TRUE(redirect.response);
    EXPECT_EQ(redirect.response->status, 302);
    EXPECT_EQ(redirect.response->redirectLocation, redirecting.url("/next"));
}

TEST(CurlHttpClientTest, ABodyOverTheLimitAndARefusedConnectionAreFailures) {
    {
        OneShotServer server(httpReply("200 OK", std::string(5000, 'x')));
        HttpRequest request{server.url("/")};
        request.maximumBodyBytes = 1000;
        const auto result = CurlHttpClient().get(request);
        EXPECT_FALSE(result.response);
        EXPECT_EQ(result.failure.description, "the reply is larger than the limit");
    }
    // Port 1 on the loopback interface has no listener.
    const auto refused = CurlHttpClient().get(HttpRequest{"http://127.0.0.1:1/"});
    EXPECT_FALSE(refused.response);
    EXPECT_FALSE(refused.failure.description.empty());
}
