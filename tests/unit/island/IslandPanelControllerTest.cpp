#include "island/IslandPanelController.h"

#include "activities/ActivityCoordinator.h"
#include "core/AppContainer.h"
#include "core/SettingsStore.h"
#include "foundation/NotificationCenter.h"
#include "support/Session.h"

#include <gtest/gtest.h>

namespace brindle {
namespace {

using Disposition = EventMonitors::Disposition;

const QRectF displayFrame(0, 0, 1512, 982);

InputEvent key(int code)
{
    InputEvent event;
    event.kind = EventKind::keyDown;
    event.keyCode = code;
    return event;
}

SystemActivity anActivity(Date now, double duration = 4)
{
    return {.id = QUuid::createUuid(),
        .type = ActivityType::charging,
        .priority = ActivityPriority::charging,
        .createdAt = now,
        .duration = duration,
        .content = {}};
}

class IslandPanelControllerTest : public testing::Test
{
protected:
    IslandPanelControllerTest()
    {
        session.platform.displays.set(
            {{.localizedName = QStringLiteral("Built-in"), .frame = displayFrame, .safeAreaTop = 32}});
    }

    void launch()
    {
        controller = std::make_unique<IslandPanelController>(session.container);
        controller->show();
        session.turn();
    }

    IslandViewModel &island() { return controller->viewModel(); }
    SettingsStore &settings() { return session.container.settings(); }
    FakePanelWindow &window() { return session.panel(); }

    // A point in the middle of the closed island, and one of the open island only.
    QPointF inside() const { return {756, 981}; }
    QPointF inOpenOnly() const { return {400, 750}; }
    QPointF outside() const { return {10, 10}; }

    void hoverOpen()
    {
        session.movePointer(inside());
        session.advance(settings().hoverDelay());
        ASSERT_TRUE(island().isExpanded());
        session.turn();
        ASSERT_TRUE(window().isKeyWindow());
    }

