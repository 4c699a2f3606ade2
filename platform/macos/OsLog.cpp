#include "platform/macos/OsLog.hpp"

#include <map>
#include <mutex>
#include <os/log.h>

namespace corvane {

void OsLog::write(Level level, const std::string& category, const std::string& message) {
    static std::mutex mutex;
    static std::map<std::string, os_log_t> logs;
    os_log_t log;
    {
        std::lock_guard lock(mutex);
        auto& slot = logs[category];
        if (!slot) slot = os_log_create("dev.tessik.corvane", category.c_str());
        log = slot;
    }
    auto type = level == Level::error ? OS_LOG_TYPE_ERROR : level == Level::debug ? OS_LOG_TYPE_DEBUG : OS_LOG_TYPE_INFO;
    os_log_with_type(log, type, "%{public}s", message.c_str());
}

} // namespace corvane
