#include "activities/ActivityCoordinator.h"
#include "activities/BatteryMonitor.h"
#include "core/SettingsStore.h"
#include "island/ActivityPresentation.h"
#include "island/CollapsedContent.h"
#include "island/ExpandedContent.h"
#include "island/IslandFileDropDelegate.h"
#include "island/IslandViewModel.h"
#include "island/MediaPresentation.h"
#include "island/StatusBar.h"
#include "media/ArtworkLoader.h"
#include "support/Session.h"

#include <QMimeData>
#include <QUrl>

#include <gtest/gtest.h>

namespace brindle {
namespace {

SystemActivity event(const Session &session, std::optional<double> progress = {})
{
    SystemActivity activity;
    activity.id = QUuid::createUuid();
    activity.createdAt = session.now();
    activity.duration = 4;
    activity.content = {QStringLiteral("Sound"), {}, QStringLiteral("speaker.wave.2.fill"), progress};
    return activity;
}

NowPlayingTrack song()
{
    NowPlayingTrack track;
    track.title = QStringLiteral("Slow Harbour");
    track.isPlaying = true;
    return track;
}

class PresentersTest : public testing::Test
{
protected:
    PresentersTest() { session.container.start(); }

    void play(const std::optional<NowPlayingTrack> &track)
    {
        session.media->track = track;
        Q_EMIT session.media->nowPlayingChanged();
    }
    void plug(int percentage, bool onMains, bool isCharging)
    {
        session.platform.power.set(
            QList<std::optional<QVariantMap>>{FakePowerSources::battery(percentage, onMains, isCharging)});
        session.turn();
    }
    /// Lets the event that a plug brings about pass.
    void letEventsPass() { session.advance(10); }

