#include "activities/ActivityCoordinator.h"
#include "core/SettingsStore.h"
#include "screens/MediaStates.h"
#include "screens/ViewsFixture.h"
#include "ui/RoundedPicture.h"

#include <QMimeData>

#include <gmock/gmock.h>

namespace brindle {
namespace {

using testing::Contains;
using testing::Not;

SystemActivity soundOf(const IslandScene &scene, double level)
{
    SystemActivity activity;
    activity.id = QUuid::createUuidV5(QUuid(), QStringLiteral("sound"));
    activity.type = ActivityType::systemControl;
    activity.createdAt = scene.session.now();
    activity.duration = 30;
    activity.content = {QStringLiteral("Sound"), {}, QStringLiteral("speaker.wave.2.fill"), level};
    return activity;
}

TEST_F(ViewsTest, TheClosedIslandIsAButtonThatOpens)
{
    EXPECT_THAT(names(), Contains("Velmora"));
    press(QStringLiteral("Velmora"));
    EXPECT_TRUE(scene.viewModel().isExpanded());
}

TEST_F(ViewsTest, ALevelIsReadOutWithItsValue)
{
    scene.show(soundOf(scene, 0.5));
    scene.settle();
    QAccessibleInterface *level = named(QStringLiteral("Sound"));
    ASSERT_NE(level, nullptr);
    EXPECT_EQ(level->role(), QAccessible::ProgressBar);
    EXPECT_EQ(level->text(QAccessible::Value), QStringLiteral("50 percent"));
    ASSERT_NE(level->valueInterface(), nullptr);
    EXPECT_EQ(level->valueInterface()->currentValue(), 50);
    EXPECT_EQ(level->valueInterface()->minimumValue(), 0);
    EXPECT_EQ(level->valueInterface()->maximumValue(), 100);
    EXPECT_EQ(level->childCount(), 0) << "the row is one thing";
}

TEST_F(ViewsTest, ALevelHasItsPlaceAmongTheIslandsElements)
{
    scene.show(soundOf(scene, 0.5));
    scene.settle();
    QAccessibleInterface *level = named(QStringLiteral("Sound"));
    ASSERT_NE(level, nullptr);
    ASSERT_NE(level->parent(), nullptr);
    EXPECT_GE(level->parent()->indexOfChild(level), 0);
    EXPECT_EQ(level->rect().height(), 38);
    EXPECT_TRUE(named(QStringLiteral("Velmora"))->rect().contains(level->rect()));
}

TEST_F(ViewsTest, AnEventWithoutALevelIsReadOutAsText)
{
    SystemActivity event = soundOf(scene, 0);
    event.content.progress.reset();
    scene.show(event);
    scene.settle();
    QAccessibleInterface *text = named(QStringLiteral("Sound"));
    ASSERT_NE(text, nullptr);
    EXPECT_EQ(text->role(), QAccessible::StaticText);
    EXPECT_EQ(text->valueInterface(), nullptr);
}

TEST_F(ViewsTest, TheWaveformSaysWhetherAudioPlays)
{
    scene.play(songOf(scene, true), 0.5);
    scene.settle();
    EXPECT_THAT(names(), Contains("Audio playing"));
    scene.play(songOf(scene, false), 0.5);
    scene.settle();
    EXPECT_THAT(names(), Contains("Audio paused"));
    EXPECT_THAT(names(), Not(Contains("Audio playing")));
}

TEST_F(ViewsTest, TheOpenIslandNamesItsTabsClockAndBattery)
{
    scene.open();
    for (const char *name : {"Media", "Shelf", "Calculator", "Settings…", "Battery, 0%", "Mon 12:00 AM"})
        EXPECT_THAT(names(), Contains(name));
    EXPECT_THAT(names(), Not(Contains("AI")));
    EXPECT_TRUE(named(QStringLiteral("Media"))->state().checked);
    EXPECT_FALSE(named(QStringLiteral("Shelf"))->state().checked);
}

TEST_F(ViewsTest, ATabIsSelectedThroughItsAccessibleAction)
{
    scene.open();
    press(QStringLiteral("Calculator"));
    EXPECT_EQ(scene.viewModel().selectedTab(), IslandTab::calculator);
    EXPECT_TRUE(named(QStringLiteral("Calculator"))->state().checked);
}

TEST_F(ViewsTest, HidingTheSelectedTabSelectsTheFirstVisibleOne)
{
    scene.viewModel().setSelectedTab(IslandTab::shelf);
    scene.open();
    scene.settings().setShowShelfTab(false);
    scene.settle();
    EXPECT_EQ(scene.viewModel().selectedTab(), IslandTab::media);
    EXPECT_THAT(names(), Not(Contains("Shelf")));
}

TEST_F(ViewsTest, ATapOnTheShapeOpensAndOneBesideItDoesNot)
{
    scene.click({300, 20});
    EXPECT_FALSE(scene.viewModel().isExpanded());
    scene.click({343, 10}); // in the frame, but in a shoulder's hollow
    EXPECT_FALSE(scene.viewModel().isExpanded());
    scene.click({470, 20});
    EXPECT_TRUE(scene.viewModel().isExpanded());
}

TEST_F(ViewsTest, ATapOnATabSelectsIt)
{
    scene.open();
    scene.click({65, 42 + 12 + 44 + 17});
    EXPECT_EQ(scene.viewModel().selectedTab(), IslandTab::shelf);
}

TEST_F(ViewsTest, ATabSaysItsNameWhileThePointerRestsOnIt)
{
    scene.open();
    const QImage plain = scene.content().copy();
    const auto clocks = waiting();
    scene.point({65, 42 + 12 + 44 + 17});
    scene.pass(0.5);
    EXPECT_EQ(scene.content(), plain) << "the pointer may only be passing";
    scene.settle();
    EXPECT_NE(scene.content(), plain);
    EXPECT_EQ(waiting(), clocks) << "the words stay without anything that runs";
    EXPECT_EQ(framesDuring(2), 0);

    scene.point({300, 150});
    scene.settle();
    EXPECT_EQ(scene.content(), plain);
}

TEST_F(ViewsTest, ATabThatIsChosenSaysNoMore)
{
    const QPointF shelf(65, 42 + 12 + 44 + 17);
    scene.viewModel().setSelectedTab(IslandTab::shelf);
    scene.open();
    const QImage plain = scene.content().copy();
    scene.point(shelf);
    scene.settle();
    scene.click(shelf);
    scene.settle();
    EXPECT_EQ(scene.content(), plain);
}

TEST_F(ViewsTest, TheOpenIslandIsBuiltOnOpeningAndTornDownOnClosing)
{
    EXPECT_EQ(scene.session.monitors(), 0);
    scene.open();
    EXPECT_EQ(scene.session.monitors(), 1) << "the sidebar watches scrolls";
    scene.viewModel().collapse(true);
    scene.settle();
    EXPECT_EQ(scene.session.monitors(), 0);
    EXPECT_THAT(names(), Not(Contains("Media")));
}

TEST_F(ViewsTest, AtRestNoFrameIsDrawnAndNothingWakes)
{
    scene.settle();
    EXPECT_EQ(waiting(), 0);
    EXPECT_EQ(framesDuring(5), 0);
}

TEST_F(ViewsTest, AtRestTheOpenIslandOnlyKeepsTheClocks)
{
    scene.open();
    EXPECT_EQ(waiting(), 2) << "the status bar's and the card's";
    EXPECT_EQ(framesDuring(5), 0);
}

TEST_F(ViewsTest, TheBarsMoveTwentyFourTimesASecondWhileAudioPlays)
{
    scene.play(songOf(scene, true), 0.5);
    scene.settle();
    EXPECT_NEAR(framesDuring(2), 48, 1);
    scene.play(songOf(scene, false), 0.5);
    scene.settle();
    EXPECT_EQ(waiting(), 0);
    EXPECT_EQ(framesDuring(2), 0);
}

TEST_F(ViewsTest, TheLevelMovesAtMostThirtyTimesASecondWhileItShows)
{
    scene.show(soundOf(scene, 0.5));
    scene.settle();
    const int frames = framesDuring(2);
    EXPECT_LE(frames, 61);
    EXPECT_GE(frames, 50);
    scene.pass(30);
    EXPECT_EQ(waiting(), 0);
}

TEST_F(ViewsTest, WithReducedMotionNothingRunsByItself)
{
    scene.session.platform.accessibility.setReduceMotion(true);
    scene.play(songOf(scene, true), 0.5);
    scene.settle();
    EXPECT_EQ(waiting(), 0);
    scene.show(soundOf(scene, 0.5));
    scene.settle();
    EXPECT_EQ(waiting(), 1) << "the end of the event";
    EXPECT_EQ(framesDuring(2), 0);
}

TEST_F(ViewsTest, TheClockIsRenewedEachMinute)
{
    scene.open();
    scene.pass(61);
    EXPECT_THAT(names(), Contains("Mon 12:01 AM"));
}

TEST_F(ViewsTest, TheInputShapeIsWhatIsDrawnInEveryFrame)
{
    const auto expectInStep = [this] {
        EXPECT_EQ(scene.panel().inputShape, scene.presenter().surface()->outline());
    };
    expectInStep();
    scene.viewModel().expand();
    for (int frame = 0; frame < 100; ++frame) {
        scene.pass(0.01);
        expectInStep();
    }
    scene.viewModel().collapse(true);
    for (int frame = 0; frame < 100; ++frame) {
        scene.pass(0.01);
        expectInStep();
    }
    EXPECT_EQ(scene.panel().inputShape.boundingRect(), QRectF(340, 0, 260, 38));
}

TEST_F(ViewsTest, ADragIsAnsweredWithCopyAndHandedToTheViewModel)
{
    QMimeData files;
    files.setUrls({QUrl::fromLocalFile(QStringLiteral("/tmp/a"))});
    scene.session.pressPrimaryButton();
    QDragEnterEvent enter(
        QPoint(470, 20), Qt::CopyAction | Qt::MoveAction, &files, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(&scene.window(), &enter);
    EXPECT_TRUE(enter.isAccepted());
    EXPECT_TRUE(scene.viewModel().isExternalDragActive());
    EXPECT_TRUE(scene.viewModel().isExpanded());
    EXPECT_EQ(scene.viewModel().selectedTab(), IslandTab::shelf);

    scene.settle();
    QDragMoveEvent move(
        QPoint(300, 150), Qt::CopyAction | Qt::MoveAction, &files, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(&scene.window(), &move);
    EXPECT_TRUE(move.isAccepted());
    EXPECT_EQ(move.dropAction(), Qt::CopyAction);

    scene.session.releaseButtons();
    QDropEvent drop(
        QPointF(300, 150), Qt::CopyAction | Qt::MoveAction, &files, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(&scene.window(), &drop);
    EXPECT_FALSE(drop.isAccepted()) << "there is no shelf to take it";
    EXPECT_FALSE(scene.viewModel().isExternalDragActive());
}

TEST_F(ViewsTest, ADragOfUnknownThingsIsLeftAlone)
{
    QMimeData other;
    other.setData(QStringLiteral("application/x-other"), "x");
    scene.session.pressPrimaryButton();
    QDragEnterEvent enter(QPoint(470, 20), Qt::CopyAction, &other, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(&scene.window(), &enter);
    EXPECT_FALSE(scene.viewModel().isExternalDragActive());
}

TEST_F(ViewsTest, ADragThatLeavesEndsOnceTheButtonIsUp)
{
    QMimeData text;
    text.setText(QStringLiteral("words"));
    scene.session.pressPrimaryButton();
    QDragEnterEvent enter(QPoint(470, 20), Qt::CopyAction, &text, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(&scene.window(), &enter);
    ASSERT_TRUE(scene.viewModel().isExternalDragActive());
    QDragLeaveEvent leave;
    QCoreApplication::sendEvent(&scene.window(), &leave);
    scene.session.releaseButtons();
    scene.pass(0.5);
    EXPECT_FALSE(scene.viewModel().isExternalDragActive());
}

TEST(RoundedPicture, HasNothingToShowWithoutAPicture)
{
    RoundedPicture picture;
    EXPECT_FALSE(picture.hasPicture());
    picture.setPicture(QImage(4, 4, QImage::Format_RGB32));
    EXPECT_TRUE(picture.hasPicture());
}

} // namespace
} // namespace brindle
