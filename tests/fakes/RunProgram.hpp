#pragma once

#include "fakes/TemporaryDirectory.hpp"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>

#include <cstdlib>
#include <string>
#include <vector>

namespace corvane {

struct ProgramResult {
    int status = -1;
    std::string out;
    std::string err;
};

/// Runs `program` with `arguments`, standard input read from the file `input`, and exactly
/// `environment` (plus the sanitizers' options, so a sanitized child obeys the same
/// suppressions), capturing both streams.
inline ProgramResult runProgram(const std::string& program, const std::vector<std::string>& arguments,
                                const std::vector<std::string>& environment, const std::string& input = "/dev/null") {
    TemporaryDirectory streams;
    auto outPath = streams / "out", errPath = streams / "err";
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, 0, input.c_str(), O_RDONLY, 0);
    posix_spawn_file_actions_addopen(&actions, 1, outPath.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
    posix_spawn_file_actions_addopen(&actions, 2, errPath.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
    std::vector<char*> argv{const_cast<char*>(program.c_str())};
    for (const auto& a : arguments) argv.push_back(const_cast<char*>(a.c_str()));
    argv.push_back(nullptr);
    std::vector<char*> envp;
    std::vector<std::string> inherited;
    for (const char* name : {"ASAN_OPTIONS", "LSAN_OPTIONS", "UBSAN_OPTIONS"})
        if (const char* value = std::getenv(name)) inherited.push_back(std::string(name) + "=" + value);
    for (const auto& e : environment) envp.push_back(const_cast<char*>(e.c_str()));
    for (const auto& e : inherited) envp.push_back(const_cast<char*>(e.c_str()));
    envp.push_back(nullptr);
    ProgramResult result;
    pid_t pid = 0;
    if (posix_spawn(&pid, program.c_str(), &actions, nullptr, argv.data(), envp.data()) == 0) {
        int status = 0;
        waitpid(pid, &status, 0);
        result.status = WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
    }
    posix_spawn_file_actions_destroy(&actions);
    result.out = readText(outPath);
    result.err = readText(errPath);
    return result;
}

} // namespace corvane
