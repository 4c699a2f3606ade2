#include "platform/macos/SkyLightDesktopServer.hpp"

#include "platform/macos/CFPlistBridge.hpp"
#include "platform/macos/CFRef.hpp"

#include <ApplicationServices/ApplicationServices.h>

namespace corvane {

namespace {

CFTypeRef member(CFDictionaryRef dictionary, const char* key) {
    return CFDictionaryGetValue(dictionary, cfString(key).get());
}

CFDictionaryRef asDictionary(CFTypeRef value) {
    return value && CFGetTypeID(value) == CFDictionaryGetTypeID() ? static_cast<CFDictionaryRef>(value) : nullptr;
}

std::optional<std::uint64_t> number(CFTypeRef value) {
    if (!value || CFGetTypeID(value) != CFNumberGetTypeID()) return std::nullopt;
    std::int64_t result = 0;
    if (!CFNumberGetValue(static_cast<CFNumberRef>(value), kCFNumberSInt64Type, &result) || result < 0)
        return std::nullopt;
    return static_cast<std::uint64_t>(result);
}

/// A space of the managed-display list: "ManagedSpaceID" (or "id64") and "uuid".
std::optional<DesktopSpace> space(CFTypeRef value) {
    auto dictionary = asDictionary(value);
    if (!dictionary) return std::nullopt;
    auto id = number(member(dictionary, "ManagedSpaceID"));
    if (!id) id = number(member(dictionary, "id64"));
    auto uuid = stringFromCF(member(dictionary, "uuid"));
    if (!id || !uuid) return std::nullopt;
    return DesktopSpace{*id, *uuid, 0};
}

/// "Main" names the main display on systems with a single Spaces list; others give its UUID.
std::optional<std::uint32_t> displayID(CFTypeRef identifier) {
    auto text = stringFromCF(identifier);
    if (!text) return std::nullopt;
    if (*text == "Main") return CGMainDisplayID();
    auto uuid = adoptCF(CFUUIDCreateFromString(kCFAllocatorDefault, static_cast<CFStringRef>(identifier)));
    if (!uuid) return std::nullopt;
    auto id = CGDisplayGetDisplayIDFromUUID(uuid.get());
    if (id == 0) return std::nullopt;
    return id;
}

} // namespace

std::vector<DesktopServer::Display> SkyLightDesktopServer::displays() {
    std::vector<Display> result;
    auto connection = symbols_.connection();
    if (!connection || !symbols_.copyManagedDisplaySpaces) return result;
    auto list = adoptCF(symbols_.copyManagedDisplaySpaces(connection));
    if (!list || CFGetTypeID(list.get()) != CFArrayGetTypeID()) return result;
    int number = 0;
    for (CFIndex i = 0, count = CFArrayGetCount(list.get()); i < count; ++i) {
        auto entry = asDictionary(CFArrayGetValueAtIndex(list.get(), i));
        if (!entry) continue;
        auto id = displayID(member(entry, "Display Identifier"));
        if (!id) continue;
        Display display;
        display.id = *id;
        auto spaces = member(entry, "Spaces");
        if (spaces && CFGetTypeID(spaces) == CFArrayGetTypeID()) {
            auto array = static_cast<CFArrayRef>(spaces);
            for (CFIndex j = 0, n = CFArrayGetCount(array); j < n; ++j)
                if (auto desktop = space(CFArrayGetValueAtIndex(array, j))) {
                    desktop->number = ++number;
                    display.desktops.push_back(*desktop);
                }
        }
        if (auto current = space(member(entry, "Current Space"))) {
            for (const auto& desktop : display.desktops)
                if (desktop.id == current->id) current->number = desktop.number;
            display.current = *current;
        }
        result.push_back(std::move(display));
    }
    return result;
}

std::optional<std::uint64_t> SkyLightDesktopServer::activeSpace() {
    auto connection = symbols_.connection();
    if (!connection || !symbols_.getActiveSpace) return std::nullopt;
    auto space = symbols_.getActiveSpace(connection);
    if (space == 0) return std::nullopt;
    return space;
}

bool SkyLightDesktopServer::canAssign() const {
    return symbols_.mainConnectionID && symbols_.processAssignToSpace && symbols_.processAssignToAllSpaces;
}

bool SkyLightDesktopServer::assign(std::int32_t pid, std::optional<std::uint64_t> space) {
    if (!canAssign()) return false;
    auto connection = symbols_.connection();
    if (!connection) return false;
    auto status = space ? symbols_.processAssignToSpace(connection, pid, *space)
                        : symbols_.processAssignToAllSpaces(connection, pid);
    return status == 0;
}

} // namespace corvane
