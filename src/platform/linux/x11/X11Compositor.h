#pragma once

#include <QAbstractNativeEventFilter>
#include <QObject>

#include <xcb/xcb.h>

namespace brindle {

/// Whether something composes transparent windows on this display, followed while the program runs. Main
/// thread.
class X11Compositor : public QObject, private QAbstractNativeEventFilter
{
    Q_OBJECT

public:
    explicit X11Compositor(QObject *parent = nullptr);
    ~X11Compositor() override;

    bool isRunning() const { return m_isRunning; }

Q_SIGNALS:
    void isRunningChanged();

private:
    bool nativeEventFilter(const QByteArray &eventType, void *message, qintptr *result) override;
    void followSelection();
    void look();

    xcb_atom_t m_selection = XCB_ATOM_NONE;
    uint8_t m_selectionNotify = 0;
    bool m_isRunning = false;
};

} // namespace brindle
