#pragma once

#include "foundation/Scheduler.h"

#include <QObject>
#include <QtQml/qqmlregistration.h>

namespace brindle {

/// The scheduler, as QML can hand it to a `Timeline`. Main thread.
class Clock : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("handed in by the scene's owner")

public:
    explicit Clock(Scheduler &scheduler, QObject *parent = nullptr) : QObject(parent), m_scheduler(scheduler)
    { }

    Scheduler &scheduler() const { return m_scheduler; }

private:
    Scheduler &m_scheduler;
};

} // namespace brindle
