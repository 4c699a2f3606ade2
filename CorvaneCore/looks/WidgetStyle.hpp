#pragma once

#include <nlohmann/json_fwd.hpp>

#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <string_view>

namespace corvane {

/// How an icon pack dresses the widgets: a face image behind them (nine-sliced), where their
/// content sits on it, the text font and weight, named colours, and faces per widget kind.
/// Read from the "widget" entry of a pack's manifest; images live in the pack's "_widget/".
struct WidgetStyle {
    /// Where a widget's content sits, as shares (0…1) of the face; y grows upward.
    struct Bounds {
        double x = 0, y = 0, width = 1, height = 1;
        bool operator==(const Bounds&) const = default;
    };
    /// The face's edges, in image pixels, kept unstretched when the face is resized.
    struct Slice {
        double top = 0, left = 0, bottom = 0, right = 0;
        bool operator==(const Slice&) const = default;
    };
    enum class Effect { none, shadow, glow };
    enum class Weight { regular, medium, semibold, bold };

    std::optional<std::filesystem::path> face;
    std::optional<Bounds> bounds;
    std::optional<Slice> slice;
    Effect effect = Effect::none;
    std::optional<std::string> font;
    Weight weight = Weight::regular;
    /// Named colours ("primary", "secondary", "accent", "background"…) as hex text.
    std::map<std::string, std::string> tones;
    /// A face per widget kind (its raw value), drawn instead of `face`.
    std::map<std::string, std::filesystem::path> kinds;

    bool operator==(const WidgetStyle&) const = default;
};

std::string_view rawValue(WidgetStyle::Effect effect);
std::optional<WidgetStyle::Effect> widgetStyleEffectFromRaw(std::string_view raw);
std::string_view rawValue(WidgetStyle::Weight weight);
std::optional<WidgetStyle::Weight> widgetStyleWeightFromRaw(std::string_view raw);

/// Never fails: values of the wrong type are left out, and image paths are kept only when they
/// name a file inside `folder`.
WidgetStyle decodeWidgetStyle(const nlohmann::json& object, const std::filesystem::path& folder);

/// The file `relative` names inside `folder`, when it exists there; paths that climb out of the
/// folder name nothing.
std::optional<std::filesystem::path> fileInside(const std::filesystem::path& folder,
                                                std::string_view relative);

} // namespace corvane
