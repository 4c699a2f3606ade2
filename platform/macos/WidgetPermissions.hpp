#pragma once

#include "CorvaneCore/widgets/DockWidget.hpp"

namespace corvane {

/// The system permissions some widget kinds need, asked for when such a widget is placed: access
/// to calendars or reminders, automation of Music, and accessibility for the keyboard lock. The
/// system asks the user only once; a kind needing nothing asks nothing.
namespace WidgetPermissions {

void request(WidgetKind kind);

} // namespace WidgetPermissions

} // namespace corvane
