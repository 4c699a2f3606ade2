#include "CorvaneApp/macos/BarPanel.hpp"

#include "CorvaneApp/bar/BarClicks.hpp"
#include "CorvaneApp/bar/BarContent.hpp"
#include "CorvaneApp/bar/BarWatch.hpp"
#include "CorvaneApp/bar/BarWidgetHost.hpp"
#include "CorvaneApp/looks/IconOverrides.hpp"
#include "CorvaneApp/render/BarCompositor.hpp"
#include "CorvaneApp/render/BarIcons.hpp"
#include "CorvaneApp/macos/StackMenu.hpp"
#include "CorvaneCore/bar/DownloadsTile.hpp"

#import <AppKit/AppKit.h>

using namespace corvane;

/// Forwards the view's events, in its own top-down coordinates, to the handlers it is given, and
/// shows the last picture it was handed. The layer is AppKit's: a picture set on it directly
/// is lost on the next redisplay, so the view keeps the picture and puts it on the layer
/// whenever AppKit asks.
@interface CorvaneBarView : NSView
/// A CGImage.
@property(nonatomic, strong) id image;
@property(nonatomic) CGFloat imageScale;
@property(nonatomic, copy) void (^onPointer)(NSPoint point, BOOL inside);
@property(nonatomic, copy) void (^onPress)(NSPoint point, int phase);
@property(nonatomic, copy) void (^onScroll)(CGFloat delta, NSTimeInterval at, BOOL precise);
@end

@implementation CorvaneBarView

- (BOOL)isFlipped {
    return YES;
}

- (BOOL)wantsUpdateLayer {
    return YES;
}

- (void)updateLayer {
    self.layer.contents = self.image;
    self.layer.contentsScale = self.imageScale;
}

- (BOOL)acceptsFirstMouse:(NSEvent*)event {
    return YES;
}

- (void)updateTrackingAreas {
    [super updateTrackingAreas];
    for (NSTrackingArea* area in self.trackingAreas) [self removeTrackingArea:area];
    NSTrackingAreaOptions options = NSTrackingMouseEnteredAndExited | NSTrackingMouseMoved |
                                    NSTrackingActiveAlways | NSTrackingInVisibleRect;
    [self addTrackingArea:[[NSTrackingArea alloc] initWithRect:NSZeroRect options:options owner:self userInfo:nil]];
}

- (NSPoint)local:(NSEvent*)event {
    return [self convertPoint:event.locationInWindow fromView:nil];
}

- (void)mouseMoved:(NSEvent*)event {
    self.onPointer([self local:event], YES);
}
- (void)mouseEntered:(NSEvent*)event {
    self.onPointer([self local:event], YES);
}
- (void)mouseExited:(NSEvent*)event {
    self.onPointer([self local:event], NO);
}
- (void)mouseDown:(NSEvent*)event {
    self.onPress([self local:event], 0);
}
- (void)mouseDragged:(NSEvent*)event {
    self.onPress([self local:event], 1);
}
- (void)mouseUp:(NSEvent*)event {
    self.onPress([self local:event], 2);
}
- (void)scrollWheel:(NSEvent*)event {
    // Across the bar's axis a vertical scroll steps, whatever the bar's edge.
    CGFloat delta = event.scrollingDeltaY != 0 ? event.scrollingDeltaY : event.scrollingDeltaX;
    self.onScroll(delta, event.timestamp, event.hasPreciseScrollingDeltas);
}

@end

