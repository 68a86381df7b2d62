#include "foundation/NotificationCenter.h"

#include <gtest/gtest.h>

namespace brindle {
namespace {

const QString ring = QStringLiteral("ring");

TEST(NotificationCenter, ReachesEveryObserverOfTheNameInOrder)
{
    NotificationCenter center;
    std::string heard;
    const auto first = center.observe(ring, [&] { heard += 'a'; });
    const auto second = center.observe(ring, [&] { heard += 'b'; });
    const auto other = center.observe(QStringLiteral("other"), [&] { heard += 'x'; });
    center.post(ring);
    EXPECT_EQ(heard, "ab");
}

TEST(NotificationCenter, AnObserverThatWasDroppedHearsNothing)
{
    NotificationCenter center;
    int heard = 0;
    {
        const auto observer = center.observe(ring, [&] { ++heard; });
    }
    center.post(ring);
    EXPECT_EQ(heard, 0);
}

TEST(NotificationCenter, AnObserverMayEndAnotherDuringDelivery)
{
    NotificationCenter center;
    int heard = 0;
    Subscription second;
    const auto first = center.observe(ring, [&] { second.reset(); });
    second = center.observe(ring, [&] { ++heard; });
    center.post(ring);
    EXPECT_EQ(heard, 0);
}

TEST(NotificationCenter, ASubscriptionMayOutliveTheCenter)
{
    Subscription observer;
    {
        NotificationCenter center;
        observer = center.observe(ring, [] { });
    }
    observer.reset();
    EXPECT_FALSE(observer);
}

} // namespace
} // namespace brindle
