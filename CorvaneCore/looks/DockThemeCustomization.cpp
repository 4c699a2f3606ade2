#include "CorvaneCore/looks/DockThemeCustomization.hpp"

#include "CorvaneCore/looks/LenientJson.hpp"

namespace corvane {

nlohmann::json encodeDockThemeCustomization(const DockThemeCustomization& customization) {
    using lenient::putIfSet;
    auto object = nlohmann::json::object();
    putIfSet(object, "topHex", customization.topHex);
    putIfSet(object, "bottomHex", customization.bottomHex);
    putIfSet(object, "opacity", customization.opacity);
    putIfSet(object, "showsBorder", customization.showsBorder);
    putIfSet(object, "borderHex", customization.borderHex);
    putIfSet(object, "borderWidth", customization.borderWidth);
    putIfSet(object, "showsGlow", customization.showsGlow);
    putIfSet(object, "glowHex", customization.glowHex);
    putIfSet(object, "cornerRadiusScale", customization.cornerRadiusScale);
    putIfSet(object, "showsReflections", customization.showsReflections);
    putIfSet(object, "separatorHex", customization.separatorHex);
    putIfSet(object, "showsSnowfall", customization.showsSnowfall);
    putIfSet(object, "showsSnowCap", customization.showsSnowCap);
    putIfSet(object, "showsLights", customization.showsLights);
    return object;
}

DockThemeCustomization decodeDockThemeCustomization(const nlohmann::json& object) {
    DockThemeCustomization customization;
    customization.topHex = lenient::string(object, "topHex");
    customization.bottomHex = lenient::string(object, "bottomHex");
    customization.opacity = lenient::number(object, "opacity");
    customization.showsBorder = lenient::boolean(object, "showsBorder");
    customization.borderHex = lenient::string(object, "borderHex");
    customization.borderWidth = lenient::number(object, "borderWidth");
    customization.showsGlow = lenient::boolean(object, "showsGlow");
    customization.glowHex = lenient::string(object, "glowHex");
    customization.cornerRadiusScale = lenient::number(object, "cornerRadiusScale");
    customization.showsReflections = lenient::boolean(object, "showsReflections");
    customization.separatorHex = lenient::string(object, "separatorHex");
    customization.showsSnowfall = lenient::boolean(object, "showsSnowfall");
    customization.showsSnowCap = lenient::boolean(object, "showsSnowCap");
    customization.showsLights = lenient::boolean(object, "showsLights");
    return customization;
}

} // namespace corvane