namespace corvane {

namespace {

Rect rect(NSRect frame) { return {frame.origin.x, frame.origin.y, frame.size.width, frame.size.height}; }

NSURL* fileURL(const std::string& path) { return [NSURL fileURLWithPath:[NSString stringWithUTF8String:path.c_str()]]; }

/// Carries out what a click on a tile asks for; the widget windows belong to the state's shell.
void open(const BarClick& click, AppState& state, BarWidgetHost* widgets) {
    NSWorkspace* workspace = NSWorkspace.sharedWorkspace;
    switch (click.kind) {
    case BarClick::Kind::activateApp:
        // Opening a running application brings it forward through the system, which a
        // background app asking to be activated cannot count on; and an app with no window left
        // opens one, as it does from the system's Dock. Only an app with no known bundle is
        // activated by its process.
        if (click.target.empty()) {
            [[NSRunningApplication runningApplicationWithProcessIdentifier:click.pid.value_or(0)]
                activateWithOptions:NSApplicationActivateAllWindows];
            return;
        }
        [[fallthrough]];
    case BarClick::Kind::launchApp: {
        NSWorkspaceOpenConfiguration* configuration = [NSWorkspaceOpenConfiguration configuration];
        configuration.activates = YES;
        [workspace openApplicationAtURL:fileURL(click.target) configuration:configuration completionHandler:nil];
        return;
    }
    case BarClick::Kind::openFile:
        [workspace openURL:fileURL(click.target)];
        return;
    case BarClick::Kind::openStack:
        StackMenu::open(BarClicks::stackPanel(click.target, state.settings().stackOptions), NSEvent.mouseLocation);
        return;
    case BarClick::Kind::openLink:
        if (NSURL* url = [NSURL URLWithString:[NSString stringWithUTF8String:click.target.c_str()]]) [workspace openURL:url];
        return;
    case BarClick::Kind::openTrash:
        [workspace openURL:[NSFileManager.defaultManager URLForDirectory:NSTrashDirectory
                                                                inDomain:NSUserDomainMask
                                                       appropriateForURL:nil
                                                                  create:NO
                                                                   error:nil]];
        return;
    case BarClick::Kind::openWidget:
        if (click.id && widgets)
            for (const auto& widget : state.widgetStore().file().widgets)
                if (widget.id == *click.id && BarClicks::actsInPlace(widget.kind.which())) {
                    widgets->activate(widget.id);
                    return;
                }
        [[fallthrough]];
    case BarClick::Kind::openWidgetStack:
        if (click.id) state.handleEditWidgetRequest(*click.id);
        return;
    case BarClick::Kind::showApp:
        state.showSettings();
        return;
    }
}

} // namespace

struct BarPanel::Views {
    Views(AppState& appState, const AppPlatform& platform, const std::filesystem::path& dataDirectory,
          BarWidgetHost* liveWidgets)
        : state(appState), icons(dataDirectory), downloads(DownloadsTile::folder(platform.environment).string()),
          widgets(liveWidgets) {}

    AppState& state;
    IconOverrides icons;
    std::string downloads;
    BarWidgetHost* widgets;
    std::unique_ptr<BarWindowController> controller;
    std::unique_ptr<BarCompositor> compositor;
    std::unique_ptr<BarWatch> watch;
    NSPanel* panel = nil;
    CorvaneBarView* view = nil;
    NSTimer* frames = nil;
    id pointerMonitor = nil;
    id screenObserver = nil;

    static std::vector<BarScreen> screens() {
        std::vector<BarScreen> found;
        for (NSScreen* screen in NSScreen.screens) found.push_back({rect(screen.frame), screen.backingScaleFactor});
        return found;
    }

    /// The visibility rules, fed with the pointer wherever it is on screen and with the windows
    /// last read.
    void updateVisibility() {
        auto all = screens();
        auto screen = BarWindowController::home(all);
        if (!screen || !state.settings().usesOwnDock) return;
        const auto& settings = state.settings();
        NSPoint pointer = NSEvent.mouseLocation;
        auto windows = watch->windowsOn(screen->frame, all.front().frame.maxY());
        DockVisibility::Input input{.screenFrame = screen->frame,
                                    .barFrame = rect(panel.frame),
                                    .windowFrames = std::move(windows.windowFrames),
                                    .hidesWhenCovered = settings.hidesDockWhenCovered,
                                    .isFullScreen = windows.isFullScreen,
                                    .pointer = {pointer.x, pointer.y},
                                    .autohidesByPreference = settings.autoHidesDock.value_or(false),
                                    .position = settings.dockStyle.position};
        controller->updateVisibility(input, settings.dockRevealDelay.value_or(BarWindowController::defaultRevealDelay));
    }

