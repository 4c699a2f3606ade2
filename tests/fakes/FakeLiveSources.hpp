#pragma once

#include "CorvaneCore/platform/CalendarEvents.hpp"
#include "CorvaneCore/platform/DesktopActions.hpp"
#include "CorvaneCore/platform/NetworkCounters.hpp"
#include "CorvaneCore/platform/NowPlaying.hpp"
#include "CorvaneCore/platform/PowerSource.hpp"

#include <vector>

namespace corvane {

struct FakePowerSource final : PowerSource {
    std::optional<PowerReading> reading;
    std::optional<PowerReading> read() override { return reading; }
};

struct FakeNetworkCounters final : NetworkCounters {
    std::vector<InterfaceCounters> interfaces;
    std::vector<InterfaceCounters> read() override { return interfaces; }
};

struct FakeNowPlaying final : NowPlaying {
    std::optional<PlayingTrack> track;
    std::optional<PlayingTrack> current() override { return track; }
    bool togglePlayPause() override {
        if (!track) return false;
        track->isPlaying = !track->isPlaying;
        return true;
    }
};

struct FakeCalendarEvents final : CalendarEvents {
    bool granted = true;
    std::vector<CalendarEvent> eventList;
    std::vector<ReminderItem> reminderList;
    std::optional<std::vector<CalendarEvent>> events(Date from, Date to) override {
        if (!granted) return std::nullopt;
        std::vector<CalendarEvent> overlapping;
        for (const auto& event : eventList)
            if (event.end > from && event.start < to) overlapping.push_back(event);
        return overlapping;
    }
    std::optional<std::vector<ReminderItem>> reminders() override {
        if (!granted) return std::nullopt;
        return reminderList;
    }
};

/// Records what was asked; each request succeeds unless `refuses`.
struct RecordingDesktopActions final : DesktopActions {
    bool refuses = false;
    std::vector<std::string> requests;
    bool open(const std::string& target, const std::optional<std::string>& app) override {
        requests.push_back("open " + target + (app ? " with " + *app : ""));
        return !refuses;
    }
    bool reveal(const std::string& path) override {
        requests.push_back("reveal " + path);
        return !refuses;
    }
    bool runShortcut(const std::string& name) override {
        requests.push_back("shortcut " + name);
        return !refuses;
    }
    bool openAirDrop() override {
        requests.push_back("airdrop");
        return !refuses;
    }
    bool lockKeyboard(bool includesPointer) override {
        requests.push_back(includesPointer ? "lock keyboard and pointer" : "lock keyboard");
        return !refuses;
    }
    void unlockKeyboard() override { requests.push_back("unlock"); }
};

} // namespace corvane
