#pragma once

#include "CorvaneCore/platform/RandomSource.hpp"
#include "CorvaneCore/widgets/pet/PetAction.hpp"
#include "CorvaneCore/widgets/pet/PetPace.hpp"

#include <optional>
#include <set>
#include <variant>
#include <vector>

namespace corvane {

/// The stretch the pet may use, in points along the tile or the Dock.
struct PetRoom {
    /// Usable length.
    double length = 0;
    /// The pet's body length.
    double body = 0;
    /// Where the basket and the bowl stand; none keeps the pet where it is to sleep and eat.
    std::optional<double> home;
    /// Jump distance.
    double hop = 0;

    /// The lowest and highest centre positions that keep the body inside the room.
    double low() const { return body / 2; }
    double high() const;
    bool hasSpace() const { return low() < high(); }

    bool operator==(const PetRoom&) const = default;
};

/// Where the pet is and what it does, advanced one time step at a time. Every random choice
/// comes from the source passed to `step`, so a seeded source replays the same walk.
struct PetWalk {
    struct Plan {
        struct Travel {
            double to = 0;
            bool hurried = false;
            bool operator==(const Travel&) const = default;
        };
        struct Jump {
            double from = 0;
            double to = 0;
            bool operator==(const Jump&) const = default;
        };
        struct Gesture {
            PetAction action = PetAction::sitting;
            bool operator==(const Gesture&) const = default;
        };
        struct Pause {
            bool operator==(const Pause&) const = default;
        };
        struct Quirk {
            bool operator==(const Quirk&) const = default;
        };
        struct Stalk {
            bool operator==(const Stalk&) const = default;
        };

        std::variant<Pause, Travel, Jump, Gesture, Quirk, Stalk> value;

        static Plan travel(double to, bool hurried) { return {Travel{to, hurried}}; }
        static Plan jump(double from, double to) { return {Jump{from, to}}; }
        static Plan gesture(PetAction action) { return {Gesture{action}}; }
        static Plan pause() { return {Pause{}}; }
        static Plan quirk() { return {Quirk{}}; }
        static Plan stalk() { return {Stalk{}}; }

        template <typename Alternative> const Alternative* as() const {
            return std::get_if<Alternative>(&value);
        }

        bool operator==(const Plan&) const = default;
    };

    /// A plan waiting its turn, with how long it will run.
    struct Queued {
        Plan plan;
        double length = 0;
        bool operator==(const Queued&) const = default;
    };

    /// How long a meal lasts, in seconds.
    static constexpr double mealLength = 30;
    /// How long a jump is in the air, in seconds.
    static constexpr double jumpLength = 0.55;
    /// The longest step simulated at once, so that a long pause never lands mid-jump.
    static constexpr double longestStep = 0.5;

    /// Centre of the pet along the room.
    double position = 0;
    /// Facing towards smaller positions.
    bool facesBack = false;
    PetAction action = PetAction::sitting;
    /// Seconds since `action` last changed; drives the frame.
    double actionTime = 0;
    /// Progress of a jump in the air, 0…1.
    std::optional<double> jumpProgress;
    /// Seconds of eating left, while there is food.
    std::optional<double> foodLeft;
    /// The optional actions the species' drawings provide.
    std::set<PetAction> repertoire;
    /// Low-power mode: fewer and calmer moves.
    bool savesEnergy = false;
    Plan plan = Plan::pause();
    double planLeft = 0;
    std::vector<Queued> queued;
    /// Speed multiplier chosen with each plan.
    double pacing = 1.0;

    PetWalk() = default;
    PetWalk(double position_, bool facesBack_) : position(position_), facesBack(facesBack_) {}

    /// The optional actions that `species` can show.
    static std::set<PetAction> repertoireOf(PetSpecies species);

    bool hasFood() const { return foodLeft.has_value(); }
    /// In the basket or at the bowl.
    bool isInside() const { return action == PetAction::sleeping || action == PetAction::eating; }
    /// Height of the jump arc as a fraction of its peak; 0 on the ground.
    double lift() const;

    /// Advances by `dt` seconds (capped at `longestStep`).
    void step(double dt, const PetPace& pace, PetMetric metric, const PetRoom& room, RandomSource& random);
    /// Puts food down for `seconds`; the pet drops what it was doing.
    void feed(double seconds = mealLength);

    bool operator==(const PetWalk&) const = default;

  private:
    void setAction(PetAction next);
    /// Moves up to `by` towards `target` (clamped into the room). Returns whether it arrived.
    bool head(double target, double by, const PetRoom& room);
    void endJump();
    void endPlan();
    bool startJump(double by, const PetRoom& room);
    double somewhereElse(const PetRoom& room, RandomSource& random) const;
    void wakeUp();
    void nextPlan(const PetPace& pace, const PetRoom& room, RandomSource& random);
    void choosePlan(const PetPace& pace, const PetRoom& room, RandomSource& random);
    void eat(double dt, const PetRoom& room);
    void sleep(double dt, const PetRoom& room);
    void live(double dt, const PetPace& pace, PetMetric metric, const PetRoom& room, RandomSource& random);
};

} // namespace corvane
