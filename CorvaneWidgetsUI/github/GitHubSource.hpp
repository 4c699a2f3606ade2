#pragma once

#include "CorvaneCore/platform/ProcessRunner.hpp"
#include "CorvaneCore/platform/UserDefaults.hpp"
#include "CorvaneCore/widgets/WidgetSettings.hpp"
#include "CorvaneCore/widgets/github/GitHubContributions.hpp"
#include "CorvaneCore/widgets/github/GitHubItem.hpp"
#include "CorvaneCore/widgets/github/GitHubTrouble.hpp"

#include <functional>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace corvane {

/// Reads GitHub through its own command-line tool, `gh`, which keeps the user's login: Corvane
/// never holds a token. Loads block while the tool runs and take turns, one at a time; callers
/// keep them off the main thread (on the queue labelled `queueLabel`).
class GitHubSource {
  public:
    using Trouble = GitHubTrouble;

    struct Result {
        /// Every item the searches found, before the board picks what to show.
        std::vector<GitHubItem> items;
        std::optional<GitHubContributions> contributions;
        std::optional<Trouble> trouble;
    };

    using ExecutableCheck = std::function<bool(const std::string& path)>;

    static constexpr std::string_view queueLabel = "dev.tessik.corvane.github";
    /// The user preference holding a path to `gh` that wins over the usual places.
    static constexpr std::string_view pathPreference = "GitHubCLIPath";
    /// The tool's search path: enough for `gh` to find `git` without the user's own settings.
    static constexpr std::string_view toolSearchPath = "/usr/bin:/bin:/usr/sbin:/sbin";
    /// Seconds the tool gets before a load counts as failed.
    static constexpr double timeout = 20;

    /// `home` is the user's home folder; `defaults`, when given, may name the tool's path.
    GitHubSource(ProcessRunner& runner, std::string home, const UserDefaults* defaults = nullptr,
                 ExecutableCheck isExecutable = isExecutableFile);

    /// The places looked at for `gh`, in order: the preference, then ~/.local/bin, Homebrew on
    /// Apple silicon and on Intel, MacPorts and the system.
    std::vector<std::string> candidates() const;
    /// The first candidate that is an executable file.
    std::optional<std::string> toolURL() const;
    bool isAvailable() const { return toolURL().has_value(); }

    /// Runs the settings' query. Never throws: every failure is the result's trouble.
    Result load(const GitHubSettings& settings);

    /// A regular file this process may execute.
    static bool isExecutableFile(const std::string& path);

  private:
    struct Run {
        std::optional<std::string> output;
        std::optional<Trouble> trouble;
    };
    Run run(const std::string& tool, const std::string& document);

    ProcessRunner& runner_;
    std::string home_;
    const UserDefaults* defaults_;
    ExecutableCheck isExecutable_;
    std::mutex loading_;
};

} // namespace corvane