    Session session;
    std::unique_ptr<IslandPanelController> controller;
};

// The panel

TEST_F(IslandPanelControllerTest, ThePanelIsATransparentUnmovableAreaAboveEverything)
{
    launch();
    const PanelStyle &style = window().style;
    EXPECT_EQ(style.placeholderSize, QSizeF(260, 38));
    EXPECT_EQ(style.levelAboveMenuBar, 1);
    EXPECT_FALSE(style.opaque);
    EXPECT_FALSE(style.hasShadow);
    EXPECT_FALSE(style.hidesOnDeactivate);
    EXPECT_TRUE(style.joinsAllSpaces);
    EXPECT_TRUE(style.stationary);
    EXPECT_TRUE(style.overFullScreenWindows);
    EXPECT_FALSE(style.movable);
    EXPECT_FALSE(style.movableByBackground);
    EXPECT_FALSE(style.titleVisible);
    EXPECT_TRUE(style.titlebarTransparent);
    EXPECT_TRUE(style.acceptsMouseMoved);
    EXPECT_TRUE(style.canBecomeKey);
    EXPECT_FALSE(style.canBecomeMain);
}

TEST_F(IslandPanelControllerTest, WithANotchThePanelTouchesTheUpperEdge)
{
    EXPECT_EQ(IslandPanel::frameOn({.localizedName = {}, .frame = displayFrame, .safeAreaTop = 32}),
        QRectF(286, 682, 940, 300));
}

TEST_F(IslandPanelControllerTest, WithoutANotchThePanelHangsEightPointsBelowIt)
{
    EXPECT_EQ(IslandPanel::frameOn({.localizedName = {}, .frame = displayFrame}), QRectF(286, 674, 940, 300));
}

TEST_F(IslandPanelControllerTest, AnOddDisplayPutsThePanelOnAWholePoint)
{
    const QRectF frame = IslandPanel::frameOn({.localizedName = {}, .frame = QRectF(0, 0, 1367, 768)});
    EXPECT_EQ(frame, QRectF(214, 460, 940, 300));
    EXPECT_EQ(IslandPanel::frameOn({.localizedName = {}, .frame = QRectF(-1367, 11, 1367, 768.5)}),
        QRectF(-1154, 472, 940, 300));
}

TEST_F(IslandPanelControllerTest, ShowingPlacesThePanelAtOnceAndBringsItToTheFront)
{
    launch();
    EXPECT_EQ(window().frame(), QRectF(286, 682, 940, 300));
    EXPECT_EQ(window().placements.last().change, PanelWindow::FrameChange::immediate);
    EXPECT_TRUE(window().ordersFront > 0);
    EXPECT_FALSE(window().isKeyWindow());
}

TEST_F(IslandPanelControllerTest, ShowingLooksWhereThePointerIs)
{
    session.movePointer(inside());
    launch();
    EXPECT_TRUE(island().isPointerInside());
}

TEST_F(IslandPanelControllerTest, WithoutAnyScreenThePanelIsShownAndPlacedLater)
{
    session.platform.displays.set({});
    launch();
    EXPECT_TRUE(window().ordersFront > 0);
    EXPECT_EQ(window().placements.size(), 0);
    settings().setCollapsedWidth(300);
    session.turn();
    EXPECT_EQ(window().placements.size(), 0);

    session.platform.displays.set({{.localizedName = QStringLiteral("New"), .frame = displayFrame}});
    EXPECT_EQ(window().frame(), QRectF(286, 674, 940, 300));
}

TEST_F(IslandPanelControllerTest, TheContentIsMadeForTheViewModelAndTheWindow)
{
    IslandViewModel *island = nullptr;
    PanelWindow *panel = nullptr;
    bool isAlive = false;
    controller = std::make_unique<IslandPanelController>(
        session.container, [&](IslandViewModel &viewModel, PanelWindow &window) {
            island = &viewModel;
            panel = &window;
            isAlive = true;
            auto content = std::make_unique<QObject>();
            QObject::connect(content.get(), &QObject::destroyed, [&isAlive] { isAlive = false; });
            return content;
        });
    EXPECT_EQ(island, &controller->viewModel());
    EXPECT_EQ(panel, &controller->panel().window());
    EXPECT_TRUE(isAlive);
    controller.reset();
    EXPECT_FALSE(isAlive);
}

// The display

class IslandOnManyDisplays : public IslandPanelControllerTest
{
protected:
    IslandOnManyDisplays() { session.platform.displays.set({left, right}); }

