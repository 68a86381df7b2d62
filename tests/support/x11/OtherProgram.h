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

xcb_atom_t atom(xcb_connection_t *connection, const char *name);

/// Another program on the display: a connection of its own, with one plain window that notes what comes to
/// it.
class OtherProgram
{
public:
    /// Who places the window: the program itself, or the window manager, which may let it fill the display.
    enum class Kind { unmanaged, managed, fullScreen };

    explicit OtherProgram(const QRect &geometry, Kind kind = Kind::unmanaged);
    ~OtherProgram();
    OtherProgram(const OtherProgram &) = delete;
    OtherProgram &operator=(const OtherProgram &) = delete;

    xcb_window_t window() const { return m_window; }
    void takeFocus();
    /// Leaves the keyboard to nobody.
    void dropFocus();
    void raise();
    void move(QPoint corner);
    /// Takes all pointer events for itself, as during a drag.
    void grabPointer();
    void destroyWindow();
    /// Owns the selection until the window is gone.
    void ownSelection(const char *name);
    bool hasFocus() const;
    /// Whether the window stands above the other one.
    bool isAbove(xcb_window_t other) const;

    QSize size() const { return m_size; }

    QList<QPoint> presses;
    QList<int> keys;
    bool isMapped = false;

private:
    void askForFullScreen();
    void readEvents();

    xcb_connection_t *m_connection;
    xcb_window_t m_root;
    xcb_window_t m_window;
    QSize m_size;
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
    void holdKey(int keycode);
    void releaseKey(int keycode);

private:
    void send(uint8_t type, uint8_t detail, QPoint point = {});

    xcb_connection_t *m_connection;
    xcb_window_t m_root;
};

} // namespace brindle::test
