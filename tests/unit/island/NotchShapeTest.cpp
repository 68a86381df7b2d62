#include "island/NotchShape.h"

#include <gtest/gtest.h>

namespace brindle {
namespace {

TEST(NotchShape, KeepsItsRadiiWhereThereIsRoom)
{
    const NotchShape shape{28, 26};
    EXPECT_EQ(shape.shoulder({940, 300}), 28);
    EXPECT_EQ(shape.corner({940, 300}), 26);
}

TEST(NotchShape, AShoulderTakesAtMostHalfTheHeight)
{
    EXPECT_EQ((NotchShape{28, 0}).shoulder({100, 20}), 10);
}

TEST(NotchShape, AShoulderTakesAtMostAQuarterOfTheWidth)
{
    EXPECT_EQ((NotchShape{28, 0}).shoulder({40, 100}), 10);
}

TEST(NotchShape, ACornerIsCutToWhatTheBodyLeaves)
{
    // The shoulders take 10 each: half of the inner width is 40, the inner height is 10.
    EXPECT_EQ((NotchShape{28, 60}).corner({100, 20}), 10);
    // Half of the inner width, where that is the lesser.
    EXPECT_EQ((NotchShape{10, 60}).corner({60, 200}), 20);
}

TEST(NotchShape, AFrameWithoutSizeGivesADegeneratePath)
{
    const NotchShape shape{14, 18};
    EXPECT_EQ(shape.shoulder({0, 0}), 0);
    EXPECT_EQ(shape.corner({0, 0}), 0);
    EXPECT_TRUE(shape.path({0, 0}).boundingRect().isEmpty());
    EXPECT_TRUE(shape.halfWidths({0, 0}).isEmpty());
}

TEST(NotchShape, NoRadiusIsEverNegative)
{
    const NotchShape shape{-5, -5};
    EXPECT_EQ(shape.shoulder({100, 20}), 0);
    EXPECT_EQ(shape.corner({100, 20}), 0);
    EXPECT_EQ((NotchShape{14, 18}).corner({-10, -10}), 0);
}

TEST(NotchShape, FillsItsFrameAlongTheTopAndItsBodyBelow)
{
    const QPainterPath path = NotchShape{14, 18}.path({260, 38});
    EXPECT_EQ(path.boundingRect(), QRectF(0, 0, 260, 38));
    EXPECT_TRUE(path.contains(QPointF(130, 37)));
    EXPECT_TRUE(path.contains(QPointF(15, 17)));
    EXPECT_FALSE(path.contains(QPointF(13, 17))) << "a shoulder's width is taken on each side";
    EXPECT_FALSE(path.contains(QPointF(3, 4))) << "the shoulders are concave";
    EXPECT_FALSE(path.contains(QPointF(15, 37))) << "the corners are round";
}

TEST(NotchShape, IsTheSameToBothSides)
{
    const QPainterPath path = NotchShape{28, 26}.path({940, 300});
    for (double y = 0.5; y < 300; y += 7) {
        for (double x = 0.5; x < 470; x += 9)
            EXPECT_EQ(path.contains(QPointF(x, y)), path.contains(QPointF(940 - x, y))) << x << " " << y;
    }
}

TEST(NotchShape, ItsHalfWidthsAreThoseOfThePath)
{
    const NotchShape shape{28, 26};
    const QSizeF size(500, 160);
    const QPainterPath path = shape.path(size);
    const QList<double> halves = shape.halfWidths(size);
    ASSERT_EQ(halves.size(), 160);
    for (int row = 1; row < 159; ++row) {
        const double x = 250 - halves[row];
        EXPECT_TRUE(path.contains(QPointF(x + 0.4, row + 0.5))) << row;
        EXPECT_FALSE(path.contains(QPointF(x - 0.4, row + 0.5))) << row;
    }
}

} // namespace
} // namespace brindle
