#pragma once

#include "media/MediaProvider.h"

namespace brindle {

/// Nothing plays, and nothing can be told to.
class QuietMedia final : public MediaProvider
{
    Q_OBJECT

public:
    using MediaProvider::MediaProvider;

    const std::optional<NowPlayingTrack> &nowPlaying() const override { return m_nowPlaying; }
    double outputVolume() const override { return 0; }

    void togglePlayback() override { }
    void seek(double /*seconds*/) override { }
    void previousTrack() override { }
    void nextTrack() override { }

private:
    const std::optional<NowPlayingTrack> m_nowPlaying;
};

} // namespace brindle
