#pragma once

#include "CorvaneCore/dock/DockTiles.hpp"

#include <filesystem>

namespace corvane {

/// Where the Dock's tile arrays are kept: the live preferences domain on macOS, a property-list
/// file elsewhere. Called from the thread that swaps the Dock.
class DockPreferencesBackend {
public:
    virtual ~DockPreferencesBackend() = default;

    /// Both arrays; a missing array is empty. Throws `DockError`.
    virtual DockTiles readTiles() = 0;
    /// Replaces both arrays, keeping every other preference. Throws `DockError`.
    virtual void writeTiles(const DockTiles& tiles) = 0;
    /// The file every error of this backend names.
    virtual std::filesystem::path url() const = 0;
};

} // namespace corvane
