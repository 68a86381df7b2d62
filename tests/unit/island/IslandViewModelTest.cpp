#include "island/IslandViewModel.h"

#include "core/AppContainer.h"
#include "core/SettingsStore.h"
#include "support/Session.h"

#include <gtest/gtest.h>

namespace brindle {
namespace {

class IslandViewModelTest : public testing::Test
{
protected:
    void advance(double seconds) { session.advance(seconds); }
    SettingsStore &settings() const { return session.container.settings(); }

    void enterAndOpen()
    {
        island.pointerEntered();
        advance(settings().hoverDelay());
        ASSERT_TRUE(island.isExpanded());
    }

    void dragIn()
    {
        session.pressPrimaryButton();
        island.externalDragEntered({});
        ASSERT_TRUE(island.isExternalDragActive());
    }

    Session session;
    IslandViewModel island{session.container};
};

TEST_F(IslandViewModelTest, StartsClosedOnTheMediaTabWithNothingUnderWay)
{
    EXPECT_FALSE(island.isExpanded());
    EXPECT_EQ(island.selectedTab(), IslandTab::media);
    EXPECT_FALSE(island.isPointerInside());
    EXPECT_EQ(island.interactionDepth(), 0);
    EXPECT_FALSE(island.isExternalDragActive());
    EXPECT_EQ(island.activeExternalDropZone(), std::nullopt);
}

// Opening by hover

TEST_F(IslandViewModelTest, AHoverDelayOfAHundredthOpensInTheSameTurn)
{
    settings().setHoverDelay(0.01);
    island.pointerEntered();
    EXPECT_TRUE(island.isExpanded());
}

TEST_F(IslandViewModelTest, AHoverDelayAboveAHundredthOpensLater)
{
    settings().setHoverDelay(0.011);
    island.pointerEntered();
    EXPECT_FALSE(island.isExpanded());
    advance(0.0105);
    EXPECT_FALSE(island.isExpanded());
    advance(0.001);
    EXPECT_TRUE(island.isExpanded());
}

TEST_F(IslandViewModelTest, ANegativeHoverDelayOpensAtOnce)
{
    settings().setHoverDelay(-1);
    island.pointerEntered();
    EXPECT_TRUE(island.isExpanded());
}

TEST_F(IslandViewModelTest, LeavingWithinTheHoverDelayNeverOpens)
{
    settings().setHoverDelay(0.3);
    island.pointerEntered();
    advance(0.2);
    island.pointerExited();
    advance(10);
    EXPECT_FALSE(island.isExpanded());
    EXPECT_FALSE(island.isHoverPending());
}

TEST_F(IslandViewModelTest, EnteringAgainStartsTheHoverDelayAnew)
{
    settings().setHoverDelay(0.3);
    island.pointerEntered();
    advance(0.2);
    island.pointerExited();
    island.pointerEntered();
    advance(0.2);
    EXPECT_FALSE(island.isExpanded());
    advance(0.11);
    EXPECT_TRUE(island.isExpanded());
}

TEST_F(IslandViewModelTest, WithoutOpenOnHoverOnlyTapToggleOrDragOpen)
{
    settings().setOpenOnHover(false);
    island.pointerEntered();
    advance(10);
    EXPECT_FALSE(island.isExpanded());
    EXPECT_TRUE(island.isPointerInside());

    island.expand();
    EXPECT_TRUE(island.isExpanded());
    island.toggle();
    EXPECT_FALSE(island.isExpanded());
    dragIn();
    EXPECT_TRUE(island.isExpanded());
}

TEST_F(IslandViewModelTest, ClosingIsTheSameWithoutOpenOnHover)
{
    settings().setOpenOnHover(false);
    island.pointerEntered();
    island.expand();
    island.pointerExited();
    advance(settings().collapseDelay());
    EXPECT_FALSE(island.isExpanded());
}

// The tick

TEST_F(IslandViewModelTest, OnlyHoverPlaysTheOpenHaptic)
{
    island.expand();
    island.toggle();
    island.toggle();
    island.collapse(true);
    dragIn();
    island.endExternalDrag();
    session.releaseButtons();
    advance(10);
    EXPECT_EQ(session.platform.ticks.ticks.size(), 0);

    enterAndOpen();
    EXPECT_EQ(session.platform.ticks.ticks.size(), 1);
    EXPECT_EQ(session.platform.ticks.ticks.last(),
        (FakeHaptics::Tick{Haptics::Pattern::levelChange, Haptics::PerformanceTime::now}));

    island.pointerExited();
    advance(10);
    EXPECT_FALSE(island.isExpanded());
    EXPECT_EQ(session.platform.ticks.ticks.size(), 1);
}

TEST_F(IslandViewModelTest, AnInstantOpeningPlaysTheHapticToo)
{
    settings().setHoverDelay(0);
    island.pointerEntered();
    EXPECT_EQ(session.platform.ticks.ticks.size(), 1);
}

TEST_F(IslandViewModelTest, ReducedEffectsAreSilent)
{
    settings().setReduceEffects(true);
    enterAndOpen();
    EXPECT_EQ(session.platform.ticks.ticks.size(), 0);
}

TEST_F(IslandViewModelTest, ReducedMotionIsSilent)
{
    session.platform.accessibility.setReduceMotion(true);
    enterAndOpen();
    EXPECT_EQ(session.platform.ticks.ticks.size(), 0);
}

// Closing

TEST_F(IslandViewModelTest, TheIslandClosesAfterTheCollapseDelay)
{
    enterAndOpen();
    island.pointerExited();
    advance(0.19);
    EXPECT_TRUE(island.isExpanded());
    advance(0.02);
    EXPECT_FALSE(island.isExpanded());
}

TEST_F(IslandViewModelTest, ACollapseDelayOfZeroStillLeavesTheTurnToEnterAgain)
{
    settings().setCollapseDelay(0);
    enterAndOpen();
    island.pointerExited();
    EXPECT_TRUE(island.isExpanded());
    island.pointerEntered();
    advance(10);
    EXPECT_TRUE(island.isExpanded());

    island.pointerExited();
    EXPECT_TRUE(island.isExpanded());
    advance(0);
    EXPECT_FALSE(island.isExpanded());
}

TEST_F(IslandViewModelTest, EnteringWhileACloseIsPendingKeepsItOpen)
{
    enterAndOpen();
    island.pointerExited();
    advance(0.1);
    island.pointerEntered();
    advance(10);
    EXPECT_TRUE(island.isExpanded());
}

TEST_F(IslandViewModelTest, TapAndToggleEndThePendingTasks)
{
    settings().setHoverDelay(1);
    island.pointerEntered();
    island.expand();
    EXPECT_FALSE(island.isHoverPending());
    EXPECT_TRUE(island.isExpanded());
    island.pointerExited();
    island.expand();
    EXPECT_FALSE(island.isCollapsePending());
    island.pointerExited();
    island.toggle();
    EXPECT_FALSE(island.isCollapsePending());
    EXPECT_FALSE(island.isExpanded());
    island.pointerEntered();
    island.toggle();
    EXPECT_FALSE(island.isHoverPending());
    EXPECT_TRUE(island.isExpanded());
}

TEST_F(IslandViewModelTest, AForcedCollapseIgnoresTheDepthAndAnotherRespectsIt)
{
    island.expand();
    island.beginInteraction();
    island.collapse(false);
    EXPECT_TRUE(island.isExpanded());
    island.collapse(true);
    EXPECT_FALSE(island.isExpanded());
    island.endInteraction();

    island.expand();
    island.collapse(false);
    EXPECT_FALSE(island.isExpanded());
}

// Interactions

TEST_F(IslandViewModelTest, AnInteractionCancelsAPendingCloseAndItsEndOutsideStartsAFreshDelay)
{
    enterAndOpen();
    island.pointerExited();
    advance(0.15);
    island.beginInteraction();
    EXPECT_FALSE(island.isCollapsePending());
    advance(10);
    EXPECT_TRUE(island.isExpanded());

    island.endInteraction();
    advance(0.19);
    EXPECT_TRUE(island.isExpanded());
    advance(0.02);
    EXPECT_FALSE(island.isExpanded());
}

TEST_F(IslandViewModelTest, AnInteractionThatEndsUnderThePointerStartsNothing)
{
    enterAndOpen();
    island.beginInteraction();
    island.endInteraction();
    EXPECT_FALSE(island.isCollapsePending());
}

TEST_F(IslandViewModelTest, ACloseThatFallsDueDuringAnInteractionIsDroppedUntilTheDepthFalls)
{
    enterAndOpen();
    island.beginInteraction();
    island.beginInteraction();
    island.pointerExited();
    advance(10);
    EXPECT_TRUE(island.isExpanded());
    EXPECT_FALSE(island.isCollapsePending());

    island.endInteraction();
    advance(10);
    EXPECT_TRUE(island.isExpanded());
    island.endInteraction();
    advance(0.21);
    EXPECT_FALSE(island.isExpanded());
}

TEST_F(IslandViewModelTest, EndingAnInteractionAtDepthZeroStaysAtZeroAndMayStartAClose)
{
    island.expand();
    island.endInteraction();
    EXPECT_EQ(island.interactionDepth(), 0);
    EXPECT_TRUE(island.isCollapsePending());
    advance(0.21);
    EXPECT_FALSE(island.isExpanded());
}

// Tabs

TEST_F(IslandViewModelTest, SelectingAdjacentTabsWrapsAtBothEnds)
{
    island.selectAdjacentTab(1);
    EXPECT_EQ(island.selectedTab(), IslandTab::shelf);
    island.selectAdjacentTab(1);
    EXPECT_EQ(island.selectedTab(), IslandTab::calculator);
    island.selectAdjacentTab(1);
    EXPECT_EQ(island.selectedTab(), IslandTab::media);
    island.selectAdjacentTab(-1);
    EXPECT_EQ(island.selectedTab(), IslandTab::calculator);
}

TEST_F(IslandViewModelTest, WithOneVisibleTabTheAdjacentOneIsItself)
{
    settings().setShowShelfTab(false);
    settings().setShowCalculatorTab(false);
    island.selectAdjacentTab(1);
    EXPECT_EQ(island.selectedTab(), IslandTab::media);
    island.selectAdjacentTab(-1);
    EXPECT_EQ(island.selectedTab(), IslandTab::media);
}

TEST_F(IslandViewModelTest, WithTheSelectedTabHiddenNothingIsAdjacent)
{
    settings().setShowMediaTab(false);
    island.selectAdjacentTab(1);
    EXPECT_EQ(island.selectedTab(), IslandTab::media);
}

TEST_F(IslandViewModelTest, ASelectionCarriesTheAnimationThatItWasMadeWith)
{
    const auto spring = Motion::makeSpring(0.36, 0.82, 0);
    Motion seen;
    QObject::connect(&island, &IslandViewModel::selectedTabChanged, [&] { seen = island.selectionMotion(); });
    island.animate(spring, [this] { island.selectAdjacentTab(1); });
    EXPECT_EQ(seen, spring);
    EXPECT_EQ(island.selectionMotion(), spring);
    island.setSelectedTab(IslandTab::media);
    EXPECT_EQ(seen, Motion());
}

TEST_F(IslandViewModelTest, SignalsComeOnlyWithChanges)
{
    int changes = 0;
    for (const auto signal : {&IslandViewModel::isExpandedChanged, &IslandViewModel::selectedTabChanged,
             &IslandViewModel::isPointerInsideChanged, &IslandViewModel::interactionDepthChanged,
             &IslandViewModel::isExternalDragActiveChanged, &IslandViewModel::activeExternalDropZoneChanged})
        QObject::connect(&island, signal, [&changes] { ++changes; });
    island.pointerExited();
    island.endInteraction();
    island.endExternalDrag();
    island.collapse(true);
    island.setSelectedTab(IslandTab::media);
    EXPECT_EQ(changes, 0);
    island.expand();
    island.expand();
    EXPECT_EQ(changes, 1);
}

TEST_F(IslandViewModelTest, PendingTasksEndWithTheViewModel)
{
    auto mortal = std::make_unique<IslandViewModel>(session.container);
    mortal->pointerEntered();
    mortal.reset();
    advance(10);
    EXPECT_EQ(session.platform.ticks.ticks.size(), 0);
}

} // namespace
} // namespace brindle
