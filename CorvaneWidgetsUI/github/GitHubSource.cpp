#include "CorvaneWidgetsUI/github/GitHubSource.hpp"

#include "CorvaneCore/support/Text.hpp"
#include "CorvaneCore/widgets/github/GitHubQueries.hpp"
#include "CorvaneCore/widgets/github/GitHubReply.hpp"

#include <unistd.h>

#include <filesystem>

namespace corvane {

GitHubSource::GitHubSource(ProcessRunner& runner, std::string home, const UserDefaults* defaults,
                           ExecutableCheck isExecutable)
    : runner_(runner), home_(std::move(home)), defaults_(defaults), isExecutable_(std::move(isExecutable)) {}

bool GitHubSource::isExecutableFile(const std::string& path) {
    std::error_code error;
    return std::filesystem::is_regular_file(path, error) && ::access(path.c_str(), X_OK) == 0;
}

std::vector<std::string> GitHubSource::candidates() const {
    std::vector<std::string> result;
    if (defaults_)
        if (auto stored = defaults_->stringValue(std::string(pathPreference)); stored && !stored->empty())
            result.push_back(*stored);
    if (!home_.empty()) result.push_back((std::filesystem::path(home_) / ".local/bin/gh").string());
    for (const char* path : {"/opt/homebrew/bin/gh", "/usr/local/bin/gh", "/opt/local/bin/gh", "/usr/bin/gh"})
        result.emplace_back(path);
    return result;
}

std::optional<std::string> GitHubSource::toolURL() const {
    for (const auto& path : candidates())
        if (isExecutable_(path)) return path;
    return std::nullopt;
}

GitHubSource::Run GitHubSource::run(const std::string& tool, const std::string& document) {
    ProcessRequest request;
    request.executable = tool;
    request.arguments = GitHubQueries::arguments(document);
    // The user's shell settings stay out: colours and update notices would only garble the reply.
    request.environment = std::map<std::string, std::string>{{"HOME", home_},
                                                             {"PATH", std::string(toolSearchPath)},
                                                             {"NO_COLOR", "1"},
                                                             {"GH_NO_UPDATE_NOTIFIER", "1"}};
    request.timeout = timeout;
    ProcessResult result;
    try {
        result = runner_.run(request);
    } catch (const ProcessLaunchError& error) {
        return {std::nullopt, Trouble::failed(error.what())};
    }
    if (result.timedOut)
        return {std::nullopt, Trouble::failed("gh did not answer within " +
                                              std::to_string(static_cast<int>(timeout)) + " seconds")};
    if (!result.succeeded()) {
        if (result.standardError.find("authentication token") != std::string::npos)
            return {std::nullopt, Trouble::signedOut()};
        std::string message(text::trimmed(result.standardError));
        if (message.empty()) message = GitHubReply::errorMessage(result.standardOutput).value_or("");
        if (message.empty())
            message = result.terminatedBySignal ? "gh was stopped by signal " + std::to_string(result.status)
                                                : "gh exited with status " + std::to_string(result.status);
        return {std::nullopt, Trouble::failed(message)};
    }
    return {std::move(result.standardOutput), std::nullopt};
}

GitHubSource::Result GitHubSource::load(const GitHubSettings& settings) {
    std::lock_guard lock(loading_);
    auto tool = toolURL();
    if (!tool) return {{}, std::nullopt, Trouble::toolMissing()};
    Result result;
    if (settings.shows == GitHubShows::contributions) {
        auto ran = run(*tool, GitHubQueries::contributionsDocument());
        if (ran.trouble) return {{}, std::nullopt, ran.trouble};
        auto reply = GitHubReply::contributions(*ran.output);
        if (reply.error) result.trouble = Trouble::failed(*reply.error);
        result.contributions = std::move(reply.contributions);
        return result;
    }
    auto ran = run(*tool, GitHubQueries::itemsDocument(GitHubQueries::searches(settings), settings.limit));
    if (ran.trouble) return {{}, std::nullopt, ran.trouble};
    auto reply = GitHubReply::items(*ran.output);
    if (reply.error) result.trouble = Trouble::failed(*reply.error);
    result.items = std::move(reply.items);
    return result;
}

} // namespace corvane
