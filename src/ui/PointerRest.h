#pragma once

#include "foundation/Scheduler.h"
#include "ui/Clock.h"

#include <QObject>
#include <QPointer>
#include <QtQml/qqmlregistration.h>

namespace brindle {

/// Whether the pointer has rested on something so long that its user may want to know what it is.
///
/// Ends when the pointer leaves, and on `dismiss()`; after that the pointer has to come anew. Main thread.
class PointerRest : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(brindle::Clock *clock READ clock WRITE setClock NOTIFY clockChanged REQUIRED)
    Q_PROPERTY(bool isPointed READ isPointed WRITE setPointed NOTIFY isPointedChanged)
    Q_PROPERTY(bool hasRested READ hasRested NOTIFY hasRestedChanged)

public:
    /// Seconds.
    static constexpr double patience = 0.7;

    using QObject::QObject;

    Clock *clock() const { return m_clock; }
    void setClock(Clock *clock);
    bool isPointed() const { return m_isPointed; }
    void setPointed(bool pointed);
    bool hasRested() const { return m_hasRested; }

    /// The user has acted, and so knows.
    Q_INVOKABLE void dismiss();

Q_SIGNALS:
    void clockChanged();
    void isPointedChanged();
    void hasRestedChanged();

private:
    void await();
    void setRested(bool rested);

    QPointer<Clock> m_clock;
    bool m_isPointed = false;
    bool m_hasRested = false;
    Delay m_rest;
};

} // namespace brindle
