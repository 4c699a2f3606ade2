#pragma once

// JSON form of a Dock layout, as backups keep it.

#include "CorvaneCore/dock/DockSnapshot.hpp"

#include <nlohmann/json_fwd.hpp>

#include <string>
#include <string_view>

namespace corvane {

class JsonReader;

/// `{"apps": [...], "others": [...], "capturedAt": seconds since 2001-01-01}`; items as in the
/// workspaces file.
nlohmann::json encodeDockSnapshot(const DockSnapshot& snapshot);
/// `apps` and `capturedAt` are required; a missing `others` is an empty section. Throws
/// `DecodingError`.
DockSnapshot decodeDockSnapshot(const JsonReader& reader);

/// Pretty-printed, keys sorted.
std::string dockSnapshotText(const DockSnapshot& snapshot);
DockSnapshot dockSnapshotFromText(std::string_view text);

} // namespace corvane
