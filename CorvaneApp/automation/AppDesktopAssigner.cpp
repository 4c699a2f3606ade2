#include "CorvaneApp/automation/AppDesktopAssigner.hpp"

#include "CorvaneCore/support/Text.hpp"

namespace corvane {

std::optional<AppDesktopAssignment> AppDesktopAssigner::assignment(const std::string& bundleIdentifier) const {
    return AppDesktopBindings{preferences_.appBindings()}.assignment(bundleIdentifier);
}

void AppDesktopAssigner::assign(const std::optional<AppDesktopAssignment>& assignment,
                                const std::string& bundleIdentifier) {
    auto bindings = AppDesktopBindings{preferences_.appBindings()}.setting(assignment, bundleIdentifier);
    preferences_.setAppBindings(bindings.values);
    if (!assignment) return; // windows stay where they are; the Dock forgets the choice on restart
    if (!server_.canAssign()) {
        log_.info("desktops", "SkyLight space assignment unavailable; the Dock applies it on restart");
        return;
    }
    std::optional<std::uint64_t> space;
    if (auto desktop = std::get_if<AppDesktopAssignment::Desktop>(&assignment->value)) {
        for (const auto& display : server_.displays())
            for (const auto& candidate : display.desktops)
                if (candidate.uuid == desktop->uuid) space = candidate.id;
        // A desktop the window server does not list now is left to the Dock's next restart.
        if (!space) return;
    }
    auto wanted = text::lowercased(bundleIdentifier);
    for (const auto& app : applications_.regularApplications())
        if (app.bundleIdentifier && text::lowercased(*app.bundleIdentifier) == wanted) server_.assign(app.pid, space);
}

} // namespace corvane
