#pragma once

#include "CorvaneCore/platform/DockReloader.hpp"

#include <functional>
#include <string>
#include <vector>

namespace corvane {

/// Records "settle" and "reload" in order; `onReload` plays what the restarted Dock does.
class ScriptedDockReloader final : public DockReloader {
public:
    void waitUntilSettled() override { calls.push_back("settle"); }
    void reload() override {
        calls.push_back("reload");
        if (onReload) onReload();
    }

    std::vector<std::string> calls;
    std::function<void()> onReload;
};

} // namespace corvane
