#pragma once

#include "CorvaneCore/bar/FolderStack.hpp"
#include "CorvaneCore/widgets/JSONValue.hpp"
#include "CorvaneCore/widgets/WidgetsFile.hpp"
#include "CorvaneCore/workspace/Profile.hpp"

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace corvane {

/// What the shell does with the clicks and launch requests that reach a widget or a folder; the
/// windows and menus that show the result are the platform's.
namespace BarClicks {

/// Whether a click on a widget tile of `kind` does the kind's own action in place (pause a timer,
/// add a glass, play or pause the music, run the shortcut, open the newest file); the other kinds
/// open the widget's page, where there is more to see than the tile shows.
bool actsInPlace(WidgetKind kind);

/// A folder opened as a stack: its name, how the user chose to see it, and its items in that
/// order.
struct StackPanel {
    std::string title;
    StackOptions options;
    std::vector<StackItem> items;

    bool operator==(const StackPanel&) const = default;
};

/// The stack of `folder`, with the options stored for it in `stackOptions` (the setting that maps
/// a folder's path to its options; a path with or without a trailing slash is the same folder).
/// A folder that cannot be listed gives an empty stack.
StackPanel stackPanel(const std::filesystem::path& folder, const JSONValue& stackOptions,
                      const FolderStack::Lister& list = FolderStack::listFolder);

/// The widget a "--widget" launch request names: the first widget of that kind placed on the
/// active workspace, else the first of that kind anywhere; none for an unknown kind or when no
/// widget of it exists.
std::optional<Uuid> launchedWidget(const std::string& kind, const WidgetsFile& widgets, const Profile* active);

} // namespace BarClicks

} // namespace corvane
