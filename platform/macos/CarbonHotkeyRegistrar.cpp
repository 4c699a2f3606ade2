#include "platform/macos/CarbonHotkeyRegistrar.hpp"

#include <Carbon/Carbon.h>

namespace corvane {

namespace {
OSStatus onHotkeyEvent(EventHandlerCallRef, EventRef event, void* context) {
    auto* self = static_cast<std::function<void(std::uint32_t)>*>(context);
    EventHotKeyID hotkeyID{};
    OSStatus status = GetEventParameter(event, kEventParamDirectObject, typeEventHotKeyID, nullptr,
                                        sizeof hotkeyID, nullptr, &hotkeyID);
    if (status == noErr && *self) (*self)(hotkeyID.id);
    return status;
}
} // namespace

CarbonHotkeyRegistrar::~CarbonHotkeyRegistrar() {
    if (handlerRef_) RemoveEventHandler(static_cast<EventHandlerRef>(handlerRef_));
}

bool CarbonHotkeyRegistrar::installHandler(std::uint32_t signature, std::function<void(std::uint32_t)> onPress) {
    signature_ = signature;
    onPress_ = std::move(onPress);
    EventTypeSpec pressed{kEventClassKeyboard, kEventHotKeyPressed};
    EventHandlerRef ref = nullptr;
    OSStatus status = InstallEventHandler(GetApplicationEventTarget(), NewEventHandlerUPP(onHotkeyEvent), 1, &pressed,
                                          &onPress_, &ref);
    handlerRef_ = ref;
    return status == noErr;
}

HotkeyRegistrar::Registration CarbonHotkeyRegistrar::registerHotkey(std::uint16_t keyCode, std::uint32_t modifiers,
                                                                     std::uint32_t signature, std::uint32_t id) {
    EventHotKeyID hotkeyID{signature, id};
    EventHotKeyRef ref = nullptr;
    OSStatus status = RegisterEventHotKey(keyCode, modifiers, hotkeyID, GetApplicationEventTarget(), 0, &ref);
    Registration registration;
    registration.status = status;
    if (status == noErr && ref) registration.ref = reinterpret_cast<std::uintptr_t>(ref);
    return registration;
}

void CarbonHotkeyRegistrar::unregisterHotkey(std::uintptr_t ref) {
    UnregisterEventHotKey(reinterpret_cast<EventHotKeyRef>(ref));
}

} // namespace corvane
