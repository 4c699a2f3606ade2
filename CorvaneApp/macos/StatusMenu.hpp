#pragma once

#include "CorvaneApp/menu/MenuActions.hpp"

#include <memory>

namespace corvane {

/// The menu-bar item: draws `MenuModel` into an `NSStatusItem`'s menu each time the menu opens,
/// and sends the chosen item's action back through `MenuActions`. Main thread.
class StatusMenu {
public:
    StatusMenu(AppState& state, const Calendar& calendar);
    ~StatusMenu();
    StatusMenu(const StatusMenu&) = delete;
    StatusMenu& operator=(const StatusMenu&) = delete;

private:
    struct Views;
    std::unique_ptr<Views> views_;
};

} // namespace corvane
