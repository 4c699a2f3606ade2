// Workspace import: the file is decoded, then merged into a list that already holds the same
// workspaces, which exercises every clash rule at once.

#include "CorvaneCore/support/DecodingError.hpp"
#include "CorvaneCore/workspace/ProfileTransfer.hpp"
#include "fuzz/FuzzSupport.hpp"

#include <set>

using namespace corvane;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::vector<Profile> imported;
    try {
        imported = ProfileTransfer::profiles(fuzz::text(data, size));
    } catch (const DecodingError&) {
        return 0;
    }
    std::set<std::string> known;
    for (const auto& profile : imported)
        if (!profile.desktopUUIDs.empty()) known.insert(profile.desktopUUIDs.front());

    auto merged = ProfileTransfer::merge(imported, imported, known);
    FUZZ_CHECK(merged.profiles.size() == 2 * imported.size());
    FUZZ_CHECK(merged.adjustments.size() == imported.size());
    std::set<Uuid> ids;
    for (std::size_t i = imported.size(); i < merged.profiles.size(); ++i) {
        const auto& profile = merged.profiles[i];
        // Nothing imported may take an id the list already has.
        for (const auto& existing : imported) FUZZ_CHECK(profile.id != existing.id);
        FUZZ_CHECK(ids.insert(profile.id).second);
        for (const auto& desktop : profile.desktopUUIDs) FUZZ_CHECK(known.count(desktop) == 1);
    }

    auto exported = ProfileTransfer::exportData(merged.profiles);
    FUZZ_CHECK(ProfileTransfer::profiles(exported) == merged.profiles);
    return 0;
}
