#pragma once

#include "foundation/Scheduler.h"
#include "platform/MenuBarItem.h"
#include "platform/linux/desktop/TrayHosts.h"

#include <QObject>

#include <memory>

class QMenu;
class QSystemTrayIcon;

namespace brindle {

/// The status icon of the desktop, by either of the protocols that desktops speak.
///
/// It is made a moment after it was asked for, so that the program's first picture does not wait for it, and
/// only once there is a place that shows it.
class TrayMenuBarItem : public QObject, public MenuBarItem
{
    Q_OBJECT

public:
    TrayMenuBarItem(Scheduler &scheduler, BusConnection &sessionBus);
    ~TrayMenuBarItem() override;

    void install(const QString &symbol, const QList<MenuEntry> &entries) override;

private:
    void build();
    void fillMenu();

    Scheduler &m_scheduler;
    TrayHosts m_hosts;
    Delay m_looking;
    QString m_symbol;
    QList<MenuEntry> m_entries;
    std::unique_ptr<QMenu> m_menu;
    std::unique_ptr<QSystemTrayIcon> m_icon;
};

} // namespace brindle
