#pragma once

#include "CorvaneCore/platform/DockPreferencesBackend.hpp"

#include <exception>
#include <utility>

namespace corvane {

/// Dock tiles held in memory. `failNextWrite` makes the next write throw that exception.
class InMemoryDockBackend final : public DockPreferencesBackend {
public:
    DockTiles readTiles() override {
        ++readCount;
        return tiles;
    }
    void writeTiles(const DockTiles& newTiles) override {
        ++writeCount;
        if (failNextWrite) std::rethrow_exception(std::exchange(failNextWrite, nullptr));
        tiles = newTiles;
    }
    std::filesystem::path url() const override { return "/Users/test/Library/Preferences/com.apple.dock.plist"; }

    DockTiles tiles;
    int readCount = 0;
    int writeCount = 0;
    std::exception_ptr failNextWrite;
};

} // namespace corvane
