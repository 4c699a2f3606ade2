#pragma once

#include "CorvaneCore/bar/Geometry.hpp"

#include <array>
#include <optional>
#include <string_view>

namespace corvane::DockTitleBarZoom {

/// What a double-click on a window's title bar does.
enum class Action { fill, minimize, none };

/// From the system's title-bar double-click preference: "Minimize", "None", else filling.
Action action(std::optional<std::string_view> preference);

/// Accessibility roles of controls that sit in a title bar; a double-click on one is the
/// control's, not the title bar's.
// clang-format off
inline constexpr std::array<std::string_view, 25> controlRoles = {
    "AXButton", "AXTextField", "AXTextArea", "AXSearchField", "AXComboBox",
    "AXTab", "AXTabGroup", "AXRadioButton", "AXCheckBox", "AXPopUpButton",
    "AXMenuButton", "AXMenuBarItem", "AXLink", "AXSlider", "AXIncrementor",
    "AXSegmentedControl", "AXDisclosureTriangle", "AXCell", "AXRow", "AXOutline",
    "AXTable", "AXList", "AXImage", "AXScrollBar", "AXSplitter"};
// clang-format on

bool isControlRole(std::string_view role);

// The functions below work in the accessibility interface's top-down coordinates.

/// The title bar is taken to be twice as deep as the close button's centre is below the window's
/// top edge; 0 without a close button.
double titleBarDepth(const Rect& window, const std::optional<Rect>& closeButton);
/// Whether a double-click at `point` landed on the title bar's background.
bool isTitleBarHit(Point point, const Rect& window, const std::optional<Rect>& closeButton,
                   std::optional<std::string_view> role);
/// Origin and size each within 2 points.
bool isNear(const Rect& a, const Rect& b);
/// Where a `fill` double-click moves the window: to the usable frame, or back to `restore` when it
/// already fills it; none when there is nowhere else to go.
std::optional<Rect> target(const Rect& current, const Rect& usable, const std::optional<Rect>& restore);

} // namespace corvane::DockTitleBarZoom
