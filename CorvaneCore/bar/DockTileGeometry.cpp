#include "CorvaneCore/bar/DockTileGeometry.hpp"

#include <algorithm>
#include <cmath>

namespace corvane::DockTileGeometry {

double pitch(double tileSize) {
    return tileSize * 1.0625;
}

double inset(double tileSize) {
    return tileSize * 0.125;
}

double iconCenter(double pointer, double dockStart, double tileSize) {
    double start = dockStart + inset(tileSize);
    double step = pitch(tileSize);
    double slot = std::max(std::floor((pointer - start) / step), 0.0);
    return start + step * (slot + 0.5);
}

Rect drawnFrame(const Rect& resting, double scale, double shift, DockPosition position) {
    double width = resting.width * scale;
    double height = resting.height * scale;
    switch (position) {
    case DockPosition::bottom:
        return {shift + resting.midX() - width / 2, resting.maxY() - height, width, height};
    case DockPosition::left:
        return {resting.minX(), shift + resting.midY() - height / 2, width, height};
    case DockPosition::right:
        return {resting.maxX() - width, shift + resting.midY() - height / 2, width, height};
    }
    return resting;
}

} // namespace corvane::DockTileGeometry
