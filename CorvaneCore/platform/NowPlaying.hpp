#pragma once

#include <optional>
#include <string>

namespace corvane {

/// The track a music player has loaded.
struct PlayingTrack {
    std::string title;
    std::string artist;
    std::string album;
    /// The player's bundle identifier ("com.apple.Music", "com.spotify.client").
    std::string player;
    bool isPlaying = false;
    /// Seconds into the track and its length, when the player says.
    std::optional<double> position;
    std::optional<double> duration;

    bool operator==(const PlayingTrack&) const = default;
};

/// What the music players play, and play/pause, for the music widget. Main thread.
class NowPlaying {
  public:
    virtual ~NowPlaying() = default;
    /// None when no player runs or none has a track.
    virtual std::optional<PlayingTrack> current() = 0;
    /// Plays or pauses the player of `current()`; false when there was none to tell.
    virtual bool togglePlayPause() = 0;
};

} // namespace corvane
