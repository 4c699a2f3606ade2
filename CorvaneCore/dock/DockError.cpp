#include "CorvaneCore/dock/DockError.hpp"

namespace corvane {

DockError::DockError(Kind kind_, std::string payload_, std::string underlying_)
    : std::runtime_error(describe(kind_, payload_, underlying_)), kind(kind_), payload(std::move(payload_)),
      underlying(std::move(underlying_)), description_(what()) {}

std::string DockError::describe(Kind kind, const std::string& payload, const std::string& underlying) {
    switch (kind) {
    case Kind::plistNotFound: return "Failed to locate dock plist at " + payload;
    case Kind::plistReadFailed: return "Failed to read dock plist at " + payload + " because " + underlying;
    case Kind::plistMalformed: return "Failed to decode dock plist at " + payload + " because " + underlying;
    case Kind::plistWriteFailed: return "Failed to write dock plist at " + payload + " because " + underlying;
    case Kind::unsupportedItemType:
        return "Failed to handle dock item of type " + payload + " because it is not supported";
    case Kind::dockReloadFailed: return "Failed to reload dock because " + payload;
    case Kind::fileNotFound: return "Failed to find file at " + payload;
    case Kind::profileNotFound: return "Failed to find profile with id " + payload;
    case Kind::noBackupAvailable: return "Cannot undo because there is no Dock backup yet";
    }
    return "Unknown dock error";
}

} // namespace corvane
