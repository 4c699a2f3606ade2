#pragma once

#include "CorvaneCore/platform/NowPlaying.hpp"

namespace corvane {

/// The Music app's current track and play/pause, through AppleScript. Music is asked only while
/// it runs, since scripting it would start it; the first question asks the user to let Corvane
/// automate Music.
class MusicNowPlaying final : public NowPlaying {
  public:
    std::optional<PlayingTrack> current() override;
    bool togglePlayPause() override;
};

} // namespace corvane
