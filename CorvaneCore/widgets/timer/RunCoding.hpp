#pragma once

// The clock fields every run record writes. Include from .cpp files only (brings in nlohmann).

#include "CorvaneCore/support/JsonCoding.hpp"
#include "CorvaneCore/widgets/timer/RunClock.hpp"

#include <algorithm>

namespace corvane {

inline void putRunClock(Json& object, const RunClock& clock) {
    object["accumulated"] = clock.accumulated;
    if (clock.startedAt) object["startedAt"] = clock.startedAt->sinceReferenceDate;
}

inline void readRunClock(const JsonReader& reader, RunClock& clock) {
    if (auto accumulated = reader.optional("accumulated")) clock.accumulated = std::max(0.0, accumulated->number());
    if (auto startedAt = reader.optional("startedAt")) clock.startedAt = Date{startedAt->number()};
}

} // namespace corvane
