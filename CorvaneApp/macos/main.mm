// Corvane.app: the menu-bar application. Everything it decides lives in the portable library;
// this file only brings up AppKit, the application's state through AppHost, and the views that
// draw that state.

#include "CorvaneApp/api/CommandApi.hpp"
#include "CorvaneApp/cli/LiveReaders.hpp"
#include "CorvaneApp/cli/SystemToolServices.hpp"
#include "CorvaneApp/bar/BarClicks.hpp"
#include "CorvaneApp/macos/BarPanel.hpp"
#include "CorvaneApp/macos/SettingsWindow.hpp"
#include "CorvaneApp/macos/StatusMenu.hpp"
#include "CorvaneApp/shell/AppHost.hpp"
#include "CorvaneApp/shell/LivePlatform.hpp"
#include "platform/macos/CFCalendarAdapter.hpp"
#include "platform/macos/MacUserAlerts.hpp"

#import <AppKit/AppKit.h>

#include <memory>
#include <optional>
#include <sstream>
#include <string>
#include <vector>

using namespace corvane;

/// Hands AppKit's launch and termination to the handlers the application installs.
@interface CorvaneAppDelegate : NSObject <NSApplicationDelegate>
@property(nonatomic, copy) void (^launchHandler)(void);
@property(nonatomic, copy) void (^terminateHandler)(void);
@end

@implementation CorvaneAppDelegate

- (void)applicationDidFinishLaunching:(NSNotification*)notification {
    dispatch_async(dispatch_get_main_queue(), ^{
      // Windows that only carried the launch, which a user must never see.
      for (NSWindow* window in NSApp.windows)
          if ([window.identifier hasPrefix:@"corvane.bootstrap"]) [window close];
      if (self.launchHandler) self.launchHandler();
    });
}

- (void)applicationWillTerminate:(NSNotification*)notification {
    if (self.terminateHandler) self.terminateHandler();
}

- (BOOL)applicationShouldTerminateAfterLastWindowClosed:(NSApplication*)sender {
    return NO;
}

@end

namespace {

NSMenuItem* menuItem(NSString* title, SEL action, NSString* key, NSEventModifierFlags modifiers = NSEventModifierFlagCommand) {
    NSMenuItem* item = [[NSMenuItem alloc] initWithTitle:title action:action keyEquivalent:key];
    item.keyEquivalentModifierMask = modifiers;
    return item;
}

/// A menu bar of its own is never shown for an application without a Dock icon, yet its key
/// equivalents are what make ⌘C, ⌘V and ⌘A work in the fields of panels, alerts and the window,
/// and ⌘W close the window.
NSMenu* mainMenu() {
    NSMenu* bar = [NSMenu new];
    NSMenu* appMenu = [[NSMenu alloc] initWithTitle:@"Corvane"];
    [appMenu addItem:menuItem(@"Close Window", @selector(performClose:), @"w")];
    [appMenu addItem:menuItem(@"Quit Corvane", @selector(terminate:), @"q")];
    NSMenu* edit = [[NSMenu alloc] initWithTitle:@"Edit"];
    [edit addItem:menuItem(@"Undo", @selector(undo:), @"z")];
    [edit addItem:menuItem(@"Redo", @selector(redo:), @"z", NSEventModifierFlagCommand | NSEventModifierFlagShift)];
    [edit addItem:[NSMenuItem separatorItem]];
    [edit addItem:menuItem(@"Cut", @selector(cut:), @"x")];
    [edit addItem:menuItem(@"Copy", @selector(copy:), @"c")];
    [edit addItem:menuItem(@"Paste", @selector(paste:), @"v")];
    [edit addItem:menuItem(@"Select All", @selector(selectAll:), @"a")];
    for (NSMenu* menu in @[ appMenu, edit ]) {
        NSMenuItem* title = [[NSMenuItem alloc] initWithTitle:menu.title action:nil keyEquivalent:@""];
        title.submenu = menu;
        [bar addItem:title];
    }
    return bar;
}

/// Everything that lives as long as the application, in the order it comes up.
struct Application {
    // The tool's services: the window runs its commands, and the connected widgets read through
    // them. Made first, so that they outlive everything that uses them.
    std::unique_ptr<SystemToolServices> tools;
    std::ostringstream unprinted;
    std::unique_ptr<ToolContext> readers;
    std::unique_ptr<LivePlatform> live;
    std::unique_ptr<AppHost> host;
    CFCalendarAdapter calendar;
    std::unique_ptr<StatusMenu> menu;
    std::unique_ptr<BarPanel> bar;
    // The window and what answers its pages, made when it is first asked for.
    std::unique_ptr<CommandApi> api;
    std::unique_ptr<SettingsWindow> window;
};

Application& application() {
    static Application instance;
    return instance;
}

void showPage(const std::string& page) {
    auto& running = application();
    if (!running.window) {
        // The bar and the menu follow what the window's calls wrote at once.
        auto follow = [] {
            application().live->platform().mainQueue.post([] { application().host->lookAtDataFiles(); });
        };
        running.api = std::make_unique<CommandApi>(
            running.tools->services(),
            CommandApi::Options{.dataDirectory = running.host->dataDirectory(), .afterCall = follow});
        running.window = std::make_unique<SettingsWindow>(*running.api);
    }
    running.window->open(page);
}

/// A "--widget" request: the tile's own action where the kind has one in place, else the
/// widget's page; a kind with no widget placed shows what can be added.
void showWidget(const std::string& kind) {
    auto& running = application();
    auto& state = running.host->state();
    const Profile* active = nullptr;
    for (const auto& profile : state.profiles())
        if (profile.id == state.activeProfileId()) active = &profile;
    auto id = BarClicks::launchedWidget(kind, state.widgetStore().file(), active);
    if (!id) return showPage("widgets");
    auto* host = running.host->widgets();
    if (host && BarClicks::actsInPlace(*fromCaseName<WidgetKind>(kind))) {
        host->activate(*id);
        return;
    }
    state.handleEditWidgetRequest(*id);
}

} // namespace

