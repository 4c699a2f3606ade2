#pragma once

#include "CorvaneCore/platform/RunningApplications.hpp"

#include <map>
#include <set>
#include <vector>

namespace corvane {

class FakeRunningApplications final : public RunningApplications {
public:
    std::vector<RunningApp> regularApplications() override { return apps; }
    bool isHidden(std::int32_t pid) override { return hidden.contains(pid); }
    bool hide(std::int32_t pid) override {
        if (refusesToHide.contains(pid)) return false;
        hidden.insert(pid);
        return true;
    }
    void unhide(std::int32_t pid) override {
        hidden.erase(pid);
        unhidden.push_back(pid);
    }
    void terminate(std::int32_t pid) override { terminated.push_back(pid); }
    void onActivation(std::function<void(std::int32_t)> handler) override { activate = std::move(handler); }
    void onLaunchOrTermination(std::function<void()> handler) override { launchedOrQuit = std::move(handler); }

    RunningApp& launch(std::int32_t pid, std::string bundleIdentifier, std::string path = {}) {
        RunningApp app;
        app.pid = pid;
        app.bundleIdentifier = std::move(bundleIdentifier);
        if (!path.empty()) app.path = std::move(path);
        app.name = *app.bundleIdentifier;
        apps.push_back(app);
        return apps.back();
    }

    std::vector<RunningApp> apps;
    std::set<std::int32_t> hidden, refusesToHide;
    std::vector<std::int32_t> unhidden, terminated;
    std::function<void(std::int32_t)> activate;
    std::function<void()> launchedOrQuit;
};

} // namespace corvane
