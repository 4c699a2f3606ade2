#include "CorvaneApp/looks/AppBundle.hpp"

#include "CorvaneCore/dock/PropertyListCoding.hpp"
#include "CorvaneCore/support/Text.hpp"

#include <fstream>
#include <sstream>

namespace corvane {

AppBundle AppBundle::read(const std::filesystem::path& path) {
    AppBundle bundle;
    bundle.name = text::lastPathComponent(path.string());
    if (bundle.name.size() > 4 && text::lowercased(bundle.name).ends_with(".app"))
        bundle.name.resize(bundle.name.size() - 4);
    std::ifstream stream(path / "Contents" / "Info.plist", std::ios::binary);
    if (!stream) return bundle;
    std::ostringstream bytes;
    bytes << stream.rdbuf();
    const auto contents = bytes.str();
    auto info = parsePropertyList(std::string_view(contents));
    if (auto dictionary = info ? info->dictionary() : nullptr) {
        if (auto identifier = stringAt(*dictionary, {"CFBundleIdentifier"}); identifier && !identifier->empty())
            bundle.bundleIdentifier = *identifier;
        if (auto name = stringAt(*dictionary, {"CFBundleName"}); name && !text::trimmed(*name).empty())
            bundle.bundleName = *name;
    }
    return bundle;
}

} // namespace corvane
