// An icon pack's manifest, read against a small pack folder made once per run, and the icon
// choices file, both from the same input. The manifest never fails a load and never points
// outside its pack; the choices come back unchanged from their own text.

#include "CorvaneCore/looks/IconPack.hpp"
#include "CorvaneCore/support/DecodingError.hpp"
#include "CorvaneStorage/looks/IconChoicesStore.hpp"
#include "fuzz/FuzzSupport.hpp"

#include <cmath>
#include <fstream>
#include <unistd.h>

using namespace corvane;

namespace {

namespace fs = std::filesystem;

fs::path makePack() {
    auto folder = fs::temp_directory_path() / ("corvane-fuzz-pack-" + std::to_string(::getpid())) / "Flat";
    for (auto file : {"Safari.png", "Mail.png", "mail-custom.png", "apps/Notes.png", "_widget/face.png",
                      "_widget/clock.png", "readme.txt"}) {
        fs::create_directories((folder / file).parent_path());
        std::ofstream(folder / file) << "png";
    }
    std::ofstream(folder.parent_path() / "outside.png") << "png";
    std::atexit([] {
        std::error_code ignored;
        fs::remove_all(fs::temp_directory_path() / ("corvane-fuzz-pack-" + std::to_string(::getpid())), ignored);
    });
    return folder;
}

bool isInside(const fs::path& file, const fs::path& folder) {
    auto relative = file.lexically_normal().lexically_relative(folder);
    return !relative.empty() && *relative.begin() != ".." && fs::is_regular_file(file);
}

void checkPack(std::string_view manifest) {
    static const fs::path folder = makePack();
    auto pack = IconPack::load(folder, manifest);
    FUZZ_CHECK(pack.id == "Flat");
    FUZZ_CHECK(pack.padding >= 0 && pack.padding <= IconPack::maximumPadding);
    for (const auto& [key, file] : pack.icons) {
        FUZZ_CHECK(!key.empty());
        FUZZ_CHECK(IconPack::key(key) == key);
        FUZZ_CHECK(isInside(file, folder));
        auto found = pack.find(std::nullopt, key);
        FUZZ_CHECK(found && found->file == file);
    }
    if (pack.widgetStyle) {
        if (pack.widgetStyle->face) FUZZ_CHECK(isInside(*pack.widgetStyle->face, folder));
        for (const auto& [kind, face] : pack.widgetStyle->kinds) FUZZ_CHECK(isInside(face, folder));
    }
}

void checkChoices(std::string_view text) {
    IconChoices choices;
    try {
        choices = IconChoicesCodec::decode(text);
    } catch (const DecodingError&) {
        return;
    }
    auto written = IconChoicesCodec::encode(choices);
    FUZZ_CHECK(IconChoicesCodec::decode(written) == choices);
    FUZZ_CHECK(IconChoicesCodec::encode(IconChoicesCodec::decode(written)) == written);
    for (const auto& [key, choice] : choices.perApp) {
        auto id = choices.packID(key);
        FUZZ_CHECK(choice.packID() ? id == *choice.packID() : !id);
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    auto text = fuzz::text(data, size);
    checkPack(text);
    checkChoices(text);
    return 0;
}
