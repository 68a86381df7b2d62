#pragma once

#include "foundation/Date.h"

#include <QLocale>
#include <QString>

namespace brindle {

/// Moments as people read them: in the machine's time zone as it is when asked, in the words of a locale.
/// Main thread.
class LocalTime
{
public:
    /// Hour and minute, with an abbreviated AM or PM where the locale has it.
    static QString hourAndMinute(Date date, const QLocale &locale = QLocale());
    /// The abbreviated day of the week.
    static QString weekday(Date date, const QLocale &locale = QLocale());
};

} // namespace brindle
