#include "CorvaneApp/macos/StatusMenu.hpp"

#include "CorvaneApp/macos/JsonPanels.hpp"

#include "CorvaneCore/looks/RGBColor.hpp"

#import <AppKit/AppKit.h>

using namespace corvane;

namespace {

NSString* text(const std::string& value) { return [NSString stringWithUTF8String:value.c_str()]; }

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
        [NSApp activateIgnoringOtherApps:YES];
        return [alert runModal] == NSAlertFirstButtonReturn;
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
    NSInteger index = item.tag;
    // After the menu has closed, so a panel or alert an action opens is not inside menu tracking.
    dispatch_async(dispatch_get_main_queue(), ^{
      self.choose(index);
    });
}

@end

namespace corvane {

struct StatusMenu::Views {
    NSStatusItem* item = nil;
    NSMenu* menu = nil;
    CorvaneStatusMenuTarget* target = nil;
    std::vector<MenuAction> actions;
    MenuPanels panels = systemPanels();

    void fill(NSMenu* into, const std::vector<MenuItem>& items) {
        for (const auto& model : items) {
            if (model.isSeparator) {
                [into addItem:[NSMenuItem separatorItem]];
                continue;
            }
            NSMenuItem* item = [[NSMenuItem alloc] initWithTitle:text(model.title) action:nil keyEquivalent:@""];
            if (model.keyEquivalent) {
                item.keyEquivalent = text(model.keyEquivalent->key).lowercaseString;
                item.keyEquivalentModifierMask = modifierFlags(model.keyEquivalent->modifiers);
            }
            item.state = model.isChecked ? NSControlStateValueOn : NSControlStateValueOff;
            if (model.colorHex) item.image = dot(*model.colorHex);
            if (model.action && model.isEnabled) {
                item.target = target;
                item.action = @selector(chooseItem:);
                item.tag = static_cast<NSInteger>(actions.size());
                actions.push_back(*model.action);
            }
            item.enabled = model.isEnabled && (model.action || !model.submenu.empty());
            if (!model.submenu.empty()) {
                NSMenu* submenu = [[NSMenu alloc] initWithTitle:text(model.title)];
                submenu.autoenablesItems = NO;
                fill(submenu, model.submenu);
                item.submenu = submenu;
            }
            [into addItem:item];
        }
    }
};

StatusMenu::StatusMenu(AppState& state, const Calendar& calendar) : views_(std::make_unique<Views>()) {
    auto* views = views_.get();
    views->target = [CorvaneStatusMenuTarget new];
    views->target.rebuild = ^(NSMenu* menu) {
      [menu removeAllItems];
      views->actions.clear();
      views->fill(menu, MenuModel::build(MenuModel::snapshot(state), calendar));
    };
    views->target.choose = ^(NSInteger index) {
      if (index < 0 || static_cast<std::size_t>(index) >= views->actions.size()) return;
      MenuActions::perform(state, views->actions[static_cast<std::size_t>(index)], views->panels, calendar);
    };
    views->menu = [[NSMenu alloc] initWithTitle:@"Corvane"];
    views->menu.autoenablesItems = NO;
    views->menu.delegate = views->target;
    views->item = [NSStatusBar.systemStatusBar statusItemWithLength:NSSquareStatusItemLength];
    views->item.button.image = [NSImage imageWithSystemSymbolName:@"dock.rectangle" accessibilityDescription:@"Corvane"];
    views->item.menu = views->menu;
}

StatusMenu::~StatusMenu() {
    [NSStatusBar.systemStatusBar removeStatusItem:views_->item];
}

} // namespace corvane
