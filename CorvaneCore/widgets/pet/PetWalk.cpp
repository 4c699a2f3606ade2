#include "CorvaneCore/widgets/pet/PetWalk.hpp"

#include <algorithm>
#include <cmath>
#include <iterator>

namespace corvane {

namespace {

// Travel rates in body lengths per second of the pet's errands.
constexpr double kDashToBowl = 3.2;
constexpr double kWalkToBowl = 1.5;
constexpr double kFarFromBowl = 3.0;
constexpr double kToBed = 0.9;
constexpr double kGroomsAfterMeal = 4.0;
constexpr double kPounceShare = 0.6;
constexpr double kTurnChance = 0.22;

enum class Choice { travel, travelHurried, jump, gesture, pause, quirk, stalk };

struct Candidate {
    Choice choice;
    double weight;
    double shortest = 0;
    double longest = 0;
    PetAction gesture = PetAction::sitting;
};

double energyFactor(const Candidate& candidate) {
    switch (candidate.choice) {
    case Choice::travel:
        return 0.35;
    case Choice::travelHurried:
        return 0;
    case Choice::jump:
        return 0.3;
    case Choice::gesture:
        return candidate.gesture == PetAction::loafing ? 1.6 : 1.0;
    case Choice::pause:
        return 1.6;
    case Choice::quirk:
        return 1.0;
    case Choice::stalk:
        return 0.3;
    }
    return 1.0;
}

std::vector<Candidate> candidates(PetGait gait, const PetRoom& room, const std::set<PetAction>& repertoire) {
    auto can = [&](PetAction action) { return repertoire.contains(action); };
    bool space = room.hasSpace();
    bool stalks = space && can(PetAction::crouching);
    auto gesture = [&](PetAction action, double weight, double shortest, double longest) {
        return Candidate{Choice::gesture, can(action) ? weight : 0, shortest, longest, action};
    };
    // One row per candidate, in the order the draw walks them.
    // clang-format off
    switch (gait) {
    case PetGait::sleeping:
    case PetGait::sitting:
        return {
            {Choice::pause, 5.0, 2.5, 7},
            {Choice::quirk, 2.5, 1.5, 3.5},
            {Choice::travel, space ? 1.5 : 0, 2, 6},
            gesture(PetAction::loafing, 3.0, 6, 14),
            gesture(PetAction::grooming, 1.2, 2.5, 4.5),
            gesture(PetAction::yawning, 0.5, 2.2, 2.2),
            gesture(PetAction::stretching, 0.6, 2.9, 2.9),
            {Choice::stalk, stalks ? 0.4 : 0, 1, 1.8},
        };
    case PetGait::walking:
        return {
            {Choice::travel, 6.0, 2, 7},
            {Choice::pause, 2.2, 1, 3},
            {Choice::quirk, 1.4, 1.2, 2.5},
            {Choice::travelHurried, space ? 1.4 : 0, 1, 3},
            {Choice::jump, space ? 1.8 : 0},
            {Choice::stalk, stalks ? 1.3 : 0, 0.9, 1.6},
            gesture(PetAction::grooming, 0.5, 2, 3.5),
            gesture(PetAction::stretching, 0.4, 2.9, 2.9),
        };
    case PetGait::running:
        return {
            {Choice::travel, 4.5, 1.5, 5},
            {Choice::travelHurried, space ? 3.0 : 0, 1, 3.5},
            {Choice::pause, 1.6, 0.6, 1.8},
            {Choice::quirk, 1.0, 1, 2},
            {Choice::jump, space ? 2.5 : 0},
            {Choice::stalk, stalks ? 1.2 : 0, 0.6, 1.1},
        };
    }
    // clang-format on
    return {};
}

} // namespace

double PetRoom::high() const {
    return std::max(length - body / 2, low());
}

std::set<PetAction> PetWalk::repertoireOf(PetSpecies species) {
    using enum PetAction;
    switch (species) {
    case PetSpecies::cat:
        return {yawning, stretching, loafing, crouching, grooming};
    case PetSpecies::dog:
        return {yawning, stretching, crouching};
    case PetSpecies::bird:
        return {grooming};
    case PetSpecies::dragon:
        return {yawning, stretching, loafing};
    case PetSpecies::dino:
        return {yawning, crouching};
    case PetSpecies::warriorGirl:
    case PetSpecies::warriorBoy:
        return {stretching};
    case PetSpecies::santa:
        return {yawning, stretching};
    case PetSpecies::ghost:
        return {};
    }
    return {};
}

double PetWalk::lift() const {
    if (!jumpProgress) return 0;
    double p = std::clamp(*jumpProgress, 0.0, 1.0);
    return 4 * p * (1 - p);
}

void PetWalk::feed(double seconds) {
    foodLeft = seconds;
    endJump();
    planLeft = 0;
    queued.clear();
}

void PetWalk::step(double dt, const PetPace& pace, PetMetric metric, const PetRoom& room,
                   RandomSource& random) {
    position = std::clamp(position, room.low(), room.high());
    double slice = std::isnan(dt) ? 0.0 : std::clamp(dt, 0.0, longestStep);
    actionTime += slice;
    if (hasFood())
        eat(slice, room);
    else if (!pace.isAwake())
        sleep(slice, room);
    else
        live(slice, pace, metric, room, random);
}

void PetWalk::setAction(PetAction next) {
    if (next == action) return;
    action = next;
    actionTime = 0;
}

bool PetWalk::head(double target, double by, const PetRoom& room) {
    target = std::clamp(target, room.low(), room.high());
    double distance = std::abs(target - position);
    if (distance <= std::max(by, 0.5)) {
        position = target;
        return true;
    }
    facesBack = target < position;
    position += facesBack ? -by : by;
    return false;
}

void PetWalk::endJump() {
    jumpProgress.reset();
    if (plan.as<Plan::Jump>()) plan = Plan::pause();
}

void PetWalk::endPlan() {
    plan = Plan::pause();
    planLeft = 0;
}

bool PetWalk::startJump(double by, const PetRoom& room) {
    double landing = std::clamp(position + (facesBack ? -by : by), room.low(), room.high());
    if (std::abs(landing - position) <= room.body / 2) return false;
    plan = Plan::jump(position, landing);
    jumpProgress = 0.0;
    planLeft = jumpLength;
    return true;
}

double PetWalk::somewhereElse(const PetRoom& room, RandomSource& random) const {
    double lo = room.low(), hi = room.high();
    if (!(lo < hi)) return position;
    double minimum = std::min((hi - lo) / 2, 1.2 * room.body);
    // A pet standing exactly mid-room with a long body qualifies only at the two ends, which a
    // draw all but never hits; after enough misses the farther end is as good a choice.
    for (int attempt = 0; attempt < 64; ++attempt) {
        double x = random.uniform(lo, hi);
        if (std::abs(x - position) >= minimum) return x;
    }
    return position - lo >= hi - position ? lo : hi;
}

void PetWalk::wakeUp() {
    queued.clear();
    if (repertoire.contains(PetAction::yawning)) queued.push_back({Plan::gesture(PetAction::yawning), 2.2});
    if (repertoire.contains(PetAction::stretching))
        queued.push_back({Plan::gesture(PetAction::stretching), 2.9});
    if (queued.empty()) {
        endPlan();
        return;
    }
    plan = queued.front().plan;
    planLeft = queued.front().length;
    queued.erase(queued.begin());
}

void PetWalk::nextPlan(const PetPace& pace, const PetRoom& room, RandomSource& random) {
    if (plan.as<Plan::Stalk>() && startJump(kPounceShare * room.hop, room)) return;
    if (!queued.empty()) {
        plan = queued.front().plan;
        planLeft = queued.front().length;
        queued.erase(queued.begin());
        return;
    }
    choosePlan(pace, room, random);
}

void PetWalk::choosePlan(const PetPace& pace, const PetRoom& room, RandomSource& random) {
    auto list = candidates(pace.gait, room, repertoire);
    if (savesEnergy)
        for (auto& candidate : list)
            candidate.weight *= energyFactor(candidate);
    double total = 0;
    for (const auto& candidate : list)
        total += candidate.weight;
    total = std::max(total, 0.001);

    double r = random.uniform(0, total);
    const Candidate* winner = &list.front();
    for (const auto& candidate : list) {
        if (candidate.weight <= 0) continue;
        if (r < candidate.weight) {
            winner = &candidate;
            break;
        }
        r -= candidate.weight;
    }

    pacing = random.uniform(0.75, 1.3);
    bool travels = winner->choice == Choice::travel || winner->choice == Choice::travelHurried;
    if (!travels && room.hasSpace() && random.next() < kTurnChance) facesBack = !facesBack;

    switch (winner->choice) {
    case Choice::jump:
        if (!startJump(room.hop, room)) {
            facesBack = !facesBack;
            plan = Plan::travel(somewhereElse(room, random), false);
            planLeft = 1.5;
        }
        return;
    case Choice::travel:
    case Choice::travelHurried:
        plan = Plan::travel(somewhereElse(room, random), winner->choice == Choice::travelHurried);
        break;
    case Choice::gesture:
        plan = Plan::gesture(winner->gesture);
        break;
    case Choice::pause:
        plan = Plan::pause();
        break;
    case Choice::quirk:
        plan = Plan::quirk();
        break;
    case Choice::stalk:
        plan = Plan::stalk();
        break;
    }
    planLeft = random.uniform(winner->shortest, winner->longest);
}

void PetWalk::eat(double dt, const PetRoom& room) {
    endJump();
    double bowl = std::clamp(room.home.value_or(position), room.low(), room.high());
    bool far = std::abs(bowl - position) > kFarFromBowl * room.body;
    if (!head(bowl, dt * room.body * (far ? kDashToBowl : kWalkToBowl), room)) {
        setAction(far ? PetAction::running : PetAction::walking);
        return;
    }
    facesBack = false;
    setAction(PetAction::eating);
    *foodLeft -= dt;
    if (*foodLeft > 0) return;
    foodLeft.reset();
    queued.clear();
    if (repertoire.contains(PetAction::grooming)) {
        plan = Plan::gesture(PetAction::grooming);
        planLeft = kGroomsAfterMeal;
    } else {
        endPlan();
    }
}

void PetWalk::sleep(double dt, const PetRoom& room) {
    endJump();
    double bed = room.home.value_or(position);
    setAction(head(bed, dt * room.body * kToBed, room) ? PetAction::sleeping : PetAction::walking);
}

void PetWalk::live(double dt, const PetPace& pace, PetMetric metric, const PetRoom& room,
                   RandomSource& random) {
    if (action == PetAction::sleeping) wakeUp();

    if (auto* jump = plan.as<Plan::Jump>(); jump && jumpProgress) {
        *jumpProgress += dt / jumpLength;
        if (*jumpProgress >= 1) {
            position = jump->to;
            jumpProgress.reset();
            endPlan();
            setAction(PetAction::walking);
        } else {
            position = jump->from + (jump->to - jump->from) * *jumpProgress;
            setAction(PetAction::jumping);
        }
        return;
    }

    planLeft -= dt;
    if (planLeft <= 0) nextPlan(pace, room, random);

    if (auto* travel = plan.as<Plan::Travel>()) {
        double speed = pace.speed(metric);
        bool runs = travel->hurried || pace.gait == PetGait::running;
        double rate = travel->hurried ? std::max(1.6 * speed, 2.4) : std::max(speed, 0.5);
        double target = std::clamp(travel->to, room.low(), room.high());
        if (target != position) facesBack = target < position;
        setAction(runs ? PetAction::running : PetAction::walking);
        if (head(target, dt * room.body * rate * pacing, room)) endPlan();
    } else if (auto* gesture = plan.as<Plan::Gesture>()) {
        setAction(gesture->action);
    } else if (plan.as<Plan::Quirk>()) {
        setAction(PetAction::quirk);
    } else if (plan.as<Plan::Stalk>()) {
        setAction(PetAction::crouching);
    } else if (plan.as<Plan::Jump>()) {
        setAction(jumpProgress ? PetAction::jumping : PetAction::sitting);
    } else {
        setAction(PetAction::sitting);
    }
}

} // namespace corvane
