// The widgets file: only a broken top level may fail; entries that do not decode are kept, and
// the file written back decodes to the same widgets and the same unrecognized entries.

#include "CorvaneCore/support/DecodingError.hpp"
#include "CorvaneCore/widgets/WidgetCoding.hpp"
#include "fuzz/FuzzSupport.hpp"

using namespace corvane;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    WidgetsFile file;
    try {
        file = widgetsFileFromText(fuzz::text(data, size));
    } catch (const DecodingError&) {
        return 0;
    }
    for (const auto& widget : file.widgets) {
        FUZZ_CHECK(widget.span >= 1);
        FUZZ_CHECK(widget.span <= widget.kind.maxSpan());
    }
    if (auto slot = file.freeSlot()) FUZZ_CHECK(*slot >= 1 && *slot <= 12);

    auto written = widgetsFileText(file);
    FUZZ_CHECK(widgetsFileFromText(written) == file);
    return 0;
}
