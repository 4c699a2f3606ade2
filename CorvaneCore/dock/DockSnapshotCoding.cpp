#include "CorvaneCore/dock/DockSnapshotCoding.hpp"

#include "CorvaneCore/support/JsonCoding.hpp"
#include "CorvaneCore/workspace/ProfileCoding.hpp"

namespace corvane {

Json encodeDockSnapshot(const DockSnapshot& snapshot) {
    return Json::object({{"apps", encodeItems(snapshot.apps)},
                         {"others", encodeItems(snapshot.others)},
                         {"capturedAt", snapshot.capturedAt.sinceReferenceDate}});
}

DockSnapshot decodeDockSnapshot(const JsonReader& reader) {
    reader.object();
    DockSnapshot snapshot;
    snapshot.apps = decodeItems(reader["apps"]);
    if (auto others = reader.optional("others")) snapshot.others = decodeItems(*others);
    snapshot.capturedAt = Date{reader["capturedAt"].number()};
    return snapshot;
}

std::string dockSnapshotText(const DockSnapshot& snapshot) { return prettyJson(encodeDockSnapshot(snapshot)); }

DockSnapshot dockSnapshotFromText(std::string_view text) {
    auto json = parseJson(text);
    return decodeDockSnapshot(JsonReader(json));
}

} // namespace corvane
