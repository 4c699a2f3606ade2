#include "CorvaneWidgetsUI/pet/PetLife.hpp"

#include <algorithm>

namespace corvane {

namespace {

constexpr double kLongestFrame = PetWalk::longestStep / 2;

} // namespace

PetLife::PetLife(const PetSettings& settings, PetRoom room, const Clock& clock, Scheduler& scheduler,
                 std::unique_ptr<RandomSource> dice, SystemLoad* load)
    : clock_(clock), scheduler_(scheduler), dice_(std::move(dice)), load_(load), metric_(settings.follows),
      room_(room), walk_(std::clamp(room.home.value_or(room.length / 2), room.low(), room.high()), false),
      last_(clock.now()) {
    walk_.repertoire = PetWalk::repertoireOf(settings.species);
    refresh();
}

PetLife::~PetLife() {
    stop();
}

void PetLife::setSavesEnergy(bool saves) {
    savesEnergy_ = saves;
    walk_.savesEnergy = saves;
}

void PetLife::record(double reading, bool isHot) {
    auto now = clock_.now();
    pace_.isHot = isHot;
    pace_.feed(reading, lastReading_ ? now - *lastReading_ : 0.0, metric_);
    lastReading_ = now;
}

void PetLife::feed() {
    walk_.feed(PetWalk::mealLength);
    refresh();
    if (onChange) onChange();
}

void PetLife::tick() {
    auto now = clock_.now();
    walk_.savesEnergy = savesEnergy_;
    walk_.step(now - last_, pace_, metric_, room_, *dice_);
    last_ = now;
    refresh();
    if (onChange) onChange();
}

void PetLife::settle() {
    last_ = clock_.now();
}

void PetLife::place(PetRoom room) {
    room_ = room;
    walk_.position = std::clamp(walk_.position, room_.low(), room_.high());
    settle();
    if (onChange) onChange();
}

void PetLife::start() {
    if (running_) return;
    running_ = true;
    settle();
    scheduleFrame();
    if (load_) {
        sample();
        scheduleReading();
    }
}

void PetLife::stop() {
    running_ = false;
    if (frame_) scheduler_.cancel(*frame_);
    if (reading_) scheduler_.cancel(*reading_);
    frame_.reset();
    reading_.reset();
}

void PetLife::scheduleFrame() {
    // Resting frames are slower than the longest step the walk simulates at once; stepping at
    // least that often keeps the pet's clock in time with the user's.
    double interval = std::min(pace_.frameInterval(metric_), kLongestFrame);
    frame_ = scheduler_.schedule(interval, [this] {
        frame_.reset();
        tick();
        // A tick's observer may have stopped the frames, or stopped and started them again.
        if (running_ && !frame_) scheduleFrame();
    });
}

void PetLife::scheduleReading() {
    reading_ = scheduler_.schedule(readingInterval, [this] {
        reading_.reset();
        sample();
        scheduleReading();
    });
}

void PetLife::sample() {
    // The first processor reading has nothing to compare with and gives none; the next does.
    auto reading = metric_ == PetMetric::cpu ? load_->cpu() : load_->memory();
    if (reading) record(*reading, load_->isHot());
}

void PetLife::refresh() {
    summary_.isInside = walk_.isInside();
    summary_.hasFood = walk_.hasFood();
    summary_.isLively = pace_.isAwake() && !summary_.isInside;
}

} // namespace corvane
