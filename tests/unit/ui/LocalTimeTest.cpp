#include "ui/LocalTime.h"

#include <cstdlib>
#include <gtest/gtest.h>

namespace brindle {
namespace {

class LocalTimeTest : public testing::Test
{
protected:
    LocalTimeTest() { qputenv("TZ", "UTC"); }
    ~LocalTimeTest() override { qputenv("TZ", m_before); }

    /// 1 January 2001, a Monday, 15:04:59.9 UTC.
    const Date moment = Date::fromReferenceSeconds(15 * 3600 + 4 * 60 + 59.9);
    const QLocale american{QLocale::English, QLocale::UnitedStates};
    const QLocale german{QLocale::German, QLocale::Germany};

private:
    QByteArray m_before = qgetenv("TZ");
};

TEST_F(LocalTimeTest, HasAnAbbreviatedAmOrPmWhereTheLocaleHasIt)
{
    EXPECT_EQ(LocalTime::hourAndMinute(moment, american), u"3:04 PM");
    EXPECT_EQ(LocalTime::hourAndMinute(moment - 12 * 3600, american), u"3:04 AM");
    EXPECT_EQ(LocalTime::hourAndMinute(moment, german), u"15:04");
}

TEST_F(LocalTimeTest, NoWishIsTheUsualWay)
{
    EXPECT_EQ(LocalTime::hourAndMinute(moment, QLocale::c()), u"3:04 PM");
}

TEST_F(LocalTimeTest, TheWeekdayIsAbbreviated)
{
    EXPECT_EQ(LocalTime::weekday(moment, american), u"Mon");
    EXPECT_EQ(LocalTime::weekday(moment + 86400, american), u"Tue");
    EXPECT_EQ(LocalTime::weekday(moment, german), u"Mo.");
}

TEST_F(LocalTimeTest, AChangeOfTimeZoneIsFollowed)
{
    qputenv("TZ", "Asia/Tokyo");
    EXPECT_EQ(LocalTime::hourAndMinute(moment, german), u"00:04");
    EXPECT_EQ(LocalTime::weekday(moment, american), u"Tue");
    qputenv("TZ", "America/New_York");
    EXPECT_EQ(LocalTime::hourAndMinute(moment, german), u"10:04");
}

} // namespace
} // namespace brindle
