#include "CorvaneApp/macos/StatusMenu.hpp"

#include "CorvaneApp/macos/JsonPanels.hpp"

#include "CorvaneCore/looks/RGBColor.hpp"

#import <AppKit/AppKit.h>
#import <QuartzCore/QuartzCore.h>

using namespace corvane;

namespace {

NSString* text(const std::string& value) {
    NSString* string = [[NSString alloc] initWithBytes:value.data() length:value.size() encoding:NSUTF8StringEncoding];
    return string != nil ? string : @"";
}

NSEventModifierFlags modifierFlags(HotkeyModifiers modifiers) {
    NSEventModifierFlags flags = 0;
    if (modifiers.rawValue & HotkeyModifiers::command) flags |= NSEventModifierFlagCommand;
    if (modifiers.rawValue & HotkeyModifiers::option) flags |= NSEventModifierFlagOption;
    if (modifiers.rawValue & HotkeyModifiers::control) flags |= NSEventModifierFlagControl;
    if (modifiers.rawValue & HotkeyModifiers::shift) flags |= NSEventModifierFlagShift;
    return flags;
}

/// A round dot of the workspace's colour, the size of a menu item's image.
NSImage* dot(const std::string& hex) {
    auto colour = corvane::RGBColor::fromHex(hex);
    NSColor* fill = [NSColor colorWithSRGBRed:colour.red green:colour.green blue:colour.blue alpha:1];
    return [NSImage imageWithSize:NSMakeSize(10, 10)
                          flipped:NO
                   drawingHandler:^BOOL(NSRect rect) {
                     [fill setFill];
                     [[NSBezierPath bezierPathWithOvalInRect:NSInsetRect(rect, 1, 1)] fill];
                     return YES;
                   }];
}

/// Asks for a new workspace's name, and whether it starts from the Dock as it is.
std::optional<NewWorkspaceAnswer> askNewWorkspace() {
    NSAlert* alert = [NSAlert new];
    alert.messageText = @"New Workspace";
    alert.informativeText = @"Name the workspace. It can start with the tiles your Dock shows now, or empty.";
    NSTextField* name = [NSTextField textFieldWithString:@""];
    name.placeholderString = @"Name";
    name.frame = NSMakeRect(0, 28, 260, 24);
    NSButton* fromDock = [NSButton checkboxWithTitle:@"Start with the Dock\u2019s current tiles" target:nil action:nil];
    fromDock.state = NSControlStateValueOn;
    fromDock.frame = NSMakeRect(0, 0, 260, 20);
    NSView* fields = [[NSView alloc] initWithFrame:NSMakeRect(0, 0, 260, 52)];
    [fields addSubview:name];
    [fields addSubview:fromDock];
    alert.accessoryView = fields;
    [alert addButtonWithTitle:@"Create"];
    [alert addButtonWithTitle:@"Cancel"];
    alert.window.initialFirstResponder = name;
    JsonPanels::comeForward();
    if ([alert runModal] != NSAlertFirstButtonReturn) return std::nullopt;
    // A blank name comes back to the state, which refuses it with a message the menu shows.
    return NewWorkspaceAnswer{.name = name.stringValue.UTF8String, .fromDock = fromDock.state == NSControlStateValueOn};
}

MenuPanels systemPanels() {
    MenuPanels panels;
    panels.chooseExportFile = [](const std::string& suggestedName) { return JsonPanels::save(suggestedName); };
    panels.chooseImportFile = [] { return JsonPanels::open(); };
    panels.confirmRestore = [](const std::string& title) {
        NSAlert* alert = [NSAlert new];
        alert.messageText = text("Restore the backup " + title + "?");
        alert.informativeText = @"Your workspaces and widgets are replaced by the backup's. A backup of them as they are "
                                @"now is taken first, so this can be undone the same way.";
        [alert addButtonWithTitle:@"Restore"];
        [alert addButtonWithTitle:@"Cancel"];
        JsonPanels::comeForward();
        return [alert runModal] == NSAlertFirstButtonReturn;
    };
    panels.askNewWorkspace = askNewWorkspace;
    panels.openPrivacySettings = [](const std::string& pane) {
        NSString* address = text("x-apple.systempreferences:com.apple.preference.security?" + pane);
        if (NSURL* url = [NSURL URLWithString:address]) [NSWorkspace.sharedWorkspace openURL:url];
    };
    panels.terminate = [] { [NSApp terminate:nil]; };
    return panels;
}

} // namespace

/// Rebuilds the menu when it opens and forwards the chosen item; the items carry their index
/// into the actions of the model last drawn.
@interface CorvaneStatusMenuTarget : NSObject <NSMenuDelegate>
@property(nonatomic, copy) void (^rebuild)(NSMenu* menu);
@property(nonatomic, copy) void (^choose)(NSInteger index);
@end

@implementation CorvaneStatusMenuTarget

- (void)menuNeedsUpdate:(NSMenu*)menu {
    self.rebuild(menu);
}

