#include "CorvaneApp/cli/ToolContext.hpp"

#include "CorvaneStorage/storage/StoragePath.hpp"

namespace corvane {

std::filesystem::path ToolContext::dataDirectory() const {
    if (dataDirOption) return *dataDirOption;
    return StoragePath::resolvedDirectory(services.environment, {},
                                          applicationSupportDirectory(services.environment));
}

} // namespace corvane
