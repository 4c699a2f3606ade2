#include "platform/macos/DistributedNotifier.hpp"

#include "platform/macos/CFRef.hpp"

#include <CoreFoundation/CoreFoundation.h>

namespace corvane {

void DistributedNotifier::post(const std::string& name) {
    auto cfName = adoptCF(CFStringCreateWithCString(kCFAllocatorDefault, name.c_str(), kCFStringEncodingUTF8));
    if (!cfName) return;
    // Delivered at once, also to suspended observers, so every process reloads now.
    CFNotificationCenterPostNotification(CFNotificationCenterGetDistributedCenter(), cfName.get(), nullptr,
                                         nullptr, true);
}

} // namespace corvane
