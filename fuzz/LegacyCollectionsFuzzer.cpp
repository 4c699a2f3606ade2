// The older collections file, read once to migrate it into the widgets file.

#include "CorvaneCore/support/DecodingError.hpp"
#include "CorvaneCore/widgets/WidgetCoding.hpp"
#include "fuzz/FuzzSupport.hpp"

using namespace corvane;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    WidgetsFile file;
    try {
        file = WidgetsFile::migrating(fuzz::text(data, size));
    } catch (const DecodingError&) {
        return 0;
    }
    FUZZ_CHECK(file.unrecognized.empty());
    FUZZ_CHECK(widgetsFileFromText(widgetsFileText(file)) == file);
    return 0;
}
