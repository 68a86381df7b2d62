#pragma once

#include <QColor>
#include <QList>
#include <QPoint>
#include <QProcess>
#include <QSize>
#include <QTemporaryDir>

#include <functional>
#include <xcb/xcb.h>

namespace brindle::test {

/// Runs the event loop until `holds` is true, and looks again without being called: for what another program
/// does unheard. False when that did not happen within `seconds`.
bool soon(const std::function<bool()> &holds, double seconds = 15);

/// The private display as a person has it: with a window manager, a compositor where wanted, eyes on the
/// screen.
class Desktop
{
public:
    /// Starts the window manager and waits for it.
    Desktop();
    ~Desktop();
    Desktop(const Desktop &) = delete;
    Desktop &operator=(const Desktop &) = delete;

    bool isThere() const { return m_isThere; }
    /// False when it does not come up. `configuration` is the compositor's own file, none by default.
    bool startCompositor(const QString &configuration = QStringLiteral("/dev/null"));
    /// As if it crashed.
    void killCompositor();
    bool goToWorkspace(int number);

    QColor pixelAt(QPoint point) const;
    /// A property of the root window that is a list of numbers.
    QList<uint32_t> rootProperty(const char *name) const;
    QList<xcb_window_t> stack() const;
    QRect geometryOf(xcb_window_t window) const;

private:
    void run(QProcess &process, const QString &program, const QStringList &arguments = {});
    bool isSelectionOwned(const char *name) const;

    QTemporaryDir m_home;
    xcb_connection_t *m_connection;
    xcb_window_t m_root;
    QProcess m_windowManager;
    QProcess m_compositor;
    bool m_isThere = false;
};

/// Another resolution of the private display, as chosen in a desktop's settings. False when refused.
bool resizeDisplay(QSize size);

} // namespace brindle::test