    void draw() {
        auto changed = compositor->compose(controller->scene(), controller->layout(), controller->frame());
        if (!changed) return;
        CGColorSpaceRef space = CGColorSpaceCreateWithName(kCGColorSpaceSRGB);
        CGContextRef context = CGBitmapContextCreate(const_cast<unsigned char*>(compositor->pixels()),
                                                     static_cast<size_t>(compositor->pixelWidth()),
                                                     static_cast<size_t>(compositor->pixelHeight()), 8,
                                                     static_cast<size_t>(compositor->stride()), space,
                                                     static_cast<CGBitmapInfo>(kCGImageAlphaPremultipliedFirst) |
                                                         static_cast<CGBitmapInfo>(kCGBitmapByteOrder32Little));
        view.image = (__bridge_transfer id)CGBitmapContextCreateImage(context);
        view.imageScale = compositor->scale();
        view.needsDisplay = YES;
        CGContextRelease(context);
        CGColorSpaceRelease(space);
    }

    /// Steps the lens at the display's pace while it moves, and stops when it rests.
    void animate() {
        if (frames) return;
        frames = [NSTimer scheduledTimerWithTimeInterval:1.0 / 120
                                                 repeats:YES
                                                   block:^(NSTimer* timer) {
                                                     bool moving = controller->tick(timer.timeInterval);
                                                     draw();
                                                     if (!moving) {
                                                         [timer invalidate];
                                                         frames = nil;
                                                     }
                                                   }];
    }

    /// On the home screen, at its density: the bar may have come from a screen of another.
    void place(const BarScreen& screen) {
        Rect placed = controller->panelFrame(screen.frame);
        [panel setFrame:NSMakeRect(placed.x, placed.y, placed.width, placed.height) display:NO];
        compositor->setScale(screen.scale);
    }

    std::function<std::optional<std::string>(const Uuid&)> captions() const {
        if (!widgets) return {};
        return [host = widgets](const Uuid& id) { return host->caption(id); };
    }

    /// Live widgets show something new: their tiles alone are drawn again.
    void widgetsChanged(const std::vector<Uuid>& changed) {
        if (!widgets || !state.settings().usesOwnDock || !panel.visible) return;
        if (controller->updateCaptions(changed, captions())) draw();
    }

