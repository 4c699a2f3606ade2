#include "CorvaneApp/macos/JsonPanels.hpp"

#import <AppKit/AppKit.h>
#import <UniformTypeIdentifiers/UniformTypeIdentifiers.h>

namespace corvane::JsonPanels {

namespace {

std::optional<std::filesystem::path> run(NSSavePanel* panel) {
    panel.allowedContentTypes = @[ UTTypeJSON ];
    // A menu-bar app is not active while its menu is closed; the panel must come to the front.
    [NSApp activateIgnoringOtherApps:YES];
    if ([panel runModal] != NSModalResponseOK || panel.URL == nil) return std::nullopt;
    return std::filesystem::path(panel.URL.path.UTF8String);
}

} // namespace

std::optional<std::filesystem::path> save(const std::string& suggestedName) {
    NSSavePanel* panel = [NSSavePanel savePanel];
    panel.nameFieldStringValue = [NSString stringWithUTF8String:suggestedName.c_str()];
    return run(panel);
}

std::optional<std::filesystem::path> open() {
    NSOpenPanel* panel = [NSOpenPanel openPanel];
    panel.allowsMultipleSelection = NO;
    panel.canChooseDirectories = NO;
    return run(panel);
}

} // namespace corvane::JsonPanels