int main(int argc, char* argv[]) {
    @autoreleasepool {
        NSApplication* shared = NSApplication.sharedApplication;
        CorvaneAppDelegate* delegate = [CorvaneAppDelegate new];
        shared.delegate = delegate;
        shared.mainMenu = mainMenu();

        auto environment = currentEnvironment();
        auto dataDirectory = LivePlatform::defaultDataDirectory(environment);
        auto& running = application();
        running.tools = std::make_unique<SystemToolServices>();
        running.readers = std::make_unique<ToolContext>(
            ToolContext{running.tools->services(), running.unprinted, dataDirectory.string(), std::nullopt, nullptr, {}});
        running.live = std::make_unique<LivePlatform>(LivePlatform::Options{
            .environment = environment,
            .dataDirectory = dataDirectory,
            .isApplicationBundle = true,
            .connectWidgets = [](LiveWidgetPorts& ports) { addConnectedReaders(ports, *application().readers); },
        });
        // The bar follows every change of the workspace, wherever it was made. Settings, the
        // workspace editor and the widgets open in the window; a new workspace is made on the
        // workspaces page, which offers it.
        AppState::Callbacks callbacks{
            .onWorkspaceSwitch = [] { if (auto& bar = application().bar) bar->reload(); },
            .onShowSettings = [] { showPage("general"); },
            .onShowWorkspaces = [] { showPage("workspaces"); },
            .onNewProfile = [] { showPage("workspaces"); },
            .onEditWidget = [](const Uuid& widget) { showPage("widgets/" + widget.string()); },
            .onReconcileWidgetHelpers = [] { if (auto& bar = application().bar) bar->reload(); },
            .onShowPage = [](const std::string& page) { showPage(page); },
            .onOpenStack = [](const std::filesystem::path& folder) {
                if (auto& bar = application().bar) bar->openStack(folder);
            },
            .onShowWidgetPreview = [](const std::string& kind) { showWidget(kind); },
            .onSettingsChange = [](const AppSettings&) { if (auto& bar = application().bar) bar->reload(); },
            .onSwitchProgress =
                [](const std::optional<std::string>& workspace) {
                    if (auto& menu = application().menu) menu->showSwitching(workspace);
                },
        };
        running.host = std::make_unique<AppHost>(running.live->platform(), dataDirectory, std::move(callbacks),
                                                 LaunchRequests::parse(std::vector<std::string>(argv + 1, argv + argc)));

        running.menu = std::make_unique<StatusMenu>(running.host->state(), running.calendar);
        MacUserAlerts::setAttentionHandler([](UserAlerts::Attention attention) {
            if (auto& menu = application().menu) menu->requestAttention(attention);
        });

        // The own Dock bar comes once the application has finished launching.
        delegate.launchHandler = ^{
          auto& launched = application();
          launched.bar = std::make_unique<BarPanel>(launched.host->state(), launched.live->platform(),
                                                    launched.host->dataDirectory(), launched.host->widgets());
          launched.host->setWidgetChangeHandler([](const std::vector<Uuid>& changed) {
              if (auto& bar = application().bar) bar->widgetsChanged(changed);
          });
        };
        delegate.terminateHandler = ^{
          auto& quitting = application();
          quitting.bar.reset();
          quitting.host->shutDown();
          // A call of the window or a widget's reading may still be running on its queue; the
          // process ends in a moment anyway, so what they use is left in place rather than
          // destroyed under them.
          (void)quitting.window.release();
          (void)quitting.api.release();
          (void)quitting.readers.release();
          (void)quitting.tools.release();
        };
        [shared run];
    }
    return 0;
}
