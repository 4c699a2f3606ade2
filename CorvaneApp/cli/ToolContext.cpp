#include "CorvaneApp/cli/ToolContext.hpp"

#include "CorvaneStorage/storage/StoragePath.hpp"

namespace corvane {

std::filesystem::path ToolContext::dataDirectory() const {
    if (dataDirOption) return *dataDirOption;
    return StoragePath::resolvedDirectory(services.environment, {},
                                          applicationSupportDirectory(services.environment));
}

DockAccess ToolContext::openDock() const {
    std::optional<std::filesystem::path> file;
    if (dockPlistOption) file = *dockPlistOption;
    return services.openDock(file);
}

std::unique_ptr<UserDefaults> ToolContext::openDefaults() const {
    return services.openDefaults(dataDirectory());
}

} // namespace corvane
