#pragma once

#include "CorvaneCore/platform/RandomSource.hpp"

#include <deque>
#include <initializer_list>

namespace corvane {

/// Hands out the given draws in order, then `fallback` for ever.
class ScriptedRandom final : public RandomSource {
  public:
    ScriptedRandom(std::initializer_list<double> draws, double fallback = 0.5)
        : draws_(draws), fallback_(fallback) {}

    double next() override {
        ++drawn;
        if (draws_.empty()) return fallback_;
        double value = draws_.front();
        draws_.pop_front();
        return value;
    }

    int drawn = 0;

  private:
    std::deque<double> draws_;
    double fallback_;
};

} // namespace corvane
