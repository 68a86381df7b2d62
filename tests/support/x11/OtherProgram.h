#pragma once

#include <QList>
#include <QPoint>
#include <QRect>
#include <QSocketNotifier>

#include <memory>
#include <xcb/xcb.h>

namespace brindle::test {

/// Returns when the server has worked through all that was asked of it on this connection.
void settle(xcb_connection_t *connection);

/// Another program on the display: a connection of its own, with one plain window that notes what comes to
/// it.
class OtherProgram
{
public:
    explicit OtherProgram(const QRect &geometry, bool overridesRedirect = true);
    ~OtherProgram();
    OtherProgram(const OtherProgram &) = delete;
    OtherProgram &operator=(const OtherProgram &) = delete;

    xcb_window_t window() const { return m_window; }
    void takeFocus();
    void raise();
    void destroyWindow();
    /// Owns the selection until the window is gone.
    void ownSelection(const char *name);
    bool hasFocus() const;
    /// Whether the window stands above the other one.
    bool isAbove(xcb_window_t other) const;

    QList<QPoint> presses;
    QList<int> keys;
    bool isMapped = false;

private:
    void readEvents();

    xcb_connection_t *m_connection;
    xcb_window_t m_root;
    xcb_window_t m_window;
    std::unique_ptr<QSocketNotifier> m_notifier;
};

/// A hand on the mouse and the keyboard, as the X server's test extension moves them.
class Hand
{
public:
    Hand();
    ~Hand();
    Hand(const Hand &) = delete;
    Hand &operator=(const Hand &) = delete;

    /// In device pixels of the root window.
    void moveTo(QPoint point);
    void press(int button = 1);
    void release(int button = 1);
    void click(QPoint point, int button = 1);
    /// `keycode` is the server's.
    void type(int keycode);

private:
    void send(uint8_t type, uint8_t detail, QPoint point = {});

    xcb_connection_t *m_connection;
    xcb_window_t m_root;
};

} // namespace brindle::test
