#include "media/MediaPresenter.h"

#include "core/SettingsStore.h"
#include "media/ArtworkLoader.h"
#include "media/TrackPresentation.h"
#include "support/Session.h"

#include <QSignalSpy>

#include <gtest/gtest.h>

namespace brindle {
namespace {

NowPlayingTrack song()
{
    NowPlayingTrack track;
    track.title = QStringLiteral("Song");
    track.isPlaying = true;
    return track;
}

class MediaPresenterTest : public testing::Test
{
protected:
    void play(const std::optional<NowPlayingTrack> &track)
    {
        media.track = track;
        Q_EMIT media.nowPlayingChanged();
    }
    TrackPresentation shown() const { return presenter.player().content.value<TrackPresentation>(); }

    FakePlatform platform;
    ScriptedMedia media;
    SettingsStore settings{platform.defaults, platform.time};
    ArtworkLoader artwork{
        media, platform.network, platform.makeSerialQueue(QStringLiteral("Artwork")), platform.time};
    MediaPresenter presenter{media, artwork, settings, platform.accessibility};
};

TEST_F(MediaPresenterTest, EachSongIsAViewOfItsOwn)
{
    play(song());
    const QString first = presenter.player().key;
    NowPlayingTrack paused = song();
    paused.isPlaying = false;
    play(paused);
    EXPECT_EQ(presenter.player().key, first) << "the same song, seen again";
    NowPlayingTrack other = song();
    other.title = QStringLiteral("Other");
    play(other);
    EXPECT_NE(presenter.player().key, first);
    play(std::nullopt);
    EXPECT_FALSE(presenter.player().content.isValid());
    EXPECT_FALSE(presenter.player().key.isEmpty()) << "nothing playing is a view, too";
}

TEST_F(MediaPresenterTest, ThePictureThatArrivesLateBelongsToItsSong)
{
    const QUrl url(QStringLiteral("data:,picture"));
    NowPlayingTrack track = song();
    track.artworkURL = url;
    play(track);
    EXPECT_TRUE(shown().artwork().isNull());
    QSignalSpy changes(&presenter, &MediaPresenter::playerChanged);
    track.artwork = QImage(2, 2, QImage::Format_RGB32);
    play(track);
    EXPECT_FALSE(shown().artwork().isNull());
    EXPECT_GE(changes.count(), 1);
}

TEST_F(MediaPresenterTest, ControlsReachThePlayer)
{
    presenter.togglePlayback();
    presenter.previousTrack();
    presenter.nextTrack();
    presenter.nextTrack();
    presenter.seek(42);
    EXPECT_EQ(media.toggles, 1);
    EXPECT_EQ(media.previouses, 1);
    EXPECT_EQ(media.nexts, 2);
    EXPECT_EQ(media.seeks, QList<double>{42});
}

TEST_F(MediaPresenterTest, TheUserChoosesTheBlocks)
{
    QSignalSpy changes(&presenter, &MediaPresenter::blocksChanged);
    EXPECT_TRUE(presenter.showPlayer());
    EXPECT_TRUE(presenter.showClock());
    settings.setShowMediaPlayer(false);
    settings.setShowMediaClock(false);
    EXPECT_FALSE(presenter.showPlayer());
    EXPECT_FALSE(presenter.showClock());
    EXPECT_EQ(changes.count(), 2);
}

TEST_F(MediaPresenterTest, SongsAndPausesMoveEachInTheirWay)
{
    EXPECT_EQ(presenter.trackMotion(), Motion::makeSpring(0.46, 0.9, 0.14));
    EXPECT_EQ(presenter.playbackMotion(), Motion::makeEaseInOut(0.2));
}

TEST_F(MediaPresenterTest, EverythingIsPlainWithReducedEffectsWhoeverAskedForThem)
{
    QSignalSpy changes(&presenter, &MediaPresenter::motionChanged);
    const auto expectPlain = [this] {
        for (const Motion &motion : {presenter.trackMotion(), presenter.playbackMotion(),
                 presenter.blockMotion(), presenter.artworkMotion()})
            EXPECT_EQ(motion, Motion::makeEaseInOut(0.12));
        EXPECT_EQ(presenter.appearance(0), MediaTrackAppearance::active(true));
        EXPECT_NE(presenter.controlStyle().motion.kind, Motion::spring);
    };
    settings.setReduceEffects(true);
    expectPlain();
    settings.setReduceEffects(false);
    EXPECT_EQ(presenter.appearance(0), MediaTrackAppearance::active(false));
    platform.accessibility.setReduceMotion(true);
    expectPlain();
    EXPECT_EQ(changes.count(), 3);
}

TEST_F(MediaPresenterTest, TheCardsAreOneSubjectAsLongAsThereIsOne)
{
    const auto with = MediaPresenter::layout({810, 240}, true, true, false);
    EXPECT_FALSE(MediaPresenter::cards(with).key.isEmpty());
    EXPECT_EQ(MediaPresenter::cards(with).content.value<MediaLayout>(), with);
    const auto without = MediaPresenter::layout({810, 240}, true, false, false);
    EXPECT_TRUE(MediaPresenter::cards(without).key.isEmpty());
}

} // namespace
} // namespace brindle
