#pragma once

#include "CorvaneCore/widgets/WidgetSettings.hpp"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace corvane {

/// The converter widget's units: for each category the symbols it knows, and conversion
/// between two of them.
namespace UnitConversion {

/// The symbols of a category, in the order a picker lists them.
std::vector<std::string_view> units(ConversionCategory category);

/// `value` in `from` expressed in `to`; none when either symbol is not a unit of the category.
std::optional<double> convert(double value, ConversionCategory category, std::string_view from,
                              std::string_view to);

/// A number for the tile: up to four significant digits, no trailing zeros ("3.281", "1200",
/// "0.0001"), scientific beyond that range.
std::string number(double value);

} // namespace UnitConversion

} // namespace corvane
