// Property lists, as the Dock's preferences, Dock backups, user defaults and tile blobs hold
// them: whatever parses must be written again in both forms, and the binary form must read back
// as the same value.

#include "CorvaneCore/dock/PropertyListCoding.hpp"
#include "fuzz/FuzzSupport.hpp"

#include <cmath>

using namespace corvane;

namespace {

// NaN never equals itself, so a value holding one cannot be compared after a round trip.
bool holdsNaN(const PlistValue& value) {
    if (auto real = std::get_if<double>(&value.storage)) return std::isnan(*real);
    if (auto date = std::get_if<Date>(&value.storage)) return std::isnan(date->sinceReferenceDate);
    if (auto array = value.array()) {
        for (const auto& item : *array)
            if (holdsNaN(item)) return true;
    }
    if (auto dictionary = value.dictionary()) {
        for (const auto& [key, item] : *dictionary)
            if (holdsNaN(item)) return true;
    }
    return false;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    auto value = parsePropertyList(fuzz::text(data, size));
    if (!value) return 0;

    auto xml = xmlPropertyList(*value);
    FUZZ_CHECK(!xml.empty());
    FUZZ_CHECK(parsePropertyList(xml).has_value());

    auto binary = binaryPropertyList(*value);
    FUZZ_CHECK(binary.has_value());
    auto reread = parsePropertyList(*binary);
    FUZZ_CHECK(reread.has_value());
    if (!holdsNaN(*value)) FUZZ_CHECK(*reread == *value);
    return 0;
}