    void reload() {
        const auto& settings = state.settings();
        // Reading windows costs the window server work: only while they can send the bar away.
        watch->watchCovering(settings.usesOwnDock && settings.hidesDockWhenCovered);
        if (!settings.usesOwnDock) {
            [panel orderOut:nil];
            return;
        }
        const Profile* active = nullptr;
        for (const auto& profile : state.profiles())
            if (profile.id == state.activeProfileId()) active = &profile;
        const auto& style = settings.dockStyle;
        auto screen = BarWindowController::home(screens());
        double length = 0;
        if (screen) length = style.position == DockPosition::bottom ? screen->frame.width : screen->frame.height;
        controller->show(barContent(active, state.widgetStore().file(), style,
                                          {.running = watch->applications(),
                                           .ownership = &state.workspaceApps().ownership,
                                           .downloads = downloads,
                                           .icons = barIcons(icons),
                                           .screenLength = length,
                                           .captions = captions()}));
        if (screen) place(*screen);
        draw();
        // The rules decide at once, so the bar never flashes up over a full-screen app or a
        // covering window before the pointer first moves.
        updateVisibility();
        // An auto-hidden bar stays hidden until the pointer brings it back.
        if (controller->isShown()) [panel orderFrontRegardless];
    }
};

BarPanel::BarPanel(AppState& state, AppPlatform& platform, const std::filesystem::path& dataDirectory,
                   BarWidgetHost* widgets)
    : views_(std::make_unique<Views>(state, platform, dataDirectory, widgets)) {
    auto* views = views_.get();
    views->controller = std::make_unique<BarWindowController>(
        platform.scheduler,
        BarWindowController::Callbacks{
            .onClick = [views](const BarClick& click) { open(click, views->state, views->widgets); },
            .onItemsChanged =
                [views](std::vector<DockItem> items) {
                    if (!views->state.activeProfileId()) return;
                    for (auto profile : views->state.profiles())
                        if (profile.id == *views->state.activeProfileId()) {
                            profile.items = std::move(items);
                            views->state.updateProfile(profile);
                        }
                    views->reload();
                },
            .onStep = [views](int step) { views->state.cycleWorkspace(step); },
            .onVisibilityChange =
                [views](bool shown) {
                    if (shown) [views->panel orderFrontRegardless];
                    else [views->panel orderOut:nil];
                },
        });
    auto home = BarWindowController::home(Views::screens());
    views->compositor = std::make_unique<BarCompositor>(home ? home->scale : 2);
    views->watch = std::make_unique<BarWatch>(platform.scheduler, platform.applications, platform.windows,
                                              BarWatch::Callbacks{
                                                  .onApplicationsChange = [views] { views->reload(); },
                                                  .onWindowsChange = [views] { views->updateVisibility(); },
                                              });

    views->panel = [[NSPanel alloc] initWithContentRect:NSMakeRect(0, 0, 100, 100)
                                              styleMask:NSWindowStyleMaskBorderless | NSWindowStyleMaskNonactivatingPanel
                                                backing:NSBackingStoreBuffered
                                                  defer:NO];
    views->panel.level = CGWindowLevelForKey(kCGDockWindowLevelKey);
    views->panel.collectionBehavior = NSWindowCollectionBehaviorCanJoinAllSpaces | NSWindowCollectionBehaviorStationary |
                                      NSWindowCollectionBehaviorIgnoresCycle |
                                      NSWindowCollectionBehaviorFullScreenAuxiliary;
    views->panel.opaque = NO;
    views->panel.backgroundColor = NSColor.clearColor;
    views->panel.hasShadow = NO;
    views->panel.hidesOnDeactivate = NO;
    views->panel.becomesKeyOnlyIfNeeded = YES;

    views->view = [[CorvaneBarView alloc] initWithFrame:NSMakeRect(0, 0, 100, 100)];
    views->view.wantsLayer = YES;
    views->view.layerContentsRedrawPolicy = NSViewLayerContentsRedrawOnSetNeedsDisplay;
    views->view.onPointer = ^(NSPoint point, BOOL inside) {
      if (inside) views->controller->pointerMoved({point.x, point.y});
      else views->controller->pointerExited();
      views->updateVisibility();
      views->animate();
    };
    views->view.onPress = ^(NSPoint point, int phase) {
      Point at{point.x, point.y};
      if (phase == 0) views->controller->pressed(at);
      else if (phase == 1) views->controller->dragged(at);
      else views->controller->released(at);
      views->animate();
    };
    views->view.onScroll = ^(CGFloat delta, NSTimeInterval at, BOOL precise) {
      views->controller->scrolled(delta, at, precise);
    };
    views->panel.contentView = views->view;
    // Pointer moves over other applications' windows reach a global monitor only; over the bar
    // itself, the view's own events do. A drag or a release may have moved or resized a window.
    NSEventMask pointerEvents = NSEventMaskMouseMoved | NSEventMaskLeftMouseDragged | NSEventMaskLeftMouseUp;
    views->pointerMonitor = [NSEvent addGlobalMonitorForEventsMatchingMask:pointerEvents
                                                                   handler:^(NSEvent*) {
                                                                     views->watch->pointerActivity();
                                                                     views->updateVisibility();
                                                                   }];
    // A screen connected, removed or rearranged, or a new resolution: the bar finds its screen,
    // length and density again.
    views->screenObserver =
        [NSNotificationCenter.defaultCenter addObserverForName:NSApplicationDidChangeScreenParametersNotification
                                                        object:nil
                                                         queue:NSOperationQueue.mainQueue
                                                    usingBlock:^(NSNotification*) {
                                                      views->reload();
                                                    }];
    reload();
}

BarPanel::~BarPanel() {
    if (views_->pointerMonitor) [NSEvent removeMonitor:views_->pointerMonitor];
    if (views_->screenObserver) [NSNotificationCenter.defaultCenter removeObserver:views_->screenObserver];
    [views_->frames invalidate];
    [views_->panel orderOut:nil];
}

void BarPanel::reload() { views_->reload(); }

void BarPanel::widgetsChanged(const std::vector<Uuid>& changed) { views_->widgetsChanged(changed); }

void BarPanel::openStack(const std::filesystem::path& folder) {
    StackMenu::open(BarClicks::stackPanel(folder, views_->state.settings().stackOptions), NSEvent.mouseLocation);
}

} // namespace corvane
