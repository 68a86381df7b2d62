#pragma once

#include <QAbstractNativeEventFilter>
#include <QObject>

#include <xcb/xcb.h>

namespace brindle {

/// Whether somebody owns a selection of the display, followed while the program runs. A selection tells that
/// its owner serves the display: a compositor, a tray. Main thread.
class X11Selection : public QObject, private QAbstractNativeEventFilter
{
    Q_OBJECT

public:
    static constexpr auto compositor = "_NET_WM_CM_S0";
    static constexpr auto tray = "_NET_SYSTEM_TRAY_S0";

    /// `name` is one of the above. The program has one screen in the server's sense, number 0.
    explicit X11Selection(const char *name, QObject *parent = nullptr);
    ~X11Selection() override;

    bool isOwned() const { return m_isOwned; }

Q_SIGNALS:
    void isOwnedChanged();

private:
    bool nativeEventFilter(const QByteArray &eventType, void *message, qintptr *result) override;
    void follow();
    void look();

    xcb_atom_t m_selection = XCB_ATOM_NONE;
    uint8_t m_selectionNotify = 0;
    bool m_isOwned = false;
};

} // namespace brindle
