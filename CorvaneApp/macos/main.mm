// Corvane.app: the menu-bar application. Everything it decides lives in the portable library;
// this file only brings up AppKit, the application's state through AppHost, and the views that
// draw that state.

#include "CorvaneApp/macos/BarPanel.hpp"
#include "CorvaneApp/macos/StatusMenu.hpp"
#include "CorvaneApp/shell/AppHost.hpp"
#include "CorvaneApp/shell/LivePlatform.hpp"
#include "platform/macos/CFCalendarAdapter.hpp"

#import <AppKit/AppKit.h>

#include <memory>
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

/// Everything that lives as long as the application, in the order it comes up.
struct Application {
    std::unique_ptr<LivePlatform> live;
    std::unique_ptr<AppHost> host;
    CFCalendarAdapter calendar;
    std::unique_ptr<StatusMenu> menu;
    std::unique_ptr<BarPanel> bar;
};

Application& application() {
    static Application instance;
    return instance;
}

} // namespace

int main(int argc, char* argv[]) {
    @autoreleasepool {
        NSApplication* app = NSApplication.sharedApplication;
        CorvaneAppDelegate* delegate = [CorvaneAppDelegate new];
        app.delegate = delegate;

        auto environment = currentEnvironment();
        auto dataDirectory = LivePlatform::defaultDataDirectory(environment);
        auto& running = application();
        running.live = std::make_unique<LivePlatform>(LivePlatform::Options{
            .environment = environment,
            .dataDirectory = dataDirectory,
            .isApplicationBundle = true,
        });
        // The bar follows every change of the workspace, wherever it was made.
        AppState::Callbacks callbacks{
            .onWorkspaceSwitch = [] { if (auto& bar = application().bar) bar->reload(); },
            .onReconcileWidgetHelpers = [] { if (auto& bar = application().bar) bar->reload(); },
            .onSettingsChange = [](const AppSettings&) { if (auto& bar = application().bar) bar->reload(); },
        };
        running.host = std::make_unique<AppHost>(running.live->platform(), dataDirectory, std::move(callbacks),
                                                 LaunchRequests::parse(std::vector<std::string>(argv + 1, argv + argc)));

        running.menu = std::make_unique<StatusMenu>(running.host->state(), running.calendar);

        // The own Dock bar comes once the application has finished launching.
        delegate.launchHandler = ^{
          auto& app = application();
          app.bar = std::make_unique<BarPanel>(app.host->state(), app.live->platform(), app.host->dataDirectory());
        };
        delegate.terminateHandler = ^{
          application().bar.reset();
          application().host->shutDown();
        };
        [app run];
    }
    return 0;
}
