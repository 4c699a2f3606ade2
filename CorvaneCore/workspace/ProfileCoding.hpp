#pragma once

// JSON form of the workspace records, as the workspaces file holds them.

#include "CorvaneCore/workspace/Profile.hpp"

#include <nlohmann/json_fwd.hpp>

#include <string>
#include <string_view>

namespace corvane {

class JsonReader;

nlohmann::json encodeDockItem(const DockItem& item);
/// `{"app": {"_0": {…}}}` and its siblings; the wrapper must hold exactly one known key.
DockItem decodeDockItem(const JsonReader& reader);

nlohmann::json encodeItems(const std::vector<DockItem>& items);
std::vector<DockItem> decodeItems(const JsonReader& reader);

nlohmann::json encodeHotkey(const Hotkey& hotkey);
Hotkey decodeHotkey(const JsonReader& reader);

nlohmann::json encodeWidgetStack(const WidgetStack& stack);
WidgetStack decodeWidgetStack(const JsonReader& reader);

nlohmann::json encodeProfile(const Profile& profile);
/// Reads in the file's fixed key order; the first failing key ends the decoding.
Profile decodeProfile(const JsonReader& reader);

nlohmann::json encodeProfilesFile(const ProfilesFile& file);
ProfilesFile decodeProfilesFile(const JsonReader& reader);

/// The whole workspaces file as text: pretty-printed, keys sorted. Throws `DecodingError`.
std::string profilesFileText(const ProfilesFile& file);
ProfilesFile profilesFileFromText(std::string_view text);

} // namespace corvane
