#include "core/AppContainer.h"
#include "core/SettingsStore.h"
#include "core/ShelfDropTarget.h"
#include "island/IslandViewModel.h"
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

class IslandDragTest : public testing::Test
{
protected:
    void advance(double seconds) { session.advance(seconds); }
    SettingsStore &settings() const { return session.container.settings(); }

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

TEST_F(IslandDragTest, ADragOpensTheIslandOnTheShelfAndCountsOnce)
{
    dragIn({});
    EXPECT_TRUE(island.isExpanded());
    EXPECT_EQ(island.selectedTab(), IslandTab::shelf);
    EXPECT_EQ(island.interactionDepth(), 1);
    island.externalDragEntered({10, 10});
    island.externalDragUpdated({20, 10});
    EXPECT_EQ(island.interactionDepth(), 1);
}

TEST_F(IslandDragTest, ADragFromTheAssistantTabSwitchesToTheShelf)
{
    settings().setShowAssistantTab(true);
    island.setSelectedTab(IslandTab::assistant);
    dragIn({});
    EXPECT_EQ(island.selectedTab(), IslandTab::shelf);
}

TEST_F(IslandDragTest, ADragEndsAPendingOpening)
{
    settings().setHoverDelay(1);
    island.pointerEntered();
    dragIn({});
    EXPECT_FALSE(island.isHoverPending());
    EXPECT_TRUE(island.isExpanded());
}

TEST_F(IslandDragTest, ADragKeepsAnIslandOpenThatWasAboutToClose)
{
    island.pointerEntered();
    island.expand();
    island.pointerExited();
    dragIn({});
    EXPECT_FALSE(island.isCollapsePending());
    advance(10);
    EXPECT_TRUE(island.isExpanded());
}

class IslandDragWithoutShelf : public IslandDragTest, public testing::WithParamInterface<bool>
{
};

TEST_P(IslandDragWithoutShelf, IgnoresDragsAndRefusesTheDrop)
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

INSTANTIATE_TEST_SUITE_P(, IslandDragWithoutShelf, testing::Values(true, false));

TEST_F(IslandDragTest, AStaleEntryChangesNothingButTheZone)
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

TEST_F(IslandDragTest, AStaleUpdateChangesNothingButTheZone)
{
    layOutZones();
    session.pressPrimaryButton();
    island.externalDragUpdated(inAirDrop);
    session.releaseButtons();
    island.externalDragUpdated(inAirDrop);
    EXPECT_EQ(island.activeExternalDropZone(), std::nullopt);
    EXPECT_FALSE(island.isExternalDragTaskPending());
}

TEST_F(IslandDragTest, WhereZonesOverlapStorageWins)
{
    island.dropFramesChanged({.airDrop = QRectF(0, 0, 100, 100), .storage = QRectF(50, 0, 100, 100)});
    EXPECT_EQ(island.dropZone({20, 20}), Zone::airDrop);
    EXPECT_EQ(island.dropZone({70, 20}), Zone::storage);
    EXPECT_EQ(island.dropZone({120, 20}), Zone::storage);
    EXPECT_EQ(island.dropZone({170, 20}), std::nullopt);
}

TEST_F(IslandDragTest, ZonesThatAppearUnderARestingPointerLightUp)
{
    dragIn(inStorage);
    EXPECT_EQ(island.activeExternalDropZone(), std::nullopt);
    layOutZones();
    EXPECT_EQ(island.activeExternalDropZone(), Zone::storage);
    island.dropFramesChanged({});
    EXPECT_EQ(island.activeExternalDropZone(), std::nullopt);
}

TEST_F(IslandDragTest, ZonesWithoutADragLightNothing)
{
    layOutZones();
    EXPECT_EQ(island.activeExternalDropZone(), std::nullopt);
}

TEST_F(IslandDragTest, AReleaseAQuarterSecondAfterTheZoneStillGoesToIt)
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

TEST_F(IslandDragTest, AReleaseAThirdOfASecondAfterTheZoneIsRefusedAndTheStateIsClean)
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

TEST_F(IslandDragTest, ADropGoesToTheActiveZoneWhenItsPlaceNamesNone)
{
    layOutZones();
    dragIn(inStorage);
    advance(5);
    EXPECT_EQ(island.activeExternalDropZone(), Zone::storage);
    EXPECT_TRUE(island.performExternalDrop(inGap));
    EXPECT_EQ(shelf.imported.size(), 1);
}

TEST_F(IslandDragTest, TheShelfsAnswerIsTheDropsAnswer)
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

TEST_F(IslandDragTest, ADropOnAnotherTabIsRefused)
{
    layOutZones();
    dragIn(inStorage);
    island.setSelectedTab(IslandTab::calculator);
    EXPECT_FALSE(island.performExternalDrop(inStorage));
    EXPECT_TRUE(shelf.imported.isEmpty());
    EXPECT_FALSE(island.isExternalDragActive());
}

TEST_F(IslandDragTest, WithoutAShelfEveryDropIsRefusedAndTheDragEnds)
{
    IslandViewModel bare{session.container};
    bare.dropFramesChanged({.airDrop = std::nullopt, .storage = QRectF(0, 0, 100, 100)});
    session.pressPrimaryButton();
    bare.externalDragEntered({50, 50});
    EXPECT_FALSE(bare.performExternalDrop({50, 50}));
    EXPECT_FALSE(bare.isExternalDragActive());
    EXPECT_EQ(bare.interactionDepth(), 0);
}

TEST_F(IslandDragTest, LeavingWithTheButtonHeldKeepsTheIslandOpenUntilItGoesUp)
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

TEST_F(IslandDragTest, LeavingClearsTheZoneAfterTheFirstWait)
{
    layOutZones();
    dragIn(inStorage);
    island.externalDragExited();
    advance(0.11);
    EXPECT_EQ(island.activeExternalDropZone(), Zone::storage);
    advance(0.02);
    EXPECT_EQ(island.activeExternalDropZone(), std::nullopt);
}

TEST_F(IslandDragTest, ADragThatComesBackInTimeGoesOn)
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

TEST_F(IslandDragTest, AButtonThatWentUpUnseenEndsTheDrag)
{
    dragIn({});
    session.releaseButtons();
    island.externalDragUpdated({});
    advance(0.21);
    EXPECT_TRUE(island.isExternalDragActive());
    advance(0.02);
    EXPECT_FALSE(island.isExternalDragActive());
}

TEST_F(IslandDragTest, AButtonThatIsDownAgainInTimeKeepsTheDrag)
{
    dragIn({});
    session.releaseButtons();
    island.externalDragUpdated({});
    session.pressPrimaryButton();
    advance(10);
    EXPECT_TRUE(island.isExternalDragActive());
}

TEST_F(IslandDragTest, AShelfItemDroppedBackOnTheShelfAddsNothing)
{
    layOutZones();
    shelf.isManaged = true;
    dragIn(inStorage);
    EXPECT_TRUE(island.performExternalDrop(inStorage));
    EXPECT_TRUE(shelf.imported.isEmpty());
}

TEST_F(IslandDragTest, AShelfItemDroppedOnTheOtherZoneIsSent)
{
    layOutZones();
    shelf.isManaged = true;
    dragIn(inAirDrop);
    EXPECT_TRUE(island.performExternalDrop(inAirDrop));
    EXPECT_EQ(shelf.sent.size(), 1);
}

TEST_F(IslandDragTest, AfterAnyDropTheDragIsOverAndTheDepthIsOneLower)
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

} // namespace
} // namespace brindle
