#include "island/IslandViewModel.h"

#include "core/AppContainer.h"
#include "core/SettingsStore.h"
#include "core/ShelfDropTarget.h"
#include "support/Session.h"

#include <QMimeData>

#include <gtest/gtest.h>

namespace brindle {
namespace {

using Zone = IslandExternalDropZone;

class ScriptedShelf final : public ShelfDropTarget
{
public:
    bool hasActiveManagedDrag() const override { return isManaged; }
    bool sendByAirDrop(const QMimeData *items) override
    {
        sent << items;
        return answer;
    }
    bool importItems(const QMimeData *items) override
    {
        imported << items;
        return answer;
    }

    bool isManaged = false;
    bool answer = true;
    QList<const QMimeData *> sent;
    QList<const QMimeData *> imported;
};

class IslandViewModelTest : public testing::Test
{
protected:
    void advance(double seconds) { session.advance(seconds); }
    SettingsStore &settings() { return session.container.settings(); }

    void enterAndOpen()
    {
        island.pointerEntered();
        advance(settings().hoverDelay());
        ASSERT_TRUE(island.isExpanded());
    }

    // Two zones side by side, each 100 points wide, with a gap of 20 between them.
    void layOutZones()
    {
        island.dropFramesChanged({.airDrop = QRectF(0, 0, 100, 100), .storage = QRectF(120, 0, 100, 100)});
    }

    void dragIn(QPointF location)
    {
        session.pressPrimaryButton();
        island.externalDragEntered(location);
        ASSERT_TRUE(island.isExternalDragActive());
    }

    static constexpr QPointF inAirDrop{50, 50};
    static constexpr QPointF inGap{110, 50};
    static constexpr QPointF inStorage{150, 50};

