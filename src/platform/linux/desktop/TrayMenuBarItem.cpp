#include "platform/linux/desktop/TrayMenuBarItem.h"

#include <QAction>
#include <QIcon>
#include <QMenu>
#include <QPainter>
#include <QSvgRenderer>
#include <QSystemTrayIcon>

namespace brindle {

namespace {

/// Seconds from the launch until a place for the icon is looked for.
constexpr double patience = 0.4;

/// Trays are dark or light and do not tell which; a white drawing with a dark rim is seen on both.
QPixmap drawSymbol(const QString &symbol, int size)
{
    QSvgRenderer drawing(QStringLiteral(":/brindle/symbols/%1.svg").arg(symbol));
    const auto tinted = [&](const QColor &colour, double margin) {
        QPixmap picture(size, size);
        picture.fill(Qt::transparent);
        QPainter painter(&picture);
        drawing.render(&painter, QRectF(margin, margin, size - 2 * margin, size - 2 * margin));
        painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
        painter.fillRect(picture.rect(), colour);
        return picture;
    };
    const double rim = size / 24.0;
    const QPixmap shade = tinted(QColor(0, 0, 0, 160), rim);
    QPixmap picture(size, size);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    for (const QPointF offset : {QPointF(-rim, 0), QPointF(rim, 0), QPointF(0, -rim), QPointF(0, rim)})
        painter.drawPixmap(offset, shade);
    painter.drawPixmap(0, 0, tinted(Qt::white, rim));
    return picture;
}

QIcon iconOf(const QString &symbol)
{
    QIcon icon;
    for (const int size : {16, 22, 24, 32, 48, 64})
        icon.addPixmap(drawSymbol(symbol, size));
    return icon;
}

} // namespace

TrayMenuBarItem::TrayMenuBarItem(Scheduler &scheduler, BusConnection &sessionBus)
    : m_scheduler(scheduler)
    , m_hosts(sessionBus)
{
    connect(&m_hosts, &TrayHosts::found, this, &TrayMenuBarItem::build);
}

TrayMenuBarItem::~TrayMenuBarItem() = default;

void TrayMenuBarItem::install(const QString &symbol, const QList<MenuEntry> &entries)
{
    m_symbol = symbol;
    m_entries = entries;
    m_looking = m_scheduler.after(patience, [this] { m_hosts.follow(); });
}

// Qt chooses the protocol for the life of the process when it is first asked for an icon, so it is asked only
// now.
void TrayMenuBarItem::build()
{
    m_menu = std::make_unique<QMenu>();
    fillMenu();
    m_icon = std::make_unique<QSystemTrayIcon>(iconOf(m_symbol));
    m_icon->setToolTip(QStringLiteral("Velmora"));
    m_icon->setContextMenu(m_menu.get());
    // An ordinary click asks for the menu too: the icon has no other use.
    QObject::connect(m_icon.get(), &QSystemTrayIcon::activated, m_menu.get(),
        [this](QSystemTrayIcon::ActivationReason reason) {
            if (reason == QSystemTrayIcon::Trigger)
                m_menu->popup(m_icon->geometry().bottomLeft());
        });
    m_icon->show();
}

void TrayMenuBarItem::fillMenu()
{
    for (const MenuEntry &entry : m_entries) {
        if (entry.isDivider()) {
            m_menu->addSeparator();
            continue;
        }
        QAction *action = m_menu->addAction(entry.title);
        action->setShortcut(entry.shortcut);
        // Seen in the menu and used in it; a key that is pressed elsewhere is not the menu's.
        action->setShortcutContext(Qt::WidgetShortcut);
        QObject::connect(action, &QAction::triggered, m_menu.get(), [run = entry.action] { run(); });
        if (entry.isEnabled)
            QObject::connect(m_menu.get(), &QMenu::aboutToShow, action,
                [action, isEnabled = entry.isEnabled] { action->setEnabled(isEnabled()); });
    }
}

} // namespace brindle
