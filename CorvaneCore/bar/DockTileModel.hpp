#pragma once

#include "CorvaneCore/bar/RunningApp.hpp"
#include "CorvaneCore/support/Uuid.hpp"
#include "CorvaneCore/widgets/WidgetAddress.hpp"
#include "CorvaneCore/workspace/DockItem.hpp"

#include <optional>
#include <string>
#include <variant>
#include <vector>

namespace corvane {

/// One tile of the own Dock bar. Its id carries the index of the stored item it stands for, so
/// that edits on the bar find their way back to the workspace's items without a side table.
struct DockTileModel {
    /// The Finder, the launcher, a pinned or an unpinned running application, or the app itself.
    struct App {
        /// None for an unpinned running application and for the app's own tile.
        std::optional<AppEntry> entry;
        /// The process that lights this tile, when one does.
        std::optional<RunningApp> running;
        bool operator==(const App&) const = default;
    };
    struct Widget {
        WidgetAddress address;
        /// The placeholder that holds the widget's place among the workspace's items.
        AppEntry entry;
        bool operator==(const Widget&) const = default;
    };
    /// Several widgets shown as one tile; the members are widget tiles.
    struct Stack {
        Uuid id;
        std::vector<DockTileModel> members;
        bool operator==(const Stack&) const;
    };

    using Kind = std::variant<App, Widget, Stack, SpacerVariant, FileEntry, URLEntry>;

    std::string id;
    Kind kind;

    const App* app() const { return std::get_if<App>(&kind); }
    const Widget* widget() const { return std::get_if<Widget>(&kind); }
    const Stack* stack() const { return std::get_if<Stack>(&kind); }
    const SpacerVariant* spacer() const { return std::get_if<SpacerVariant>(&kind); }
    const FileEntry* file() const { return std::get_if<FileEntry>(&kind); }
    const URLEntry* url() const { return std::get_if<URLEntry>(&kind); }

    bool operator==(const DockTileModel&) const = default;
};

inline bool DockTileModel::Stack::operator==(const Stack& other) const {
    return id == other.id && members == other.members;
}

} // namespace corvane
