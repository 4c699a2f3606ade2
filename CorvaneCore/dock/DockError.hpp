#pragma once

#include <stdexcept>
#include <string>

namespace corvane {

/// The one error of the workspace store and the Dock integration: a case, its payload, and the
/// fixed message the user sees.
class DockError : public std::runtime_error {
public:
    enum class Kind {
        plistNotFound,
        plistReadFailed,
        plistMalformed,
        plistWriteFailed,
        unsupportedItemType,
        dockReloadFailed,
        fileNotFound,
        profileNotFound,
        noBackupAvailable,
    };

    static DockError plistNotFound(std::string path) { return {Kind::plistNotFound, std::move(path), {}}; }
    static DockError plistReadFailed(std::string path, std::string underlying) {
        return {Kind::plistReadFailed, std::move(path), std::move(underlying)};
    }
    static DockError plistMalformed(std::string path, std::string underlying) {
        return {Kind::plistMalformed, std::move(path), std::move(underlying)};
    }
    static DockError plistWriteFailed(std::string path, std::string underlying) {
        return {Kind::plistWriteFailed, std::move(path), std::move(underlying)};
    }
    static DockError unsupportedItemType(std::string type) { return {Kind::unsupportedItemType, std::move(type), {}}; }
    static DockError dockReloadFailed(std::string reason) { return {Kind::dockReloadFailed, std::move(reason), {}}; }
    static DockError fileNotFound(std::string path) { return {Kind::fileNotFound, std::move(path), {}}; }
    static DockError profileNotFound(std::string id) { return {Kind::profileNotFound, std::move(id), {}}; }
    static DockError noBackupAvailable() { return {Kind::noBackupAvailable, {}, {}}; }

    Kind kind;
    /// The path, type, reason or id the case carries.
    std::string payload;
    /// The underlying reason of the plist cases that have one.
    std::string underlying;

    const std::string& errorDescription() const { return description_; }

    bool operator==(const DockError& other) const {
        return kind == other.kind && payload == other.payload && underlying == other.underlying;
    }

private:
    DockError(Kind kind, std::string payload, std::string underlying);
    static std::string describe(Kind kind, const std::string& payload, const std::string& underlying);

    std::string description_;
};

} // namespace corvane
