#include "CorvaneCore/bar/DockFit.hpp"

#include <algorithm>
#include <cmath>

namespace corvane::DockFit {

double iconSize(double current, double preferred, double barLength, double available) {
    if (!(barLength > 0) || !(available > 0) || !(current > 0)) return current;
    if (available < barLength) {
        double shrunk = std::max(std::floor(current * available / barLength), minimumIconSize);
        return std::min(shrunk, preferred);
    }
    if (current < preferred) {
        // Growing back only to 97 % of the room keeps the size from flipping at the threshold.
        double grown = std::max(std::floor(current * available * 0.97 / barLength), current);
        return std::min(grown, preferred);
    }
    return preferred;
}

} // namespace corvane::DockFit
