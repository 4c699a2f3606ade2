#include "CorvaneCore/dock/SystemDockReloader.hpp"

#include "CorvaneCore/dock/DockError.hpp"
#include "CorvaneCore/support/Text.hpp"

#include <algorithm>

namespace corvane {

namespace {

bool isValidUtf8(std::string_view text) {
    std::size_t i = 0;
    while (i < text.size()) {
        auto c = static_cast<unsigned char>(text[i]);
        std::size_t length = c < 0x80 ? 1 : (c >> 5) == 0x6 ? 2 : (c >> 4) == 0xE ? 3 : (c >> 3) == 0x1E ? 4 : 0;
        if (length == 0 || i + length > text.size()) return false;
        for (std::size_t k = 1; k < length; ++k)
            if ((static_cast<unsigned char>(text[i + k]) >> 6) != 0x2) return false;
        i += length;
    }
    return true;
}

} // namespace

void SystemDockReloader::waitUntilSettled() {
    auto dock = processes_.find(processName_);
    if (!dock) return;
    auto age = clock_.now() - dock->startTime;
    // A start time ahead of the clock is treated as just now rather than waited out.
    auto remaining = std::clamp(timing_.settleInterval - age, 0.0, timing_.settleInterval);
    if (remaining > 0) sleeper_.sleep(remaining);
}

void SystemDockReloader::reload() {
    std::optional<int> previousPid;
    if (auto dock = processes_.find(processName_)) previousPid = dock->pid;

    ProcessResult result;
    try {
        result = runner_.run(ProcessRequest{killallPath, {processName_}, std::nullopt, std::nullopt});
    } catch (const ProcessLaunchError& error) {
        throw DockError::dockReloadFailed(std::string("failed to launch killall: ") + error.what());
    }
    if (!result.succeeded()) {
        auto reason = "killall exited with " + std::to_string(result.status);
        if (isValidUtf8(result.standardError)) reason += ": " + std::string(text::trimmed(result.standardError));
        throw DockError::dockReloadFailed(reason);
    }

    const auto deadline = clock_.now() + timing_.relaunchTimeout;
    for (;;) {
        auto dock = processes_.find(processName_);
        if (dock && (!previousPid || dock->pid != *previousPid)) return;
        auto now = clock_.now();
        if (now >= deadline) throw DockError::dockReloadFailed("the Dock did not relaunch");
        sleeper_.sleep(std::min(timing_.pollInterval, deadline - now));
    }
}

} // namespace corvane
