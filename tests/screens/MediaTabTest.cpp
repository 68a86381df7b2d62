#include "core/SettingsStore.h"
#include "screens/MediaStates.h"
#include "screens/ViewsFixture.h"

namespace brindle {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Not;

class MediaTabTest : public ViewsTest
{
protected:
    ScriptedMedia &media() { return *scene.session.media; }
    void openWith(const NowPlayingTrack &track)
    {
        scene.play(track, 0.5);
        scene.open();
    }
    QAccessibleInterface *position() { return named(QStringLiteral("Position")); }
    QString shownPosition() { return position()->text(QAccessible::Description); }
    /// The place on the slider with this part of the song before it.
    QPointF onSlider(double fraction)
    {
        const QRectF slider(position()->rect());
        return {slider.left() + 6 + fraction * (slider.width() - 12), slider.center().y()};
    }
    int depth() { return scene.viewModel().interactionDepth(); }
};

TEST_F(MediaTabTest, EveryControlHasANameAndARole)
{
    openWith(songOf(scene, true));
    for (const char *name : {"Previous", "Pause", "Next"}) {
        QAccessibleInterface *control = named(QString::fromLatin1(name));
        ASSERT_NE(control, nullptr) << name;
        EXPECT_EQ(control->role(), QAccessible::Button) << name;
    }
    ASSERT_NE(position(), nullptr);
    EXPECT_EQ(position()->role(), QAccessible::Slider);
    QAccessibleInterface *texts = named(QStringLiteral("Slow Harbour, The Lanterns"));
    ASSERT_NE(texts, nullptr);
    EXPECT_EQ(texts->text(QAccessible::Description), QStringLiteral("Playing in Tideplayer"));
}

TEST_F(MediaTabTest, TheControlsWorkThroughTheirAccessibleActions)
{
    openWith(songOf(scene, true));
    press(QStringLiteral("Previous"));
    press(QStringLiteral("Pause"));
    press(QStringLiteral("Next"));
    EXPECT_EQ(media().previouses, 1);
    EXPECT_EQ(media().toggles, 1);
    EXPECT_EQ(media().nexts, 1);
}

TEST_F(MediaTabTest, ThePositionIsReadAndSetByAssistiveTools)
{
    openWith(songOf(scene, false));
    QAccessibleValueInterface *value = position()->valueInterface();
    ASSERT_NE(value, nullptr);
    EXPECT_EQ(value->currentValue().toDouble(), 72);
    EXPECT_EQ(value->minimumValue().toDouble(), 0);
    EXPECT_EQ(value->maximumValue().toDouble(), 222);
    EXPECT_EQ(shownPosition(), QStringLiteral("1:12 of 3:42"));
    value->setCurrentValue(100.0);
    position()->actionInterface()->doAction(QAccessibleActionInterface::increaseAction());
    position()->actionInterface()->doAction(QAccessibleActionInterface::decreaseAction());
    EXPECT_THAT(media().seeks, ElementsAre(100, 77, 67));
    EXPECT_EQ(value->currentValue().toDouble(), 72) << "what the player says counts";
}

TEST_F(MediaTabTest, ThePositionMovesByItselfWhileTheSongPlays)
{
    openWith(songOf(scene, true));
    EXPECT_EQ(shownPosition(), QStringLiteral("1:13 of 3:42"));
    scene.pass(10);
    EXPECT_EQ(shownPosition(), QStringLiteral("1:23 of 3:42"));
}

TEST_F(MediaTabTest, DraggingTheSliderWhileReportsArriveKeepsTheThumbUnderTheFinger)
{
    openWith(songOf(scene, true));
    scene.pointer(QEvent::MouseButtonPress, onSlider(0.25));
    scene.pointer(QEvent::MouseMove, onSlider(0.5));
    EXPECT_EQ(shownPosition(), QStringLiteral("1:51 of 3:42"));
    NowPlayingTrack report = songOf(scene, true);
    report.elapsed = 5;
    scene.play(report, 0.5);
    scene.pass(3);
    EXPECT_EQ(shownPosition(), QStringLiteral("1:51 of 3:42"));
    EXPECT_THAT(media().seeks, IsEmpty());
    scene.pointer(QEvent::MouseButtonRelease, onSlider(0.5));
    ASSERT_EQ(media().seeks.size(), 1);
    EXPECT_NEAR(media().seeks[0], 111, 1);
}

TEST_F(MediaTabTest, ASongThatChangesUnderTheFingerIsNotScrubbed)
{
    openWith(songOf(scene, true));
    const QPointF place = onSlider(0.5);
    scene.pointer(QEvent::MouseButtonPress, place);
    NowPlayingTrack next = songOf(scene, true);
    next.title = QStringLiteral("Paper Boats");
    scene.play(next, 0.5);
    scene.pass(0.1);
    scene.pointer(QEvent::MouseButtonRelease, place);
    EXPECT_THAT(media().seeks, IsEmpty());
    leave();
    scene.settle();
    EXPECT_EQ(depth(), 0);
}

TEST_F(MediaTabTest, ATrackWithoutDurationHasNoSliderAndStillItsTitleAndControls)
{
    NowPlayingTrack track = songOf(scene, true);
    track.duration.reset();
    openWith(track);
    EXPECT_EQ(position()->role(), QAccessible::StaticText);
    EXPECT_EQ(shownPosition(), QStringLiteral("1:13"));
    scene.click(onSlider(0.5));
    EXPECT_THAT(media().seeks, IsEmpty());
    for (const char *name : {"Slow Harbour, The Lanterns", "Previous", "Pause", "Next"})
        EXPECT_THAT(names(), Contains(name));
}

TEST_F(MediaTabTest, TheButtonsArePressedByThePointer)
{
    openWith(songOf(scene, false));
    scene.click(middleOf(named(QStringLiteral("Play"))));
    scene.click(middleOf(named(QStringLiteral("Next"))));
    EXPECT_EQ(media().toggles, 1);
    EXPECT_EQ(media().nexts, 1);
}

TEST_F(MediaTabTest, TheKeyboardReachesTheControlsAndMovesThePosition)
{
    openWith(songOf(scene, false));
    focusWindow();
    const auto focusOn = [this](const QString &name) {
        for (int tabs = 0; tabs < 20; ++tabs) {
            if (QAccessibleInterface *control = named(name); control && control->state().focused)
                return true;
            key(Qt::Key_Tab);
        }
        return false;
    };
    ASSERT_TRUE(focusOn(QStringLiteral("Position")));
    key(Qt::Key_Right);
    key(Qt::Key_Left);
    EXPECT_THAT(media().seeks, ElementsAre(77, 67));
    ASSERT_TRUE(focusOn(QStringLiteral("Next")));
    key(Qt::Key_Return);
    EXPECT_EQ(media().nexts, 1);
}

TEST_F(MediaTabTest, WithoutASongItSaysWhatToDo)
{
    scene.open();
    QAccessibleInterface *empty = named(QStringLiteral("Nothing playing"));
    ASSERT_NE(empty, nullptr);
    EXPECT_EQ(empty->text(QAccessible::Description),
        QStringLiteral("Start playback in Music, Spotify, a browser, or another media app."));
    EXPECT_THAT(names(), Not(Contains("Next")));
}

TEST_F(MediaTabTest, ASongThatHasGoneLeavesNothingBehind)
{
    openWith(songOf(scene, true));
    NowPlayingTrack next = songOf(scene, true);
    next.title = QStringLiteral("Paper Boats");
    scene.play(next, 0.5);
    scene.settle();
    EXPECT_THAT(names(), Contains("Paper Boats, The Lanterns"));
    EXPECT_THAT(names(), Not(Contains("Slow Harbour, The Lanterns")));
}

TEST_F(MediaTabTest, BlocksThatAreOffAreNotThere)
{
    scene.settings().setShowMediaPlayer(false);
    openWith(songOf(scene, true));
    EXPECT_EQ(position(), nullptr);
    EXPECT_THAT(names(), Contains("Mon 12:00 AM"));
    scene.settings().setShowMediaPlayer(true);
    scene.settings().setShowMediaClock(false);
    scene.settle();
    EXPECT_NE(position(), nullptr);
    EXPECT_EQ(waiting(), 2) << "the position's ticks and the status bar's clock";
}

TEST_F(MediaTabTest, TheClockCardFollowsTheClockAlsoWhenThatIsSet)
{
    scene.settings().setShowMediaPlayer(false);
    scene.open();
    QAccessibleInterface *card = nullptr;
    for (QAccessibleInterface *each : accessibles()) {
        if (each->text(QAccessible::Name) == QStringLiteral("Mon 12:00 AM"))
            card = card && card->rect().width() > each->rect().width() ? card : each;
    }
    ASSERT_NE(card, nullptr);
    scene.session.platform.time.jumpWallClock(26 * 3600);
    scene.pass(1);
    EXPECT_EQ(card->text(QAccessible::Name), QStringLiteral("Tue 2:00 AM"));
    scene.session.platform.time.jumpWallClock(-3600);
    scene.pass(1);
    EXPECT_EQ(card->text(QAccessible::Name), QStringLiteral("Tue 1:00 AM"));
}

TEST_F(MediaTabTest, ThePositionTicksFourTimesASecondAndOnlyWhileSomethingPlays)
{
    openWith(songOf(scene, true));
    EXPECT_EQ(waiting(), 3) << "the two clocks and the position";
    const int frames = framesDuring(5);
    EXPECT_LE(frames, 21);
    EXPECT_GE(frames, 15);
    scene.play(songOf(scene, false), 0.5);
    scene.settle();
    EXPECT_EQ(waiting(), 2);
    EXPECT_EQ(framesDuring(5), 0);
}

TEST_F(MediaTabTest, NothingTicksOnceTheIslandHasClosed)
{
    openWith(songOf(scene, false));
    scene.viewModel().collapse(true);
    scene.settle();
    EXPECT_EQ(waiting(), 0);
}

TEST_F(MediaTabTest, NothingOfItTicksWhileAnotherTabShows)
{
    openWith(songOf(scene, true));
    scene.viewModel().setSelectedTab(IslandTab::shelf);
    scene.settle();
    EXPECT_EQ(waiting(), 1) << "the status bar's clock";
}

TEST_F(MediaTabTest, AHandOnItIsAnInteraction)
{
    openWith(songOf(scene, true));
    EXPECT_EQ(depth(), 0);
    hover({400, 150});
    EXPECT_EQ(depth(), 1);
    hover({470, 20}); // the status bar
    EXPECT_EQ(depth(), 0);
}

TEST_F(MediaTabTest, AScrubThatLeavesTheIslandKeepsItOpenUntilItEnds)
{
    openWith(songOf(scene, true));
    const QPointF place = onSlider(0.5);
    scene.pointer(QEvent::MouseButtonPress, place);
    scene.pointer(QEvent::MouseMove, place + QPointF(0, 400));
    scene.viewModel().pointerExited();
    scene.pass(3);
    EXPECT_TRUE(scene.viewModel().isExpanded());
    EXPECT_EQ(depth(), 1);
    scene.pointer(QEvent::MouseButtonRelease, place + QPointF(0, 400));
    leave();
    EXPECT_EQ(depth(), 0);
    EXPECT_EQ(media().seeks.size(), 1);
    scene.pass(3);
    EXPECT_FALSE(scene.viewModel().isExpanded());
}

TEST_F(MediaTabTest, ClosingUnderThePointerEndsTheInteraction)
{
    openWith(songOf(scene, true));
    hover({400, 150});
    ASSERT_EQ(depth(), 1);
    scene.viewModel().collapse(true);
    EXPECT_EQ(depth(), 0);
    scene.settle();
    EXPECT_EQ(depth(), 0);
}

TEST_F(MediaTabTest, LeavingTheTabUnderThePointerEndsTheInteraction)
{
    openWith(songOf(scene, true));
    hover({400, 150});
    scene.viewModel().setSelectedTab(IslandTab::shelf);
    scene.settle();
    EXPECT_EQ(depth(), 0);
}

} // namespace
} // namespace brindle
