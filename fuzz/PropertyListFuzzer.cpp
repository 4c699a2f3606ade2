// Property lists, as the Dock's preferences, Dock backups, user defaults and tile blobs hold
// them: whatever parses must be written again in both forms, and the binary form must read back
// as the same value.

#include "CorvaneCore/dock/PropertyListCoding.hpp"
#include "fuzz/FuzzSupport.hpp"

#include <cmath>

using namespace corvane;

namespace {

// Equal, except that NaN matches NaN and dates may differ by a microsecond: the library hands
// dates over as whole seconds and microseconds, which rounds the stored double.
bool equivalent(const PlistValue& a, const PlistValue& b) {
    if (a.storage.index() != b.storage.index()) return false;
    if (auto real = std::get_if<double>(&a.storage)) {
        auto other = std::get<double>(b.storage);
        return *real == other || (std::isnan(*real) && std::isnan(other));
    }
    if (auto date = std::get_if<Date>(&a.storage)) {
        auto other = std::get<Date>(b.storage);
        return std::fabs(date->sinceReferenceDate - other.sinceReferenceDate) <= 2e-6;
    }
    if (auto array = a.array()) {
        auto other = b.array();
        if (array->size() != other->size()) return false;
        for (std::size_t i = 0; i < array->size(); ++i)
            if (!equivalent((*array)[i], (*other)[i])) return false;
        return true;
    }
    if (auto dictionary = a.dictionary()) {
        auto other = b.dictionary();
        if (dictionary->size() != other->size()) return false;
        for (auto i = dictionary->begin(), j = other->begin(); i != dictionary->end(); ++i, ++j)
            if (i->first != j->first || !equivalent(i->second, j->second)) return false;
        return true;
    }
    return a == b;
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
    FUZZ_CHECK(equivalent(*reread, *value));
    return 0;
}
