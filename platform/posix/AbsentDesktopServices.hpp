#pragma once

// What a system without the Mac's window server, workspace services and hotkey manager offers
// the application: nothing to read and nothing to press. The features built on them stay inert,
// the rest of the application runs as it would on a Mac.

#include "CorvaneCore/platform/DesktopEvents.hpp"
#include "CorvaneCore/platform/DesktopServer.hpp"
#include "CorvaneCore/platform/FocusStatusProvider.hpp"
#include "CorvaneCore/platform/HotkeyRegistrar.hpp"
#include "CorvaneCore/platform/RunningApplications.hpp"
#include "CorvaneCore/platform/SpacesPreferences.hpp"
#include "CorvaneCore/platform/WindowList.hpp"

namespace corvane {

/// No global hotkeys: every registration is refused, as one taken by another application is.
class AbsentHotkeyRegistrar final : public HotkeyRegistrar {
public:
    /// The status the hotkey manager logs for each binding it could not register.
    static constexpr std::int32_t unavailable = -1;

    bool installHandler(std::uint32_t, std::function<void(std::uint32_t)>) override { return true; }
    Registration registerHotkey(std::uint16_t, std::uint32_t, std::uint32_t, std::uint32_t) override {
        return {unavailable, std::nullopt};
    }
    void unregisterHotkey(std::uintptr_t) override {}
};

/// No Focus reading: the Focus monitor sees an absent state and never switches.
class AbsentFocusStatus final : public FocusStatusProvider {
public:
    std::optional<bool> isFocused() const override { return std::nullopt; }
    FocusAuthorization authorization() const override { return FocusAuthorization::unavailable; }
};

/// No applications to list, hide or quit.
class AbsentRunningApplications final : public RunningApplications {
public:
    std::vector<RunningApp> regularApplications() override { return {}; }
    bool isHidden(std::int32_t) override { return false; }
    bool hide(std::int32_t) override { return false; }
    void unhide(std::int32_t) override {}
    void terminate(std::int32_t) override {}
    void onActivation(std::function<void(std::int32_t)>) override {}
    void onLaunchOrTermination(std::function<void()>) override {}
};

/// No windows of other applications: nothing covers the bar and nothing is full screen.
class AbsentWindowList final : public WindowList {
public:
    std::vector<Window> windows() override { return {}; }
    std::optional<std::int32_t> frontApplication() override { return std::nullopt; }
    void onArrangementChange(std::function<void()>) override {}
};

/// No desktops, no desktop changes and no per-application desktop bindings.
class AbsentDesktops final : public DesktopServer, public DesktopEvents, public SpacesPreferences {
public:
    std::vector<Display> displays() override { return {}; }
    std::optional<std::uint64_t> activeSpace() override { return std::nullopt; }
    bool canAssign() const override { return false; }
    bool assign(std::int32_t, std::optional<std::uint64_t>) override { return false; }
    void onActiveDesktopChange(std::function<void()>) override {}
    std::map<std::string, std::string> appBindings() const override { return {}; }
    void setAppBindings(const std::map<std::string, std::string>&) override {}
};

} // namespace corvane
