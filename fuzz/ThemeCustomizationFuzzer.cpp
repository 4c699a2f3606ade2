// The user's changes to a Dock theme. Decoding never fails; what was decoded must come back
// unchanged, and lay itself over every theme without harm.

#include "CorvaneCore/looks/DockThemeCustomization.hpp"
#include "CorvaneCore/looks/DockTheme.hpp"
#include "fuzz/FuzzSupport.hpp"

#include <nlohmann/json.hpp>

using namespace corvane;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    auto json = nlohmann::json::parse(fuzz::text(data, size), nullptr, /*allow_exceptions=*/false);
    if (json.is_discarded()) return 0;
    auto customization = decodeDockThemeCustomization(json);
    FUZZ_CHECK(decodeDockThemeCustomization(encodeDockThemeCustomization(customization)) == customization);
    for (const auto* themes : {&DockTheme::all(), &DockTheme::seasonal()})
        for (const auto& theme : *themes) {
            auto customized = theme.customized(customization);
            FUZZ_CHECK(customized.id == theme.id);
            FUZZ_CHECK(customized.borderWidth >= 0);
        }
    return 0;
}
