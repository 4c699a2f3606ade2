#include "CorvaneCore/workspace/ProfileCoding.hpp"

#include "CorvaneCore/support/JsonCoding.hpp"

namespace corvane {

namespace {

template <typename T> void putIfSet(Json& object, const char* key, const std::optional<T>& value) {
    if (value) object[key] = *value;
}

void putIfSet(Json& object, const char* key, const std::optional<Bytes>& value) {
    if (value) object[key] = base64Encode(*value);
}

std::optional<std::string> optionalString(const JsonReader& reader, std::string_view key) {
    if (auto value = reader.optional(key)) return value->string();
    return std::nullopt;
}

std::optional<Bytes> optionalData(const JsonReader& reader, std::string_view key) {
    if (auto value = reader.optional(key)) return value->data();
    return std::nullopt;
}

Json wrap(std::string_view caseName, Json payload) {
    return Json::object({{std::string(caseName), Json::object({{"_0", std::move(payload)}})}});
}

} // namespace

Json encodeDockItem(const DockItem& item) {
    Json payload;
    if (auto app = item.app()) {
        payload = Json::object({{"path", app->path}});
        putIfSet(payload, "bundleIdentifier", app->bundleIdentifier);
        putIfSet(payload, "displayName", app->displayName);
        putIfSet(payload, "tile", app->tile);
    } else if (auto spacer = item.spacer()) {
        payload = std::string(rawValue(*spacer));
    } else if (auto file = item.file()) {
        payload = Json::object({{"path", file->path}, {"isDirectory", file->isDirectory}});
        putIfSet(payload, "displayName", file->displayName);
        putIfSet(payload, "tile", file->tile);
        putIfSet(payload, "badgeColorHex", file->badgeColorHex);
    } else if (auto url = item.url()) {
        payload = Json::object({{"url", url->url}});
        putIfSet(payload, "displayName", url->displayName);
        putIfSet(payload, "tile", url->tile);
    }
    return wrap(item.caseName(), std::move(payload));
}

DockItem decodeDockItem(const JsonReader& reader) {
    reader.object();
    if (reader.json().size() != 1)
        reader.fail(DecodingError::Kind::typeMismatch, "Invalid number of keys found, expected one.");
    const std::string caseName = reader.json().begin().key();
    auto payload = reader[caseName]["_0"];
    if (caseName == "app") {
        payload.object();
        AppEntry entry{payload["path"].string(), optionalString(payload, "bundleIdentifier"),
                       optionalString(payload, "displayName"), optionalData(payload, "tile")};
        return entry;
    }
    if (caseName == "spacer") return payload.rawValue<SpacerVariant>(spacerVariantFromRaw, "SpacerVariant");
    if (caseName == "file") {
        payload.object();
        FileEntry entry;
        entry.path = payload["path"].string();
        entry.displayName = optionalString(payload, "displayName");
        if (auto isDirectory = payload.optional("isDirectory")) entry.isDirectory = isDirectory->boolean();
        entry.tile = optionalData(payload, "tile");
        entry.badgeColorHex = optionalString(payload, "badgeColorHex");
        return entry;
    }
    if (caseName == "url") {
        payload.object();
        return URLEntry{payload["url"].string(), optionalString(payload, "displayName"),
                        optionalData(payload, "tile")};
    }
    reader.fail(DecodingError::Kind::typeMismatch, "Unknown DockItem case \"" + caseName + "\".");
}

Json encodeItems(const std::vector<DockItem>& items) {
    auto array = Json::array();
    for (const auto& item : items) array.push_back(encodeDockItem(item));
    return array;
}

std::vector<DockItem> decodeItems(const JsonReader& reader) {
    std::vector<DockItem> items;
    for (const auto& element : reader.array()) items.push_back(decodeDockItem(element));
    return items;
}

Json encodeHotkey(const Hotkey& hotkey) {
    return Json::object({{"keyCode", hotkey.keyCode}, {"modifiers", hotkey.modifiers.rawValue}});
}

Hotkey decodeHotkey(const JsonReader& reader) {
    reader.object();
    Hotkey hotkey;
    hotkey.keyCode = reader["keyCode"].integer<std::uint16_t>();
    hotkey.modifiers.rawValue = reader["modifiers"].integer<std::uint64_t>();
    return hotkey;
}

Json encodeWidgetStack(const WidgetStack& stack) {
    auto members = Json::array();
    for (const auto& member : stack.members) members.push_back(member.string());
    return Json::object({{"id", stack.id.string()}, {"members", std::move(members)}});
}

WidgetStack decodeWidgetStack(const JsonReader& reader) {
    reader.object();
    WidgetStack stack;
    stack.id = reader["id"].uuid();
    for (const auto& member : reader["members"].array()) stack.members.push_back(member.uuid());
    return stack;
}

Json encodeProfile(const Profile& profile) {
    Json object = Json::object({
        {"id", profile.id.string()},
        {"name", profile.name},
        {"color", std::string(rawValue(profile.color))},
        {"items", encodeItems(profile.items)},
        {"others", encodeItems(profile.others)},
    });
    if (!profile.stacks.empty()) {
        auto stacks = Json::array();
        for (const auto& stack : profile.stacks) stacks.push_back(encodeWidgetStack(stack));
        object["stacks"] = std::move(stacks);
    }
    putIfSet(object, "focusModeBinding", profile.focusModeBinding);
    putIfSet(object, "indicatorColorHex", profile.indicatorColorHex);
    if (profile.hotkey) object["hotkey"] = encodeHotkey(*profile.hotkey);
    object["otherWorkspaceApps"] = std::string(rawValue(profile.otherWorkspaceApps));
    if (!profile.desktopUUIDs.empty()) {
        object["desktopUUIDs"] = profile.desktopUUIDs;
        // Kept so that builds that know one desktop per workspace can still read the file.
        object["desktopUUID"] = profile.desktopUUIDs.front();
    }
    return object;
}

Profile decodeProfile(const JsonReader& reader) {
    reader.object();
    Profile profile;
    profile.items = decodeItems(reader["items"]);
    auto others = reader.optional("others");
    if (others) profile.others = decodeItems(*others);
    profile.id = reader["id"].uuid();
    profile.name = reader["name"].string();
    profile.color = reader["color"].rawValue<ProfileColor>(profileColorFromRaw, "ProfileColor");
    if (!others) {
        // Older files kept every tile in `items`; files and links move to the documents section.
        std::vector<DockItem> apps;
        for (auto& item : profile.items)
            (item.belongsInAppsSection() ? apps : profile.others).push_back(std::move(item));
        profile.items = std::move(apps);
    }
    if (auto stacks = reader.optional("stacks"))
        for (const auto& stack : stacks->array()) profile.stacks.push_back(decodeWidgetStack(stack));
    profile.focusModeBinding = optionalString(reader, "focusModeBinding");
    if (auto hotkey = reader.optional("hotkey")) profile.hotkey = decodeHotkey(*hotkey);
    if (auto rule = reader.optional("otherWorkspaceApps"))
        profile.otherWorkspaceApps = rule->rawValue<OtherWorkspaceApps>(otherWorkspaceAppsFromRaw, "OtherWorkspaceApps");
    else if (auto quits = reader.optional("quitsOtherWorkspaceApps"))
        profile.otherWorkspaceApps = quits->boolean() ? OtherWorkspaceApps::quit : OtherWorkspaceApps::hide;
    if (auto desktops = reader.optional("desktopUUIDs"))
        for (const auto& desktop : desktops->array()) profile.desktopUUIDs.push_back(desktop.string());
    else if (auto desktop = reader.optional("desktopUUID"))
        profile.desktopUUIDs.push_back(desktop->string());
    profile.indicatorColorHex = optionalString(reader, "indicatorColorHex");
    return profile;
}

Json encodeProfilesFile(const ProfilesFile& file) {
    auto profiles = Json::array();
    for (const auto& profile : file.profiles) profiles.push_back(encodeProfile(profile));
    Json object = Json::object({{"version", file.version}, {"profiles", std::move(profiles)}});
    if (file.activeProfileId) object["activeProfileId"] = file.activeProfileId->string();
    return object;
}

ProfilesFile decodeProfilesFile(const JsonReader& reader) {
    reader.object();
    ProfilesFile file;
    file.version = reader["version"].integer<int>();
    if (auto active = reader.optional("activeProfileId")) file.activeProfileId = active->uuid();
    for (const auto& profile : reader["profiles"].array()) file.profiles.push_back(decodeProfile(profile));
    return file;
}

std::string profilesFileText(const ProfilesFile& file) { return prettyJson(encodeProfilesFile(file)); }

ProfilesFile profilesFileFromText(std::string_view text) {
    auto json = parseJson(text);
    return decodeProfilesFile(JsonReader(json));
}

} // namespace corvane
