#include "ui/Spring.h"

#include "ui/MotionTrack.h"

#include <cmath>
#include <gtest/gtest.h>

namespace brindle {
namespace {

/// The same spring by many small steps of its equation of motion.
SpringState integrated(SpringState state, double response, double damping, double seconds)
{
    const double omega = 2 * M_PI / response;
    constexpr double step = 2e-6;
    for (int i = 0; i < int(std::lround(seconds / step)); ++i) {
        state.velocity += (-omega * omega * state.displacement - 2 * damping * omega * state.velocity) * step;
        state.displacement += state.velocity * step;
    }
    return state;
}

class SpringDampings : public testing::TestWithParam<double>
{
};

TEST_P(SpringDampings, TheClosedFormAgreesWithTheEquationOfMotion)
{
    const SpringState exact = springAfter({-680, 900}, 0.42, GetParam(), 0.23);
    const SpringState stepped = integrated({-680, 900}, 0.42, GetParam(), 0.23);
    EXPECT_NEAR(exact.displacement, stepped.displacement, 0.05);
    EXPECT_NEAR(exact.velocity, stepped.velocity, 1);
}

TEST_P(SpringDampings, OneLongStepEqualsManyShortOnes)
{
    SpringState state{100, -50};
    for (int i = 0; i < 30; ++i)
        state = springAfter(state, 0.48, GetParam(), 0.01);
    const SpringState once = springAfter({100, -50}, 0.48, GetParam(), 0.3);
    EXPECT_NEAR(state.displacement, once.displacement, 1e-9);
    EXPECT_NEAR(state.velocity, once.velocity, 1e-7);
}

TEST_P(SpringDampings, ItComesToRest)
{
    const SpringState late = springAfter({680, 0}, 0.48, GetParam(), 6);
    EXPECT_NEAR(late.displacement, 0, 1e-2);
}

INSTANTIATE_TEST_SUITE_P(Spring, SpringDampings, testing::Values(0.3, 0.72, 0.92, 1.0, 1.0000001, 1.4));

TEST(MotionTrack, RestsWhereItWasMade)
{
    MotionTrack track(5);
    track.advance(1);
    EXPECT_EQ(track.value(), 5);
    EXPECT_FALSE(track.isMoving());
}

TEST(MotionTrack, WithoutAMotionIsAtItsTargetAtOnce)
{
    MotionTrack track(5);
    track.retarget(9, Motion());
    EXPECT_EQ(track.value(), 9);
    EXPECT_FALSE(track.isMoving());
}

TEST(MotionTrack, FollowsTheClosedFormOfItsSpring)
{
    MotionTrack track(260);
    track.retarget(940, Motion::makeSpring(0.48, 0.92, 0.16));
    track.advance(0.1);
    EXPECT_NEAR(track.value(), 940 + springAfter({-680, 0}, 0.48, 0.92, 0.1).displacement, 1e-9);
}

TEST(MotionTrack, SettlesExactlyAtItsTarget)
{
    MotionTrack track(260, 0.05);
    track.retarget(940, Motion::makeSpring(0.48, 0.92));
    double seconds = 0;
    for (; track.isMoving() && seconds < 5; seconds += 1.0 / 60)
        track.advance(1.0 / 60);
    EXPECT_EQ(track.value(), 940);
    EXPECT_EQ(track.velocity(), 0);
    EXPECT_LT(seconds, 1.2);
}

TEST(MotionTrack, DoesNotSettleWhileItPassesTheTarget)
{
    MotionTrack track(0, 0.5);
    track.retarget(100, Motion::makeSpring(0.4, 0.3));
    double highest = 0;
    while (track.isMoving()) {
        track.advance(1.0 / 240);
        highest = std::max(highest, track.value());
    }
    EXPECT_GT(highest, 130);
}

TEST(MotionTrack, ANewTargetKeepsPositionAndVelocity)
{
    MotionTrack track(260);
    track.retarget(940, Motion::makeSpring(0.48, 0.92));
    track.advance(0.12);
    const double value = track.value();
    const double velocity = track.velocity();
    ASSERT_GT(velocity, 0);
    track.retarget(260, Motion::makeSpring(0.48, 0.92));
    EXPECT_EQ(track.value(), value);
    EXPECT_EQ(track.velocity(), velocity);
    track.advance(0.004);
    EXPECT_GT(track.value(), value) << "it goes on a little before it turns";
}

TEST(MotionTrack, BlendsFromTheSpringItHadIntoTheNewOne)
{
    const auto travelled = [](double blend) {
        MotionTrack track(0);
        track.retarget(100, Motion::makeSpring(2, 1));
        track.advance(0.1);
        track.retarget(200, Motion::makeSpring(0.2, 1, blend));
        track.advance(0.05);
        return track.value();
    };
    // The old spring was slow: the longer it has a say, the less way is made.
    EXPECT_GT(travelled(0), travelled(0.1));
    EXPECT_GT(travelled(0.1), travelled(0.4));
}

TEST(MotionTrack, AfterTheBlendTheNewSpringRulesAlone)
{
    MotionTrack track(0);
    track.retarget(100, Motion::makeSpring(2, 1));
    track.advance(0.1);
    track.retarget(200, Motion::makeSpring(0.2, 0.8, 0.1));
    track.advance(0.1);
    const SpringState then{track.value() - 200, track.velocity()};
    track.advance(0.03);
    EXPECT_NEAR(track.value() - 200, springAfter(then, 0.2, 0.8, 0.03).displacement, 1e-9);
}

TEST(MotionTrack, EasesOverItsDurationAndStops)
{
    MotionTrack track(0);
    track.retarget(1, Motion::makeEaseInOut(0.12));
    track.advance(0.06);
    EXPECT_NEAR(track.value(), 0.5, 1e-12);
    track.advance(0.059);
    EXPECT_TRUE(track.isMoving());
    track.advance(0.002);
    EXPECT_EQ(track.value(), 1);
    EXPECT_FALSE(track.isMoving());
}

TEST(MotionTrack, EasingOutIsFastFirst)
{
    MotionTrack track(0);
    track.retarget(1, Motion::makeEaseOut(0.2));
    track.advance(0.1);
    EXPECT_GT(track.value(), 0.8);
}

TEST(MotionTrack, TheTargetItHasAlreadyChangesNothing)
{
    MotionTrack track(0);
    track.retarget(1, Motion::makeEaseInOut(0.1));
    track.advance(0.05);
    track.retarget(1, Motion::makeSpring(3, 1));
    track.advance(0.05);
    EXPECT_FALSE(track.isMoving());
}

} // namespace
} // namespace brindle
