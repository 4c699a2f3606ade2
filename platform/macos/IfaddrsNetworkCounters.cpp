#include "platform/macos/IfaddrsNetworkCounters.hpp"

#include <ifaddrs.h>
#include <net/if.h>
#include <sys/socket.h>

namespace corvane {

std::vector<InterfaceCounters> IfaddrsNetworkCounters::read() {
    ifaddrs* list = nullptr;
    if (getifaddrs(&list) != 0) return {};
    std::vector<InterfaceCounters> found;
    for (auto* entry = list; entry; entry = entry->ifa_next) {
        // One link-level entry per interface; the address entries carry no counters.
        if (!entry->ifa_addr || entry->ifa_addr->sa_family != AF_LINK || !entry->ifa_data) continue;
        if (entry->ifa_flags & IFF_LOOPBACK) continue;
        const auto* data = static_cast<const if_data*>(entry->ifa_data);
        found.push_back({.name = entry->ifa_name,
                         .receivedBytes = data->ifi_ibytes,
                         .sentBytes = data->ifi_obytes,
                         .isActive = (entry->ifa_flags & IFF_UP) && (entry->ifa_flags & IFF_RUNNING)});
    }
    freeifaddrs(list);
    return found;
}

} // namespace corvane
