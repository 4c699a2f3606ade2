// A Dock layout in its JSON form.

#include "CorvaneCore/dock/DockSnapshotCoding.hpp"
#include "CorvaneCore/support/DecodingError.hpp"
#include "fuzz/FuzzSupport.hpp"

using namespace corvane;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    DockSnapshot snapshot;
    try {
        snapshot = dockSnapshotFromText(fuzz::text(data, size));
    } catch (const DecodingError&) {
        return 0;
    }
    FUZZ_CHECK(dockSnapshotFromText(dockSnapshotText(snapshot)) == snapshot);
    return 0;
}
