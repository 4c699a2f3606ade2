#pragma once

#include "CorvaneApp/bar/BarClicks.hpp"

#import <CoreGraphics/CoreGraphics.h>

namespace corvane {

/// A folder stack as a pop-up menu at a point of the screen: the folder's items in the stack's
/// order, each with its icon, then the folder itself; the chosen one opens. Main thread.
namespace StackMenu {

/// `at` is in screen coordinates, y up.
void open(const BarClicks::StackPanel& panel, CGPoint at);

} // namespace StackMenu

} // namespace corvane
