#pragma once

#include "CorvaneApp/render/WorkspaceBarScene.hpp"

namespace corvane {

class IconImage;
class IconOverrides;
struct IconPack;

/// An icon's pixels as the bar renderer takes them. The image is ARGB32 or RGB24, the two forms
/// PNGs decode to.
BarImage barImage(const IconImage& image);

/// The bar's icons: an application's custom icon, else its icon from the pack the user chose
/// for it. With `pack`, that pack stands in for every choice (a custom icon still wins), as a
/// preview of the pack. `overrides` and `pack` must outlive the source; main thread.
BarIconSource barIcons(IconOverrides& overrides, const IconPack* pack = nullptr);

} // namespace corvane
