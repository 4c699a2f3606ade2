#include "CorvaneApp/automation/GlobalHotkeyManager.hpp"

#include <algorithm>

namespace corvane {

std::uint32_t GlobalHotkeyManager::carbonModifiers(HotkeyModifiers modifiers) {
    std::uint32_t bits = 0;
    if (modifiers.contains(HotkeyModifiers::command)) bits |= 0x100;
    if (modifiers.contains(HotkeyModifiers::shift)) bits |= 0x200;
    if (modifiers.contains(HotkeyModifiers::option)) bits |= 0x800;
    if (modifiers.contains(HotkeyModifiers::control)) bits |= 0x1000;
    return bits;
}

void GlobalHotkeyManager::setBindings(std::vector<std::pair<HotkeyAction, Hotkey>> bindings, Handler handler) {
    unregisterAll();
    handler_ = std::move(handler);
    std::stable_sort(bindings.begin(), bindings.end(),
                     [](const auto& a, const auto& b) { return a.first.sortKey() < b.first.sortKey(); });
    installEventHandlerIfNeeded();
    std::uint32_t id = 0;
    for (const auto& [action, hotkey] : bindings) {
        ++id;
        auto result = registrar_.registerHotkey(hotkey.keyCode, carbonModifiers(hotkey.modifiers), signature, id);
        if (result.status != 0 || !result.ref) {
            // Usually another application holds the combination; the others still work.
            log_.error("hotkey", "hotkey " + hotkey.displayString() + " unavailable: " + std::to_string(result.status));
            continue;
        }
        registrations_.emplace(id, Registration{action, *result.ref});
    }
}

void GlobalHotkeyManager::stop() {
    unregisterAll();
    handler_ = nullptr;
}

void GlobalHotkeyManager::unregisterAll() {
    for (const auto& [id, registration] : registrations_) registrar_.unregisterHotkey(registration.ref);
    registrations_.clear();
}

void GlobalHotkeyManager::installEventHandlerIfNeeded() {
    if (eventHandlerInstalled_) return;
    eventHandlerInstalled_ = registrar_.installHandler(signature, [this](std::uint32_t id) { fire(id); });
    if (!eventHandlerInstalled_) log_.error("hotkey", "hotkey handler could not be installed");
}

void GlobalHotkeyManager::fire(std::uint32_t id) {
    auto it = registrations_.find(id);
    if (it == registrations_.end()) {
        log_.info("hotkey", "unknown hotkey " + std::to_string(id));
        return;
    }
    // Copies: the handler may rebuild the registrations, and itself, while it runs.
    auto action = it->second.action;
    auto handler = handler_;
    if (handler) handler(action);
}

} // namespace corvane
