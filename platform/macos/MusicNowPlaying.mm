#include "platform/macos/MusicNowPlaying.hpp"

#import <AppKit/AppKit.h>
#import <Foundation/Foundation.h>

#include <cstdlib>

namespace corvane {

namespace {

NSString* const musicIdentifier = @"com.apple.Music";

bool musicRuns() {
    return [NSRunningApplication runningApplicationsWithBundleIdentifier:musicIdentifier].count > 0;
}

/// Runs a script and returns its text result; nil when it failed (no permission, no track).
NSString* run(NSString* source) {
    NSAppleScript* script = [[NSAppleScript alloc] initWithSource:source];
    NSDictionary* error = nil;
    NSAppleEventDescriptor* result = [script executeAndReturnError:&error];
    if (!result || error) return nil;
    return result.stringValue ? result.stringValue : @"";
}

std::optional<double> seconds(NSString* text) {
    if (text.length == 0) return std::nullopt;
    // AppleScript writes reals with a full stop whatever the user's locale.
    char* end = nullptr;
    double value = std::strtod(text.UTF8String, &end);
    if (end == text.UTF8String) return std::nullopt;
    return value;
}

} // namespace

std::optional<PlayingTrack> MusicNowPlaying::current() {
    if (!musicRuns()) return std::nullopt;
    // One line of tab-separated fields, so that one Apple event answers everything.
    NSString* answer = run(@"tell application id \"com.apple.Music\"\n"
                           @"  if player state is stopped then return \"\"\n"
                           @"  set t to current track\n"
                           @"  return (name of t) & tab & (artist of t) & tab & (album of t) & tab & "
                           @"(player state as text) & tab & (player position as text) & tab & (duration of t as text)\n"
                           @"end tell");
    if (answer.length == 0) return std::nullopt;
    NSArray<NSString*>* fields = [answer componentsSeparatedByString:@"\t"];
    if (fields.count < 6) return std::nullopt;
    PlayingTrack track;
    track.title = fields[0].UTF8String;
    track.artist = fields[1].UTF8String;
    track.album = fields[2].UTF8String;
    track.player = musicIdentifier.UTF8String;
    track.isPlaying = [fields[3] isEqualToString:@"playing"];
    track.position = seconds(fields[4]);
    track.duration = seconds(fields[5]);
    return track;
}

bool MusicNowPlaying::togglePlayPause() {
    if (!musicRuns()) return false;
    return run(@"tell application id \"com.apple.Music\" to playpause") != nil;
}

} // namespace corvane
