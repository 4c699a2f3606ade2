#pragma once

namespace corvane {

class CalendarEvents;
class DesktopActions;
class FanSensors;
class NetworkCounters;
class NowPlaying;
class PowerSource;
class SystemLoad;

/// The machine's readings and desktop actions that the live widgets use. A pointer left empty
/// is a source this system does not have, and the widgets that need it say so.
struct MachineSources {
    SystemLoad* load = nullptr;
    PowerSource* power = nullptr;
    NetworkCounters* network = nullptr;
    NowPlaying* music = nullptr;
    CalendarEvents* events = nullptr;
    FanSensors* fans = nullptr;
    DesktopActions* desktop = nullptr;
};

} // namespace corvane
