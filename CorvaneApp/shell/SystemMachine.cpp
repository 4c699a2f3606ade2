#include "CorvaneApp/shell/SystemMachine.hpp"

#ifdef __APPLE__
#include "platform/macos/EventKitCalendarEvents.hpp"
#include "platform/macos/IOKitPowerSource.hpp"
#include "platform/macos/IfaddrsNetworkCounters.hpp"
#include "platform/macos/MacDesktopActions.hpp"
#include "platform/macos/MacSystemLoad.hpp"
#include "platform/macos/MusicNowPlaying.hpp"
#else
#include "platform/posix/ProcNetworkCounters.hpp"
#include "platform/posix/ProcSystemLoad.hpp"
#include "platform/posix/SysPowerSource.hpp"
#endif

namespace corvane {

#ifdef __APPLE__
// Fans have no reading without the SMC, which is not public.
struct SystemMachine::Adapters {
    MacSystemLoad load;
    IOKitPowerSource power;
    IfaddrsNetworkCounters network;
    MusicNowPlaying music;
    EventKitCalendarEvents events;
    MacDesktopActions desktop;

    MachineSources sources() {
        return {.load = &load, .power = &power, .network = &network, .music = &music, .events = &events,
                .desktop = &desktop};
    }
};
#else
// Music, calendars, fans and desktop actions have no reading here.
struct SystemMachine::Adapters {
    ProcSystemLoad load;
    SysPowerSource power;
    ProcNetworkCounters network;

    MachineSources sources() { return {.load = &load, .power = &power, .network = &network}; }
};
#endif

SystemMachine::SystemMachine() : adapters_(std::make_unique<Adapters>()) {}
SystemMachine::~SystemMachine() = default;

MachineSources SystemMachine::sources() const { return adapters_->sources(); }

} // namespace corvane
