#include "island/IslandSurface.h"

#include "activities/ActivityCoordinator.h"
#include "core/SettingsStore.h"
#include "island/IslandViewModel.h"
#include "support/ManualFrames.h"
#include "support/Session.h"

#include <cmath>
#include <gtest/gtest.h>

namespace brindle {
namespace {

SystemActivity event(const Session &session, double duration = 4)
{
    SystemActivity activity;
    activity.id = QUuid::createUuid();
    activity.type = ActivityType::charging;
    activity.priority = ActivityPriority::charging;
    activity.createdAt = session.now();
    activity.duration = duration;
    return activity;
}

class IslandSurfaceTest : public testing::Test
{
protected:
    SettingsStore &settings() const { return session.container.settings(); }
    void pass(double seconds)
    {
        for (auto left = std::lround(seconds * 1000); left > 0; left -= 10) {
            session.advance(0.01);
            frames.advanceBy(10);
        }
    }
    void close() { viewModel.collapse(true); }
    void post(double duration = 4) { session.container.activities().post(event(session, duration)); }

    ManualFrames frames;
    Session session;
    IslandViewModel viewModel{session.container};
    IslandSurface surface{viewModel};
};

TEST_F(IslandSurfaceTest, TheClosedIslandHasTheSizeOfTheSettings)
{
    EXPECT_EQ(surface.size(), QSizeF(260, 38));
    EXPECT_EQ(surface.shape(), (NotchShape{14, 18}));
    EXPECT_DOUBLE_EQ(surface.shadowOpacity(), 0.25);
    EXPECT_EQ(surface.contentWidth(), 232);
}

TEST_F(IslandSurfaceTest, TheOpenIslandFillsThePanel)
{
    viewModel.expand();
    pass(2);
    EXPECT_EQ(surface.size(), QSizeF(940, 300));
    EXPECT_EQ(surface.shape(), (NotchShape{28, 26}));
    EXPECT_DOUBLE_EQ(surface.shadowOpacity(), 0.42);
    EXPECT_EQ(surface.contentWidth(), 884);
}

TEST_F(IslandSurfaceTest, ContentIsAtLeastAPointWide)
{
    EXPECT_EQ(IslandSurface::contentWidthOf(20, 14), 1);
}

TEST_F(IslandSurfaceTest, AnEventWidensTheClosedIslandAndItsEndNarrowsIt)
{
    post(4);
    EXPECT_EQ(surface.targetSize(), QSizeF(368, 38));
    pass(2);
    EXPECT_EQ(surface.size(), QSizeF(368, 38));
    pass(4);
    EXPECT_EQ(surface.size(), QSizeF(260, 38));
}

TEST_F(IslandSurfaceTest, ANegativeExpansionAddsNothing)
{
    settings().setCollapsedActivityExpansion(-50);
    post();
    EXPECT_EQ(surface.targetSize(), QSizeF(260, 38));
}

TEST_F(IslandSurfaceTest, AnEventLeavesTheOpenIslandsSizeAlone)
{
    viewModel.expand();
    pass(2);
    post();
    EXPECT_EQ(surface.targetSize(), QSizeF(940, 300));
}

TEST_F(IslandSurfaceTest, OpeningMovesBySpringFromWhereItIs)
{
    viewModel.expand();
    pass(0.1);
    EXPECT_GT(surface.width(), 400);
    EXPECT_LT(surface.width(), 700);
    close();
    const double width = surface.width();
    pass(0.02);
    EXPECT_GT(surface.width(), width) << "it keeps its speed when it turns";
    pass(2);
    EXPECT_EQ(surface.width(), 260);
}

TEST_F(IslandSurfaceTest, AtRestTheShapeDoesNotChange)
{
    viewModel.expand();
    pass(2);
    int changes = 0;
    QObject::connect(&surface, &IslandSurface::shapeChanged, &surface, [&changes] { ++changes; });
    pass(5);
    EXPECT_EQ(changes, 0);
    EXPECT_FALSE(surface.isMoving());
}

TEST_F(IslandSurfaceTest, AShortAnimationStillTakesItsLeastTime)
{
    EXPECT_DOUBLE_EQ(settings().animationDuration(), 0.38);
    EXPECT_NEAR(surface.revealDelay(), 0.0552, 1e-12);
    EXPECT_EQ(surface.openMotion(), Motion::makeSpring(0.48, 0.92, 0.16));
    EXPECT_EQ(surface.revealMotion(), Motion::makeEaseOut(0.24));
}

TEST_F(IslandSurfaceTest, ALongAnimationTakesItsTime)
{
    settings().setAnimationDuration(1);
    EXPECT_NEAR(surface.revealDelay(), 0.115, 1e-12);
    EXPECT_EQ(surface.openMotion(), Motion::makeSpring(1, 0.92, 0.16));
    EXPECT_EQ(surface.revealMotion(), Motion::makeEaseOut(0.5));
}

TEST_F(IslandSurfaceTest, EventsMoveByTheirOwnSpring)
{
    EXPECT_EQ(surface.activityMotion(), Motion::makeSpring(0.42, 0.9, 0.12));
}

TEST_F(IslandSurfaceTest, WithReducedEffectsEveryAnimationIsShortAndPlain)
{
    const auto expectPlain = [this] {
        EXPECT_EQ(surface.openMotion(), Motion::makeEaseInOut(0.12));
        EXPECT_EQ(surface.activityMotion(), Motion::makeEaseInOut(0.14));
        EXPECT_EQ(surface.revealMotion(), Motion::makeEaseOut(0.1));
        EXPECT_DOUBLE_EQ(surface.revealDelay(), 0.02);
        EXPECT_EQ(surface.appearance(0).blurRadius, 0);
    };
    settings().setReduceEffects(true);
    expectPlain();
    settings().setReduceEffects(false);
    session.platform.accessibility.setReduceMotion(true);
    expectPlain();
}

TEST_F(IslandSurfaceTest, ContentComesFromAboveFaintBlurredAndSmaller)
{
    EXPECT_EQ(surface.appearance(0), (IslandContentAppearance{0, 7, 0.97, -7}));
    EXPECT_EQ(surface.appearance(1), IslandContentAppearance::identity());
    EXPECT_EQ(surface.appearance(1.2).opacity, 1);
    EXPECT_EQ(surface.appearance(1.2).blurRadius, 0);
}

TEST_F(IslandSurfaceTest, TheFirstDisplayShowsContentAtOnce)
{
    EXPECT_TRUE(surface.isCollapsedContentVisible());
    EXPECT_EQ(surface.subject().content, false);
}

TEST_F(IslandSurfaceTest, TheSmallContentComesBackShortlyAfterClosing)
{
    viewModel.expand();
    EXPECT_FALSE(surface.isCollapsedContentVisible());
    pass(1);
    EXPECT_EQ(surface.subject().content, true);
    close();
    EXPECT_TRUE(surface.subject().key.isEmpty()) << "nothing is on stage until the reveal";
    session.advance(0.055);
    EXPECT_FALSE(surface.isCollapsedContentVisible());
    session.advance(0.001);
    EXPECT_TRUE(surface.isCollapsedContentVisible());
    EXPECT_EQ(surface.subject().content, false);
}

TEST_F(IslandSurfaceTest, OpeningWhileARevealIsPendingVoidsIt)
{
    viewModel.expand();
    close();
    ASSERT_TRUE(surface.isRevealPending());
    viewModel.expand();
    EXPECT_FALSE(surface.isRevealPending());
    session.advance(1);
    EXPECT_FALSE(surface.isCollapsedContentVisible());
}

TEST_F(IslandSurfaceTest, ClosingAndOpeningAgainWithinTheDelayHidesTheSmallContentUntilTheNextClose)
{
    viewModel.expand();
    pass(1);
    close();
    session.advance(0.03);
    viewModel.expand();
    session.advance(3);
    EXPECT_FALSE(surface.isCollapsedContentVisible());
    close();
    session.advance(0.06);
    EXPECT_TRUE(surface.isCollapsedContentVisible());
}

TEST_F(IslandSurfaceTest, EachOpeningIsBuiltAfresh)
{
    viewModel.expand();
    pass(0.1);
    const QString first = surface.subject().key;
    ASSERT_FALSE(first.isEmpty());
    close();
    viewModel.expand();
    pass(0.1);
    EXPECT_EQ(surface.subject().content, true);
    EXPECT_NE(surface.subject().key, first);
}

TEST_F(IslandSurfaceTest, AnOpeningShowsItsFirstFrameBeforeItsContentIsBuilt)
{
    viewModel.expand();
    EXPECT_GT(surface.width(), 260) << "the first frame shows the shape on its way";
    EXPECT_TRUE(surface.subject().key.isEmpty());
    pass(0.05);
    EXPECT_EQ(surface.subject().content, true);
}

TEST_F(IslandSurfaceTest, AnIslandClosedBeforeItsContentWasBuiltBuildsNone)
{
    viewModel.expand();
    close();
    frames.advanceBy(16);
    frames.advanceBy(16);
    EXPECT_TRUE(surface.subject().key.isEmpty());
    pass(1);
    EXPECT_EQ(surface.subject().content, false);
}

TEST_F(IslandSurfaceTest, AnOpeningThatEndsWithinOneLongFrameHasItsContent)
{
    settings().setReduceEffects(true);
    viewModel.expand();
    pass(0.05);
    close();
    viewModel.expand();
    frames.advanceBy(500);
    EXPECT_FALSE(surface.isMoving());
    EXPECT_EQ(surface.subject().content, true);
}

TEST_F(IslandSurfaceTest, ASizeThatIsSetIsFollowedAtOnce)
{
    settings().setCollapsedWidth(300);
    EXPECT_EQ(surface.width(), 300);
    settings().setCollapsedHeight(50);
    EXPECT_EQ(surface.height(), 50);
    EXPECT_EQ(surface.collapsedHeight(), 50);
}

TEST_F(IslandSurfaceTest, TheClosedContentFollowsEventsAndNotTheOpening)
{
    viewModel.expand();
    pass(0.1);
    EXPECT_EQ(surface.collapsedContentWidth(), 232);
    close();
    pass(2);
    post();
    pass(2);
    EXPECT_EQ(surface.collapsedContentWidth(), 340);
}

TEST_F(IslandSurfaceTest, ItsOutlineHangsFromTheMiddleOfThePanelsTop)
{
    EXPECT_EQ(surface.outline().boundingRect(), QRectF(340, 0, 260, 38));
}

} // namespace
} // namespace brindle
