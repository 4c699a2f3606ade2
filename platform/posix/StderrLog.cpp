#include "platform/posix/StderrLog.hpp"

#include <cstdio>

namespace corvane {

void StderrLog::write(Level level, const std::string& category, const std::string& message) {
    if (!verbose_ || level == Level::debug) return;
    std::lock_guard lock(mutex_);
    std::fprintf(stderr, "[%s] %s\n", category.c_str(), message.c_str());
}

} // namespace corvane
