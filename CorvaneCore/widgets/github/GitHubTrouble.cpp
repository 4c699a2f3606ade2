#include "CorvaneCore/widgets/github/GitHubTrouble.hpp"

namespace corvane {

std::string_view GitHubTrouble::tileText() const {
    switch (kind) {
    case Kind::toolMissing:
        return "gh not installed";
    case Kind::signedOut:
        return "gh is signed out";
    case Kind::failed:
        break;
    }
    return "Could not reach GitHub";
}

std::string_view GitHubTrouble::title() const {
    switch (kind) {
    case Kind::toolMissing:
        return "GitHub's command line tool is not installed";
    case Kind::signedOut:
        return "gh is not signed in";
    case Kind::failed:
        break;
    }
    return "Could not reach GitHub";
}

std::string GitHubTrouble::detail() const {
    switch (kind) {
    case Kind::toolMissing:
        return "Corvane reads GitHub through gh, which keeps your login. Install it with brew install gh.";
    case Kind::signedOut:
        return "Run gh auth login in a terminal once; Corvane never asks for a token itself.";
    case Kind::failed:
        break;
    }
    return message;
}

} // namespace corvane
