#pragma once

#include "foundation/Lifetime.h"
#include "foundation/Scheduler.h"
#include "platform/EventMonitors.h"
#include "platform/linux/x11/ScrollGesture.h"

#include <QAbstractNativeEventFilter>
#include <QObject>

#include <map>
#include <memory>
#include <vector>
#include <xcb/xcb.h>

class QKeyEvent;
class QWindow;

namespace brindle {

/// Watches the X server's raw input for what goes to other programs, and Qt's events for what comes to this
/// one.
///
/// Raw input does not tell whose it is. A press is another program's when the server has nothing of it for
/// this one. Motion over the program's own windows is told to global monitors as well, for another program
/// may have grabbed it.
class X11EventMonitors : public QObject, public EventMonitors, private QAbstractNativeEventFilter
{
    Q_OBJECT

public:
    explicit X11EventMonitors(Scheduler &scheduler, QObject *parent = nullptr);
    ~X11EventMonitors() override;

    QPointF mouseLocation() const override;
    quint32 pressedMouseButtons() const override;
    [[nodiscard]] Subscription addGlobalMonitor(
        EventMask mask, std::function<void(const InputEvent &)> handler) override;
    [[nodiscard]] Subscription addLocalMonitor(
        EventMask mask, std::function<Disposition(const InputEvent &)> handler) override;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    struct Monitor
    {
        EventMask mask;
        std::function<Disposition(const InputEvent &)> handler;
    };
    struct Press
    {
        xcb_timestamp_t time;
        uint32_t button;
    };
    /// A key by its place on the keyboard, and when it came up.
    struct Release
    {
        quint32 key = 0;
        quint64 time = 0;
    };
    using Monitors = std::map<quint64, Monitor>;

    bool nativeEventFilter(const QByteArray &eventType, void *message, qintptr *result) override;
    Subscription add(Monitors X11EventMonitors::*monitors, Monitor monitor);
    bool send(const Monitors &monitors, const InputEvent &event);
    void monitorsChanged();
    void rawMotion();
    void rawPress(xcb_timestamp_t time, uint32_t button);
    void ownPress(xcb_timestamp_t time);
    void pressIsDecided(xcb_timestamp_t time);
    bool isRepeat(const QKeyEvent &press) const;
    static EventMask maskOf(const Monitors &monitors);

    Scheduler &m_scheduler;
    int m_inputOpcode = 0;
    /// A window that nobody sees, to which the program writes itself.
    xcb_window_t m_mailbox = XCB_WINDOW_NONE;
    std::vector<Press> m_undecided;
    Monitors m_global;
    Monitors m_local;
    quint64 m_lastNumber = 0;
    bool m_filtersLocalEvents = false;
    Release m_lastRelease;
    /// While it is pending, motion waits for its end.
    Delay m_motion;
    bool m_hasMovedOn = false;
    ScrollGesture m_scroll;
    Lifetime m_lifetime;
};

} // namespace brindle
