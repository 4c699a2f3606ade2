// The own Dock bar's style settings. Decoding never fails: every unreadable key keeps its
// default. What was decoded must come back unchanged from its own text.

#include "CorvaneCore/bar/DockStyleCoding.hpp"
#include "fuzz/FuzzSupport.hpp"

using namespace corvane;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    auto style = dockStyleFromText(fuzz::text(data, size));
    FUZZ_CHECK(dockStyleFromText(dockStyleText(style)) == style);
    return 0;
}
