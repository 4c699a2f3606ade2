#pragma once

#include "CorvaneApp/bar/BarWidgetHost.hpp"
#include "CorvaneApp/shell/AppPlatform.hpp"
#include "CorvaneApp/state/AppState.hpp"

#include <filesystem>
#include <memory>

namespace corvane {

/// The own Dock bar's window: a borderless panel that does not take the focus, on the chosen
/// edge of the main screen, above normal windows and on every desktop. It shows what
/// `BarCompositor` draws of `BarWindowController`'s frame and forwards the pointer, presses,
/// drags and scrolls to the controller; the shell's part of each decision (opening, switching,
/// storing an edit) goes back to the state. The live widgets tick in the application's widget
/// host; their tiles show their readings, and a click does the kind's action. Main thread.
class BarPanel {
public:
    /// `widgets` may be none: widget tiles then keep their own text.
    BarPanel(AppState& state, AppPlatform& platform, const std::filesystem::path& dataDirectory,
             BarWidgetHost* widgets);
    ~BarPanel();
    BarPanel(const BarPanel&) = delete;
    BarPanel& operator=(const BarPanel&) = delete;

    /// The workspace, its widgets, the settings or the screen changed: the bar shows them, or
    /// goes away while the own Dock is off.
    void reload();
    /// These widgets' tiles show something new.
    void widgetsChanged(const std::vector<Uuid>& changed);
    /// Opens a folder as a stack, at the pointer.
    void openStack(const std::filesystem::path& folder);

private:
    struct Views;
    std::unique_ptr<Views> views_;
};

} // namespace corvane
