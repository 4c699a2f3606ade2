#include "CorvaneCore/dock/DockPlistReader.hpp"

#include "CorvaneCore/dock/DockError.hpp"
#include "CorvaneCore/dock/DockURLString.hpp"
#include "CorvaneCore/dock/PropertyListCoding.hpp"

namespace corvane {

namespace K = DockTileKey;

namespace {

std::optional<std::string> optionalText(const PlistDictionary& tile, std::string_view key) {
    if (auto text = stringAt(tile, {K::tileData, key})) return *text;
    return std::nullopt;
}

std::optional<Bytes> originalTile(const PlistDictionary& tile, DockPlistReader::Detail detail) {
    if (detail == DockPlistReader::Detail::layout) return std::nullopt;
    return binaryPropertyList(tile);
}

std::string filePath(const PlistDictionary& tile, std::string_view context, const std::filesystem::path& url) {
    auto urlText = stringAt(tile, {K::tileData, K::fileData, K::urlString});
    if (!urlText)
        throw DockError::plistMalformed(url.string(),
                                        std::string(context) + " is missing tile-data.file-data._CFURLString");
    return DockURLString::path(*urlText);
}

AppEntry decodeApp(const PlistDictionary& tile, const std::filesystem::path& url, DockPlistReader::Detail detail) {
    AppEntry entry;
    entry.path = filePath(tile, "app tile", url);
    entry.displayName = optionalText(tile, K::fileLabel);
    entry.bundleIdentifier = optionalText(tile, K::bundleIdentifier);
    entry.tile = originalTile(tile, detail);
    return entry;
}

FileEntry decodeFile(const PlistDictionary& tile, bool isDirectory, const std::filesystem::path& url,
                     DockPlistReader::Detail detail) {
    FileEntry entry;
    entry.path = filePath(tile, "file tile", url);
    entry.displayName = optionalText(tile, K::fileLabel);
    entry.isDirectory = isDirectory;
    entry.tile = originalTile(tile, detail);
    return entry;
}

URLEntry decodeURL(const PlistDictionary& tile, const std::filesystem::path& url, DockPlistReader::Detail detail) {
    auto link = stringAt(tile, {K::tileData, K::url, K::urlString});
    if (!link) throw DockError::plistMalformed(url.string(), "url tile is missing tile-data.url._CFURLString");
    return URLEntry{*link, optionalText(tile, K::label), originalTile(tile, detail)};
}

} // namespace

DockItem DockPlistReader::decodeItem(const PlistDictionary& tile, Section section, const std::filesystem::path& url,
                                     Detail detail) {
    auto type = stringAt(tile, {K::tileType});
    if (!type) throw DockError::plistMalformed(url.string(), "tile is missing tile-type");
    if (*type == K::fileTile)
        return section == Section::apps ? DockItem(decodeApp(tile, url, detail))
                                       : DockItem(decodeFile(tile, false, url, detail));
    if (*type == K::directoryTile) return decodeFile(tile, true, url, detail);
    if (*type == K::urlTile) return decodeURL(tile, url, detail);
    if (auto spacer = spacerVariantFromRaw(*type)) return *spacer;
    throw DockError::unsupportedItemType(*type);
}

DockSnapshot DockPlistReader::read(Detail detail) const {
    auto tiles = backend_.readTiles();
    auto url = backend_.url();
    DockSnapshot snapshot;
    for (const auto& tile : tiles.apps) snapshot.apps.push_back(decodeItem(tile, Section::apps, url, detail));
    for (const auto& tile : tiles.others) snapshot.others.push_back(decodeItem(tile, Section::others, url, detail));
    snapshot.capturedAt = clock_.now();
    return snapshot;
}

} // namespace corvane
