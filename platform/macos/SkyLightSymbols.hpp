#pragma once

// The private window-server calls Corvane uses, declared in this one place and looked up by name
// at run time. A missing symbol is a null pointer, never a crash. Written without a macOS
// compiler at hand.

#include <CoreFoundation/CoreFoundation.h>

#include <cstdint>
#include <sys/types.h>

namespace corvane {

struct SkyLightSymbols {
    static constexpr const char* frameworkPath = "/System/Library/PrivateFrameworks/SkyLight.framework/SkyLight";

    using MainConnectionID = int (*)();
    using CopyManagedDisplaySpaces = CFArrayRef (*)(int connection);
    using GetActiveSpace = std::uint64_t (*)(int connection);
    using ProcessAssignToSpace = std::int32_t (*)(int connection, pid_t pid, std::uint64_t space);
    using ProcessAssignToAllSpaces = std::int32_t (*)(int connection, pid_t pid);

    MainConnectionID mainConnectionID = nullptr;
    CopyManagedDisplaySpaces copyManagedDisplaySpaces = nullptr;
    GetActiveSpace getActiveSpace = nullptr;
    ProcessAssignToSpace processAssignToSpace = nullptr;
    ProcessAssignToAllSpaces processAssignToAllSpaces = nullptr;

    /// Opens the framework (it stays loaded for the life of the process) and looks every symbol
    /// up; the older "CGS" names stand in where the "SLS" ones are missing.
    static SkyLightSymbols load();

    /// The process's connection to the window server; 0 when unavailable.
    int connection() const { return mainConnectionID ? mainConnectionID() : 0; }
};

} // namespace corvane
