#include "CorvaneApp/controllers/WorkspaceAppsController.hpp"

#include "CorvaneCore/workspace/WorkspaceAppPlan.hpp"

#include <algorithm>

namespace corvane {

WorkspaceAppsController::WorkspaceAppsController(RunningApplications& applications, Log& log,
                                                 WorkspaceSource workspace, ShownElsewhere shownElsewhere)
    : applications_(applications), log_(log), workspace_(std::move(workspace)),
      shownElsewhere_(std::move(shownElsewhere)) {
    applications_.onActivation([this](std::int32_t pid) { appActivated(pid); });
}

void WorkspaceAppsController::workspaceDidSwitch(const Profile& target, const std::vector<Profile>&) {
    lastSwitch = target.id;
    apply(target);
}

void WorkspaceAppsController::apply(const Profile& target) {
    auto running = applications_.regularApplications();
    WorkspaceAppPlan plan(target, running, ownership, hiddenByCorvane,
                          shownElsewhere_ ? shownElsewhere_() : std::set<std::int32_t>{});
    for (auto pid : plan.toUnhide) {
        applications_.unhide(pid);
        hiddenByCorvane.erase(pid);
    }
    for (const auto& app : plan.outsiders) {
        switch (target.otherWorkspaceApps) {
        case OtherWorkspaceApps::keep: break;
        case OtherWorkspaceApps::quit: applications_.terminate(app.pid); break;
        case OtherWorkspaceApps::hide:
            // Apps the user hid stay out of hiddenByCorvane, so no switch ever shows them again.
            if (!applications_.isHidden(app.pid) && applications_.hide(app.pid)) hiddenByCorvane.insert(app.pid);
            break;
        }
    }
    log_.info("switch", "switched to " + target.name + ": " + std::to_string(plan.outsiders.size()) + " outside, " +
                            std::to_string(plan.toUnhide.size()) + " back");
}

void WorkspaceAppsController::appActivated(std::int32_t pid) {
    auto [active, profiles] = workspace_();
    if (!active) return;
    auto running = applications_.regularApplications();
    auto app = std::find_if(running.begin(), running.end(), [&](const RunningApp& r) { return r.pid == pid; });
    if (app == running.end()) return; // not a regular application
    if (!WorkspaceAppPlan::app(*app, *active, ownership)) ownership.assign(pid, active->id);
}

} // namespace corvane
