#include "CorvaneCore/automation/WindowArrivals.hpp"

#include <algorithm>

namespace corvane {

void WindowArrivals::seed(const WindowMap& windows, const std::vector<std::int32_t>& running) {
    for (auto pid : running)
        if (auto it = windows.find(pid); it != windows.end()) last[pid] = it->second;
}

WindowMap WindowArrivals::record(const WindowMap& windows) {
    WindowMap arrivals;
    for (const auto& [pid, ids] : windows) {
        const auto seen = last.find(pid);
        std::set<std::uint32_t> fresh;
        for (auto id : ids)
            if (seen == last.end() || !seen->second.contains(id)) fresh.insert(id);
        if (!fresh.empty()) arrivals[pid] = std::move(fresh);
    }
    last = windows;
    return arrivals;
}

namespace WindowDesktops {

namespace {
bool contains(const Rect& r, double x, double y) { return x >= r.x && x < r.x + r.width && y >= r.y && y < r.y + r.height; }
double overlap(const Rect& a, const Rect& b) {
    double w = std::min(a.x + a.width, b.x + b.width) - std::max(a.x, b.x);
    double h = std::min(a.y + a.height, b.y + b.height) - std::max(a.y, b.y);
    return w > 0 && h > 0 ? w * h : 0;
}
} // namespace

std::optional<Display> display(const Rect& of, const std::vector<Display>& among) {
    double cx = of.x + of.width / 2, cy = of.y + of.height / 2;
    for (const auto& d : among)
        if (contains(d.frame, cx, cy)) return d;
    const Display* best = nullptr;
    double bestArea = 0;
    for (const auto& d : among)
        if (auto area = overlap(of, d.frame); area > bestArea) {
            best = &d;
            bestArea = area;
        }
    return best ? std::optional<Display>(*best) : std::nullopt;
}

std::vector<std::uint32_t> displays(const std::vector<Rect>& windows, const std::vector<Display>& among) {
    std::set<std::uint32_t> found;
    for (const auto& w : windows)
        if (auto d = display(w, among)) found.insert(d->id);
    std::vector<std::uint32_t> ordered;
    for (const auto& d : among)
        if (found.contains(d.id)) ordered.push_back(d.id);
    return ordered;
}

std::optional<std::uint32_t> frontDisplay(const std::vector<Rect>& windows, const std::vector<Display>& among) {
    for (const auto& w : windows)
        if (auto d = display(w, among)) return d->id;
    return std::nullopt;
}

std::set<std::uint64_t> updated(const std::set<std::uint64_t>& current, const std::set<std::uint64_t>& seen,
                                const std::set<std::uint64_t>& shown) {
    if (seen.empty()) return current;
    std::set<std::uint64_t> result;
    for (auto d : current)
        if (!shown.contains(d)) result.insert(d);
    result.insert(seen.begin(), seen.end());
    return result;
}

} // namespace WindowDesktops

} // namespace corvane
