#include "platform/posix/PosixProcessRunner.hpp"

#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstring>
#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

extern char** environ;

namespace corvane {

namespace {

class Pipe {
public:
    Pipe() {
        if (::pipe(fds_) != 0) throw ProcessLaunchError(std::strerror(errno));
        // Only the child's copies made by dup2 survive exec; nothing leaks into other children.
        for (int fd : fds_) ::fcntl(fd, F_SETFD, FD_CLOEXEC);
    }
    ~Pipe() {
        closeRead();
        closeWrite();
    }
    Pipe(const Pipe&) = delete;
    Pipe& operator=(const Pipe&) = delete;

    int read() const { return fds_[0]; }
    int write() const { return fds_[1]; }
    void closeRead() { close(fds_[0]); }
    void closeWrite() { close(fds_[1]); }

private:
    static void close(int& fd) {
        if (fd >= 0) ::close(fd);
        fd = -1;
    }
    int fds_[2] = {-1, -1};
};

class FileActions {
public:
    FileActions() { posix_spawn_file_actions_init(&actions); }
    ~FileActions() { posix_spawn_file_actions_destroy(&actions); }
    FileActions(const FileActions&) = delete;
    FileActions& operator=(const FileActions&) = delete;
    posix_spawn_file_actions_t actions;
};

} // namespace

ProcessResult PosixProcessRunner::run(const ProcessRequest& request) {
    Pipe out, err;
    FileActions files;
    posix_spawn_file_actions_addopen(&files.actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
    posix_spawn_file_actions_adddup2(&files.actions, out.write(), STDOUT_FILENO);
    posix_spawn_file_actions_adddup2(&files.actions, err.write(), STDERR_FILENO);

    std::vector<std::string> argumentTexts{request.executable};
    argumentTexts.insert(argumentTexts.end(), request.arguments.begin(), request.arguments.end());
    std::vector<char*> argv;
    for (auto& text : argumentTexts) argv.push_back(text.data());
    argv.push_back(nullptr);

    std::vector<std::string> environmentTexts;
    std::vector<char*> envp;
    char** environment = environ;
    if (request.environment) {
        for (const auto& [name, value] : *request.environment) environmentTexts.push_back(name + "=" + value);
        for (auto& text : environmentTexts) envp.push_back(text.data());
        envp.push_back(nullptr);
        environment = envp.data();
    }

    pid_t pid = 0;
    int spawnError = posix_spawn(&pid, request.executable.c_str(), &files.actions, nullptr, argv.data(), environment);
    if (spawnError != 0) throw ProcessLaunchError(std::strerror(spawnError));
    out.closeWrite();
    err.closeWrite();

    ProcessResult result;
    using Clock = std::chrono::steady_clock;
    std::optional<Clock::time_point> deadline;
    if (request.timeout)
        deadline = Clock::now() + std::chrono::duration_cast<Clock::duration>(std::chrono::duration<double>(*request.timeout));

    pollfd fds[2] = {{out.read(), POLLIN, 0}, {err.read(), POLLIN, 0}};
    std::string* sinks[2] = {&result.standardOutput, &result.standardError};
    int open = 2;
    while (open > 0) {
        int waitMs = -1;
        if (deadline) {
            auto left = std::chrono::duration_cast<std::chrono::milliseconds>(*deadline - Clock::now()).count();
            if (left <= 0) {
                ::kill(pid, SIGKILL);
                result.timedOut = true;
                break;
            }
            waitMs = static_cast<int>(std::min<long long>(left, 1000 * 60 * 60));
        }
        int ready = ::poll(fds, 2, waitMs);
        if (ready < 0 && errno == EINTR) continue;
        if (ready < 0) break;
        for (int i = 0; i < 2; ++i) {
            if (fds[i].fd < 0 || fds[i].revents == 0) continue;
            char buffer[8192];
            auto count = ::read(fds[i].fd, buffer, sizeof buffer);
            if (count > 0) {
                sinks[i]->append(buffer, static_cast<std::size_t>(count));
            } else if (count == 0 || errno != EINTR) {
                fds[i].fd = -1;
                --open;
            }
        }
    }

    int status = 0;
    while (::waitpid(pid, &status, 0) < 0 && errno == EINTR) {
    }
    if (WIFEXITED(status)) {
        result.status = WEXITSTATUS(status);
    } else if (WIFSIGNALED(status)) {
        result.status = WTERMSIG(status);
        result.terminatedBySignal = true;
    }
    return result;
}

} // namespace corvane
