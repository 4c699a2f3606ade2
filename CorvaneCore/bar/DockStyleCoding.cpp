#include "CorvaneCore/bar/DockStyleCoding.hpp"

#include "CorvaneCore/looks/LenientJson.hpp"
#include "CorvaneCore/support/JsonCoding.hpp"

namespace corvane {

namespace {

nlohmann::json encodeWindowPreviews(const WindowPreviewSettings& settings) {
    return {{"isEnabled", settings.isEnabled},
            {"delay", settings.delay},
            {"onlyWithMultipleWindows", settings.onlyWithMultipleWindows}};
}

WindowPreviewSettings decodeWindowPreviews(const nlohmann::json& object) {
    WindowPreviewSettings settings;
    settings.isEnabled = lenient::boolean(object, "isEnabled").value_or(settings.isEnabled);
    settings.delay = lenient::number(object, "delay").value_or(settings.delay);
    settings.onlyWithMultipleWindows =
        lenient::boolean(object, "onlyWithMultipleWindows").value_or(settings.onlyWithMultipleWindows);
    return settings;
}

nlohmann::json encodeDropZone(const DropZoneSettings& settings) {
    return {{"isEnabled", settings.isEnabled}, {"opensNearPointer", settings.opensNearPointer}};
}

DropZoneSettings decodeDropZone(const nlohmann::json& object) {
    DropZoneSettings settings;
    settings.isEnabled = lenient::boolean(object, "isEnabled").value_or(settings.isEnabled);
    settings.opensNearPointer =
        lenient::boolean(object, "opensNearPointer").value_or(settings.opensNearPointer);
    return settings;
}

} // namespace

nlohmann::json encodeDockStyle(const DockStyle& style) {
    auto customizations = nlohmann::json::object();
    for (const auto& [id, customization] : style.themeCustomizations)
        customizations[id] = encodeDockThemeCustomization(customization);
    nlohmann::json object = {
        {"hoverEffect", rawValue(style.hoverEffect)},
        {"hoverScale", style.hoverScale},
        {"launchAnimation", rawValue(style.launchAnimation)},
        {"indicatorStyle", rawValue(style.indicatorStyle)},
        {"position", rawValue(style.position)},
        {"showsTrash", style.showsTrash},
        {"trashIcon", rawValue(style.trashIcon)},
        {"showsDownloads", style.showsDownloads},
        {"showsRunningApps", style.showsRunningApps},
        {"showsLauncher", style.showsLauncher},
        {"windowPreviews", encodeWindowPreviews(style.windowPreviews)},
        {"dropZone", encodeDropZone(style.dropZone)},
        {"savesEnergy", style.savesEnergy},
        {"themeID", style.themeID},
        {"themeCustomizations", std::move(customizations)},
        {"indicatorFollowsWorkspace", style.indicatorFollowsWorkspace},
    };
    lenient::putIfSet(object, "indicatorColorHex", style.indicatorColorHex);
    lenient::putIfSet(object, "iconSize", style.iconSize);
    lenient::putIfSet(object, "bottomSpace", style.bottomSpace);
    return object;
}

DockStyle decodeDockStyle(const nlohmann::json& object) {
    DockStyle style;
    style.hoverEffect =
        lenient::rawValue(object, "hoverEffect", hoverEffectFromRaw).value_or(style.hoverEffect);
    style.hoverScale = lenient::number(object, "hoverScale").value_or(style.hoverScale);
    style.launchAnimation =
        lenient::rawValue(object, "launchAnimation", launchAnimationFromRaw).value_or(style.launchAnimation);
    style.indicatorStyle =
        lenient::rawValue(object, "indicatorStyle", indicatorStyleFromRaw).value_or(style.indicatorStyle);
    style.indicatorColorHex = lenient::string(object, "indicatorColorHex");
    style.iconSize = lenient::number(object, "iconSize");
    style.bottomSpace = lenient::number(object, "bottomSpace");
    style.position = lenient::rawValue(object, "position", dockPositionFromRaw).value_or(style.position);
    style.showsTrash = lenient::boolean(object, "showsTrash").value_or(style.showsTrash);
    style.trashIcon = lenient::rawValue(object, "trashIcon", trashIconFromRaw).value_or(style.trashIcon);
    style.showsDownloads = lenient::boolean(object, "showsDownloads").value_or(style.showsDownloads);
    style.showsRunningApps = lenient::boolean(object, "showsRunningApps").value_or(style.showsRunningApps);
    style.showsLauncher = lenient::boolean(object, "showsLauncher").value_or(style.showsLauncher);
    if (auto previews = lenient::value(object, "windowPreviews"))
        style.windowPreviews = decodeWindowPreviews(*previews);
    if (auto dropZone = lenient::value(object, "dropZone")) style.dropZone = decodeDropZone(*dropZone);
    style.savesEnergy = lenient::boolean(object, "savesEnergy").value_or(style.savesEnergy);
    style.themeID = lenient::string(object, "themeID").value_or(style.themeID);
    if (auto customizations = lenient::value(object, "themeCustomizations");
        customizations && customizations->is_object())
        for (const auto& [id, customization] : customizations->items())
            if (customization.is_object())
                style.themeCustomizations[id] = decodeDockThemeCustomization(customization);
    style.indicatorFollowsWorkspace =
        lenient::boolean(object, "indicatorFollowsWorkspace").value_or(style.indicatorFollowsWorkspace);
    return style;
}

std::string dockStyleText(const DockStyle& style) {
    return prettyJson(encodeDockStyle(style));
}

DockStyle dockStyleFromText(std::string_view text) {
    auto object = nlohmann::json::parse(text, nullptr, /*allow_exceptions=*/false);
    return decodeDockStyle(object);
}

} // namespace corvane
