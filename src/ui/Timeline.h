#pragma once

#include "foundation/Scheduler.h"
#include "ui/Clock.h"

#include <QObject>
#include <QPointer>
#include <QQmlParserStatus>
#include <QtQml/qqmlregistration.h>

namespace brindle {

/// Says what time it is, now and then: `date` is renewed each `interval` while it runs, for drawings that
/// live.
///
/// When it does not run, nothing wakes. Each start renews `date` at once, and so does a new clock. Main
/// thread.
class Timeline : public QObject, public QQmlParserStatus
{
    Q_OBJECT
    Q_INTERFACES(QQmlParserStatus)
    QML_ELEMENT
    Q_PROPERTY(brindle::Clock *clock READ clock WRITE setClock REQUIRED)
    /// Seconds, above 0.
    Q_PROPERTY(double interval READ interval WRITE setInterval)
    /// Seconds that a renewal may come late.
    Q_PROPERTY(double tolerance MEMBER m_tolerance)
    Q_PROPERTY(bool isRunning READ isRunning WRITE setRunning)
    /// Seconds since the start of 2001, UTC.
    Q_PROPERTY(double seconds READ seconds NOTIFY ticked)

public:
    using QObject::QObject;

    Clock *clock() const { return m_clock; }
    void setClock(Clock *clock);
    double interval() const { return m_interval; }
    void setInterval(double seconds);
    bool isRunning() const { return m_isRunning; }
    void setRunning(bool running);
    Date date() const { return m_date; }
    double seconds() const { return m_date.referenceSeconds(); }

    void classBegin() override { m_isComplete = false; }
    void componentComplete() override;

Q_SIGNALS:
    void ticked();

private:
    void restart();
    void tick();

    QPointer<Clock> m_clock;
    double m_interval = 1;
    double m_tolerance = 0;
    bool m_isRunning = true;
    bool m_isComplete = true;
    Date m_date;
    Delay m_ticks;
};

} // namespace brindle
