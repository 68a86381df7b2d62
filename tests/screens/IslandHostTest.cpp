#include "screens/Surroundings.h"

#include <QCoreApplication>

#include <gtest/gtest.h>

namespace brindle {
namespace {

class IslandHostTest : public testing::Test
{
protected:
    static void SetUpTestSuite() { pinSurroundings(); }

    /// Where the closed island's content stands, in the panel's pixels.
    static QRect inside() { return {375, 2, 190, 30}; }
    static bool isBlack(const QImage &panel)
    {
        for (int y = inside().top(); y <= inside().bottom(); ++y) {
            for (int x = inside().left(); x <= inside().right(); ++x) {
                if (panel.pixel(x, y) != qRgb(0, 0, 0))
                    return false;
            }
        }
        return true;
    }
};

TEST_F(IslandHostTest, TheFirstFrameShowsTheShapeWithNothingInIt)
{
    IslandScene scene(IslandScene::BeforeTheFirstFrame{});
    EXPECT_TRUE(isBlack(scene.content()));
}

TEST_F(IslandHostTest, WhatStandsInTheIslandFollowsOnTheTurnAfterTheFirstFrame)
{
    IslandScene scene(IslandScene::BeforeTheFirstFrame{});
    scene.content();
    QCoreApplication::sendPostedEvents();
    EXPECT_FALSE(isBlack(scene.content()));
}

TEST_F(IslandHostTest, NothingStandsInTheIslandBeforeTheWindowHasDrawn)
{
    IslandScene scene(IslandScene::BeforeTheFirstFrame{});
    QCoreApplication::sendPostedEvents();
    EXPECT_TRUE(isBlack(scene.content()));
}

TEST_F(IslandHostTest, TheSceneTakesTheFirstShapesPlaceOnceHoweverManyFramesCameBefore)
{
    IslandScene scene(IslandScene::BeforeTheFirstFrame{});
    scene.content();
    scene.content();
    QCoreApplication::sendPostedEvents();
    EXPECT_EQ(scene.window().contentItem()->childItems().size(), 1);
}

TEST_F(IslandHostTest, TheShapeTakesATapBeforeAnythingStandsInIt)
{
    IslandScene scene(IslandScene::BeforeTheFirstFrame{});
    scene.content();
    scene.click({470, 20});
    EXPECT_TRUE(scene.viewModel().isExpanded());
}

TEST_F(IslandHostTest, AnIslandThatWasOpenedBeforeItsViewsExistLooksLikeAnyOther)
{
    const auto picture = [](IslandScene &&scene) {
        scene.open();
        scene.content();
        scene.settle();
        return scene.content().copy();
    };
    const QImage early = picture(IslandScene(IslandScene::BeforeTheFirstFrame{}));
    EXPECT_EQ(early, picture(IslandScene()));
}

} // namespace
} // namespace brindle
