// `corvane agent` as a person runs it: a foreground process that another `corvane` switches
// under, that survives a damaged data file, and that stops on SIGTERM with its quit backup and
// no thread left behind; and `corvane ui`, the same with the window served beside it.

#include "app/cli/ToolFixtures.hpp"
#include "CorvaneStorage/backup/WorkspaceBackupStore.hpp"
#include "CorvaneStorage/workspace/ProfileStore.hpp"

#include <gtest/gtest.h>
#include <httplib.h>

#include <csignal>
#include <regex>
#include <poll.h>
#include <unistd.h>

using namespace corvane;

namespace {

/// A running agent whose standard output is read line by line.
class Agent {
public:
    Agent(const std::filesystem::path& dir, std::vector<std::string> extra = {}, std::string command = "agent") {
        std::vector<std::string> arguments{CORVANE_TOOL, "--data-dir", (dir / "data").string(), "--dock-plist",
                                           (dir / "dock.plist").string(), command};
        arguments.insert(arguments.end(), extra.begin(), extra.end());
        std::vector<char*> argv;
        for (auto& argument : arguments) argv.push_back(argument.data());
        argv.push_back(nullptr);
        int fds[2];
        if (::pipe(fds) != 0) throw std::runtime_error("pipe failed");
        posix_spawn_file_actions_t actions;
        posix_spawn_file_actions_init(&actions);
        posix_spawn_file_actions_adddup2(&actions, fds[1], STDOUT_FILENO);
        posix_spawn_file_actions_addclose(&actions, fds[0]);
        posix_spawn_file_actions_addclose(&actions, fds[1]);
        posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, (dir / "agent.err").c_str(),
                                         O_WRONLY | O_CREAT | O_APPEND, 0600);
        std::string home = "HOME=" + dir.string();
        std::vector<char*> envp{home.data()};
        for (char** e = environ; *e; ++e)
            if (std::string_view(*e).find("SAN_OPTIONS=") != std::string_view::npos) envp.push_back(*e);
        envp.push_back(nullptr);
        int error = posix_spawn(&pid_, CORVANE_TOOL, &actions, nullptr, argv.data(), envp.data());
        posix_spawn_file_actions_destroy(&actions);
        ::close(fds[1]);
        output_ = fds[0];
        if (error != 0) throw std::runtime_error("cannot start the agent");
    }
    ~Agent() {
        if (pid_ > 0) {
            ::kill(pid_, SIGKILL);
            ::waitpid(pid_, nullptr, 0);
        }
        ::close(output_);
    }

