#pragma once

#include "CorvaneCore/widgets/pet/PetAction.hpp"

namespace corvane {

/// The walking and running thresholds of a machine reading, as fractions of full load.
struct PetThresholds {
    double walking = 0;
    double running = 0;

    static PetThresholds of(PetMetric metric);
};

/// Turns the stream of load readings into a smoothed load and a gait. Calm machines make a
/// sitting pet that falls asleep after a while; busy ones a walking or running pet.
struct PetPace {
    /// Smoothing time constant, in seconds.
    static constexpr double memory = 6.0;
    /// How long a calm pet sits before it sleeps.
    static constexpr double sleepsAfter = 45.0;

    /// Smoothed reading, 0…1.
    double load = 0;
    PetGait gait = PetGait::sitting;
    /// A hot machine never lets the pet fall asleep.
    bool isHot = false;
    /// Seconds the load has stayed below walking while the pet sat or slept.
    double calmFor = 0;
    int readings = 0;

    PetPace() = default;
    /// `load` is clamped to 0…1.
    PetPace(double load, PetGait gait, bool isHot = false);

    bool isAwake() const { return gait != PetGait::sleeping; }

    /// One reading `after` seconds since the previous one. The first reading is taken as it is;
    /// later ones are smoothed. Walking and running thresholds drop a little while the pet is
    /// already moving, so a load hovering at a threshold does not make it flicker. A reading
    /// that is not a number is ignored.
    void feed(double reading, double after, PetMetric metric);

    /// Seconds per animation frame: slow while resting, faster the harder the pet moves.
    double frameInterval(PetMetric metric) const;
    /// Travel rate in body lengths per second; 0 while sitting or sleeping.
    double speed(PetMetric metric) const;

    bool operator==(const PetPace&) const = default;

  private:
    /// How far into its gait's band the load is, 0…1.
    double effort(PetMetric metric) const;
};

} // namespace corvane
