#include "CorvaneApp/widgets/PlaceholderHelpers.hpp"

#include "CorvaneCore/widgets/DockSlot.hpp"

namespace corvane {

std::string PlaceholderHelpers::path(const std::filesystem::path& dataDirectory, std::optional<int> slot) {
    auto folder = dataDirectory / folderName;
    return (slot ? folder / DockSlot::bundleName(*slot) : folder / sharedHelperName).string();
}

} // namespace corvane
