#include "platform/posix/LogUserAlerts.hpp"

#include <algorithm>
#include <cmath>

namespace corvane {

namespace {

constexpr const char* kCategory = "alerts";

} // namespace

void LogUserAlerts::playSound(const std::string& name) {
    log_.info(kCategory, "sound: " + name);
}

void LogUserAlerts::requestAttention(Attention attention) {
    log_.info(kCategory, std::string("attention requested: ") +
                             (attention == Attention::critical ? "critical" : "informational"));
}

void LogUserAlerts::scheduleNotification(const Notification& notification) {
    auto delay = std::lround(std::max(notification.delay, 0.0));
    log_.info(kCategory, "notification scheduled: " + notification.identifier + " \"" + notification.title +
                             "\" in " + std::to_string(delay) + "s");
}

void LogUserAlerts::withdrawNotification(const std::string& identifier) {
    log_.info(kCategory, "notification withdrawn: " + identifier);
}

} // namespace corvane
