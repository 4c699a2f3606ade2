#pragma once

#include "CorvaneCore/platform/ProcessRunner.hpp"

#include <functional>
#include <optional>
#include <vector>

namespace corvane {

/// Returns `result` for every run (or throws `launchError`) and records the requests; `onRun`
/// plays what the tool would do to the world.
class ScriptedProcessRunner final : public ProcessRunner {
public:
    ProcessResult run(const ProcessRequest& request) override {
        requests.push_back(request);
        if (launchError) throw ProcessLaunchError(*launchError);
        if (onRun) onRun(request);
        return result;
    }

    ProcessResult result;
    std::optional<std::string> launchError;
    std::function<void(const ProcessRequest&)> onRun;
    std::vector<ProcessRequest> requests;
};

} // namespace corvane
