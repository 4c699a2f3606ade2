#include "platform/macos/SkyLightSymbols.hpp"

#include <dlfcn.h>

namespace corvane {

namespace {

template <typename Function> Function lookUp(void* handle, const char* name, const char* olderName = nullptr) {
    void* symbol = dlsym(handle, name);
    if (!symbol && olderName) symbol = dlsym(handle, olderName);
    return reinterpret_cast<Function>(symbol);
}

} // namespace

SkyLightSymbols SkyLightSymbols::load() {
    SkyLightSymbols symbols;
    void* handle = dlopen(frameworkPath, RTLD_LAZY | RTLD_LOCAL);
    if (!handle) return symbols;
    symbols.mainConnectionID = lookUp<MainConnectionID>(handle, "SLSMainConnectionID", "CGSMainConnectionID");
    symbols.copyManagedDisplaySpaces =
        lookUp<CopyManagedDisplaySpaces>(handle, "SLSCopyManagedDisplaySpaces", "CGSCopyManagedDisplaySpaces");
    symbols.getActiveSpace = lookUp<GetActiveSpace>(handle, "SLSGetActiveSpace", "CGSGetActiveSpace");
    symbols.processAssignToSpace = lookUp<ProcessAssignToSpace>(handle, "SLSProcessAssignToSpace");
    symbols.processAssignToAllSpaces = lookUp<ProcessAssignToAllSpaces>(handle, "SLSProcessAssignToAllSpaces");
    return symbols;
}

} // namespace corvane
