#pragma once

#include "platform/linux/dbus/BusService.h"
#include "platform/linux/x11/X11Selection.h"

#include <QDBusMessage>
#include <QObject>

#include <memory>

namespace brindle {

/// Looks for a place that shows status icons, by either of the protocols that desktops speak, and waits for
/// one where there is none yet: at the start of a session the bar may come after the program. Main thread;
/// nothing blocks.
class TrayHosts : public QObject
{
    Q_OBJECT

public:
    explicit TrayHosts(BusConnection &sessionBus);

    /// Begins to look. On a display that is not X11 only the bus is looked at.
    void follow();

Q_SIGNALS:
    /// There is a place. Comes once.
    void found();

private Q_SLOTS:
    void hostRegistered();

private:
    void askWatcher(const QString &owner);
    void lookAtDisplay();
    void tell();

    BusService m_watcher;
    std::unique_ptr<X11Selection> m_tray;
    bool m_hasTold = false;
};

} // namespace brindle