    Session session;
    ScriptedShelf shelf;
    IslandViewModel island{session.container, &shelf};
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
    dragIn({});
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
    dragIn({});
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
    const auto spring = SelectionAnimation::makeSpring(0.36, 0.82, 0);
    SelectionAnimation seen;
    QObject::connect(
        &island, &IslandViewModel::selectedTabChanged, [&] { seen = island.selectionAnimation(); });
    island.animate(spring, [this] { island.selectAdjacentTab(1); });
    EXPECT_EQ(seen, spring);
    EXPECT_EQ(island.selectionAnimation(), spring);
    island.setSelectedTab(IslandTab::media);
    EXPECT_EQ(seen, SelectionAnimation());
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

// Drags from outside

TEST_F(IslandViewModelTest, ADragOpensTheIslandOnTheShelfAndCountsOnce)
{
    dragIn({});
    EXPECT_TRUE(island.isExpanded());
    EXPECT_EQ(island.selectedTab(), IslandTab::shelf);
    EXPECT_EQ(island.interactionDepth(), 1);
    island.externalDragEntered({10, 10});
    island.externalDragUpdated({20, 10});
    EXPECT_EQ(island.interactionDepth(), 1);
}

TEST_F(IslandViewModelTest, ADragFromTheAssistantTabSwitchesToTheShelf)
{
    settings().setShowAssistantTab(true);
    island.setSelectedTab(IslandTab::assistant);
    dragIn({});
    EXPECT_EQ(island.selectedTab(), IslandTab::shelf);
}

TEST_F(IslandViewModelTest, ADragEndsThePendingOpenAndClose)
{
    settings().setHoverDelay(1);
    island.pointerEntered();
    dragIn({});
    EXPECT_FALSE(island.isHoverPending());
    EXPECT_FALSE(island.isCollapsePending());
}

class IslandViewModelWithoutShelf : public IslandViewModelTest, public testing::WithParamInterface<bool>
{
};

TEST_P(IslandViewModelWithoutShelf, IgnoresDragsAndRefusesTheDrop)
{
    if (GetParam())
        settings().setShowShelfTab(false);
    else
        settings().setShowShelfPanel(false);
    layOutZones();
    session.pressPrimaryButton();
    // An update alone lights a zone up; entering clears it.
    island.externalDragUpdated(inStorage);
    EXPECT_EQ(island.activeExternalDropZone(), Zone::storage);
    island.externalDragEntered(inStorage);
    EXPECT_EQ(island.activeExternalDropZone(), std::nullopt);
    EXPECT_FALSE(island.isExternalDragActive());
    EXPECT_FALSE(island.isExpanded());
    EXPECT_EQ(island.interactionDepth(), 0);
    EXPECT_FALSE(island.performExternalDrop(inStorage));
    EXPECT_EQ(shelf.imported.size(), 0);
}

INSTANTIATE_TEST_SUITE_P(, IslandViewModelWithoutShelf, testing::Values(true, false));

TEST_F(IslandViewModelTest, AStaleEntryChangesNothingButTheZone)
{
    layOutZones();
    session.pressPrimaryButton();
    island.externalDragUpdated(inStorage);
    session.releaseButtons();
    island.externalDragEntered(inStorage);
    EXPECT_EQ(island.activeExternalDropZone(), std::nullopt);
    EXPECT_FALSE(island.isExternalDragActive());
    EXPECT_FALSE(island.isExpanded());
    EXPECT_EQ(island.selectedTab(), IslandTab::media);
    EXPECT_EQ(island.interactionDepth(), 0);
}

TEST_F(IslandViewModelTest, AStaleUpdateChangesNothingButTheZone)
{
    layOutZones();
    session.pressPrimaryButton();
    island.externalDragUpdated(inAirDrop);
    session.releaseButtons();
    island.externalDragUpdated(inAirDrop);
    EXPECT_EQ(island.activeExternalDropZone(), std::nullopt);
    EXPECT_FALSE(island.isExternalDragTaskPending());
}

TEST_F(IslandViewModelTest, WhereZonesOverlapStorageWins)
{
    island.dropFramesChanged({.airDrop = QRectF(0, 0, 100, 100), .storage = QRectF(50, 0, 100, 100)});
    EXPECT_EQ(island.dropZone({20, 20}), Zone::airDrop);
    EXPECT_EQ(island.dropZone({70, 20}), Zone::storage);
    EXPECT_EQ(island.dropZone({120, 20}), Zone::storage);
    EXPECT_EQ(island.dropZone({170, 20}), std::nullopt);
}

TEST_F(IslandViewModelTest, ZonesThatAppearUnderARestingPointerLightUp)
{
    dragIn(inStorage);
    EXPECT_EQ(island.activeExternalDropZone(), std::nullopt);
    layOutZones();
    EXPECT_EQ(island.activeExternalDropZone(), Zone::storage);
    island.dropFramesChanged({});
    EXPECT_EQ(island.activeExternalDropZone(), std::nullopt);
}

TEST_F(IslandViewModelTest, ZonesWithoutADragLightNothing)
{
    layOutZones();
    EXPECT_EQ(island.activeExternalDropZone(), std::nullopt);
}

TEST_F(IslandViewModelTest, AReleaseAQuarterSecondAfterTheZoneStillGoesToIt)
{
    layOutZones();
    dragIn(inAirDrop);
    island.externalDragUpdated(inGap);
    EXPECT_EQ(island.activeExternalDropZone(), std::nullopt);
    advance(0.25);
    QMimeData items;
    EXPECT_TRUE(island.performExternalDrop(inGap, &items));
    EXPECT_EQ(shelf.sent, QList<const QMimeData *>{&items});
    EXPECT_TRUE(shelf.imported.isEmpty());
}

TEST_F(IslandViewModelTest, AReleaseAThirdOfASecondAfterTheZoneIsRefusedAndTheStateIsClean)
{
    layOutZones();
    dragIn(inAirDrop);
    island.externalDragUpdated(inGap);
    advance(0.35);
    EXPECT_FALSE(island.performExternalDrop(inGap));
    EXPECT_TRUE(shelf.sent.isEmpty());
    EXPECT_FALSE(island.isExternalDragActive());
    EXPECT_EQ(island.interactionDepth(), 0);
    EXPECT_EQ(island.activeExternalDropZone(), std::nullopt);
    EXPECT_FALSE(island.isExternalDragTaskPending());

    // Nothing of it is left for the next drag.
    dragIn(inGap);
    EXPECT_FALSE(island.performExternalDrop(inGap));
    EXPECT_TRUE(shelf.sent.isEmpty());
}

TEST_F(IslandViewModelTest, ADropGoesToTheActiveZoneWhenItsPlaceNamesNone)
{
    layOutZones();
    dragIn(inStorage);
    advance(5);
    EXPECT_EQ(island.activeExternalDropZone(), Zone::storage);
    EXPECT_TRUE(island.performExternalDrop(inGap));
    EXPECT_EQ(shelf.imported.size(), 1);
}

TEST_F(IslandViewModelTest, TheShelfsAnswerIsTheDropsAnswer)
{
    layOutZones();
    shelf.answer = false;
    dragIn(inStorage);
    EXPECT_FALSE(island.performExternalDrop(inStorage));
    dragIn(inAirDrop);
    EXPECT_FALSE(island.performExternalDrop(inAirDrop));
    EXPECT_EQ(shelf.imported.size(), 1);
    EXPECT_EQ(shelf.sent.size(), 1);
}

TEST_F(IslandViewModelTest, ADropOnAnotherTabIsRefused)
{
    layOutZones();
    dragIn(inStorage);
    island.setSelectedTab(IslandTab::calculator);
    EXPECT_FALSE(island.performExternalDrop(inStorage));
    EXPECT_TRUE(shelf.imported.isEmpty());
    EXPECT_FALSE(island.isExternalDragActive());
}

TEST_F(IslandViewModelTest, WithoutAShelfEveryDropIsRefusedAndTheDragEnds)
{
    IslandViewModel bare{session.container};
    bare.dropFramesChanged({.airDrop = std::nullopt, .storage = QRectF(0, 0, 100, 100)});
    session.pressPrimaryButton();
    bare.externalDragEntered({50, 50});
    EXPECT_FALSE(bare.performExternalDrop({50, 50}));
    EXPECT_FALSE(bare.isExternalDragActive());
    EXPECT_EQ(bare.interactionDepth(), 0);
}

TEST_F(IslandViewModelTest, LeavingWithTheButtonHeldKeepsTheIslandOpenUntilItGoesUp)
{
    dragIn({});
    island.externalDragExited();
    advance(0.11);
    EXPECT_TRUE(island.isExternalDragActive());
    advance(30);
    EXPECT_TRUE(island.isExternalDragActive());
    EXPECT_TRUE(island.isExpanded());

    session.releaseButtons();
    advance(0.13);
    EXPECT_FALSE(island.isExternalDragActive());
    EXPECT_TRUE(island.isExpanded());
    advance(0.21);
    EXPECT_FALSE(island.isExpanded());
}

TEST_F(IslandViewModelTest, LeavingClearsTheZoneAfterTheFirstWait)
{
    layOutZones();
    dragIn(inStorage);
    island.externalDragExited();
    advance(0.11);
    EXPECT_EQ(island.activeExternalDropZone(), Zone::storage);
    advance(0.02);
    EXPECT_EQ(island.activeExternalDropZone(), std::nullopt);
}

TEST_F(IslandViewModelTest, ADragThatComesBackInTimeGoesOn)
{
    dragIn({});
    island.externalDragExited();
    session.releaseButtons();
    advance(0.1);
    session.pressPrimaryButton();
    island.externalDragUpdated({});
    advance(10);
    EXPECT_TRUE(island.isExternalDragActive());
    EXPECT_EQ(island.interactionDepth(), 1);
}

TEST_F(IslandViewModelTest, AButtonThatWentUpUnseenEndsTheDrag)
{
    dragIn({});
    session.releaseButtons();
    island.externalDragUpdated({});
    advance(0.21);
    EXPECT_TRUE(island.isExternalDragActive());
    advance(0.02);
    EXPECT_FALSE(island.isExternalDragActive());
}

TEST_F(IslandViewModelTest, AButtonThatIsDownAgainInTimeKeepsTheDrag)
{
    dragIn({});
    session.releaseButtons();
    island.externalDragUpdated({});
    session.pressPrimaryButton();
    advance(10);
    EXPECT_TRUE(island.isExternalDragActive());
}

TEST_F(IslandViewModelTest, AShelfItemDroppedBackOnTheShelfAddsNothing)
{
    layOutZones();
    shelf.isManaged = true;
    dragIn(inStorage);
    EXPECT_TRUE(island.performExternalDrop(inStorage));
    EXPECT_TRUE(shelf.imported.isEmpty());
}

TEST_F(IslandViewModelTest, AShelfItemDroppedOnTheOtherZoneIsSent)
{
    layOutZones();
    shelf.isManaged = true;
    dragIn(inAirDrop);
    EXPECT_TRUE(island.performExternalDrop(inAirDrop));
    EXPECT_EQ(shelf.sent.size(), 1);
}

TEST_F(IslandViewModelTest, AfterAnyDropTheDragIsOverAndTheDepthIsOneLower)
{
    layOutZones();
    for (const QPointF location : {inStorage, inAirDrop, QPointF(500, 500)}) {
        for (const bool answer : {true, false}) {
            shelf.answer = answer;
            island.beginInteraction();
            dragIn(location);
            EXPECT_EQ(island.interactionDepth(), 2);
            island.externalDragExited();
            island.performExternalDrop(location);
            EXPECT_FALSE(island.isExternalDragActive());
            EXPECT_EQ(island.interactionDepth(), 1);
            EXPECT_FALSE(island.isExternalDragTaskPending());
            island.endInteraction();
        }
    }
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
