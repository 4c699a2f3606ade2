#include "platform/posix/SysPowerSource.hpp"

#include <algorithm>
#include <fstream>
#include <set>
#include <string>

namespace corvane {

namespace {

std::optional<std::string> field(const std::filesystem::path& supply, const char* name) {
    std::ifstream file(supply / name);
    std::string value;
    if (!file || !std::getline(file, value)) return std::nullopt;
    while (!value.empty() && (value.back() == '\n' || value.back() == ' ' || value.back() == '\r'))
        value.pop_back();
    return value;
}

std::optional<double> number(const std::filesystem::path& supply, const char* name) {
    auto text = field(supply, name);
    if (!text) return std::nullopt;
    try {
        std::size_t used = 0;
        double value = std::stod(*text, &used);
        if (used != text->size()) return std::nullopt;
        return value;
    } catch (const std::exception&) {
        return std::nullopt;
    }
}

} // namespace

std::optional<PowerReading> SysPowerSource::read() {
    std::error_code error;
    std::set<std::filesystem::path> supplies;
    for (const auto& entry : std::filesystem::directory_iterator(root_, error))
        supplies.insert(entry.path());
    if (error) return std::nullopt;

    bool mainsOnline = false;
    std::optional<std::filesystem::path> battery;
    for (const auto& supply : supplies) {
        auto type = field(supply, "type");
        // Peripherals (a mouse, a headset) report batteries too, with scope "Device".
        if (type == "Battery" && field(supply, "scope") != "Device" && !battery) battery = supply;
        if (type == "Mains" && number(supply, "online").value_or(0) > 0) mainsOnline = true;
    }
    if (!battery || number(*battery, "present").value_or(1) == 0) return std::nullopt;

    PowerReading reading;
    auto capacity = number(*battery, "capacity");
    auto energyNow = number(*battery, "energy_now"), energyFull = number(*battery, "energy_full");
    auto chargeNow = number(*battery, "charge_now"), chargeFull = number(*battery, "charge_full");
    if (capacity)
        reading.level = *capacity / 100;
    else if (energyNow && energyFull && *energyFull > 0)
        reading.level = *energyNow / *energyFull;
    else if (chargeNow && chargeFull && *chargeFull > 0)
        reading.level = *chargeNow / *chargeFull;
    else
        return std::nullopt;
    reading.level = std::clamp(reading.level, 0.0, 1.0);

    auto status = field(*battery, "status").value_or("Unknown");
    reading.isCharging = status == "Charging";
    reading.isOnExternalPower =
        mainsOnline || reading.isCharging || status == "Full" || status == "Not charging";

    // Time left from the present draw: energy over power (µWh / µW) or charge over current.
    auto powerNow = number(*battery, "power_now"), currentNow = number(*battery, "current_now");
    std::optional<double> hours;
    if (powerNow && *powerNow > 0 && energyNow && energyFull)
        hours = (reading.isCharging ? *energyFull - *energyNow : *energyNow) / *powerNow;
    else if (currentNow && *currentNow > 0 && chargeNow && chargeFull)
        hours = (reading.isCharging ? *chargeFull - *chargeNow : *chargeNow) / *currentNow;
    if (hours && (reading.isCharging || status == "Discharging") && *hours >= 0)
        reading.minutesRemaining = *hours * 60;
    return reading;
}

} // namespace corvane
