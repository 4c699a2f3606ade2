#pragma once

#include "CorvaneCore/platform/Log.hpp"

namespace corvane {

/// The unified log under the subsystem "dev.tessik.corvane", one log object per category.
class OsLog final : public Log {
public:
    void write(Level level, const std::string& category, const std::string& message) override;
};

} // namespace corvane
