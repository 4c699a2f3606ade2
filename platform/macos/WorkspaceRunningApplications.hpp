#pragma once

#include "CorvaneCore/platform/RunningApplications.hpp"

#include <memory>

namespace corvane {

/// The running applications through the shared workspace and `NSRunningApplication`.
class WorkspaceRunningApplications final : public RunningApplications {
public:
    WorkspaceRunningApplications();
    ~WorkspaceRunningApplications() override;
    WorkspaceRunningApplications(const WorkspaceRunningApplications&) = delete;
    WorkspaceRunningApplications& operator=(const WorkspaceRunningApplications&) = delete;

    std::vector<RunningApp> regularApplications() override;
    bool isHidden(std::int32_t pid) override;
    bool hide(std::int32_t pid) override;
    void unhide(std::int32_t pid) override;
    void terminate(std::int32_t pid) override;
    void onActivation(std::function<void(std::int32_t pid)> handler) override;
    void onLaunchOrTermination(std::function<void()> handler) override;

private:
    struct Token;
    static void removeObserver(std::unique_ptr<Token>& observer);
    std::unique_ptr<Token> observer_;
    std::unique_ptr<Token> lifecycle_;
};

} // namespace corvane
