// Kinds that read the machine: battery, activity, network, fans, music, and the ones that ask
// the desktop to act (shortcut, AirDrop, keyboard lock), and the pet that follows the load.

#include "CorvaneCore/platform/DesktopActions.hpp"
#include "CorvaneCore/platform/FanSensors.hpp"
#include "CorvaneCore/platform/NetworkCounters.hpp"
#include "CorvaneCore/platform/NowPlaying.hpp"
#include "CorvaneCore/platform/PowerSource.hpp"
#include "CorvaneCore/platform/SystemLoad.hpp"
#include "CorvaneCore/widgets/system/ByteRate.hpp"
#include "CorvaneWidgetsUI/live/LiveKinds.hpp"

#include <algorithm>
#include <cctype>
#include <cmath>

namespace corvane::live {

namespace {

std::string percent(double share) {
    return std::to_string(static_cast<int>(std::lround(std::clamp(share, 0.0, 1.0) * 100))) + "%";
}

class BatteryWidget final : public PolledWidget {
  public:
    static constexpr double interval = 60;
    BatteryWidget(DockWidget widget, PowerSource& power)
        : PolledWidget(std::move(widget), interval), power_(power) {}

  protected:
    WidgetReading read(Date) override {
        auto reading = power_.read();
        if (!reading) return troubled("no battery");
        const auto& settings = *widget_.settings<BatterySettings>();
        std::string state = reading->isCharging          ? "Charging"
                            : reading->isOnExternalPower ? "On power"
                                                         : "On battery";
        if (reading->minutesRemaining && *reading->minutesRemaining >= 1) {
            auto minutes = static_cast<long long>(std::lround(*reading->minutesRemaining));
            state += ", " + std::to_string(minutes / 60) + ":" + (minutes % 60 < 10 ? "0" : "") +
                     std::to_string(minutes % 60) + (reading->isCharging ? " to full" : " left");
        }
        WidgetReading result{.progress = reading->level};
        if (settings.showsPercentage) {
            result.caption = percent(reading->level);
            result.detail = state;
        } else {
            result.caption = state;
        }
        return result;
    }

  private:
    PowerSource& power_;
};

class ActivityWidget final : public PolledWidget {
  public:
    static constexpr double interval = 2;
    ActivityWidget(DockWidget widget, SystemLoad& load)
        : PolledWidget(std::move(widget), interval), load_(load) {}

  protected:
    WidgetReading read(Date) override {
        const auto& settings = *widget_.settings<ActivitySettings>();
        // Both are read every tick: the processor share is measured between two calls.
        auto cpu = load_.cpu();
        auto memory = load_.memory();
        WidgetReading reading;
        std::string caption, detail;
        auto add = [](std::string& text, const std::string& part) {
            text += (text.empty() ? "" : " · ") + part;
        };
        if (settings.showsCPU) {
            add(caption, cpu ? "CPU " + percent(*cpu) : "CPU measuring");
            if (cpu) reading.progress = *cpu;
        }
        if (settings.showsMemory) {
            add(settings.showsCPU ? detail : caption,
                memory ? "Memory " + percent(*memory) : "Memory unknown");
            if (!settings.showsCPU && memory) reading.progress = *memory;
        }
        if (!settings.showsCPU && !settings.showsMemory) caption = "Activity";
        if (settings.showsCPU && !cpu && settings.showsMemory && !memory && !firstRead_)
            return troubled("no readings");
        firstRead_ = false;
        reading.caption = caption;
        if (!detail.empty()) reading.detail = detail;
        return reading;
    }

  private:
    SystemLoad& load_;
    bool firstRead_ = true;
};

class NetworkWidget final : public PolledWidget {
  public:
    static constexpr double interval = 2;
    NetworkWidget(DockWidget widget, NetworkCounters& counters)
        : PolledWidget(std::move(widget), interval), counters_(counters) {}

  protected:
    void settingsChanged() override { previous_.reset(); }

    WidgetReading read(Date now) override {
        auto interfaces = counters_.read();
        const auto& chosen = widget_.settings<NetworkSettings>()->interface;
        auto found = std::find_if(interfaces.begin(), interfaces.end(), [&](const InterfaceCounters& each) {
            return chosen ? each.name == *chosen : each.isActive;
        });
        if (found == interfaces.end()) {
            previous_.reset();
            return troubled(chosen ? "no interface " + *chosen : std::string("no network"));
        }
        auto previous = previous_;
        previous_ = Sample{*found, now};
        if (!previous || previous->counters.name != found->name)
            return {.caption = "measuring", .detail = found->name};
        double seconds = now - previous->at;
        auto down = ByteRate::between(previous->counters.receivedBytes, found->receivedBytes, seconds);
        auto up = ByteRate::between(previous->counters.sentBytes, found->sentBytes, seconds);
        // A restarted counter says nothing about this interval: measure again from here.
        if (!down || !up) return {.caption = "measuring", .detail = found->name};
        return {.caption = "↓ " + ByteRate::text(*down),
                .detail = "↑ " + ByteRate::text(*up) + "  " + found->name};
    }

