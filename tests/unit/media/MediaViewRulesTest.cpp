#include "media/MediaButtonStyles.h"
#include "media/MediaLayout.h"
#include "media/MediaTexts.h"
#include "media/MediaTrackAppearance.h"
#include "media/TrackPresentation.h"

#include <QFontMetricsF>

#include <gtest/gtest.h>
#include <limits>

namespace brindle {
namespace {

constexpr double nan = std::numeric_limits<double>::quiet_NaN();
constexpr double infinity = std::numeric_limits<double>::infinity();

TEST(MediaTexts, AnElapsedTimeOf596SecondsShowsAWholeMinute)
{
    EXPECT_EQ(MediaTexts::timeLabel(59.6), u"1:00");
    EXPECT_EQ(MediaTexts::timeLabel(59.4), u"0:59");
}

TEST(MediaTexts, MinutesAreNotSplitIntoHours)
{
    EXPECT_EQ(MediaTexts::timeLabel(3725), u"62:05");
    EXPECT_EQ(MediaTexts::timeLabel(36000), u"600:00");
}

TEST(MediaTexts, NoTimeIsBelowZero)
{
    EXPECT_EQ(MediaTexts::timeLabel(0), u"0:00");
    EXPECT_EQ(MediaTexts::timeLabel(-0.4), u"0:00");
    EXPECT_EQ(MediaTexts::timeLabel(-75), u"0:00");
    EXPECT_EQ(MediaTexts::timeLabel(-infinity), u"0:00");
}

TEST(MediaTexts, WhatIsNoTimeStillGivesALabel)
{
    EXPECT_EQ(MediaTexts::timeLabel(nan), u"0:00");
    EXPECT_EQ(MediaTexts::timeLabel(infinity), MediaTexts::timeLabel(1e300));
}

TEST(MediaTexts, NoLabelIsWiderThanTheWidestOfItsLength)
{
    const QFont font(QStringLiteral("Inter"), 40);
    const QFontMetricsF metrics(font);
    const double widest = metrics.horizontalAdvance(MediaTexts::widest(QStringLiteral("1:11"), font));
    for (int second = 0; second < 600; ++second)
        EXPECT_LE(metrics.horizontalAdvance(MediaTexts::timeLabel(second)), widest) << second;
}

TEST(MediaTexts, TheStatusNamesTheSourceThatHasAName)
{
    NowPlayingTrack track;
    EXPECT_EQ(MediaTexts::status(track), u"Paused");
    track.sourceName = QStringLiteral("Tideplayer");
    EXPECT_EQ(MediaTexts::status(track), u"Paused in Tideplayer");
    track.isPlaying = true;
    EXPECT_EQ(MediaTexts::status(track), u"Playing in Tideplayer");
    track.sourceName.reset();
    EXPECT_EQ(MediaTexts::status(track), u"Playing");
}

TEST(MediaTexts, AnUnknownArtistIsSaidSo)
{
    NowPlayingTrack track;
    track.title = QStringLiteral("Song");
    EXPECT_EQ(MediaTexts::artist(track), u"Unknown artist");
    EXPECT_EQ(MediaTexts::readOut(track), u"Song, Unknown artist");
    track.artist = QStringLiteral("Band");
    EXPECT_EQ(MediaTexts::artist(track), u"Band");
}

NowPlayingTrack playing(std::optional<double> duration, double elapsed)
{
    NowPlayingTrack track;
    track.title = QStringLiteral("Song");
    track.duration = duration;
    track.elapsed = elapsed;
    track.elapsedUpdatedAt = Date::fromReferenceSeconds(100);
    track.isPlaying = true;
    return track;
}

TEST(TrackPresentation, ThePositionIsComputedForTheMomentItIsDrawnAt)
{
    const TrackPresentation track(playing(200, 10), {});
    EXPECT_EQ(track.elapsedAt(100), 10);
    EXPECT_EQ(track.elapsedAt(100.25), 10.25);
    EXPECT_EQ(track.elapsedAt(99), 10) << "the clock was set back";
    EXPECT_EQ(track.elapsedAt(1000), 200);
}

TEST(TrackPresentation, ATrackWithoutDurationShowsNoMovingThumbAndStillItsTitle)
{
    const TrackPresentation track(playing({}, 10), {});
    EXPECT_EQ(track.duration(), 0) << "nothing to move along";
    EXPECT_EQ(track.durationLabel(), u"--:--");
    EXPECT_EQ(track.elapsedAt(101), 11);
    EXPECT_EQ(track.title(), u"Song");
    EXPECT_EQ(track.positionReadOut(11), u"0:11");
}

TEST(TrackPresentation, ADurationThatMeasuresNothingIsNone)
{
    for (const double duration : {0.0, -5.0, nan, infinity}) {
        const TrackPresentation track(playing(duration, 10), {});
        EXPECT_EQ(track.duration(), 0) << duration;
        EXPECT_EQ(track.elapsedAt(101), 11) << duration;
    }
}

TEST(TrackPresentation, APositionOrRateThatIsNoNumberDoesNoHarm)
{
    NowPlayingTrack track = playing(200, nan);
    EXPECT_EQ(TrackPresentation(track, {}).elapsedAt(101), 1);
    track = playing(200, 10);
    track.playbackRate = infinity;
    EXPECT_EQ(TrackPresentation(track, {}).elapsedAt(101), 11);
}

TEST(TrackPresentation, ThePositionIsReadOutWithTheWholeLength)
{
    EXPECT_EQ(TrackPresentation(playing(200, 10), {}).positionReadOut(65), u"1:05 of 3:20");
}

TEST(TrackPresentation, TheSamePositionAtALaterTimeIsDrawnElsewhereLater)
{
    const NowPlayingTrack before = playing(200, 10);
    NowPlayingTrack after = before;
    after.elapsedUpdatedAt = Date::fromReferenceSeconds(105);
    EXPECT_EQ(TrackPresentation(before, {}), TrackPresentation(before, {}));
    EXPECT_NE(TrackPresentation(before, {}), TrackPresentation(after, {}));
    EXPECT_NE(TrackPresentation(before, {}), TrackPresentation(before, QImage(2, 2, QImage::Format_RGB32)));
}

TEST(MediaTrackAppearance, IsOutOfSightASmallStepAside)
{
    const auto active = MediaTrackAppearance::active(false);
    EXPECT_EQ(active.opacity, 0);
    EXPECT_EQ(active.blurRadius, 9);
    EXPECT_EQ(active.scale, 0.975);
    EXPECT_EQ(active.xOffset, 12);
    const auto identity = MediaTrackAppearance::identity();
    EXPECT_EQ(identity.opacity, 1);
    EXPECT_EQ(identity.blurRadius, 0);
    EXPECT_EQ(identity.scale, 1);
    EXPECT_EQ(identity.xOffset, 0);
}

TEST(MediaTrackAppearance, OnlyFadesWithReducedEffects)
{
    EXPECT_EQ(MediaTrackAppearance::active(true), (MediaTrackAppearance{0, 0, 1, 0}));
}

TEST(MediaTrackAppearance, FollowsASpringBeyondItsEndsButNotInOpacityAndBlur)
{
    const auto at = [](double progress) {
        return MediaTrackAppearance::between(
            MediaTrackAppearance::active(false), MediaTrackAppearance::identity(), progress);
    };
    EXPECT_EQ(at(0), MediaTrackAppearance::active(false));
    EXPECT_EQ(at(1), MediaTrackAppearance::identity());
    EXPECT_EQ(at(0.5).xOffset, 6);
    EXPECT_EQ(at(1.5).opacity, 1);
    EXPECT_EQ(at(1.5).blurRadius, 0);
    EXPECT_LT(at(1.5).xOffset, 0);
}

TEST(MediaButtonStyles, ControlsGrowUnderThePointerAndGiveWayToAPress)
{
    const ButtonStyle style = mediaControlButtonStyle(false);
    EXPECT_EQ(style.scale(false, false), 1);
    EXPECT_EQ(style.scale(false, true), 1.015);
    EXPECT_EQ(style.scale(true, true), 0.97);
    EXPECT_EQ(style.motion, Motion::makeSpring(0.22, 0.76));
    EXPECT_EQ(style.fill(false, false), 0.035);
    EXPECT_EQ(style.fill(false, true), 0.08);
}

TEST(MediaButtonStyles, CardsGrowMoreAndLightUpQuickly)
{
    const ButtonStyle style = utilityButtonStyle(false);
    EXPECT_EQ(style.scale(false, false), 1);
    EXPECT_EQ(style.scale(false, true), 1.06);
    EXPECT_EQ(style.scale(true, false), 0.88);
    EXPECT_EQ(style.motion, Motion::makeSpring(0.2, 0.72));
    EXPECT_EQ(style.fillMotion, Motion::makeEaseOut(0.08));
    EXPECT_GE(style.fill(false, false), 0.045);
    EXPECT_LE(style.fill(true, true), 0.055);
}

TEST(MediaButtonStyles, NothingSpringsWithReducedEffects)
{
    for (const ButtonStyle &style : {mediaControlButtonStyle(true), utilityButtonStyle(true)}) {
        EXPECT_NE(style.motion.kind, Motion::spring);
        EXPECT_NE(style.fillMotion.kind, Motion::spring);
    }
}

constexpr QSizeF wideView(810, 240);
constexpr QSizeF narrowView(440, 240);

TEST(MediaLayout, WithThePlayerOffOnlyTheClockAndWeatherAreLaidOut)
{
    for (const QSizeF view : {wideView, narrowView}) {
        const auto layout = MediaLayout::of(view, false, true, true);
        EXPECT_TRUE(layout.player.isEmpty());
        EXPECT_EQ(layout.weather.left() - layout.clock.right(), 8);
        EXPECT_EQ(layout.clock.width(), layout.weather.width());
        EXPECT_EQ(layout.clock.united(layout.weather), layout.cards);
        EXPECT_EQ(layout.cards, QRectF(QPointF(), view).adjusted(16, 16, -16, -16));
    }
}

TEST(MediaLayout, EveryCombinationStaysInThePaddingAndNothingOverlaps)
{
    for (const QSizeF view : {wideView, narrowView, QSizeF(440, 218), QSizeF(810, 120), QSizeF(440, 120)}) {
        for (int blocks = 0; blocks < 8; ++blocks) {
            const bool player = blocks & 1;
            const bool clock = blocks & 2;
            const bool weather = blocks & 4;
            const auto layout = MediaLayout::of(view, player, clock, weather);
            SCOPED_TRACE(testing::Message() << view.width() << 'x' << view.height() << ' ' << blocks);
            EXPECT_EQ(!layout.player.isEmpty(), player);
            EXPECT_EQ(!layout.clock.isEmpty(), clock);
            EXPECT_EQ(!layout.weather.isEmpty(), weather);
            EXPECT_EQ(layout.hasCards(), clock || weather);
            const QRectF room = QRectF(QPointF(), view).adjusted(16, 16, -16, -16);
            for (const QRectF &block : {layout.player, layout.clock, layout.weather})
                EXPECT_TRUE(block.isEmpty() || room.contains(block));
            EXPECT_FALSE(layout.player.intersects(layout.cards));
            EXPECT_FALSE(layout.clock.intersects(layout.weather));
        }
    }
}

TEST(MediaLayout, CardsStandBelowANarrowPlayerAndBesideAWideOne)
{
    const auto narrow = MediaLayout::of(narrowView, true, true, true);
    EXPECT_FALSE(narrow.hasCardsBeside);
    EXPECT_EQ(narrow.player.height(), 152);
    EXPECT_EQ(narrow.cards.top() - narrow.player.bottom(), 10);
    EXPECT_EQ(narrow.weather.left() - narrow.clock.right(), 8);
    const auto wide = MediaLayout::of(wideView, true, true, true);
    EXPECT_TRUE(wide.hasCardsBeside);
    EXPECT_EQ(wide.weather.top() - wide.clock.bottom(), 8);
    EXPECT_GE(wide.cards.left() - wide.player.right(), 10);
}

TEST(MediaLayout, ABlockAloneHasTheViewToItself)
{
    const QRectF room(16, 16, 778, 208);
    EXPECT_EQ(MediaLayout::of(wideView, true, false, false).player, room);
    EXPECT_EQ(MediaLayout::of(wideView, false, true, false).clock, room);
    EXPECT_EQ(MediaLayout::of(wideView, false, false, true).weather, room);
}

TEST(MediaLayout, TheArtworkKeepsItsSizeForEveryInsetThatTheSettingsOffer)
{
    for (int inset = 8; inset <= 40; ++inset) {
        for (const double width : {440.0, 810.0}) {
            const auto layout = MediaLayout::of({width, 258.0 - inset}, true, true, true);
            EXPECT_EQ(PlayerLayout::of(layout.player.size()).artwork.width(), 152) << inset;
            EXPECT_GE(layout.clock.height(), 24) << inset;
        }
    }
}

TEST(MediaLayout, AViewWithoutRoomLaysOutNothing)
{
    const auto layout = MediaLayout::of({0, 0}, true, true, true);
    EXPECT_TRUE(layout.player.isEmpty());
    EXPECT_FALSE(layout.hasCards());
}

TEST(PlayerLayout, StandsInTheMiddleOfItsHeight)
{
    const auto layout = PlayerLayout::of({600, 208});
    EXPECT_EQ(layout.artwork, QRectF(0, 28, 152, 152));
    EXPECT_EQ(layout.column, QRectF(168, 28, 432, 152));
    EXPECT_TRUE(layout.showsArtist);
    EXPECT_TRUE(layout.showsStatus);
}

TEST(PlayerLayout, DropsTextsBeforeTheyWouldOverlap)
{
    EXPECT_FALSE(PlayerLayout::of({600, 110}).showsStatus);
    EXPECT_TRUE(PlayerLayout::of({600, 110}).showsArtist);
    EXPECT_FALSE(PlayerLayout::of({600, 88}).showsArtist);
    EXPECT_EQ(PlayerLayout::of({600, 88}).artwork.size(), QSizeF(88, 88));
    EXPECT_EQ(PlayerLayout::of({0, 0}).column.width(), 0);
}

TEST(CardLayout, ArrangesByTheRoomThereIs)
{
    EXPECT_TRUE(CardLayout::of({408, 24}).isLine());
    EXPECT_EQ(CardLayout::of({408, 46}).form, CardLayout::Form::row);
    EXPECT_EQ(CardLayout::of({408, 46}).valueSize, 17);
    EXPECT_TRUE(CardLayout::of({168, 208}).isBlock());
    EXPECT_LE(CardLayout::of({778, 208}).valueSize, 44);
    EXPECT_GE(CardLayout::of({60, 100}).valueSize, 17);
}

} // namespace
} // namespace brindle
