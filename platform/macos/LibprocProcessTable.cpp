#include "platform/macos/LibprocProcessTable.hpp"

#include <libproc.h>
#include <sys/proc.h>
#include <sys/proc_info.h>
#include <unistd.h>

#include <cstring>
#include <vector>

namespace corvane {

std::optional<ProcessInfo> LibprocProcessTable::find(const std::string& name) const {
    // The first call sizes the list; processes started in between fit in the extra room.
    int estimate = proc_listallpids(nullptr, 0);
    if (estimate <= 0) return std::nullopt;
    std::vector<pid_t> pids(static_cast<std::size_t>(estimate) + 64);
    int count = proc_listallpids(pids.data(), static_cast<int>(pids.size() * sizeof(pid_t)));
    if (count <= 0) return std::nullopt;

    const uid_t uid = getuid();
    std::optional<ProcessInfo> newest;
    for (int i = 0; i < count && i < static_cast<int>(pids.size()); ++i) {
        proc_bsdinfo info{};
        if (proc_pidinfo(pids[static_cast<std::size_t>(i)], PROC_PIDTBSDINFO, 0, &info, PROC_PIDTBSDINFO_SIZE) !=
            PROC_PIDTBSDINFO_SIZE)
            continue;
        if (info.pbi_uid != uid || info.pbi_status == SZOMB) continue;
        // pbi_name holds the longer name when there is one; pbi_comm is cut at 16 bytes.
        const char* processName = info.pbi_name[0] ? info.pbi_name : info.pbi_comm;
        if (std::strncmp(processName, name.c_str(), sizeof info.pbi_name) != 0) continue;
        Date start = Date::fromUnixTime(static_cast<double>(info.pbi_start_tvsec) +
                                        static_cast<double>(info.pbi_start_tvusec) / 1e6);
        if (!newest || start > newest->startTime)
            newest = ProcessInfo{static_cast<int>(info.pbi_pid), name, start};
    }
    return newest;
}

} // namespace corvane
