#pragma once

#include "foundation/Scheduler.h"

#include <QAbstractNativeEventFilter>
#include <QMetaObject>

#include <xcb/xcb.h>

class QWindow;

namespace brindle {

/// Keeps a window above all others of other programs: looks again when a window was shown or raised, and
/// raises its own window if another now covers it.
///
/// Two programs that both insist would fight for ever, and a screen's lock should win: this one gives up
/// after a few rounds, until the stack changes again later. At rest it costs nothing. Main thread.
class X11Stacking : private QAbstractNativeEventFilter
{
public:
    X11Stacking(QWindow &window, Scheduler &scheduler);
    ~X11Stacking() override;

private:
    bool nativeEventFilter(const QByteArray &eventType, void *message, qintptr *result) override;
    void lookSoon();
    void raiseIfCovered();
    bool isCovered() const;

    QWindow &m_window;
    Scheduler &m_scheduler;
    QMetaObject::Connection m_screens;
    Delay m_look;
    /// Raises in the present round of a fight, and when the last one was (uptime, seconds).
    int m_raises = 0;
    double m_lastRaise = 0;
};

} // namespace brindle