  private:
    struct Sample {
        InterfaceCounters counters;
        Date at;
    };
    NetworkCounters& counters_;
    std::optional<Sample> previous_;
};

class FansWidget final : public PolledWidget {
  public:
    static constexpr double interval = 2;
    FansWidget(DockWidget widget, FanSensors& sensors)
        : PolledWidget(std::move(widget), interval), sensors_(sensors) {}

  protected:
    WidgetReading read(Date) override {
        auto fans = sensors_.read();
        if (fans.empty()) return troubled("no fans");
        // The fastest fan is the one a person hears.
        const auto& loudest = *std::max_element(
            fans.begin(), fans.end(), [](const FanReading& a, const FanReading& b) { return a.rpm < b.rpm; });
        WidgetReading reading{
            .caption = std::to_string(static_cast<long long>(std::lround(loudest.rpm))) + " rpm",
            .detail = fans.size() == 1 ? loudest.name : std::to_string(fans.size()) + " fans"};
        if (loudest.minimumRPM && loudest.maximumRPM && *loudest.maximumRPM > *loudest.minimumRPM)
            reading.progress = std::clamp(
                (loudest.rpm - *loudest.minimumRPM) / (*loudest.maximumRPM - *loudest.minimumRPM), 0.0, 1.0);
        return reading;
    }

  private:
    FanSensors& sensors_;
};

class MusicWidget final : public PolledWidget {
  public:
    static constexpr double interval = 5;
    MusicWidget(DockWidget widget, NowPlaying& music)
        : PolledWidget(std::move(widget), interval), music_(music) {}

  protected:
    void act(Date) override { music_.togglePlayPause(); }
    WidgetReading read(Date) override {
        auto track = music_.current();
        if (!track) return {.caption = "Not playing"};
        WidgetReading reading{.caption = track->title.empty() ? std::string("Unknown track") : track->title};
        std::string detail = track->artist;
        if (!track->isPlaying) detail += detail.empty() ? "Paused" : " (paused)";
        if (!detail.empty()) reading.detail = detail;
        if (track->position && track->duration && *track->duration > 0)
            reading.progress = std::clamp(*track->position / *track->duration, 0.0, 1.0);
        return reading;
    }

  private:
    NowPlaying& music_;
};

class ShortcutWidget final : public StillWidget {
  public:
    ShortcutWidget(DockWidget widget, DesktopActions& desktop)
        : StillWidget(std::move(widget)), desktop_(desktop) {}

  protected:
    void settingsChanged() override { failed_ = false; }
    void act(Date) override {
        const auto& name = widget_.settings<ShortcutSettings>()->name;
        failed_ = !name.empty() && !desktop_.runShortcut(name);
    }
    WidgetReading read(Date) override {
        const auto& name = widget_.settings<ShortcutSettings>()->name;
        if (name.empty()) return {.caption = "Shortcut", .detail = "Choose a shortcut"};
        if (failed_) return {.caption = name, .trouble = "could not run"};
        return {.caption = name};
    }

  private:
    DesktopActions& desktop_;
    bool failed_ = false;
};

class AirDropWidget final : public StillWidget {
  public:
    AirDropWidget(DockWidget widget, DesktopActions& desktop)
        : StillWidget(std::move(widget)), desktop_(desktop) {}

  protected:
    void act(Date) override { failed_ = !desktop_.openAirDrop(); }
    WidgetReading read(Date) override {
        if (failed_) return {.caption = "AirDrop", .trouble = "could not open"};
        return {.caption = "AirDrop"};
    }

  private:
    DesktopActions& desktop_;
    bool failed_ = false;
};

class KeyboardLockWidget final : public LiveWidget {
  public:
    KeyboardLockWidget(DockWidget widget, DesktopActions& desktop)
        : LiveWidget(std::move(widget)), desktop_(desktop) {}
    ~KeyboardLockWidget() override {
        // Nobody is left locked out by a widget that went away.
        if (lockedAt_) desktop_.unlockKeyboard();
    }

