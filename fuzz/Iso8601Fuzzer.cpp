// ISO 8601 dates, as backup info files hold them: whatever parses is written and read back to
// the same instant, to the millisecond the written form keeps.

#include "CorvaneCore/support/Iso8601.hpp"
#include "fuzz/FuzzSupport.hpp"

#include <cmath>

using namespace corvane;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    auto date = parseIso8601(fuzz::text(data, size));
    if (!date) return 0;
    FUZZ_CHECK(std::isfinite(date->sinceReferenceDate));
    auto again = parseIso8601(iso8601(*date));
    FUZZ_CHECK(again.has_value());
    FUZZ_CHECK(std::fabs(again->sinceReferenceDate - date->sinceReferenceDate) < 0.001);
    return 0;
}
