#pragma once

#include "CorvaneCore/platform/Clock.hpp"
#include "CorvaneCore/platform/RandomSource.hpp"
#include "CorvaneCore/platform/Scheduler.hpp"
#include "CorvaneCore/platform/SystemLoad.hpp"
#include "CorvaneCore/widgets/WidgetSettings.hpp"
#include "CorvaneCore/widgets/pet/PetPace.hpp"
#include "CorvaneCore/widgets/pet/PetWalk.hpp"

#include <functional>
#include <memory>
#include <optional>

namespace corvane {

/// The live pet of one pet widget: its walk, its pace, its food, and the animation timer that
/// steps them. The walk lives in memory only; a new widget starts a new pet. Main thread.
class PetLife {
  public:
    /// What the tile needs to know between frames.
    struct Summary {
        /// Awake and out of its basket and away from its bowl.
        bool isLively = false;
        /// In its basket or at its bowl.
        bool isInside = false;
        bool hasFood = false;

        bool operator==(const Summary&) const = default;
    };

    /// Seconds between two machine readings while the pet runs: the smoothing spans six seconds,
    /// so a reading every two is plenty and costs next to nothing.
    static constexpr double readingInterval = 2.0;

    /// The pet starts at home (the middle of the room when it has none), sitting. The clock,
    /// scheduler and load (none: readings come only through `record`) must outlive it.
    PetLife(const PetSettings& settings, PetRoom room, const Clock& clock, Scheduler& scheduler,
            std::unique_ptr<RandomSource> dice, SystemLoad* load = nullptr);
    ~PetLife();
    PetLife(const PetLife&) = delete;
    PetLife& operator=(const PetLife&) = delete;

    const PetWalk& walk() const { return walk_; }
    const PetPace& pace() const { return pace_; }
    const PetRoom& room() const { return room_; }
    PetMetric metric() const { return metric_; }
    /// When the walk was last stepped.
    Date last() const { return last_; }
    const Summary& summary() const { return summary_; }
    bool savesEnergy() const { return savesEnergy_; }

    /// Called after every step and every change the user makes.
    std::function<void()> onChange;

    /// Low-power mode: fewer and calmer moves from the next plan on.
    void setSavesEnergy(bool saves);
    /// A new machine reading (0…1 of the followed metric), and whether the machine runs hot.
    void record(double reading, bool isHot = false);
    /// Puts a meal down; the pet goes to its bowl and eats.
    void feed();
    /// Steps the walk by the time since the last step.
    void tick();
    /// Forgets the time since the last step, so a pet whose frames were paused (a hidden Dock)
    /// does not jump ahead when they resume.
    void settle();
    /// Moves the pet into another room (the tile or the Dock changed size); it keeps its place
    /// as far as the new room allows.
    void place(PetRoom room);

    /// Starts the animation frames (one step per frame, at the pace's frame interval and at
    /// least four times a second) and, with a load, the machine readings.
    void start();
    void stop();
    bool isRunning() const { return running_; }

  private:
    void scheduleFrame();
    void scheduleReading();
    void sample();
    void refresh();

    const Clock& clock_;
    Scheduler& scheduler_;
    std::unique_ptr<RandomSource> dice_;
    SystemLoad* load_;
    PetMetric metric_;
    PetRoom room_;
    PetWalk walk_;
    PetPace pace_;
    bool savesEnergy_ = false;
    Date last_;
    std::optional<Date> lastReading_;
    Summary summary_;
    bool running_ = false;
    std::optional<Scheduler::Token> frame_;
    std::optional<Scheduler::Token> reading_;
};

} // namespace corvane
