#include "CorvaneApp/cli/WorkspaceArgument.hpp"

#include "CorvaneCore/support/Text.hpp"

#include <functional>
#include <stdexcept>

namespace corvane {

std::size_t resolveNamedRecord(const std::vector<NamedRecord>& records, const std::string& argument,
                               const std::string& noun, bool matchesIdPrefix) {
    if (auto id = Uuid::parse(argument))
        for (std::size_t i = 0; i < records.size(); ++i)
            if (records[i].id == *id) return i;

    const std::function<bool(const NamedRecord&)> rules[] = {
        [&](const NamedRecord& r) { return r.name == argument; },
        [&](const NamedRecord& r) { return text::equalsIgnoringCase(r.name, argument); },
        [&](const NamedRecord& r) {
            return !argument.empty() && (text::startsWithIgnoringCase(r.name, argument) ||
                                         (matchesIdPrefix && text::startsWithIgnoringCase(r.id.string(), argument)));
        },
    };
    for (const auto& rule : rules) {
        std::vector<std::size_t> matches;
        for (std::size_t i = 0; i < records.size(); ++i)
            if (rule(records[i])) matches.push_back(i);
        if (matches.size() == 1) return matches.front();
        if (matches.size() > 1) {
            std::string names;
            for (auto i : matches)
                names += (names.empty() ? "" : ", ") + ("\"" + records[i].name + "\" (" + records[i].id.string() + ")");
            throw std::runtime_error("\"" + argument + "\" matches several " + noun + "s: " + names);
        }
    }
    throw std::runtime_error("no " + noun + " matches \"" + argument + "\"");
}

const Profile& resolveWorkspace(const std::vector<Profile>& profiles, const std::string& argument) {
    std::vector<NamedRecord> records;
    records.reserve(profiles.size());
    for (const auto& profile : profiles) records.push_back({profile.id, profile.name});
    return profiles[resolveNamedRecord(records, argument, "workspace")];
}

} // namespace corvane
