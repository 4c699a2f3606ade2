#pragma once

#include <string>

namespace corvane {

/// The unified log, subsystem "dev.tessik.corvane". Messages are short lower-case phrases;
/// their arguments are public.
class Log {
public:
    enum class Level { debug, info, error };

    virtual ~Log() = default;
    /// Any thread. `category` names the area ("storage", "dock", …).
    virtual void write(Level level, const std::string& category, const std::string& message) = 0;

    void info(const std::string& category, const std::string& message) { write(Level::info, category, message); }
    void error(const std::string& category, const std::string& message) { write(Level::error, category, message); }
};

} // namespace corvane
