#include "platform/linux/desktop/TrayHosts.h"

#include "platform/linux/dbus/BusMessages.h"
#include "platform/linux/x11/XcbConnection.h"

#include <QDBusVariant>

#include <utility>

namespace brindle {

namespace {

const QString watcherName = QStringLiteral("org.kde.StatusNotifierWatcher");
const QString watcherPath = QStringLiteral("/StatusNotifierWatcher");

} // namespace

TrayHosts::TrayHosts(BusConnection &sessionBus)
    : m_watcher(sessionBus, watcherName, BusService::WhenAbsent::wait)
{
    connect(&m_watcher, &BusService::appeared, this, &TrayHosts::askWatcher);
}

void TrayHosts::follow()
{
    m_watcher.follow();
    if (Xcb::connection() && !m_tray) {
        m_tray = std::make_unique<X11Selection>(X11Selection::tray);
        connect(m_tray.get(), &X11Selection::isOwnedChanged, this, &TrayHosts::lookAtDisplay);
        lookAtDisplay();
    }
}

void TrayHosts::lookAtDisplay()
{
    if (m_tray->isOwned())
        tell();
}

// The watcher keeps the list of icons; that somebody shows them is another matter.
void TrayHosts::askWatcher(const QString &owner)
{
    QDBusConnection connection = m_watcher.connection();
    connection.connect(owner, watcherPath, watcherName, QStringLiteral("StatusNotifierHostRegistered"), this,
        SLOT(hostRegistered()));
    QDBusMessage question =
        QDBusMessage::createMethodCall(owner, watcherPath, bus::propertiesInterface, QStringLiteral("Get"));
    question << watcherName << QStringLiteral("IsStatusNotifierHostRegistered");
    bus::call(connection, question, this, [this](const QDBusMessage &reply) {
        const auto answer = bus::argument(reply, QLatin1StringView("v"));
        if (answer && bus::typed<bool>(answer->value<QDBusVariant>().variant()).value_or(false))
            tell();
    });
}

void TrayHosts::hostRegistered()
{
    tell();
}

void TrayHosts::tell()
{
    if (!std::exchange(m_hasTold, true))
        Q_EMIT found();
}

} // namespace brindle
