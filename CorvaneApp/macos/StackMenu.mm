#include "CorvaneApp/macos/StackMenu.hpp"

#import <AppKit/AppKit.h>

/// Opens the path a menu item carries.
@interface CorvaneStackOpener : NSObject
- (void)openItem:(NSMenuItem*)item;
@end

@implementation CorvaneStackOpener
- (void)openItem:(NSMenuItem*)item {
    [NSWorkspace.sharedWorkspace openURL:[NSURL fileURLWithPath:item.representedObject]];
}
@end

namespace corvane::StackMenu {

namespace {

NSString* text(const std::string& value) {
    NSString* converted = [NSString stringWithUTF8String:value.c_str()];
    return converted ? converted : @"";
}

NSMenuItem* entry(NSString* title, NSString* path, CorvaneStackOpener* opener) {
    NSMenuItem* item = [[NSMenuItem alloc] initWithTitle:title action:@selector(openItem:) keyEquivalent:@""];
    item.target = opener;
    item.representedObject = path;
    NSImage* icon = [NSWorkspace.sharedWorkspace iconForFile:path];
    icon.size = NSMakeSize(16, 16);
    item.image = icon;
    return item;
}

} // namespace

void open(const BarClicks::StackPanel& panel, CGPoint at) {
    // A menu does not keep its items' target; this one lives as long as the application.
    static CorvaneStackOpener* opener = [CorvaneStackOpener new];
    NSMenu* menu = [[NSMenu alloc] initWithTitle:text(panel.title)];
    menu.autoenablesItems = NO;
    if (panel.items.empty()) {
        NSMenuItem* empty = [[NSMenuItem alloc] initWithTitle:@"No Items" action:nil keyEquivalent:@""];
        empty.enabled = NO;
        [menu addItem:empty];
    }
    for (const auto& item : panel.items) [menu addItem:entry(text(item.name), text(item.path), opener)];
    if (!panel.items.empty()) {
        NSString* folder = [text(panel.items.front().path) stringByDeletingLastPathComponent];
        [menu addItem:[NSMenuItem separatorItem]];
        [menu addItem:entry([NSString stringWithFormat:@"Open in Finder"], folder, opener)];
    }
    [menu popUpMenuPositioningItem:nil atLocation:NSPointFromCGPoint(at) inView:nil];
}

} // namespace corvane::StackMenu