    const Screen left{.localizedName = QStringLiteral("Left"), .frame = QRectF(0, 0, 1512, 982)};
    const Screen right{.localizedName = QStringLiteral("Right"), .frame = QRectF(1512, 0, 1920, 1080)};
};

TEST_F(IslandOnManyDisplays, TheNamedDisplayIsChosen)
{
    settings().setSelectedDisplayName(QStringLiteral("Right"));
    launch();
    EXPECT_EQ(window().frame(), IslandPanel::frameOn(right));
}

TEST_F(IslandOnManyDisplays, ANameInAnotherCaseDoesNotMatch)
{
    settings().setSelectedDisplayName(QStringLiteral("right"));
    launch();
    EXPECT_EQ(window().frame(), IslandPanel::frameOn(left));
}

TEST_F(IslandOnManyDisplays, AutomaticKeepsThePanelOnItsDisplay)
{
    settings().setSelectedDisplayName(QStringLiteral("Right"));
    launch();
    settings().setSelectedDisplayName(QStringLiteral("Automatic"));
    session.turn();
    EXPECT_EQ(window().frame(), IslandPanel::frameOn(right));
}

TEST_F(IslandOnManyDisplays, ANamedDisplayThatIsGoneFallsBackAndItsNameIsKept)
{
    settings().setSelectedDisplayName(QStringLiteral("Right"));
    launch();
    session.platform.displays.set({left});
    EXPECT_EQ(window().frame(), IslandPanel::frameOn(left));
    EXPECT_EQ(settings().selectedDisplayName(), QStringLiteral("Right"));
    session.platform.displays.set({left, right});
    EXPECT_EQ(window().frame(), IslandPanel::frameOn(right));
}

TEST_F(IslandOnManyDisplays, AnotherNameMovesThePanelOnTheNextTurn)
{
    launch();
    settings().setSelectedDisplayName(QStringLiteral("Right"));
    EXPECT_EQ(window().frame(), IslandPanel::frameOn(left));
    session.turn();
    EXPECT_EQ(window().frame(), IslandPanel::frameOn(right));
    EXPECT_EQ(window().placements.last().change, PanelWindow::FrameChange::animated);
}

TEST_F(IslandPanelControllerTest, AChangedScreenMovesThePanel)
{
    launch();
    session.platform.displays.set(
        {{.localizedName = QStringLiteral("Built-in"), .frame = QRectF(0, 0, 1920, 1080)}});
    EXPECT_EQ(window().frame(), QRectF(490, 772, 940, 300));
    EXPECT_EQ(window().placements.last().change, PanelWindow::FrameChange::animated);
}

TEST_F(IslandPanelControllerTest, AnotherCollapsedSizeRepositionsThoughTheFrameStaysTheSame)
{
    launch();
    const qsizetype before = window().placements.size();
    settings().setCollapsedWidth(300);
    session.turn();
    EXPECT_EQ(window().placements.size(), before + 1);
    EXPECT_EQ(window().placements.last().change, PanelWindow::FrameChange::animated);
    EXPECT_EQ(window().frame(), QRectF(286, 682, 940, 300));
    settings().setCollapsedHeight(40);
    session.turn();
    EXPECT_EQ(window().placements.size(), before + 2);
}

TEST_F(IslandPanelControllerTest, ASettingSetToWhatItWasRepositionsNothing)
{
    launch();
    const qsizetype before = window().placements.size();
    settings().setCollapsedWidth(settings().collapsedWidth());
    settings().setCollapsedHeight(settings().collapsedHeight());
    settings().setSelectedDisplayName(settings().selectedDisplayName());
    session.turn();
    EXPECT_EQ(window().placements.size(), before);
}

// The interactive rectangle

TEST_F(IslandPanelControllerTest, TheClosedRectangleHasTheCollapsedSizeAtTheTopCentre)
{
    launch();
    EXPECT_EQ(controller->interactiveRectangle(), QRectF(626, 944, 260, 38));
}

TEST_F(IslandPanelControllerTest, AnActivityWidensTheClosedRectangle)
{
    launch();
    session.container.activities().post(anActivity(session.now()));
    EXPECT_EQ(controller->interactiveRectangle(), QRectF(572, 944, 368, 38));
    session.advance(4);
    EXPECT_EQ(controller->interactiveRectangle().width(), 260);
}

TEST_F(IslandPanelControllerTest, ANegativeExpansionAddsNothing)
{
    launch();
    settings().setCollapsedActivityExpansion(-50);
    session.container.activities().post(anActivity(session.now()));
    EXPECT_EQ(controller->interactiveRectangle().width(), 260);
}

TEST_F(IslandPanelControllerTest, AClosedIslandThatIsWiderThanThePanelEndsWithIt)
{
    launch();
    settings().setCollapsedWidth(1200);
    settings().setCollapsedHeight(400);
    EXPECT_EQ(controller->interactiveRectangle(), QRectF(286, 682, 940, 300));
}

TEST_F(IslandPanelControllerTest, WithoutADisplayAndWithoutDelaysTheIslandDoesNotFlutter)
{
    session.platform.displays.set({});
    settings().setHoverDelay(0);
    settings().setCollapseDelay(0);
    settings().setCollapsedWidth(420);
    session.movePointer({1000, 500});
    launch();
    int changes = 0;
    QObject::connect(&island(), &IslandViewModel::isExpandedChanged, [&changes] { ++changes; });
    // In the closed island as it was asked for, but beside the panel, which has no place yet.
    session.movePointer({300, 20});
    session.advance(1);
    EXPECT_EQ(changes, 0);
}

TEST_F(IslandPanelControllerTest, TheWholeOpenPanelCountsAsInside)
{
    launch();
    island().expand();
    session.container.activities().post(anActivity(session.now()));
    EXPECT_EQ(controller->interactiveRectangle(), QRectF(286, 682, 940, 300));
}

// The pointer

TEST_F(IslandPanelControllerTest, PointerMotionInOtherProgramsActsOnTheNextTurn)
{
    launch();
    session.platform.input.location = inside();
    session.sendGlobal(EventKind::mouseMoved);
    EXPECT_FALSE(island().isPointerInside());
    session.turn();
    EXPECT_TRUE(island().isPointerInside());
}

TEST_F(IslandPanelControllerTest, PointerMotionInTheProgramActsAtOnceAndIsPassedOn)
{
    launch();
    session.platform.input.location = inside();
    EXPECT_EQ(session.sendLocal(EventKind::leftMouseDragged), Disposition::pass);
    EXPECT_TRUE(island().isPointerInside());
    session.platform.input.location = outside();
    session.sendLocal(EventKind::mouseMoved);
    EXPECT_FALSE(island().isPointerInside());
}

class IslandPointerMotion : public IslandPanelControllerTest, public testing::WithParamInterface<EventKind>
{
};

TEST_P(IslandPointerMotion, OfEveryKindIsFollowedEverywhere)
{
    launch();
    session.platform.input.location = inside();
    session.sendLocal(GetParam());
    EXPECT_TRUE(island().isPointerInside());
    session.platform.input.location = outside();
    session.sendGlobal(GetParam());
    session.turn();
    EXPECT_FALSE(island().isPointerInside());
}

INSTANTIATE_TEST_SUITE_P(, IslandPointerMotion,
    testing::Values(EventKind::mouseMoved, EventKind::leftMouseDragged, EventKind::rightMouseDragged,
        EventKind::otherMouseDragged));

TEST_F(IslandPanelControllerTest, MotionWithinTheIslandTellsTheViewModelNothing)
{
    launch();
    settings().setHoverDelay(1);
    session.movePointer(inside());
    session.advance(0.9);
    session.movePointer(inside() + QPointF(1, 0));
    session.advance(0.2);
    EXPECT_TRUE(island().isExpanded());
}

TEST_F(IslandPanelControllerTest, ClosingWithThePointerInTheOpenAreaOnlyPutsItOutside)
{
    launch();
    hoverOpen();
    session.movePointer(inOpenOnly());
    EXPECT_TRUE(island().isPointerInside());
    island().toggle();
    session.turn();
    EXPECT_FALSE(island().isExpanded());
    EXPECT_FALSE(island().isPointerInside());
    EXPECT_FALSE(island().isCollapsePending());
}

TEST_F(IslandPanelControllerTest, OpeningByTapUnderThePointerRunsNoSecondOpening)
{
    settings().setOpenOnHover(false);
    launch();
    session.movePointer(inside());
    int openings = 0;
    QObject::connect(&island(), &IslandViewModel::isExpandedChanged, [&] { ++openings; });
    island().expand();
    session.turn();
    session.advance(1);
    EXPECT_EQ(openings, 1);
    EXPECT_EQ(session.platform.ticks.ticks.size(), 0);
}

TEST_F(IslandPanelControllerTest, OpeningUnderAPointerThatOnlyTheOpenAreaHoldsPutsItInside)
{
    launch();
    session.movePointer(inOpenOnly());
    EXPECT_FALSE(island().isPointerInside());
    session.toggleIsland();
    session.turn();
    EXPECT_TRUE(island().isPointerInside());
}

// The keyboard's owner

TEST_F(IslandPanelControllerTest, OpeningTakesTheKeyboardAndClosingGivesItBack)
{
    launch();
    island().expand();
    EXPECT_FALSE(window().isKeyWindow());
    session.turn();
    EXPECT_TRUE(window().isKeyWindow());
    EXPECT_TRUE(window().ordersFront > 0);
    island().collapse(true);
    session.turn();
    EXPECT_FALSE(window().isKeyWindow());
    EXPECT_TRUE(window().ordersFront > 0);
}

// Clicks elsewhere

TEST_F(IslandPanelControllerTest, AClickInAnotherProgramClosesOnTheNextTurn)
{
    for (const EventKind button : {EventKind::leftMouseDown, EventKind::rightMouseDown}) {
        launch();
        island().expand();
        session.sendGlobal(button);
        EXPECT_TRUE(island().isExpanded());
        session.turn();
        EXPECT_FALSE(island().isExpanded());
    }
}

TEST_F(IslandPanelControllerTest, AClickInAnotherProgramDuringAnInteractionLeavesItOpen)
{
    launch();
    island().expand();
    island().beginInteraction();
    session.sendGlobal(EventKind::leftMouseDown);
    session.turn();
    EXPECT_TRUE(island().isExpanded());
}

TEST_F(IslandPanelControllerTest, AClickInAnotherProgramDoesNothingToAClosedIsland)
{
    launch();
    settings().setHoverDelay(1);
    session.movePointer(inside());
    session.sendGlobal(EventKind::leftMouseDown);
    session.turn();
    EXPECT_TRUE(island().isHoverPending());
}

// Keys

TEST_F(IslandPanelControllerTest, SpaceOnTheMediaTabTogglesPlaybackOnceHoweverLongItIsHeld)
{
    launch();
    hoverOpen();
    InputEvent space = key(KeyCode::space);
    EXPECT_EQ(session.sendLocal(space), Disposition::swallow);
    space.isARepeat = true;
    EXPECT_EQ(session.sendLocal(space), Disposition::swallow);
    EXPECT_EQ(session.sendLocal(space), Disposition::swallow);
    EXPECT_EQ(session.media->toggles, 1);
}

TEST_F(IslandPanelControllerTest, ASpaceCharacterFromAnyKeyIsSpace)
{
    launch();
    hoverOpen();
    InputEvent event = key(KeyCode::other);
    event.charactersIgnoringModifiers = QStringLiteral(" ");
    EXPECT_EQ(session.sendLocal(event), Disposition::swallow);
    event.charactersIgnoringModifiers = QStringLiteral("  ");
    EXPECT_EQ(session.sendLocal(event), Disposition::pass);
    EXPECT_EQ(session.media->toggles, 1);
}

TEST_F(IslandPanelControllerTest, SpaceInATextFieldIsTyped)
{
    launch();
    hoverOpen();
    window().isTextFieldFocused = true;
    EXPECT_EQ(session.sendLocal(key(KeyCode::space)), Disposition::pass);
    EXPECT_EQ(session.sendLocal(key(KeyCode::downArrow)), Disposition::pass);
    EXPECT_EQ(session.media->toggles, 0);
    EXPECT_EQ(island().selectedTab(), IslandTab::media);
}

TEST_F(IslandPanelControllerTest, SpaceWithoutAPlayerIsPassedOn)
{
    settings().setShowMediaPlayer(false);
    launch();
    hoverOpen();
    EXPECT_EQ(session.sendLocal(key(KeyCode::space)), Disposition::pass);
    EXPECT_EQ(session.media->toggles, 0);
}

TEST_F(IslandPanelControllerTest, SpaceOnAnotherTabIsPassedOn)
{
    launch();
    hoverOpen();
    island().setSelectedTab(IslandTab::calculator);
    EXPECT_EQ(session.sendLocal(key(KeyCode::space)), Disposition::pass);
    EXPECT_EQ(session.media->toggles, 0);
}

TEST_F(IslandPanelControllerTest, ArrowsMoveThroughTheTabsWithASpring)
{
    launch();
    hoverOpen();
    EXPECT_EQ(session.sendLocal(key(KeyCode::downArrow)), Disposition::swallow);
    EXPECT_EQ(island().selectedTab(), IslandTab::shelf);
    EXPECT_EQ(island().selectionAnimation(), SelectionAnimation::makeSpring(0.36, 0.82, 0));
    EXPECT_EQ(session.sendLocal(key(KeyCode::upArrow)), Disposition::swallow);
    EXPECT_EQ(session.sendLocal(key(KeyCode::upArrow)), Disposition::swallow);
    EXPECT_EQ(island().selectedTab(), IslandTab::calculator);
}

TEST_F(IslandPanelControllerTest, UnderReducedMotionArrowsMovePlainly)
{
    session.platform.accessibility.setReduceMotion(true);
    launch();
    hoverOpen();
    session.sendLocal(key(KeyCode::downArrow));
    EXPECT_EQ(island().selectionAnimation(), SelectionAnimation::makeEaseInOut(0.12));
}

TEST_F(IslandPanelControllerTest, KeysWithAModifierArePassedOn)
{
    launch();
    hoverOpen();
    for (const quint32 flag :
        {ModifierFlag::shift, ModifierFlag::control, ModifierFlag::option, ModifierFlag::command}) {
        for (const int code : {KeyCode::upArrow, KeyCode::space}) {
            InputEvent event = key(code);
            event.modifierFlags = flag;
            EXPECT_EQ(session.sendLocal(event), Disposition::pass);
        }
    }
    EXPECT_EQ(island().selectedTab(), IslandTab::media);
    EXPECT_EQ(session.media->toggles, 0);
}

TEST_F(IslandPanelControllerTest, OtherKeysArePassedOn)
{
    launch();
    hoverOpen();
    EXPECT_EQ(session.sendLocal(key(53)), Disposition::pass);
    EXPECT_EQ(session.sendLocal(key(123)), Disposition::pass);
    EXPECT_EQ(session.sendLocal(key(124)), Disposition::pass);
    EXPECT_TRUE(island().isExpanded());
}

TEST_F(IslandPanelControllerTest, KeysOfAClosedIslandOrOfAnotherWindowArePassedOn)
{
    launch();
    EXPECT_EQ(session.sendLocal(key(KeyCode::space)), Disposition::pass);
    island().expand();
    // The panel takes the keyboard on the next turn only.
    EXPECT_EQ(session.sendLocal(key(KeyCode::downArrow)), Disposition::pass);
    EXPECT_EQ(island().selectedTab(), IslandTab::media);
}

// Messages and the end

TEST_F(IslandPanelControllerTest, TheToggleMessageOpensAndClosesInFront)
{
    launch();
    session.toggleIsland();
    EXPECT_TRUE(island().isExpanded());
    session.toggleIsland();
    EXPECT_FALSE(island().isExpanded());
    EXPECT_TRUE(window().ordersFront > 0);
}

TEST_F(IslandPanelControllerTest, AToggleKeepsTheIslandOpenUntilThePointerHasBeenThere)
{
    launch();
    session.toggleIsland();
    session.advance(60);
    EXPECT_TRUE(island().isExpanded());
    session.movePointer(inOpenOnly());
    session.movePointer(outside());
    session.advance(0.21);
    EXPECT_FALSE(island().isExpanded());
}

TEST_F(IslandPanelControllerTest, MonitorsThatTheSystemRefusesLeaveTheLocalOnesWorking)
{
    session.platform.input.refusesGlobalMonitors = true;
    launch();
    session.platform.input.location = inside();
    session.sendLocal(EventKind::mouseMoved);
    EXPECT_TRUE(island().isPointerInside());
}

TEST_F(IslandPanelControllerTest, NothingIsWatchedOnceTheControllerIsGone)
{
    launch();
    EXPECT_EQ(session.monitors(), 4);
    session.sendGlobal(EventKind::mouseMoved);
    controller->viewModel().expand();
    controller.reset();
    EXPECT_EQ(session.monitors(), 0);
    session.toggleIsland();
    settings().setCollapsedWidth(300);
    session.advance(10);
}

} // namespace
} // namespace brindle
