#include "activities/BluetoothMonitor.h"

#include "activities/ActivityCoordinator.h"
#include "foundation/Json.h"

#include <QLocale>

#include <array>

namespace brindle {

namespace {

constexpr double connectedDuration = 4;
constexpr double disconnectedDuration = 3.5;

QString displayName(const BluetoothDevice &device)
{
    return device.name.value_or(QStringLiteral("Bluetooth Device"));
}

/// A telephone of this kind comes and goes all day without anybody asking for it.
bool isLeftOut(const BluetoothDevice &device)
{
    // By the locale's rules first: some languages have a capital dotted I of their own.
    const QString name = displayName(device);
    const QString word = QStringLiteral("iphone");
    return QLocale().toLower(name).contains(word) || name.contains(word, Qt::CaseInsensitive);
}

SystemActivity activityFor(const BluetoothDevice &device, const QString &detail, double duration, Date now)
{
    SystemActivity activity;
    activity.id = QUuid::createUuid();
    activity.type = ActivityType::peripheral;
    activity.priority = ActivityPriority::peripheral;
    activity.createdAt = now;
    activity.duration = duration;
    activity.content.title = displayName(device);
    activity.content.detail = detail;
    activity.content.symbol = BluetoothMonitor::symbolFor(device.name);
    return activity;
}

} // namespace

BluetoothMonitor::BluetoothMonitor(ActivityCoordinator &activityCoordinator, BluetoothDevices &devices,
    Scheduler &scheduler, QObject *parent)
    : QObject(parent)
    , m_activityCoordinator(activityCoordinator)
    , m_devices(devices)
    , m_scheduler(scheduler)
{ }

BluetoothMonitor::~BluetoothMonitor()
{
    stop();
}

void BluetoothMonitor::start()
{
    if (m_connectNotification)
        m_connectNotification->unregister();
    m_connectNotification = m_devices.registerForConnectNotifications(
        [this](const BluetoothDevice &device) { deviceConnected(device); });
}

void BluetoothMonitor::stop()
{
    if (m_connectNotification)
        m_connectNotification->unregister();
    m_connectNotification.reset();
    for (const auto &notification : std::as_const(m_disconnectNotifications))
        notification->unregister();
    m_disconnectNotifications.clear();
}

void BluetoothMonitor::deviceConnected(const BluetoothDevice &device)
{
    if (isLeftOut(device))
        return;
    const QString key = device.addressString.value_or(Json::identifierText(QUuid::createUuid()));
    const auto notification = m_devices.registerForDisconnectNotification(
        device, m_lifetime.guard([this](const BluetoothDevice &gone) { deviceDisconnected(gone); }));
    if (notification)
        m_disconnectNotifications.insert(key, notification);
    m_activityCoordinator.post(
        activityFor(device, QStringLiteral("Connected"), connectedDuration, m_scheduler.now()));
}

void BluetoothMonitor::deviceDisconnected(const BluetoothDevice &device)
{
    if (isLeftOut(device))
        return;
    if (device.addressString) {
        if (const auto notification = m_disconnectNotifications.take(*device.addressString))
            notification->unregister();
    }
    m_activityCoordinator.post(
        activityFor(device, QStringLiteral("Disconnected"), disconnectedDuration, m_scheduler.now()));
}

QString BluetoothMonitor::symbolFor(const std::optional<QString> &name)
{
    struct Kind
    {
        QLatin1StringView word;
        QLatin1StringView symbol;
    };
    static constexpr std::array kinds{
        Kind{QLatin1StringView("airpods"), QLatin1StringView("airpodspro")},
        Kind{QLatin1StringView("headphone"), QLatin1StringView("airpodspro")},
        Kind{QLatin1StringView("buds"), QLatin1StringView("airpodspro")},
        Kind{QLatin1StringView("mouse"), QLatin1StringView("computermouse.fill")},
        Kind{QLatin1StringView("keyboard"), QLatin1StringView("keyboard.fill")},
    };
    const QString lowered = name.value_or(QString()).toLower();
    for (const Kind &kind : kinds) {
        if (lowered.contains(kind.word))
            return kind.symbol;
    }
    return QStringLiteral("dot.radiowaves.left.and.right");
}

} // namespace brindle
