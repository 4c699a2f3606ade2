#pragma once

// JSON form of the widget records, as the widgets file holds them.

#include "CorvaneCore/widgets/WidgetsFile.hpp"

#include <nlohmann/json_fwd.hpp>

#include <string>
#include <string_view>

namespace corvane {

class JsonReader;

/// A bare application entry, as collections hold them.
nlohmann::json encodeAppEntry(const AppEntry& entry);
AppEntry decodeAppEntry(const JsonReader& reader);

/// `{"<case>": {"_0": settings}}`, `{"collection": {"apps": …, "layout": …}}` or `{"<case>": {}}`.
nlohmann::json encodeKind(const DockWidget::Kind& kind);
/// Every field of the kind's settings by its key, unset ones as null; `{}` for a kind without
/// settings.
nlohmann::json encodeSettingsFields(const DockWidget::Kind& kind);
/// Takes the first known case key in a fixed order and ignores the rest; missing settings
/// fields take their defaults. No known key is `dataCorrupted` "Unknown widget kind".
DockWidget::Kind decodeKind(const JsonReader& reader);

nlohmann::json encodeDockWidget(const DockWidget& widget);
/// Reads the kind first; a missing span is the kind's default, and the span is clamped.
DockWidget decodeDockWidget(const JsonReader& reader);

/// Unrecognized entries follow the widgets in the one "widgets" list.
nlohmann::json encodeWidgetsFile(const WidgetsFile& file);
/// Only a missing or malformed "version" or "widgets" fails; an entry that does not decode as
/// a widget is kept as unrecognized.
WidgetsFile decodeWidgetsFile(const JsonReader& reader);

/// The whole widgets file as text: pretty-printed, keys sorted. Throws `DecodingError`.
std::string widgetsFileText(const WidgetsFile& file);
WidgetsFile widgetsFileFromText(std::string_view text);

} // namespace corvane
