#include "platform/posix/PosixProcessRunner.hpp"
#include "fakes/Thrown.hpp"

#include <gtest/gtest.h>

namespace corvane {
namespace {

ProcessRequest shell(std::string script) { return ProcessRequest{"/bin/sh", {"-c", std::move(script)}, std::nullopt, std::nullopt}; }

TEST(PosixProcessRunner, ReportsTheExitStatusAndBothStreams) {
    PosixProcessRunner runner;
    auto result = runner.run(shell("echo out; echo err >&2; exit 3"));
    EXPECT_EQ(result.status, 3);
    EXPECT_FALSE(result.succeeded());
    EXPECT_EQ(result.standardOutput, "out\n");
    EXPECT_EQ(result.standardError, "err\n");

    auto signalled = runner.run(shell("kill -TERM $$"));
    EXPECT_TRUE(signalled.terminatedBySignal);
    EXPECT_EQ(signalled.status, 15);
}

TEST(PosixProcessRunner, DrainsLargeOutputOnBothStreamsWithoutStalling) {
    PosixProcessRunner runner;
    auto result = runner.run(shell("head -c 300000 /dev/zero >&2; head -c 500000 /dev/zero; head -c 300000 /dev/zero >&2"));
    EXPECT_TRUE(result.succeeded());
    EXPECT_EQ(result.standardOutput.size(), 500000u);
    EXPECT_EQ(result.standardError.size(), 600000u);
}

TEST(PosixProcessRunner, PassesExactlyTheGivenEnvironmentAndNoInput) {
    PosixProcessRunner runner;
    auto request = shell("echo \"$ONLY|${HOME:-none}\"; cat");
    request.environment = std::map<std::string, std::string>{{"ONLY", "this"}};
    auto result = runner.run(request);
    EXPECT_EQ(result.standardOutput, "this|none\n");
}

TEST(PosixProcessRunner, AToolPastItsTimeOutIsKilled) {
    PosixProcessRunner runner;
    auto request = shell("exec sleep 30");
    request.timeout = 0.0;
    auto result = runner.run(request);
    EXPECT_TRUE(result.timedOut);
    EXPECT_FALSE(result.succeeded());
}

TEST(PosixProcessRunner, AMissingToolIsALaunchError) {
    PosixProcessRunner runner;
    auto error = thrown<ProcessLaunchError>([&] { runner.run(ProcessRequest{"/nonexistent/tool", {}, {}, {}}); });
    EXPECT_STREQ(error.value().what(), "No such file or directory");
}

} // namespace
} // namespace corvane