    Session session;
    ArtworkLoader artwork{session.container.media(), session.platform.network,
        session.platform.makeSerialQueue(QStringLiteral("Artwork")), session.platform.time};
    CollapsedContent collapsed{session.container, artwork};
    StatusBar bar{session.container};
};

TEST_F(PresentersTest, AnEventGoesBeforeMediaAndMediaBeforeTheIdleRow)
{
    EXPECT_EQ(collapsed.kind(), CollapsedContent::Kind::idle);
    play(song());
    EXPECT_EQ(collapsed.kind(), CollapsedContent::Kind::media);
    session.container.activities().post(event(session));
    EXPECT_EQ(collapsed.kind(), CollapsedContent::Kind::activity);
    EXPECT_TRUE(collapsed.subject().content.isValid());
    letEventsPass();
    EXPECT_EQ(collapsed.kind(), CollapsedContent::Kind::media);
    EXPECT_FALSE(collapsed.subject().content.isValid());
    play({});
    EXPECT_EQ(collapsed.kind(), CollapsedContent::Kind::idle);
}

TEST_F(PresentersTest, ANewEventIsAnotherOneOnStage)
{
    session.container.activities().post(event(session));
    const QString first = collapsed.subject().key;
    session.container.activities().post(event(session));
    EXPECT_NE(collapsed.subject().key, first);
}

TEST_F(PresentersTest, ALevelThatMovesIsTheSameEvent)
{
    SystemActivity level = event(session, 0.2);
    level.type = ActivityType::systemControl;
    session.container.activities().post(level);
    const QString first = collapsed.subject().key;
    level.content.progress = 0.4;
    session.container.activities().post(level);
    EXPECT_EQ(collapsed.subject().key, first);
    EXPECT_DOUBLE_EQ(collapsed.subject().content.value<ActivityPresentation>().progress, 0.4);
}

TEST_F(PresentersTest, WithoutMediaAndChargingTheRowReadsTheName)
{
    EXPECT_EQ(collapsed.idleText(), QStringLiteral("Velmora"));
    EXPECT_EQ(collapsed.idleSymbol(), QStringLiteral("capsule.tophalf.filled"));
    plug(64, true, false);
    EXPECT_EQ(collapsed.idleText(), QStringLiteral("Velmora"));
}

TEST_F(PresentersTest, WhileChargingTheRowReadsThePercentageOnMainsOrNot)
{
    plug(64, true, true);
    EXPECT_EQ(collapsed.idleText(), QStringLiteral("64%"));
    EXPECT_EQ(collapsed.idleSymbol(), QStringLiteral("battery.100percent.bolt"));
    plug(65, false, true);
    EXPECT_EQ(collapsed.idleText(), QStringLiteral("65%"));
}

TEST_F(PresentersTest, AnotherSongIsAnotherPicture)
{
    play(song());
    const QString first = collapsed.artwork().key;
    NowPlayingTrack paused = song();
    paused.isPlaying = false;
    play(paused);
    EXPECT_EQ(collapsed.artwork().key, first);
    NowPlayingTrack other = song();
    other.title = QStringLiteral("Other");
    play(other);
    EXPECT_NE(collapsed.artwork().key, first);
}

TEST(MediaPresentation, ShowsTheSongsPictureElseItsSourcesIcon)
{
    const QImage artwork(2, 2, QImage::Format_RGB32);
    NowPlayingTrack track = song();
    track.sourceIcon = QImage(4, 4, QImage::Format_RGB32);
    EXPECT_EQ(MediaPresentation::of(track, artwork).picture.width(), 2);
    EXPECT_EQ(MediaPresentation::of(track, {}).picture.width(), 4);
    track.sourceIcon.reset();
    EXPECT_TRUE(MediaPresentation::of(track, {}).picture.isNull());
}

TEST(MediaPresentation, KeepsThePlaceholderWhereThePictureAtAnAddressIsMissing)
{
    NowPlayingTrack track = song();
    track.sourceIcon = QImage(4, 4, QImage::Format_RGB32);
    track.artworkURL = QUrl(QStringLiteral("https://example.org/a.png"));
    EXPECT_TRUE(MediaPresentation::of(track, {}).picture.isNull());
}

TEST_F(PresentersTest, MotionsArePlainForThoseWhoAskedForLess)
{
    EXPECT_EQ(collapsed.mediaMotion(), Motion::makeSpring(0.4, 0.9, 0.1));
    EXPECT_EQ(collapsed.levelMotion(), Motion::makeSpring(0.34, 0.72, 0.16));
    EXPECT_EQ(bar.activityMotion(), Motion::makeSpring(0.38, 0.72));
    EXPECT_EQ(bar.batteryMotion(), Motion::makeSpring(0.34, 0.7));
    session.platform.accessibility.setReduceMotion(true);
    EXPECT_EQ(collapsed.mediaMotion(), Motion::makeEaseInOut(0.12));
    EXPECT_EQ(collapsed.levelMotion(), Motion::makeEaseOut(0.12));
    EXPECT_EQ(bar.activityMotion(), Motion::makeEaseInOut(0.12));
    EXPECT_EQ(bar.batteryMotion(), Motion::makeEaseInOut(0.12));
}

TEST_F(PresentersTest, TheProgramsOwnWishForLessLeavesTheSmallMotionsAlone)
{
    session.container.settings().setReduceEffects(true);
    EXPECT_EQ(collapsed.levelMotion(), Motion::makeSpring(0.34, 0.72, 0.16));
}

TEST(ActivityPresentation, ALevelIsReadOutInPercent)
{
    Session session;
    EXPECT_EQ(ActivityPresentation::of(event(session, 0.5)).accessibleValue, QStringLiteral("50 percent"));
    EXPECT_EQ(ActivityPresentation::of(event(session, 0.004)).accessibleValue, QStringLiteral("0 percent"));
    EXPECT_EQ(ActivityPresentation::of(event(session, 0.456)).accessibleValue, QStringLiteral("46 percent"));
    EXPECT_TRUE(ActivityPresentation::of(event(session)).accessibleValue.isEmpty());
}

TEST(ActivityPresentation, TitleAndDetailAreReadTogether)
{
    Session session;
    SystemActivity activity = event(session);
    activity.content.title = QStringLiteral("Earbuds");
    activity.content.detail = QStringLiteral("Connected");
    EXPECT_EQ(ActivityPresentation::of(activity).accessibleName, QStringLiteral("Earbuds, Connected"));
}

struct BatteryRow
{
    int percentage;
    const char *symbol;
};

class BatterySymbols : public testing::TestWithParam<BatteryRow>
{
};

TEST_P(BatterySymbols, FollowThePercentage)
{
    EXPECT_EQ(StatusBar::batterySymbol(GetParam().percentage, false), QLatin1StringView(GetParam().symbol));
}

INSTANTIATE_TEST_SUITE_P(StatusBar, BatterySymbols,
    testing::Values(BatteryRow{0, "battery.0percent"}, BatteryRow{10, "battery.0percent"},
        BatteryRow{11, "battery.25percent"}, BatteryRow{37, "battery.25percent"},
        BatteryRow{38, "battery.50percent"}, BatteryRow{62, "battery.50percent"},
        BatteryRow{63, "battery.75percent"}, BatteryRow{87, "battery.75percent"},
        BatteryRow{88, "battery.100percent"}, BatteryRow{100, "battery.100percent"}));

TEST_F(PresentersTest, ABatteryThatChargesShowsTheBoltAtAnyLevel)
{
    plug(5, true, true);
    EXPECT_EQ(bar.batterySymbol(), QStringLiteral("battery.100percent.bolt"));
    EXPECT_EQ(bar.batteryText(), QStringLiteral("5%"));
    EXPECT_TRUE(bar.isACConnected());
    EXPECT_EQ(bar.batteryName(), QStringLiteral("Battery, 5%, charging"));
}

TEST_F(PresentersTest, TheBarLeadsWithTheEventElseWithTheClock)
{
    EXPECT_FALSE(bar.leading().content.isValid());
    session.container.activities().post(event(session));
    EXPECT_TRUE(bar.leading().content.isValid());
    letEventsPass();
    EXPECT_FALSE(bar.leading().content.isValid());
}

TEST(StatusBar, TheClockIsWrittenAsTheLocaleWritesIt)
{
    qputenv("TZ", "UTC");
    // The 7th of March 2026, a Saturday, 14:05:09 UTC.
    const Date date = Date::fromSecondsSince1970(1772892309);
    EXPECT_EQ(StatusBar::clockText(date, QLocale(QLocale::English, QLocale::UnitedStates)),
        QStringLiteral("Sat 2:05 PM"));
    EXPECT_EQ(StatusBar::clockText(date, QLocale(QLocale::English, QLocale::UnitedKingdom)),
        QStringLiteral("Sat 14:05"));
    EXPECT_EQ(
        StatusBar::clockText(date, QLocale(QLocale::German, QLocale::Germany)), QStringLiteral("Sa. 14:05"));
    EXPECT_EQ(StatusBar::clockText(date, QLocale::c()), QStringLiteral("Sat 2:05 PM"));
}

TEST(ExpandedContent, ALargeInsetLeavesTheContentItsLeastHeight)
{
    EXPECT_EQ(ExpandedContent::heightFor(18), 240);
    EXPECT_EQ(ExpandedContent::heightFor(200), 120);
    EXPECT_EQ(ExpandedContent::heightFor(138), 120);
}

TEST(ExpandedContent, TabsChangeByTheirOwnSpring)
{
    Session session;
    IslandViewModel viewModel(session.container);
    ExpandedContent expanded(viewModel);
    EXPECT_EQ(expanded.tabMotion(), Motion::makeSpring(0.34, 0.88, 0.06));
    session.platform.accessibility.setReduceMotion(true);
    EXPECT_EQ(expanded.tabMotion(), Motion::makeEaseInOut(0.12));
    const QString before = expanded.tab().key;
    viewModel.setSelectedTab(IslandTab::calculator);
    EXPECT_NE(expanded.tab().key, before);
}

TEST(IslandFileDropDelegate, TakesShelfItemsFilesImagesAndPlainText)
{
    QMimeData nothing;
    nothing.setData(QStringLiteral("application/x-other"), "x");
    EXPECT_FALSE(IslandFileDropDelegate::validateDrop(&nothing));
    QMimeData shelf;
    shelf.setData(QStringLiteral("com.brindle.app.shelf-item"), "x");
    EXPECT_TRUE(IslandFileDropDelegate::validateDrop(&shelf));
    QMimeData files;
    files.setUrls({QUrl::fromLocalFile(QStringLiteral("/tmp/a"))});
    EXPECT_TRUE(IslandFileDropDelegate::validateDrop(&files));
    QMimeData image;
    image.setImageData(QImage(1, 1, QImage::Format_RGB32));
    EXPECT_TRUE(IslandFileDropDelegate::validateDrop(&image));
    QMimeData text;
    text.setText(QStringLiteral("words"));
    EXPECT_TRUE(IslandFileDropDelegate::validateDrop(&text));
}

} // namespace
} // namespace brindle
