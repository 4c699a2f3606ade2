#include "CorvaneCore/bar/DockReorder.hpp"

namespace corvane::DockReorder {

std::size_t dropIndex(const std::vector<double>& centers, double droppedAt) {
    return static_cast<std::size_t>(
        std::count_if(centers.begin(), centers.end(), [&](double center) { return center < droppedAt; }));
}

std::size_t insertionIndex(double pointerX, const std::vector<double>& centers, std::size_t from) {
    if (centers.empty()) return 0;
    const auto last = centers.size() - 1;
    std::size_t index = 0;
    for (std::size_t k = 0; k < centers.size(); ++k)
        if (k != from && centers[k] < pointerX) index = k < from ? k + 1 : k;
    if (index > from && index > last) index = last;
    return std::min(std::max<std::size_t>(index, 1), last);
}

std::size_t target(const std::vector<double>& centers, double draggedCenter, std::size_t from) {
    if (from >= centers.size()) return from;
    auto index = from;
    while (index >= 1 && draggedCenter < centers[index - 1])
        --index;
    if (index != from && index != 0) return index;
    while (index + 1 < centers.size() && centers[index + 1] < draggedCenter)
        ++index;
    return index;
}

double shift(std::size_t position, std::size_t from, std::optional<std::size_t> to, double step) {
    if (position == from) return 0;
    if (!to) return position > from ? -step : 0;
    if (from < position && position <= *to) return -step;
    if (*to <= position && position < from) return step;
    return 0;
}

std::size_t movePosition(std::size_t from, std::size_t to) {
    return from >= to ? to : to + 1;
}

} // namespace corvane::DockReorder
