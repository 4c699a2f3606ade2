#include "CorvaneCore/widgets/converter/UnitConversion.hpp"

#include <algorithm>
#include <cmath>
#include <cstdio>

namespace corvane::UnitConversion {

namespace {

// Each unit as a factor to the category's base unit; temperatures also carry an offset
// (base = value × factor + offset, in kelvin).
struct Unit {
    std::string_view symbol;
    double factor;
    double offset = 0;
};

const std::vector<Unit>& table(ConversionCategory category) {
    static const std::vector<Unit> length = {{"mm", 0.001},  {"cm", 0.01},     {"m", 1},
                                             {"km", 1000},   {"in", 0.0254},   {"ft", 0.3048},
                                             {"yd", 0.9144}, {"mi", 1609.344}, {"nmi", 1852}};
    static const std::vector<Unit> mass = {{"mg", 1e-6},      {"g", 0.001},           {"kg", 1},
                                           {"t", 1000},       {"oz", 0.028349523125}, {"lb", 0.45359237},
                                           {"st", 6.35029318}};
    static const std::vector<Unit> temperature = {
        {"°C", 1, 273.15}, {"°F", 5.0 / 9.0, 273.15 - 32 * 5.0 / 9.0}, {"K", 1, 0}};
    static const std::vector<Unit> volume = {{"mL", 0.001},
                                             {"L", 1},
                                             {"m³", 1000},
                                             {"tsp", 0.00492892159375},
                                             {"tbsp", 0.01478676478125},
                                             {"fl oz", 0.0295735295625},
                                             {"cup", 0.2365882365},
                                             {"pt", 0.473176473},
                                             {"qt", 0.946352946},
                                             {"gal", 3.785411784}};
    static const std::vector<Unit> speed = {
        {"m/s", 1}, {"km/h", 1 / 3.6}, {"mph", 0.44704}, {"kn", 1852.0 / 3600}};
    static const std::vector<Unit> area = {
        {"cm²", 1e-4},       {"m²", 1},           {"km²", 1e6},         {"ha", 1e4},
        {"in²", 0.00064516}, {"ft²", 0.09290304}, {"ac", 4046.8564224}, {"mi²", 2589988.110336}};
    static const std::vector<Unit> data = {{"B", 1},           {"KB", 1e3},          {"MB", 1e6},
                                           {"GB", 1e9},        {"TB", 1e12},         {"KiB", 1024},
                                           {"MiB", 1048576.0}, {"GiB", 1073741824.0}};
    switch (category) {
    case ConversionCategory::length:
        return length;
    case ConversionCategory::mass:
        return mass;
    case ConversionCategory::temperature:
        return temperature;
    case ConversionCategory::volume:
        return volume;
    case ConversionCategory::speed:
        return speed;
    case ConversionCategory::area:
        return area;
    case ConversionCategory::data:
        return data;
    }
    return length;
}

const Unit* find(ConversionCategory category, std::string_view symbol) {
    for (const auto& unit : table(category))
        if (unit.symbol == symbol) return &unit;
    return nullptr;
}

} // namespace

std::vector<std::string_view> units(ConversionCategory category) {
    std::vector<std::string_view> symbols;
    for (const auto& unit : table(category))
        symbols.push_back(unit.symbol);
    return symbols;
}

std::optional<double> convert(double value, ConversionCategory category, std::string_view from,
                              std::string_view to) {
    const auto* source = find(category, from);
    const auto* target = find(category, to);
    if (!source || !target) return std::nullopt;
    double base = value * source->factor + source->offset;
    return (base - target->offset) / target->factor;
}

std::string number(double value) {
    if (!std::isfinite(value)) return "–";
    if (value == 0) return "0";
    char buffer[48];
    double magnitude = std::fabs(value);
    if (magnitude >= 1e9 || magnitude < 1e-4) {
        std::snprintf(buffer, sizeof buffer, "%.3e", value);
        return buffer;
    }
    int digits = std::max(0, 3 - static_cast<int>(std::floor(std::log10(magnitude))));
    std::snprintf(buffer, sizeof buffer, "%.*f", digits, value);
    std::string text = buffer;
    if (text.find('.') != std::string::npos) {
        while (text.back() == '0')
            text.pop_back();
        if (text.back() == '.') text.pop_back();
    }
    return text;
}

} // namespace corvane::UnitConversion
