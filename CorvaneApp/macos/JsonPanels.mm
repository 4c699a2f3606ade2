#include "CorvaneApp/macos/JsonPanels.hpp"

#import <AppKit/AppKit.h>
#import <UniformTypeIdentifiers/UTCoreTypes.h>

namespace corvane::JsonPanels {

namespace {

std::optional<std::filesystem::path> run(NSSavePanel* panel) {
    panel.allowedContentTypes = @[ UTTypeJSON ];
    comeForward();
    if ([panel runModal] != NSModalResponseOK || panel.URL == nil) return std::nullopt;
    return std::filesystem::path(panel.URL.path.UTF8String);
}

} // namespace

void comeForward() {
    if (@available(macOS 14.0, *)) [NSApp activate];
    else [NSApp activateIgnoringOtherApps:YES];
}

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
