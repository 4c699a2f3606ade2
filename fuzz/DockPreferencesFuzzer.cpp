// A Dock preferences file, XML or binary, through to a snapshot: the bytes are parsed, the two
// tile arrays taken out as the file backend does, and every tile decoded. Whatever snapshot
// comes out must survive being written as tiles and read again, as a swap does.

#include "CorvaneCore/dock/DockError.hpp"
#include "CorvaneCore/dock/DockPlistReader.hpp"
#include "CorvaneCore/dock/DockPlistWriter.hpp"
#include "CorvaneCore/dock/PropertyListCoding.hpp"
#include "fuzz/FuzzSupport.hpp"
#include "platform/posix/PlistFileBackend.hpp"

using namespace corvane;

namespace {

class HeldTiles final : public DockPreferencesBackend {
public:
    DockTiles readTiles() override { return tiles; }
    void writeTiles(const DockTiles& newTiles) override { tiles = newTiles; }
    std::filesystem::path url() const override { return "com.apple.dock.plist"; }

    DockTiles tiles;
};

class FixedClock final : public Clock {
public:
    Date now() const override { return Date{700000000}; }
};

bool sameCases(const std::vector<DockItem>& a, const std::vector<DockItem>& b) {
    if (a.size() != b.size()) return false;
    for (std::size_t i = 0; i < a.size(); ++i)
        if (a[i].value.index() != b[i].value.index()) return false;
    return true;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    auto value = parsePropertyList(fuzz::text(data, size));
    if (!value || !value->dictionary()) return 0;

    HeldTiles backend;
    FixedClock clock;
    DockSnapshot snapshot;
    try {
        backend.tiles = tilesFromPreferences(*value->dictionary(), backend.url());
        snapshot = DockPlistReader(backend, clock).read();
    } catch (const DockError&) {
        return 0;
    }

    DockPlistWriter(backend).write(snapshot);
    auto again = DockPlistReader(backend, clock).read();
    FUZZ_CHECK(sameCases(again.apps, snapshot.apps));
    FUZZ_CHECK(sameCases(again.others, snapshot.others));
    return 0;
}
