#pragma once

#include "CorvaneCore/platform/Clock.hpp"
#include "CorvaneCore/platform/SystemLoad.hpp"

#include <optional>

namespace corvane {

/// One machine load for several live models. A processor share is measured between two calls,
/// so models that each asked the system would cut each other's interval short; through this,
/// every call within `window` seconds of the last measurement gets that measurement. Main thread.
class SharedSystemLoad final : public SystemLoad {
  public:
    static constexpr double window = 0.1;

    /// `load` and `clock` must outlive it.
    SharedSystemLoad(SystemLoad& load, const Clock& clock) : load_(load), clock_(clock) {}

    std::optional<double> cpu() override {
        auto now = clock_.now();
        if (!measuredAt_ || now - *measuredAt_ >= window || now < *measuredAt_) {
            cpu_ = load_.cpu();
            measuredAt_ = now;
        }
        return cpu_;
    }
    std::optional<double> memory() override { return load_.memory(); }
    bool isHot() override { return load_.isHot(); }

  private:
    SystemLoad& load_;
    const Clock& clock_;
    std::optional<Date> measuredAt_;
    std::optional<double> cpu_;
};

} // namespace corvane
