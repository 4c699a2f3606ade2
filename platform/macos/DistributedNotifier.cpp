#include "platform/macos/DistributedNotifier.hpp"

#include "platform/macos/CFPlistBridge.hpp"
#include "platform/macos/CFRef.hpp"

#include <CoreFoundation/CoreFoundation.h>

namespace corvane {

namespace {

// Since macOS 10.3 the distributed center calls observers on the main thread, whichever thread
// added them.
void deliver(CFNotificationCenterRef, void* observer, CFNotificationName, const void* object, CFDictionaryRef) {
    // A distributed notification's object is always text when present.
    auto text = object ? stringFromCF(static_cast<CFTypeRef>(object)) : std::nullopt;
    // A copy, so that a handler may remove its own observer.
    auto handler = *static_cast<Notifier::Handler*>(observer);
    handler(text);
}

} // namespace

DistributedNotifier::~DistributedNotifier() {
    auto center = CFNotificationCenterGetDistributedCenter();
    for (auto& [token, handler] : observers_) CFNotificationCenterRemoveEveryObserver(center, handler.get());
}

void DistributedNotifier::post(const std::string& name) {
    auto cfName = cfString(name);
    if (!cfName) return;
    // Delivered at once, also to suspended observers, so every process reloads now.
    CFNotificationCenterPostNotification(CFNotificationCenterGetDistributedCenter(), cfName.get(), nullptr,
                                         nullptr, true);
}

Notifier::ObserverToken DistributedNotifier::observe(const std::string& name, Handler handler) {
    auto cfName = cfString(name);
    if (!cfName || !handler) return 0;
    auto owned = std::make_unique<Handler>(std::move(handler));
    // Edit requests must reach the application even while it is in the background.
    CFNotificationCenterAddObserver(CFNotificationCenterGetDistributedCenter(), owned.get(), deliver, cfName.get(),
                                    nullptr, CFNotificationSuspensionBehaviorDeliverImmediately);
    observers_.emplace(++last_, std::move(owned));
    return last_;
}

void DistributedNotifier::removeObserver(ObserverToken token) {
    auto it = observers_.find(token);
    if (it == observers_.end()) return;
    CFNotificationCenterRemoveEveryObserver(CFNotificationCenterGetDistributedCenter(), it->second.get());
    observers_.erase(it);
}

} // namespace corvane
