#include "CorvaneCore/widgets/pet/PetPace.hpp"

#include <algorithm>
#include <cmath>

namespace corvane {

namespace {

// How much lower a threshold sits while the pet already moves at or above it.
constexpr double kHysteresis = 0.03;

} // namespace

PetThresholds PetThresholds::of(PetMetric metric) {
    switch (metric) {
    case PetMetric::cpu:
        return {0.1, 0.45};
    case PetMetric::memory:
        return {0.6, 0.85};
    }
    return {0.1, 0.45};
}

PetPace::PetPace(double load_, PetGait gait_, bool isHot_)
    : load(std::isnan(load_) ? 0.0 : std::clamp(load_, 0.0, 1.0)), gait(gait_), isHot(isHot_) {}

void PetPace::feed(double reading, double after, PetMetric metric) {
    if (std::isnan(reading)) return;
    double dt = std::isnan(after) ? 0.0 : std::max(after, 0.0);
    double target = std::clamp(reading, 0.0, 1.0);
    double weight = readings == 0 ? 1.0 : 1.0 - std::exp(-dt / memory);
    load += weight * (target - load);
    readings += 1;

    auto [walking, running] = PetThresholds::of(metric);
    if (gait == PetGait::walking || gait == PetGait::running) walking -= kHysteresis;
    if (gait == PetGait::running) running -= kHysteresis;

    if (load >= running) {
        gait = PetGait::running;
        calmFor = 0;
    } else if (load >= walking) {
        gait = PetGait::walking;
        calmFor = 0;
    } else {
        bool wasResting = gait == PetGait::sleeping || gait == PetGait::sitting;
        calmFor = wasResting ? calmFor + dt : 0;
        gait = calmFor >= sleepsAfter && !isHot ? PetGait::sleeping : PetGait::sitting;
    }
}

double PetPace::effort(PetMetric metric) const {
    auto [walking, running] = PetThresholds::of(metric);
    double f = 0;
    if (gait == PetGait::walking) f = (load - walking) / (running - walking);
    if (gait == PetGait::running) f = (load - running) / std::max(1 - running, 0.01);
    return std::clamp(f, 0.0, 1.0);
}

double PetPace::frameInterval(PetMetric metric) const {
    switch (gait) {
    case PetGait::sleeping:
        return 1.4;
    case PetGait::sitting:
        return 0.9;
    case PetGait::walking:
        return 0.24 - 0.1 * effort(metric);
    case PetGait::running:
        return 0.12 - 0.055 * effort(metric);
    }
    return 0.9;
}

double PetPace::speed(PetMetric metric) const {
    switch (gait) {
    case PetGait::sleeping:
    case PetGait::sitting:
        return 0;
    case PetGait::walking:
        return 0.6 + 0.6 * effort(metric);
    case PetGait::running:
        return 2.0 + 2.5 * effort(metric);
    }
    return 0;
}

} // namespace corvane
