#pragma once

#include "foundation/Scheduler.h"
#include "platform/MenuBarItem.h"

#include <memory>

class QMenu;
class QSystemTrayIcon;

namespace brindle {

/// The status icon of the desktop, by either of the protocols that desktops speak.
///
/// It is made a moment after it was asked for, so that the program's first picture does not wait for it.
class TrayMenuBarItem : public MenuBarItem
{
public:
    explicit TrayMenuBarItem(Scheduler &scheduler);
    ~TrayMenuBarItem() override;

    void install(const QString &symbol, const QList<MenuEntry> &entries) override;

private:
    void build(const QString &symbol, const QList<MenuEntry> &entries);
    void fillMenu(const QList<MenuEntry> &entries);

    Scheduler &m_scheduler;
    Delay m_building;
    std::unique_ptr<QMenu> m_menu;
    std::unique_ptr<QSystemTrayIcon> m_icon;
};

} // namespace brindle
