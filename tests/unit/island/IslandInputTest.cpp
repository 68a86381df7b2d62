#include "unit/island/PanelFixture.h"

namespace brindle {
namespace {

using Disposition = EventMonitors::Disposition;

class IslandInputTest : public IslandPanelControllerTest
{
};

InputEvent key(int code)
{
    InputEvent event;
    event.kind = EventKind::keyDown;
    event.keyCode = code;
    return event;
}

// The pointer

TEST_F(IslandInputTest, PointerMotionInOtherProgramsActsOnTheNextTurn)
{
    launch();
    session.platform.input.location = inside();
    session.sendGlobal(EventKind::mouseMoved);
    EXPECT_FALSE(island().isPointerInside());
    session.turn();
    EXPECT_TRUE(island().isPointerInside());
}

TEST_F(IslandInputTest, PointerMotionInTheProgramActsAtOnceAndIsPassedOn)
{
    launch();
    session.platform.input.location = inside();
    EXPECT_EQ(session.sendLocal(EventKind::leftMouseDragged), Disposition::pass);
    EXPECT_TRUE(island().isPointerInside());
    session.platform.input.location = outside();
    session.sendLocal(EventKind::mouseMoved);
    EXPECT_FALSE(island().isPointerInside());
}

class IslandPointerMotion : public IslandInputTest, public testing::WithParamInterface<EventKind>
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

TEST_F(IslandInputTest, MotionWithinTheIslandTellsTheViewModelNothing)
{
    launch();
    settings().setHoverDelay(1);
    session.movePointer(inside());
    session.advance(0.9);
    session.movePointer(inside() + QPointF(1, 0));
    session.advance(0.2);
    EXPECT_TRUE(island().isExpanded());
}

TEST_F(IslandInputTest, ClosingWithThePointerInTheOpenAreaOnlyPutsItOutside)
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

TEST_F(IslandInputTest, OpeningByTapUnderThePointerRunsNoSecondOpening)
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

TEST_F(IslandInputTest, OpeningUnderAPointerThatOnlyTheOpenAreaHoldsPutsItInside)
{
    launch();
    session.movePointer(inOpenOnly());
    EXPECT_FALSE(island().isPointerInside());
    session.toggleIsland();
    session.turn();
    EXPECT_TRUE(island().isPointerInside());
}

// The keyboard's owner

TEST_F(IslandInputTest, OpeningTakesTheKeyboardAndClosingGivesItBack)
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

TEST_F(IslandInputTest, AClickInAnotherProgramClosesOnTheNextTurn)
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

TEST_F(IslandInputTest, AClickInAnotherProgramDuringAnInteractionLeavesItOpen)
{
    launch();
    island().expand();
    island().beginInteraction();
    session.sendGlobal(EventKind::leftMouseDown);
    session.turn();
    EXPECT_TRUE(island().isExpanded());
}

TEST_F(IslandInputTest, AClickInAnotherProgramDoesNothingToAClosedIsland)
{
    launch();
    settings().setHoverDelay(1);
    session.movePointer(inside());
    session.sendGlobal(EventKind::leftMouseDown);
    session.turn();
    EXPECT_TRUE(island().isHoverPending());
}

// Keys

TEST_F(IslandInputTest, SpaceOnTheMediaTabTogglesPlaybackOnceHoweverLongItIsHeld)
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

TEST_F(IslandInputTest, ASpaceCharacterFromAnyKeyIsSpace)
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

TEST_F(IslandInputTest, SpaceInATextFieldIsTyped)
{
    launch();
    hoverOpen();
    window().isTextFieldFocused = true;
    EXPECT_EQ(session.sendLocal(key(KeyCode::space)), Disposition::pass);
    EXPECT_EQ(session.sendLocal(key(KeyCode::downArrow)), Disposition::pass);
    EXPECT_EQ(session.media->toggles, 0);
    EXPECT_EQ(island().selectedTab(), IslandTab::media);
}

TEST_F(IslandInputTest, SpaceWithoutAPlayerIsPassedOn)
{
    settings().setShowMediaPlayer(false);
    launch();
    hoverOpen();
    EXPECT_EQ(session.sendLocal(key(KeyCode::space)), Disposition::pass);
    EXPECT_EQ(session.media->toggles, 0);
}

TEST_F(IslandInputTest, SpaceOnAnotherTabIsPassedOn)
{
    launch();
    hoverOpen();
    island().setSelectedTab(IslandTab::calculator);
    EXPECT_EQ(session.sendLocal(key(KeyCode::space)), Disposition::pass);
    EXPECT_EQ(session.media->toggles, 0);
}

TEST_F(IslandInputTest, ArrowsMoveThroughTheTabsWithASpring)
{
    launch();
    hoverOpen();
    EXPECT_EQ(session.sendLocal(key(KeyCode::downArrow)), Disposition::swallow);
    EXPECT_EQ(island().selectedTab(), IslandTab::shelf);
    EXPECT_EQ(island().selectionMotion(), Motion::makeSpring(0.36, 0.82, 0));
    EXPECT_EQ(session.sendLocal(key(KeyCode::upArrow)), Disposition::swallow);
    EXPECT_EQ(session.sendLocal(key(KeyCode::upArrow)), Disposition::swallow);
    EXPECT_EQ(island().selectedTab(), IslandTab::calculator);
}

TEST_F(IslandInputTest, UnderReducedMotionArrowsMovePlainly)
{
    session.platform.accessibility.setReduceMotion(true);
    launch();
    hoverOpen();
    session.sendLocal(key(KeyCode::downArrow));
    EXPECT_EQ(island().selectionMotion(), Motion::makeEaseInOut(0.12));
}

TEST_F(IslandInputTest, KeysWithAModifierArePassedOn)
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

TEST_F(IslandInputTest, OtherKeysArePassedOn)
{
    launch();
    hoverOpen();
    EXPECT_EQ(session.sendLocal(key(53)), Disposition::pass);
    EXPECT_EQ(session.sendLocal(key(123)), Disposition::pass);
    EXPECT_EQ(session.sendLocal(key(124)), Disposition::pass);
    EXPECT_TRUE(island().isExpanded());
}

TEST_F(IslandInputTest, KeysOfAClosedIslandOrOfAnotherWindowArePassedOn)
{
    launch();
    EXPECT_EQ(session.sendLocal(key(KeyCode::space)), Disposition::pass);
    island().expand();
    // The panel takes the keyboard on the next turn only.
    EXPECT_EQ(session.sendLocal(key(KeyCode::downArrow)), Disposition::pass);
    EXPECT_EQ(island().selectedTab(), IslandTab::media);
}

// Messages and the end

TEST_F(IslandInputTest, TheToggleMessageOpensAndClosesInFront)
{
    launch();
    session.toggleIsland();
    EXPECT_TRUE(island().isExpanded());
    session.toggleIsland();
    EXPECT_FALSE(island().isExpanded());
    EXPECT_TRUE(window().ordersFront > 0);
}

TEST_F(IslandInputTest, AToggleKeepsTheIslandOpenUntilThePointerHasBeenThere)
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

TEST_F(IslandInputTest, MonitorsThatTheSystemRefusesLeaveTheLocalOnesWorking)
{
    session.platform.input.refusesGlobalMonitors = true;
    launch();
    session.platform.input.location = inside();
    session.sendLocal(EventKind::mouseMoved);
    EXPECT_TRUE(island().isPointerInside());
}

TEST_F(IslandInputTest, NothingIsWatchedOnceTheControllerIsGone)
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
