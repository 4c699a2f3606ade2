// The workspaces file: anything but a decoding error is a fault, and what decodes must come back
// unchanged from its own text.

#include "CorvaneCore/support/DecodingError.hpp"
#include "CorvaneCore/workspace/ProfileCoding.hpp"
#include "fuzz/FuzzSupport.hpp"

using namespace corvane;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    ProfilesFile file;
    try {
        file = profilesFileFromText(fuzz::text(data, size));
    } catch (const DecodingError&) {
        return 0;
    }
    auto written = profilesFileText(file);
    FUZZ_CHECK(profilesFileFromText(written) == file);
    FUZZ_CHECK(profilesFileText(profilesFileFromText(written)) == written);
    return 0;
}
