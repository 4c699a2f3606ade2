#include "platform/macos/MacSystemLoad.hpp"

#import <Foundation/Foundation.h>

#include <mach/mach.h>
#include <sys/sysctl.h>

#include <algorithm>

namespace corvane {

MacSystemLoad::MacSystemLoad() : host_(mach_host_self()) {}

MacSystemLoad::~MacSystemLoad() {
    mach_port_deallocate(mach_task_self(), host_);
}

std::optional<double> MacSystemLoad::cpu() {
    host_cpu_load_info_data_t info{};
    mach_msg_type_number_t count = HOST_CPU_LOAD_INFO_COUNT;
    if (host_statistics(host_, HOST_CPU_LOAD_INFO, reinterpret_cast<host_info_t>(&info), &count) !=
        KERN_SUCCESS)
        return std::nullopt;
    Ticks now;
    now.busy = std::uint64_t(info.cpu_ticks[CPU_STATE_USER]) + info.cpu_ticks[CPU_STATE_SYSTEM] +
               info.cpu_ticks[CPU_STATE_NICE];
    now.total = now.busy + info.cpu_ticks[CPU_STATE_IDLE];
    auto previous = previous_;
    previous_ = now;
    if (!previous || now.total <= previous->total || now.busy < previous->busy) return std::nullopt;
    return double(now.busy - previous->busy) / double(now.total - previous->total);
}

std::optional<double> MacSystemLoad::memory() {
    std::uint64_t installed = 0;
    std::size_t size = sizeof installed;
    if (sysctlbyname("hw.memsize", &installed, &size, nullptr, 0) != 0 || installed == 0) return std::nullopt;
    vm_statistics64_data_t vm{};
    mach_msg_type_number_t count = HOST_VM_INFO64_COUNT;
    if (host_statistics64(host_, HOST_VM_INFO64, reinterpret_cast<host_info64_t>(&vm), &count) !=
        KERN_SUCCESS)
        return std::nullopt;
    vm_size_t pageSize = 0;
    if (host_page_size(host_, &pageSize) != KERN_SUCCESS) return std::nullopt;
    // What Activity Monitor calls memory used: application memory, wired and compressed.
    std::uint64_t appPages =
        vm.internal_page_count > vm.purgeable_count ? vm.internal_page_count - vm.purgeable_count : 0;
    std::uint64_t used = (appPages + vm.wire_count + vm.compressor_page_count) * std::uint64_t(pageSize);
    return std::clamp(double(used) / double(installed), 0.0, 1.0);
}

bool MacSystemLoad::isHot() {
    @autoreleasepool {
        return [NSProcessInfo processInfo].thermalState >= NSProcessInfoThermalStateSerious;
    }
}

} // namespace corvane
