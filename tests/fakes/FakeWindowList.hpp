#pragma once

#include "CorvaneCore/platform/WindowList.hpp"

namespace corvane {

/// Windows set by the test; `arrange()` plays the system's notice that the front changed.
class FakeWindowList final : public WindowList {
public:
    std::vector<Window> windows() override {
        ++reads;
        return shown;
    }
    std::optional<std::int32_t> frontApplication() override { return front; }
    void onArrangementChange(std::function<void()> handler) override { arranged = std::move(handler); }

    void arrange() {
        if (arranged) arranged();
    }

    std::vector<Window> shown;
    std::optional<std::int32_t> front;
    std::function<void()> arranged;
    int reads = 0;
};

} // namespace corvane