- (void)chooseItem:(NSMenuItem*)item {
    // Once the menu has closed, and from a run-loop timer rather than a block on the main
    // dispatch queue: a panel or alert the action opens runs a nested loop, which drains the
    // main queue (file watcher, timers, widget ticks) only when the queue is not itself busy.
    [self performSelector:@selector(chooseIndex:) withObject:@(item.tag) afterDelay:0];
}

- (void)chooseIndex:(NSNumber*)index {
    self.choose(index.integerValue);
}

@end

namespace corvane {

struct StatusMenu::Views {
    NSStatusItem* item = nil;
    NSMenu* menu = nil;
    CorvaneStatusMenuTarget* target = nil;
    std::vector<MenuAction> actions;
    MenuPanels panels = systemPanels();
    NSTimer* blinking = nil;
    NSImage* icon = [NSImage imageWithSystemSymbolName:@"dock.rectangle" accessibilityDescription:@"Corvane"];

    void fill(NSMenu* into, const std::vector<MenuItem>& items) {
        for (const auto& model : items) {
            if (model.isSeparator) {
                [into addItem:[NSMenuItem separatorItem]];
                continue;
            }
            NSMenuItem* line = [[NSMenuItem alloc] initWithTitle:text(model.title) action:nil keyEquivalent:@""];
            if (model.keyEquivalent)
                if (auto character = MenuModel::keyEquivalentCharacter(model.keyEquivalent->key)) {
                    line.keyEquivalent = text(*character);
                    line.keyEquivalentModifierMask = modifierFlags(model.keyEquivalent->modifiers);
                }
            line.state = model.isChecked ? NSControlStateValueOn : NSControlStateValueOff;
            if (model.colorHex) line.image = dot(*model.colorHex);
            if (model.action && model.isEnabled) {
                line.target = target;
                line.action = @selector(chooseItem:);
                line.tag = static_cast<NSInteger>(actions.size());
                actions.push_back(*model.action);
            }
            line.enabled = model.isEnabled && (model.action || !model.submenu.empty());
            if (!model.submenu.empty()) {
                NSMenu* submenu = [[NSMenu alloc] initWithTitle:text(model.title)];
                submenu.autoenablesItems = NO;
                fill(submenu, model.submenu);
                line.submenu = submenu;
            }
            [into addItem:line];
        }
    }

    void stopBlinking() {
        [blinking invalidate];
        blinking = nil;
        item.button.highlighted = NO;
    }
};

StatusMenu::StatusMenu(AppState& state, const Calendar& calendar) : views_(std::make_unique<Views>()) {
    auto* views = views_.get();
    views->target = [CorvaneStatusMenuTarget new];
    views->target.rebuild = ^(NSMenu* menu) {
      views->stopBlinking();
      [menu removeAllItems];
      views->actions.clear();
      auto snapshot = MenuModel::snapshot(state);
      snapshot.hasWindow = true;
      views->fill(menu, MenuModel::build(snapshot, calendar));
    };
    views->target.choose = ^(NSInteger index) {
      if (index < 0 || static_cast<std::size_t>(index) >= views->actions.size()) return;
      MenuActions::perform(state, views->actions[static_cast<std::size_t>(index)], views->panels, calendar);
    };
    views->menu = [[NSMenu alloc] initWithTitle:@"Corvane"];
    views->menu.autoenablesItems = NO;
    views->menu.delegate = views->target;
    views->item = [NSStatusBar.systemStatusBar statusItemWithLength:NSSquareStatusItemLength];
    views->item.button.image = views->icon;
    views->item.button.toolTip = @"Corvane";
    views->item.menu = views->menu;
}

StatusMenu::~StatusMenu() {
    views_->stopBlinking();
    [NSStatusBar.systemStatusBar removeStatusItem:views_->item];
}

void StatusMenu::showSwitching(const std::optional<std::string>& workspace) {
    NSStatusBarButton* button = views_->item.button;
    if (workspace) {
        button.image = [NSImage imageWithSystemSymbolName:@"arrow.triangle.2.circlepath"
                                 accessibilityDescription:@"Switching workspace"];
        button.toolTip = text("Switching to \u201C" + *workspace + "\u201D\u2026");
    } else {
        button.image = views_->icon;
        button.toolTip = @"Corvane";
    }
    // The switch that follows holds the main thread: draw now rather than at the end of this turn.
    [button display];
    [CATransaction flush];
}

void StatusMenu::requestAttention(UserAlerts::Attention attention) {
    auto* views = views_.get();
    views->stopBlinking();
    __block int blinks = attention == UserAlerts::Attention::critical ? 100 : 6;
    views->blinking = [NSTimer scheduledTimerWithTimeInterval:0.5
                                                      repeats:YES
                                                        block:^(NSTimer*) {
                                                          if (--blinks < 0) return views->stopBlinking();
                                                          views->item.button.highlighted = !views->item.button.highlighted;
                                                        }];
}

} // namespace corvane