    /// The next line the agent prints; empty once it closed its output. A limit far beyond any
    /// normal pace keeps a hung agent from hanging the suite.
    std::string line() {
        while (true) {
            if (auto end = buffer_.find('\n'); end != std::string::npos) {
                auto text = buffer_.substr(0, end);
                buffer_.erase(0, end + 1);
                return text;
            }
            pollfd ready{output_, POLLIN, 0};
            if (::poll(&ready, 1, 30'000) <= 0) return {};
            char chunk[512];
            auto count = ::read(output_, chunk, sizeof chunk);
            if (count <= 0) return {};
            buffer_.append(chunk, static_cast<std::size_t>(count));
        }
    }
    /// Lines until one that starts with `prefix`, which is returned; empty when none came.
    std::string lineStartingWith(const std::string& prefix) {
        for (auto text = line(); !text.empty(); text = line())
            if (text.starts_with(prefix)) return text;
        return {};
    }
    void signal(int number) { ::kill(pid_, number); }
    /// The exit status, or 128 + the signal that ended it.
    int wait() {
        int status = 0;
        ::waitpid(std::exchange(pid_, -1), &status, 0);
        return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
    }

private:
    pid_t pid_ = -1;
    int output_ = -1;
    std::string buffer_;
};

class AgentRun : public SampleDockTool {
protected:
    std::vector<WorkspaceBackup::Reason> backupReasons() {
        std::vector<WorkspaceBackup::Reason> reasons;
        for (const auto& backup : WorkspaceBackupStore(dir / "data").list()) reasons.push_back(backup.reason);
        return reasons;
    }
    std::string errors() { return std::filesystem::exists(dir / "agent.err") ? readText(dir / "agent.err") : ""; }
};

} // namespace

TEST_F(AgentRun, FollowsSwitchesOfAnotherProcessAndStopsCleanlyOnSigterm) {
    ok({"new", "Play"}); // seeds nothing: a workspaces file exists now
    ok({"new", "Work", "--from-dock"});
    ok({"activate", "Work"});
    auto dock = readText(dir / "dock.plist");

    Agent agent(dir.path());
    EXPECT_TRUE(agent.line().starts_with("Corvane is running on ")) << errors();
    EXPECT_EQ(agent.line(), "Active workspace: \"Work\"");

    ok({"next"});
    EXPECT_EQ(agent.lineStartingWith("Active workspace:"), "Active workspace: \"Play\"");
    ok({"previous"});
    EXPECT_EQ(agent.lineStartingWith("Active workspace:"), "Active workspace: \"Work\"");
    EXPECT_EQ(readText(dir / "dock.plist"), dock) << "the own Dock bar is on: the macOS Dock is left alone";

    agent.signal(SIGTERM);
    EXPECT_EQ(agent.line(), "Stopped.");
    EXPECT_EQ(agent.wait(), 0) << errors(); // a thread still running at the end fails the run
    EXPECT_EQ(errors(), "");
    EXPECT_EQ(backupReasons(), (std::vector{WorkspaceBackup::Reason::quit, WorkspaceBackup::Reason::launch}));
}

TEST_F(AgentRun, ADamagedWorkspacesFileRunsDegradedAndIsLeftAsItWas) {
    std::filesystem::create_directories(dir / "data");
    writeText(dir / "data" / "profiles.json", "{\"profiles\": [");
    Agent agent(dir.path());
    EXPECT_TRUE(agent.line().starts_with("The data folder ")) << errors();
    EXPECT_TRUE(agent.lineStartingWith("Corvane is running on ").size() > 0);
    agent.signal(SIGINT);
    EXPECT_EQ(agent.lineStartingWith("Stopped."), "Stopped.");
    EXPECT_EQ(agent.wait(), 0) << errors();
    EXPECT_EQ(readText(dir / "data" / "profiles.json"), "{\"profiles\": [");
}

TEST_F(AgentRun, ASigtermAtAnyMomentOfStartingLosesNothing) {
    // The first launch seeds a workspace from the Dock and backs up: a signal landing anywhere in
    // that either stops the agent before it saves anything or after it saved all of it.
    for (int attempt = 0; attempt < 4; ++attempt) {
        std::filesystem::remove_all(dir / "data");
        Agent agent(dir.path());
        if (attempt > 0) ::usleep(static_cast<useconds_t>(attempt * 15'000));
        agent.signal(SIGTERM);
        auto status = agent.wait();
        EXPECT_TRUE(status == 0 || status == 128 + SIGTERM) << status;
        if (!std::filesystem::exists(dir / "data" / "profiles.json")) continue;
        ProfileStore store(dir / "data" / "profiles.json");
        ASSERT_EQ(store.file().profiles.size(), 1u);
        EXPECT_EQ(store.file().profiles[0].items.size(), 10u);
        for (const auto& entry : std::filesystem::directory_iterator(dir / "data"))
            EXPECT_FALSE(entry.path().filename().string().ends_with(".tmp")) << entry.path();
    }
}

TEST_F(AgentRun, UiPrintsTheWindowsAddressFirstAndItsCallsMoveTheLiveState) {
    ok({"new", "Play"});
    ok({"new", "Work", "--from-dock"});
    ok({"activate", "Work"});

    Agent ui(dir.path(), {}, "ui");
    auto url = ui.line();
    std::smatch parts;
    ASSERT_TRUE(std::regex_match(url, parts, std::regex(R"(http://127\.0\.0\.1:(\d+)/#token=([0-9a-f]{64}))")))
        << url << errors();
    EXPECT_TRUE(ui.line().starts_with("Corvane is running on "));
    EXPECT_EQ(ui.line(), "Active workspace: \"Work\"");

    auto port = parts[1].str();
    httplib::Client client("127.0.0.1", std::stoi(port));
    auto switched = client.Post("/api/next", {{"Authorization", "Bearer " + parts[2].str()}}, "{}", "application/json");
    ASSERT_TRUE(switched);
    EXPECT_EQ(switched->status, 200) << switched->body;
    EXPECT_EQ(ui.lineStartingWith("Active workspace:"), "Active workspace: \"Play\"");

    // A second window on the same port is one line, and the first goes on.
    auto taken = run({"ui", "--port", port});
    EXPECT_EQ(taken.status, 1);
    EXPECT_EQ(taken.err, "corvane: the window cannot be served: port " + port + " on 127.0.0.1 is taken\n");

    ui.signal(SIGTERM);
    EXPECT_EQ(ui.lineStartingWith("Stopped."), "Stopped.");
    EXPECT_EQ(ui.wait(), 0) << errors(); // the server's threads too are gone
}
