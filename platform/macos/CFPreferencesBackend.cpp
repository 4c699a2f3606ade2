#include "platform/macos/CFPreferencesBackend.hpp"

#include "CorvaneCore/dock/DockError.hpp"
#include "platform/macos/CFPlistBridge.hpp"
#include "platform/posix/PlistFileBackend.hpp"

namespace corvane {

namespace {

const std::string kRefusedToSynchronize = "cfprefsd refused to synchronize com.apple.dock";

} // namespace

DockTiles CFPreferencesBackend::readTiles() {
    auto cfDomain = cfString(domain);
    CFPreferencesAppSynchronize(cfDomain.get());
    // Converted into a root of two keys so that the file backend's checks apply unchanged.
    PlistDictionary root;
    for (auto key : {DockTileKey::persistentApps, DockTileKey::persistentOthers}) {
        auto cfKey = cfString(std::string(key));
        auto value = adoptCF(CFPreferencesCopyAppValue(cfKey.get(), cfDomain.get()));
        if (!value) continue;
        if (CFGetTypeID(value.get()) != CFArrayGetTypeID())
            throw DockError::plistMalformed(url_.string(), std::string(key) + " is not an array of dicts");
        if (auto converted = plistValueFromCF(value.get())) root.insert_or_assign(std::string(key), std::move(*converted));
    }
    return tilesFromPreferences(root, url_);
}

void CFPreferencesBackend::writeTiles(const DockTiles& tiles) {
    auto cfDomain = cfString(domain);
    // Both arrays are built before either is set, so a failure changes nothing.
    auto apps = cfFromPlistValue(PlistArray(tiles.apps.begin(), tiles.apps.end()));
    auto others = cfFromPlistValue(PlistArray(tiles.others.begin(), tiles.others.end()));
    if (!apps || !others) throw DockError::plistWriteFailed(url_.string(), "the tiles could not be converted");
    CFPreferencesSetAppValue(cfString(std::string(DockTileKey::persistentApps)).get(), apps.get(), cfDomain.get());
    CFPreferencesSetAppValue(cfString(std::string(DockTileKey::persistentOthers)).get(), others.get(), cfDomain.get());
    if (!CFPreferencesAppSynchronize(cfDomain.get())) throw DockError::plistWriteFailed(url_.string(), kRefusedToSynchronize);
}

} // namespace corvane
