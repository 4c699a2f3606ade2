#pragma once

#include "CorvaneCore/platform/Calendar.hpp"
#include "CorvaneCore/widgets/water/WaterLog.hpp"
#include "CorvaneStorage/storage/JsonFileStore.hpp"

#include <filesystem>
#include <string_view>

namespace corvane {

struct WaterLogCodec {
    static WaterLog empty() { return {}; }
    static WaterLog decode(std::string_view text) { return waterLogFromText(text); }
    static std::string encode(const WaterLog& log) { return waterLogText(log); }
};

/// The water file, "water.json", shared by every process that shows a water tile.
class WaterStore : public JsonFileStore<WaterLog, WaterLogCodec> {
public:
    static constexpr std::string_view changedNotification = "dev.tessik.corvane.water-changed";

    /// `calendar` must outlive the store; it decides which day each change lands on.
    WaterStore(std::filesystem::path url, const Calendar& calendar, Notifier* notifier = nullptr)
        : JsonFileStore(std::move(url), notifier, std::string(changedNotification)), calendar_(calendar) {}

    const WaterLog& log() const { return value(); }

    void add(int millilitres, Date at) {
        change([&](WaterLog& log) { log.add(millilitres, at, calendar_); });
    }
    void remove(int millilitres, Date at) {
        change([&](WaterLog& log) { log.remove(millilitres, at, calendar_); });
    }
    void clear(Date at) {
        change([&](WaterLog& log) { log.clear(at, calendar_); });
    }

private:
    const Calendar& calendar_;
};

} // namespace corvane
