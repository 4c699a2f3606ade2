#include "platform/macos/SystemPasteboard.hpp"

#import <AppKit/AppKit.h>

#include <algorithm>
#include <iterator>

namespace corvane {

namespace {

// The marker that asks clipboard tools (ours included) not to keep a copy.
NSPasteboardType const kConcealedType = @"org.nspasteboard.ConcealedType";

Bytes bytesOf(NSData* data) {
    const auto* start = static_cast<const std::uint8_t*>(data.bytes);
    return Bytes(start, start + data.length);
}

NSData* dataOf(const Bytes& bytes) { return [NSData dataWithBytes:bytes.data() length:bytes.size()]; }

bool isPNG(const Bytes& bytes) {
    static const std::uint8_t signature[] = {0x89, 'P', 'N', 'G', 0x0D, 0x0A, 0x1A, 0x0A};
    return bytes.size() >= sizeof signature && std::equal(std::begin(signature), std::end(signature), bytes.begin());
}

} // namespace

std::int64_t SystemPasteboard::changeCount() {
    @autoreleasepool {
        return static_cast<std::int64_t>(NSPasteboard.generalPasteboard.changeCount);
    }
}

std::vector<std::string> SystemPasteboard::types() {
    @autoreleasepool {
        std::vector<std::string> result;
        for (NSPasteboardType type in NSPasteboard.generalPasteboard.types)
            if (type.UTF8String) result.emplace_back(type.UTF8String);
        return result;
    }
}

std::optional<std::string> SystemPasteboard::fileURL() {
    @autoreleasepool {
        NSArray<NSURL*>* urls = [NSPasteboard.generalPasteboard readObjectsForClasses:@[ NSURL.class ]
                                                                              options:@{
                                                                                  NSPasteboardURLReadingFileURLsOnlyKey : @YES
                                                                              }];
        NSURL* first = urls.firstObject;
        if (!first || !first.absoluteString.UTF8String) return std::nullopt;
        return std::string(first.absoluteString.UTF8String);
    }
}

std::optional<Bytes> SystemPasteboard::imageData() {
    @autoreleasepool {
        NSPasteboard* pasteboard = NSPasteboard.generalPasteboard;
        NSData* data = [pasteboard dataForType:NSPasteboardTypePNG];
        if (!data) data = [pasteboard dataForType:NSPasteboardTypeTIFF];
        if (!data) return std::nullopt;
        return bytesOf(data);
    }
}

std::optional<std::string> SystemPasteboard::text() {
    @autoreleasepool {
        NSString* string = [NSPasteboard.generalPasteboard stringForType:NSPasteboardTypeString];
        if (!string || !string.UTF8String) return std::nullopt;
        return std::string(string.UTF8String);
    }
}

void SystemPasteboard::writeText(const std::string& text, bool concealed) {
    @autoreleasepool {
        NSPasteboard* pasteboard = NSPasteboard.generalPasteboard;
        [pasteboard clearContents];
        NSString* string = [[NSString alloc] initWithBytes:text.data() length:text.size() encoding:NSUTF8StringEncoding];
        [pasteboard setString:(string != nil ? string : @"") forType:NSPasteboardTypeString];
        if (concealed) [pasteboard setData:[NSData data] forType:kConcealedType];
    }
}

void SystemPasteboard::writeImage(const Bytes& data) {
    @autoreleasepool {
        NSPasteboard* pasteboard = NSPasteboard.generalPasteboard;
        [pasteboard clearContents];
        [pasteboard setData:dataOf(data) forType:(isPNG(data) ? NSPasteboardTypePNG : NSPasteboardTypeTIFF)];
    }
}

void SystemPasteboard::writeFile(const std::string& fileURL) {
    @autoreleasepool {
        NSURL* url = [NSURL URLWithString:@(fileURL.c_str())];
        if (!url) return;
        NSPasteboard* pasteboard = NSPasteboard.generalPasteboard;
        [pasteboard clearContents];
        [pasteboard writeObjects:@[ url ]];
    }
}

SystemPasteboard::Frontmost SystemPasteboard::frontmostApplication() {
    @autoreleasepool {
        Frontmost frontmost;
        NSRunningApplication* application = NSWorkspace.sharedWorkspace.frontmostApplication;
        if (application.bundleIdentifier != nil) frontmost.bundleIdentifier = application.bundleIdentifier.UTF8String;
        if (application.localizedName != nil) frontmost.name = application.localizedName.UTF8String;
        return frontmost;
    }
}

} // namespace corvane
