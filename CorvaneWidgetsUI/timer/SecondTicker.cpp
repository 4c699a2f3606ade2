#include "CorvaneWidgetsUI/timer/SecondTicker.hpp"

#include <vector>

namespace corvane {

SecondTicker::~SecondTicker() {
    if (pending_) scheduler_.cancel(*pending_);
}

SecondTicker::Handle SecondTicker::add(std::function<void()> tick) {
    auto handle = ++lastHandle_;
    ticks_.emplace(handle, std::move(tick));
    if (!pending_) pending_ = scheduler_.schedule(1, [this] { fire(); });
    return handle;
}

void SecondTicker::remove(Handle handle) {
    ticks_.erase(handle);
    if (ticks_.empty() && pending_) {
        scheduler_.cancel(*pending_);
        pending_.reset();
    }
}

void SecondTicker::fire() {
    pending_.reset();
    // A tick may add or remove ticks; walk the handles as they were when the second began.
    std::vector<Handle> handles;
    for (const auto& entry : ticks_) handles.push_back(entry.first);
    for (auto handle : handles) {
        auto it = ticks_.find(handle);
        if (it == ticks_.end()) continue;
        auto tick = it->second; // the tick may remove itself while running
        tick();
    }
    if (!ticks_.empty() && !pending_) pending_ = scheduler_.schedule(1, [this] { fire(); });
}

} // namespace corvane
