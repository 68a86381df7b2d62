#include "media/Scrubber.h"

#include "core/SettingsStore.h"
#include "media/ArtworkLoader.h"
#include "media/MediaPresenter.h"
#include "media/TrackPresentation.h"
#include "platform/fake/FakePlatform.h"
#include "unit/media/MediaFixture.h"

#include <QSignalSpy>

#include <gmock/gmock.h>

namespace brindle {
namespace {

class ScrubberTest : public testing::Test
{
protected:
    double sought() { return wishes.takeFirst().constFirst().toDouble(); }

    Scrubber scrubber;
    QSignalSpy wishes{&scrubber, &Scrubber::seekWanted};
    QSignalSpy shown{&scrubber, &Scrubber::shownChanged};
};

TEST_F(ScrubberTest, ShowsWhatIsReportedWhileNobodyScrubs)
{
    scrubber.setElapsed(12);
    EXPECT_EQ(scrubber.shown(), 12);
    EXPECT_EQ(shown.count(), 1);
}

TEST_F(ScrubberTest, DraggingWhileReportsArriveKeepsTheThumbUnderTheFinger)
{
    scrubber.setElapsed(12);
    scrubber.begin();
    EXPECT_EQ(scrubber.shown(), 12);
    scrubber.move(80);
    shown.clear();
    for (const double report : {12.25, 12.5, 3.0, 190.0})
        scrubber.setElapsed(report);
    EXPECT_EQ(scrubber.shown(), 80);
    EXPECT_EQ(shown.count(), 0);
    EXPECT_EQ(wishes.count(), 0) << "nothing is sought before the end";
}

TEST_F(ScrubberTest, TheEndAsksForTheValueUnderTheFingerOnce)
{
    scrubber.begin();
    scrubber.move(40);
    scrubber.move(80);
    scrubber.end();
    EXPECT_FALSE(scrubber.isScrubbing());
    ASSERT_EQ(wishes.count(), 1);
    EXPECT_EQ(sought(), 80);
    scrubber.end();
    EXPECT_EQ(wishes.count(), 0);
}

TEST_F(ScrubberTest, ACancelledScrubAsksForNothingAndShowsTheReportAgain)
{
    scrubber.setElapsed(12);
    scrubber.begin();
    scrubber.move(80);
    scrubber.cancel();
    EXPECT_EQ(scrubber.shown(), 12);
    EXPECT_EQ(wishes.count(), 0);
}

TEST_F(ScrubberTest, MovesWithoutAHandMeanNothing)
{
    scrubber.setElapsed(12);
    scrubber.move(80);
    EXPECT_EQ(scrubber.shown(), 12);
}

/// The scrubber before the service that decides, as the view joins them.
class ScrubbingTheService : public SystemMedia
{
protected:
    ScrubbingTheService()
    {
        startWithRemote();
        QObject::connect(&scrubber, &Scrubber::seekWanted, &presenter, &MediaPresenter::seek);
        QObject::connect(&presenter, &MediaPresenter::playerChanged, &scrubber, [this] { draw(); });
        QObject::connect(
            &scrubber, &Scrubber::shownChanged, &scrubber, [this] { everShown.append(scrubber.shown()); });
    }

    /// What the timeline's ticks do.
    void draw()
    {
        const auto track = presenter.player().content.value<TrackPresentation>();
        scrubber.setElapsed(track.elapsedAt(time.now().referenceSeconds()));
    }

    FakePlatform platform;
    SettingsStore settings{platform.defaults, time};
    ArtworkLoader artwork{
        service, platform.network, platform.makeSerialQueue(QStringLiteral("Artwork")), time};
    MediaPresenter presenter{service, artwork, settings, platform.accessibility};
    Scrubber scrubber;
    QList<double> everShown;
};

TEST_F(ScrubbingTheService, AReleaseShowsTheTargetAtOnceAndTheOldPositionDoesNotReturn)
{
    remote->report(playing(browser));
    ASSERT_EQ(scrubber.shown(), 10);
    scrubber.begin();
    scrubber.move(120);
    everShown.clear();
    scrubber.end();
    EXPECT_EQ(scrubber.shown(), 120);
    for (int tick = 0; tick < 4; ++tick) {
        time.advance(0.25);
        remote->report(playingAt(10 + 0.25 * tick, browser)); // the source has not heard yet
        draw();
    }
    EXPECT_THAT(everShown, testing::Each(testing::Ge(120)));
    EXPECT_NEAR(scrubber.shown(), 121, 0.3);
}

} // namespace
} // namespace brindle
