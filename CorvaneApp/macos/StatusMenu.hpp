#pragma once

#include "CorvaneApp/menu/MenuActions.hpp"
#include "CorvaneCore/platform/UserAlerts.hpp"

#include <memory>
#include <optional>
#include <string>

namespace corvane {

/// The menu-bar item: draws `MenuModel` into an `NSStatusItem`'s menu each time the menu opens,
/// and sends the chosen item's action back through `MenuActions`. Main thread.
class StatusMenu {
public:
    StatusMenu(AppState& state, const Calendar& calendar);
    ~StatusMenu();
    StatusMenu(const StatusMenu&) = delete;
    StatusMenu& operator=(const StatusMenu&) = delete;

    /// A switch of the macOS Dock begins (to the workspace named) or ends (none). The item
    /// changes at once, before the switch holds the main thread.
    void showSwitching(const std::optional<std::string>& workspace);
    /// Blinks the item: a few times, or until the menu is opened when `critical`.
    void requestAttention(UserAlerts::Attention attention);

private:
    struct Views;
    std::unique_ptr<Views> views_;
};

} // namespace corvane
