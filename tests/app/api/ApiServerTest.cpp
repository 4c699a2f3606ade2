#include "CorvaneApp/api/ApiServer.hpp"
#include "CorvaneApp/api/CommandApi.hpp"
#include "CorvaneApp/cli/SystemToolServices.hpp"
#include "fakes/TemporaryDirectory.hpp"

#include <httplib.h>

#include <gtest/gtest.h>

using namespace corvane;

TEST(ApiServerRequests, OnlyThePageThatWasHandedOutGetsIn) {
    const std::string secret = "s3cret";
    const std::string host = "127.0.0.1:4000";
    auto refused = [&](std::string_view hostHeader, std::string_view origin, std::string_view authorization,
                       bool isCall) { return refusal({hostHeader, origin, authorization}, 4000, secret, isCall); };

    EXPECT_EQ(refused(host, "", "Bearer s3cret", true), std::nullopt);
    EXPECT_EQ(refused(host, "http://127.0.0.1:4000", "Bearer s3cret", true), std::nullopt);
    // Pages need only the right host: the secret is in the fragment, which browsers never send.
    EXPECT_EQ(refused(host, "", "", false), std::nullopt);

    EXPECT_EQ(refused(host, "", "", true), 403);
    EXPECT_EQ(refused(host, "", "Bearer s3cre", true), 403);
    EXPECT_EQ(refused(host, "", "Bearer s3cret2", true), 403);
    EXPECT_EQ(refused(host, "", "s3cret", true), 403);
    EXPECT_EQ(refused(host, "http://evil.example", "Bearer s3cret", true), 403);
    EXPECT_EQ(refused(host, "http://127.0.0.1:4001", "Bearer s3cret", true), 403);
    // A name that resolves to the loopback address is still another host.
    EXPECT_EQ(refused("evil.example:4000", "", "", false), 403);
    EXPECT_EQ(refused("localhost:4000", "", "Bearer s3cret", true), 403);
    EXPECT_EQ(refused("127.0.0.1:4001", "", "Bearer s3cret", true), 403);
    // No secret configured lets no call in.
    EXPECT_EQ(refusal({host, "", "Bearer "}, 4000, "", true), 403);

    auto a = makeSecret(), b = makeSecret();
    EXPECT_EQ(a.size(), 64u);
    EXPECT_NE(a, b);
}

TEST(ApiServerRequests, AnswersOverTheLoopbackAddress) {
    TemporaryDirectory dir;
    SystemToolServices system;
    system.services().environment["HOME"] = dir.path().string();
    CommandApi api(system.services(), {dir.path() / "data", dir.path() / "dock.plist"});
    ApiServer server(api, "s3cret");
    std::string error;
    ASSERT_TRUE(server.start(error)) << error;
    ASSERT_GT(server.port(), 0);
    EXPECT_EQ(server.url(), "http://127.0.0.1:" + std::to_string(server.port()) + "/#token=s3cret");

    httplib::Client client("127.0.0.1", server.port());
    httplib::Headers authorized{{"Authorization", "Bearer s3cret"}};
    auto made = client.Post("/api/new", authorized, R"({"name": "Work"})", "application/json");
    ASSERT_TRUE(made);
    EXPECT_EQ(made->status, 200) << made->body;

    auto stranger = client.Post("/api/new", R"({"name": "Evil"})", "application/json");
    ASSERT_TRUE(stranger);
    EXPECT_EQ(stranger->status, 403);

    auto huge = client.Post("/api/new", authorized, std::string(ApiServer::largestBody + 1, ' '), "application/json");
    ASSERT_TRUE(huge);
    EXPECT_EQ(huge->status, 413);

    // What a browser accepts: nothing is compressed on the loopback, pages or answers.
    httplib::Headers likeABrowser{{"Authorization", "Bearer s3cret"}, {"Accept-Encoding", "gzip, deflate, br"}};
    auto listed = client.Post("/api/list", likeABrowser, "{}", "application/json");
    ASSERT_TRUE(listed);
    EXPECT_FALSE(listed->has_header("Content-Encoding"));
    auto page = client.Get("/index.html", likeABrowser);
    ASSERT_TRUE(page);
    EXPECT_EQ(page->status, 200);
    EXPECT_FALSE(page->has_header("Content-Encoding"));
    EXPECT_NE(listed->body.find("\"Work\""), std::string::npos);
    EXPECT_EQ(listed->body.find("Evil"), std::string::npos);

    auto unknown = client.Post("/api/nosuch", authorized, "{}", "application/json");
    ASSERT_TRUE(unknown);
    EXPECT_EQ(unknown->status, 404);
    server.stop();
}
