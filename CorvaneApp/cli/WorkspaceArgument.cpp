#include "CorvaneApp/cli/WorkspaceArgument.hpp"

#include "CorvaneCore/support/Text.hpp"

#include <functional>
#include <stdexcept>

namespace corvane {

const Profile& resolveWorkspace(const std::vector<Profile>& profiles, const std::string& argument) {
    if (auto id = Uuid::parse(argument))
        for (const auto& profile : profiles)
            if (profile.id == *id) return profile;

    const std::function<bool(const Profile&)> rules[] = {
        [&](const Profile& p) { return p.name == argument; },
        [&](const Profile& p) { return text::equalsIgnoringCase(p.name, argument); },
        [&](const Profile& p) { return !argument.empty() && text::startsWithIgnoringCase(p.name, argument); },
    };
    for (const auto& rule : rules) {
        std::vector<const Profile*> matches;
        for (const auto& profile : profiles)
            if (rule(profile)) matches.push_back(&profile);
        if (matches.size() == 1) return *matches.front();
        if (matches.size() > 1) {
            std::string names;
            for (const auto* match : matches)
                names += (names.empty() ? "" : ", ") + ("\"" + match->name + "\" (" + match->id.string() + ")");
            throw std::runtime_error("\"" + argument + "\" matches several workspaces: " + names);
        }
    }
    throw std::runtime_error("no workspace matches \"" + argument + "\"");
}

} // namespace corvane