  protected:
    void act(Date now) override {
        if (lockedAt_) {
            desktop_.unlockKeyboard();
            lockedAt_.reset();
            return;
        }
        failed_ = !desktop_.lockKeyboard(widget_.settings<KeyboardLockSettings>()->locksPointer);
        if (!failed_) lockedAt_ = now;
    }
    WidgetReading read(Date now) override {
        if (auto end = unlockAt(); end && now >= *end) {
            desktop_.unlockKeyboard();
            lockedAt_.reset();
        }
        const auto& settings = *widget_.settings<KeyboardLockSettings>();
        if (failed_) return {.caption = "Unlocked", .trouble = "no permission to lock"};
        if (!lockedAt_) return {.caption = "Unlocked", .detail = "Click to lock"};
        return {.caption = "Locked",
                .detail = settings.autoUnlockMinutes > 0
                              ? "Unlocks by itself in " + std::to_string(settings.autoUnlockMinutes) + " min"
                              : "Hold the unlock keys " + std::to_string(settings.holdSeconds) + " s"};
    }
    std::optional<Date> plan(Date) const override { return unlockAt(); }

  private:
    std::optional<Date> unlockAt() const {
        auto minutes = widget_.settings<KeyboardLockSettings>()->autoUnlockMinutes;
        if (!lockedAt_ || minutes <= 0) return std::nullopt;
        return *lockedAt_ + minutes * 60.0;
    }

    DesktopActions& desktop_;
    std::optional<Date> lockedAt_;
    bool failed_ = false;
};

class PetWidget final : public PolledWidget {
  public:
    PetWidget(DockWidget widget, SystemLoad& load) : PolledWidget(std::move(widget), 2), load_(load) {}

  protected:
    WidgetReading read(Date) override {
        const auto& settings = *widget_.settings<PetSettings>();
        auto cpu = load_.cpu();
        auto share = settings.follows == PetMetric::cpu ? cpu : load_.memory();
        std::string name(caseName(settings.species));
        name[0] = static_cast<char>(std::toupper(static_cast<unsigned char>(name[0])));
        if (!share)
            return {.caption = name,
                    .detail = settings.follows == PetMetric::cpu ? "CPU measuring" : "Memory unknown"};
        // The pet's mood follows the load the way its pace does: calm when idle, racing when busy.
        std::string mood = *share < 0.25 ? "Resting" : *share < 0.7 ? "Playing" : "Racing";
        return {.caption = name + " " + mood,
                .detail =
                    std::string(settings.follows == PetMetric::cpu ? "CPU " : "Memory ") + percent(*share),
                .progress = *share};
    }

  private:
    SystemLoad& load_;
};

} // namespace

std::unique_ptr<LiveWidget> makeSystemWidget(const DockWidget& widget, const LiveWidgetPorts& ports) {
    auto missing = [&] { return std::make_unique<MissingWidget>(widget, WidgetTrouble::notAvailableHere); };
    switch (widget.kind.which()) {
    case WidgetKind::battery:
        if (!ports.machine.power) return missing();
        return std::make_unique<BatteryWidget>(widget, *ports.machine.power);
    case WidgetKind::activity:
        if (!ports.machine.load) return missing();
        return std::make_unique<ActivityWidget>(widget, *ports.machine.load);
    case WidgetKind::network:
        if (!ports.machine.network) return missing();
        return std::make_unique<NetworkWidget>(widget, *ports.machine.network);
    case WidgetKind::fans:
        if (!ports.machine.fans) return missing();
        return std::make_unique<FansWidget>(widget, *ports.machine.fans);
    case WidgetKind::music:
        if (!ports.machine.music) return missing();
        return std::make_unique<MusicWidget>(widget, *ports.machine.music);
    case WidgetKind::shortcut:
        if (!ports.machine.desktop) return missing();
        return std::make_unique<ShortcutWidget>(widget, *ports.machine.desktop);
    case WidgetKind::airdrop:
        if (!ports.machine.desktop) return missing();
        return std::make_unique<AirDropWidget>(widget, *ports.machine.desktop);
    case WidgetKind::keyboardLock:
        if (!ports.machine.desktop) return missing();
        return std::make_unique<KeyboardLockWidget>(widget, *ports.machine.desktop);
    case WidgetKind::pet:
        if (!ports.machine.load) return missing();
        return std::make_unique<PetWidget>(widget, *ports.machine.load);
    default:
        return nullptr;
    }
}

} // namespace corvane::live
