#pragma once

#include "CorvaneCore/automation/HotkeyAction.hpp"
#include "CorvaneCore/platform/HotkeyRegistrar.hpp"
#include "CorvaneCore/platform/Log.hpp"
#include "CorvaneCore/workspace/Hotkey.hpp"

#include <cstdint>
#include <functional>
#include <map>
#include <utility>
#include <vector>

namespace corvane {

/// The application's global hotkeys: registers a set of bindings with the system and calls
/// the handler when one fires. Main thread only; one per process.
class GlobalHotkeyManager {
public:
    /// The four characters "CRVN", most significant first.
    static constexpr std::uint32_t signature = ('C' << 24) | ('R' << 16) | ('V' << 8) | 'N';

    using Handler = std::function<void(const HotkeyAction&)>;
    struct Registration {
        HotkeyAction action;
        std::uintptr_t ref;
    };

    GlobalHotkeyManager(HotkeyRegistrar& registrar, Log& log) : registrar_(registrar), log_(log) {}
    ~GlobalHotkeyManager() { unregisterAll(); }
    GlobalHotkeyManager(const GlobalHotkeyManager&) = delete;
    GlobalHotkeyManager& operator=(const GlobalHotkeyManager&) = delete;

    /// Replaces every registration. Ids follow the actions' sort keys, so the same bindings
    /// always get the same ids.
    void setBindings(std::vector<std::pair<HotkeyAction, Hotkey>> bindings, Handler handler);
    /// Unregisters everything and forgets the handler; the system handler stays installed.
    void stop();

    /// The system's modifier bits for ours.
    static std::uint32_t carbonModifiers(HotkeyModifiers modifiers);

    const std::map<std::uint32_t, Registration>& registrations() const { return registrations_; }

private:
    void unregisterAll();
    void installEventHandlerIfNeeded();
    void fire(std::uint32_t id);

    HotkeyRegistrar& registrar_;
    Log& log_;
    Handler handler_;
    std::map<std::uint32_t, Registration> registrations_;
    bool eventHandlerInstalled_ = false;
};

} // namespace corvane
