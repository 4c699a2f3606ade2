#pragma once

#include "CorvaneCore/platform/DesktopEvents.hpp"
#include "CorvaneCore/platform/DesktopServer.hpp"
#include "CorvaneCore/platform/SpacesPreferences.hpp"

#include <algorithm>
#include <map>
#include <utility>

namespace corvane {

/// Desktops set by the test; `notice()` plays one system notice of a desktop change.
class FakeDesktopServer final : public DesktopServer, public DesktopEvents, public SpacesPreferences {
public:
    std::vector<Display> displays() override {
        ++queries;
        return screens;
    }
    std::optional<std::uint64_t> activeSpace() override { return active; }
    bool canAssign() const override { return assignable; }
    bool assign(std::int32_t pid, std::optional<std::uint64_t> space) override {
        if (!assignable) return false;
        assigned.emplace_back(pid, space);
        return true;
    }
    void onActiveDesktopChange(std::function<void()> handler) override { changed = std::move(handler); }
    std::map<std::string, std::string> appBindings() const override { return bindings; }
    void setAppBindings(const std::map<std::string, std::string>& newBindings) override { bindings = newBindings; }

    void notice() {
        if (changed) changed();
    }
    /// Puts `desktop` in front on `display`, creating both as needed.
    void show(std::uint32_t display, DesktopSpace desktop) {
        for (auto& screen : screens)
            if (screen.id == display) {
                screen.current = desktop;
                if (std::find(screen.desktops.begin(), screen.desktops.end(), desktop) == screen.desktops.end())
                    screen.desktops.push_back(desktop);
                return;
            }
        screens.push_back({display, desktop, {desktop}});
    }

    std::vector<Display> screens;
    std::optional<std::uint64_t> active;
    bool assignable = true;
    std::vector<std::pair<std::int32_t, std::optional<std::uint64_t>>> assigned;
    std::map<std::string, std::string> bindings;
    std::function<void()> changed;
    int queries = 0;
};

} // namespace corvane
