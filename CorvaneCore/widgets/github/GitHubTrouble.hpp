#pragma once

#include <string>
#include <string_view>

namespace corvane {

/// Why the GitHub widget has nothing to show.
struct GitHubTrouble {
    enum class Kind { failed, toolMissing, signedOut };

    Kind kind = Kind::failed;
    /// What went wrong, for `failed`: the tool's error text or what the reply said.
    std::string message;

    static GitHubTrouble failed(std::string message) { return {Kind::failed, std::move(message)}; }
    static GitHubTrouble toolMissing() { return {Kind::toolMissing, {}}; }
    static GitHubTrouble signedOut() { return {Kind::signedOut, {}}; }

    /// The tile's one short line.
    std::string_view tileText() const;
    /// The panel's heading.
    std::string_view title() const;
    /// The panel's explanation under the heading.
    std::string detail() const;

    bool operator==(const GitHubTrouble&) const = default;
};

} // namespace corvane
