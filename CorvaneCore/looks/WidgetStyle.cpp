#include "CorvaneCore/looks/WidgetStyle.hpp"

#include "CorvaneCore/looks/LenientJson.hpp"

#include <array>

namespace corvane {

namespace {

constexpr std::array<std::string_view, 3> kEffects = {"none", "shadow", "glow"};
constexpr std::array<std::string_view, 4> kWeights = {"regular", "medium", "semibold", "bold"};

template <typename Enum, std::size_t N>
std::optional<Enum> fromRaw(const std::array<std::string_view, N>& names, std::string_view raw) {
    for (std::size_t i = 0; i < N; ++i)
        if (names[i] == raw) return static_cast<Enum>(i);
    return std::nullopt;
}

std::optional<std::filesystem::path> image(const nlohmann::json& object, std::string_view key,
                                           const std::filesystem::path& folder) {
    auto relative = lenient::string(object, key);
    return relative ? fileInside(folder, *relative) : std::nullopt;
}

} // namespace

std::string_view rawValue(WidgetStyle::Effect effect) {
    return kEffects[static_cast<std::size_t>(effect)];
}

std::optional<WidgetStyle::Effect> widgetStyleEffectFromRaw(std::string_view raw) {
    return fromRaw<WidgetStyle::Effect>(kEffects, raw);
}

std::string_view rawValue(WidgetStyle::Weight weight) {
    return kWeights[static_cast<std::size_t>(weight)];
}

std::optional<WidgetStyle::Weight> widgetStyleWeightFromRaw(std::string_view raw) {
    return fromRaw<WidgetStyle::Weight>(kWeights, raw);
}

std::optional<std::filesystem::path> fileInside(const std::filesystem::path& folder,
                                                std::string_view relative) {
    auto inner = std::filesystem::path(relative).lexically_normal();
    if (inner.empty() || inner.is_absolute() || *inner.begin() == "..") return std::nullopt;
    auto file = folder / inner;
    std::error_code error;
    if (!std::filesystem::is_regular_file(file, error)) return std::nullopt;
    return file;
}

WidgetStyle decodeWidgetStyle(const nlohmann::json& object, const std::filesystem::path& folder) {
    WidgetStyle style;
    style.face = image(object, "face", folder);
    if (auto bounds = lenient::value(object, "bounds"); bounds && bounds->is_object()) {
        WidgetStyle::Bounds b;
        b.x = lenient::number(*bounds, "x").value_or(b.x);
        b.y = lenient::number(*bounds, "y").value_or(b.y);
        b.width = lenient::number(*bounds, "width").value_or(b.width);
        b.height = lenient::number(*bounds, "height").value_or(b.height);
        style.bounds = b;
    }
    if (auto slice = lenient::value(object, "slice"); slice && slice->is_object()) {
        WidgetStyle::Slice s;
        s.top = lenient::number(*slice, "top").value_or(0);
        s.left = lenient::number(*slice, "left").value_or(0);
        s.bottom = lenient::number(*slice, "bottom").value_or(0);
        s.right = lenient::number(*slice, "right").value_or(0);
        style.slice = s;
    }
    style.effect = lenient::rawValue(object, "effect", widgetStyleEffectFromRaw).value_or(style.effect);
    style.font = lenient::string(object, "font");
    style.weight = lenient::rawValue(object, "weight", widgetStyleWeightFromRaw).value_or(style.weight);
    if (auto tones = lenient::value(object, "tones"); tones && tones->is_object())
        for (const auto& [name, hex] : tones->items())
            if (hex.is_string()) style.tones[name] = hex.get<std::string>();
    if (auto kinds = lenient::value(object, "kinds"); kinds && kinds->is_object())
        for (const auto& [kind, relative] : kinds->items())
            if (relative.is_string())
                if (auto file = fileInside(folder, relative.get<std::string>())) style.kinds[kind] = *file;
    return style;
}

} // namespace corvane
