#include "platform/posix/PlistFileDockSettings.hpp"

#include "CorvaneCore/dock/DockError.hpp"
#include "platform/posix/PlistFile.hpp"

namespace corvane {

namespace {

constexpr const char* kAutohide = "autohide";
constexpr const char* kDelay = "autohide-delay";
constexpr const char* kTileSize = "tilesize";
constexpr const char* kOrientation = "orientation";

const PlistValue* find(const PlistDictionary& root, const char* key) {
    auto it = root.find(key);
    return it == root.end() ? nullptr : &it->second;
}

template <typename T> void put(PlistDictionary& root, const char* key, const std::optional<T>& value) {
    if (value) root.insert_or_assign(key, PlistValue(*value));
    else root.erase(key);
}

} // namespace

PlistDictionary PlistFileDockSettings::root() const {
    try {
        return readPlistDictionary(url_).value_or(PlistDictionary{});
    } catch (const PlistFileError& error) {
        if (error.kind == PlistFileError::Kind::unreadable) throw DockError::plistReadFailed(url_.string(), error.what());
        throw DockError::plistMalformed(url_.string(), error.what());
    }
}

NativeDockPreferences PlistFileDockSettings::current() const {
    auto values = root();
    NativeDockPreferences preferences;
    if (auto autohide = find(values, kAutohide)) preferences.autohide = autohide->boolean();
    if (auto delay = find(values, kDelay)) preferences.delay = delay->number();
    if (auto tileSize = find(values, kTileSize)) preferences.tileSize = tileSize->number();
    return preferences;
}

std::optional<std::string> PlistFileDockSettings::orientation() const {
    auto values = root();
    if (auto value = find(values, kOrientation); value && value->string()) return *value->string();
    return std::nullopt;
}

void PlistFileDockSettings::write(const NativeDockPreferences& preferences) {
    try {
        auto values = readPlistDictionary(url_).value_or(PlistDictionary{});
        put(values, kAutohide, preferences.autohide);
        put(values, kDelay, preferences.delay);
        put(values, kTileSize, preferences.tileSize);
        writePlistDictionary(url_, values);
    } catch (const PlistFileError& error) {
        throw DockError::plistWriteFailed(url_.string(), error.what());
    }
}

} // namespace corvane
