#include "CorvaneCore/automation/HotkeyAction.hpp"

namespace corvane {

std::string HotkeyAction::sortKey() const {
    if (auto p = std::get_if<Profile>(&value)) return "profile:" + p->id.string();
    if (auto c = std::get_if<PickColour>(&value)) return "pickColour:" + c->widget.string();
    if (std::holds_alternative<FocusDock>(value)) return "focusDock";
    if (std::holds_alternative<NextWorkspace>(value)) return "nextWorkspace";
    return "previousWorkspace";
}

} // namespace corvane
