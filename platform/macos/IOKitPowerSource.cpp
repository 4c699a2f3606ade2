#include "platform/macos/IOKitPowerSource.hpp"

#include "platform/macos/CFRef.hpp"

#include <IOKit/ps/IOPSKeys.h>
#include <IOKit/ps/IOPowerSources.h>

#include <algorithm>

namespace corvane {

namespace {

std::optional<double> number(CFDictionaryRef description, const char* key) {
    CFRef<CFStringRef> name(CFStringCreateWithCString(kCFAllocatorDefault, key, kCFStringEncodingUTF8));
    auto value = static_cast<CFNumberRef>(CFDictionaryGetValue(description, name.get()));
    double result = 0;
    if (!value || CFGetTypeID(value) != CFNumberGetTypeID() || !CFNumberGetValue(value, kCFNumberDoubleType, &result))
        return std::nullopt;
    return result;
}

bool isTrue(CFDictionaryRef description, const char* key) {
    CFRef<CFStringRef> name(CFStringCreateWithCString(kCFAllocatorDefault, key, kCFStringEncodingUTF8));
    auto value = CFDictionaryGetValue(description, name.get());
    return value && CFGetTypeID(value) == CFBooleanGetTypeID() && CFBooleanGetValue(static_cast<CFBooleanRef>(value));
}

bool equals(CFDictionaryRef description, const char* key, const char* expected) {
    CFRef<CFStringRef> name(CFStringCreateWithCString(kCFAllocatorDefault, key, kCFStringEncodingUTF8));
    auto value = CFDictionaryGetValue(description, name.get());
    if (!value || CFGetTypeID(value) != CFStringGetTypeID()) return false;
    CFRef<CFStringRef> wanted(CFStringCreateWithCString(kCFAllocatorDefault, expected, kCFStringEncodingUTF8));
    return CFStringCompare(static_cast<CFStringRef>(value), wanted.get(), 0) == kCFCompareEqualTo;
}

} // namespace

std::optional<PowerReading> IOKitPowerSource::read() {
    CFRef<CFTypeRef> info(IOPSCopyPowerSourcesInfo());
    if (!info) return std::nullopt;
    CFRef<CFArrayRef> sources(IOPSCopyPowerSourcesList(info.get()));
    if (!sources) return std::nullopt;
    for (CFIndex i = 0; i < CFArrayGetCount(sources.get()); ++i) {
        // Owned by `info`: not released here.
        CFDictionaryRef description = IOPSGetPowerSourceDescription(info.get(), CFArrayGetValueAtIndex(sources.get(), i));
        if (!description || !equals(description, kIOPSTypeKey, kIOPSInternalBatteryType)) continue;
        if (!isTrue(description, kIOPSIsPresentKey)) continue;
        auto current = number(description, kIOPSCurrentCapacityKey);
        auto maximum = number(description, kIOPSMaxCapacityKey);
        if (!current || !maximum || *maximum <= 0) return std::nullopt;
        PowerReading reading;
        reading.level = std::min(std::max(*current / *maximum, 0.0), 1.0);
        reading.isCharging = isTrue(description, kIOPSIsChargingKey);
        reading.isOnExternalPower = equals(description, kIOPSPowerSourceStateKey, kIOPSACPowerValue);
        // Minutes, or -1 while the system is still estimating.
        auto minutes = number(description, reading.isCharging ? kIOPSTimeToFullChargeKey : kIOPSTimeToEmptyKey);
        if (minutes && *minutes >= 0 && (reading.isCharging || !reading.isOnExternalPower)) reading.minutesRemaining = minutes;
        return reading;
    }
    return std::nullopt;
}

} // namespace corvane
