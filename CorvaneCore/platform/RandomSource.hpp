#pragma once

#include <cstdint>
#include <random>

namespace corvane {

/// Uniform random numbers for simulations that must replay exactly in tests. One owner, one
/// thread.
class RandomSource {
  public:
    virtual ~RandomSource() = default;
    /// A number in 0 ≤ x < 1.
    virtual double next() = 0;

    /// A number in `lo` ≤ x < `hi` (`lo` itself when the range is empty).
    double uniform(double lo, double hi) { return hi > lo ? lo + (hi - lo) * next() : lo; }
};

/// A seeded Mersenne Twister: the same seed gives the same sequence on every platform, since
/// the engine's output is fixed by the standard and the conversion below is ours.
class SeededRandom final : public RandomSource {
  public:
    explicit SeededRandom(std::uint64_t seed) : engine_(seed) {}

    double next() override {
        // The top 53 bits make a double in [0, 1) without the rounding up to 1 that
        // std::generate_canonical allows on some library versions.
        return static_cast<double>(engine_() >> 11) * (1.0 / 9007199254740992.0);
    }

  private:
    std::mt19937_64 engine_;
};

} // namespace corvane
