#include "ui/PointerRest.h"

#include "foundation/ManualScheduler.h"

#include <QSignalSpy>

#include <gtest/gtest.h>

namespace brindle {
namespace {

class PointerRestTest : public testing::Test
{
protected:
    PointerRestTest() { rest.setClock(&clock); }

    ManualScheduler time;
    Clock clock{time};
    PointerRest rest;
    QSignalSpy changes{&rest, &PointerRest::hasRestedChanged};
};

TEST_F(PointerRestTest, ThePointerHasRestedAfterSevenTenthsOfASecond)
{
    rest.setPointed(true);
    time.advance(0.69);
    EXPECT_FALSE(rest.hasRested());
    time.advance(0.02);
    EXPECT_TRUE(rest.hasRested());
    EXPECT_EQ(changes.count(), 1);
}

TEST_F(PointerRestTest, LeavingEndsItAtOnce)
{
    rest.setPointed(true);
    time.advance(1);
    rest.setPointed(false);
    EXPECT_FALSE(rest.hasRested());
}

TEST_F(PointerRestTest, APointerThatOnlyPassesDoesNotRest)
{
    rest.setPointed(true);
    time.advance(0.5);
    rest.setPointed(false);
    time.advance(5);
    rest.setPointed(true);
    time.advance(0.5);
    EXPECT_FALSE(rest.hasRested());
    EXPECT_EQ(changes.count(), 0);
}

TEST_F(PointerRestTest, AfterADismissalThePointerHasToComeAnew)
{
    rest.setPointed(true);
    time.advance(1);
    rest.dismiss();
    time.advance(5);
    EXPECT_FALSE(rest.hasRested());

    rest.setPointed(false);
    rest.setPointed(true);
    time.advance(1);
    EXPECT_TRUE(rest.hasRested());
}

TEST_F(PointerRestTest, ADismissalBeforeTheTimeIsUpCountsToo)
{
    rest.setPointed(true);
    time.advance(0.5);
    rest.dismiss();
    time.advance(5);
    EXPECT_FALSE(rest.hasRested());
}

TEST_F(PointerRestTest, NothingWakesWhileNothingIsPointedAt)
{
    EXPECT_EQ(time.pendingCount(), 0);
    rest.setPointed(true);
    EXPECT_EQ(time.pendingCount(), 1);
    rest.setPointed(false);
    EXPECT_EQ(time.pendingCount(), 0);
}

TEST_F(PointerRestTest, WithoutAClockThePointerNeverRests)
{
    PointerRest timeless;
    timeless.setPointed(true);
    time.advance(5);
    EXPECT_FALSE(timeless.hasRested());
}

} // namespace
} // namespace brindle
