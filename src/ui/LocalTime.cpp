#include "ui/LocalTime.h"

#include <QDateTime>

#include <cmath>

namespace brindle {
namespace {

QDateTime local(Date date)
{
    return QDateTime::fromMSecsSinceEpoch(qint64(std::floor(date.secondsSince1970() * 1000)));
}

// The C locale stands for no wish at all, and its times have seconds.
QLocale wanted(const QLocale &locale)
{
    return locale.language() == QLocale::C ? QLocale(QLocale::English, QLocale::UnitedStates) : locale;
}

} // namespace

QString LocalTime::hourAndMinute(Date date, const QLocale &locale)
{
    return wanted(locale).toString(local(date).time(), QLocale::ShortFormat);
}

QString LocalTime::weekday(Date date, const QLocale &locale)
{
    return wanted(locale).dayName(local(date).date().dayOfWeek(), QLocale::ShortFormat);
}

} // namespace brindle
