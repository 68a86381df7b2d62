#include "platform/linux/dbus/PortalAccessibilitySettings.h"

#include "platform/linux/dbus/BusMessages.h"

#include <QDBusArgument>
#include <QDBusVariant>

#include <utility>

namespace brindle {

namespace {

const QString portalPath = QStringLiteral("/org/freedesktop/portal/desktop");
const QString settingsInterface = QStringLiteral("org.freedesktop.portal.Settings");
const QString settingChangedName = QStringLiteral("SettingChanged");

const QString appearance = QStringLiteral("org.freedesktop.appearance");
const QString gnomeInterface = QStringLiteral("org.gnome.desktop.interface");
const QString kdeGlobals = QStringLiteral("org.kde.kdeglobals.KDE");

bool isWatched(const QString &group)
{
    return group == appearance || group == gnomeInterface || group == kdeGlobals;
}

/// Portals wrap values once or twice.
QVariant unwrapped(QVariant value)
{
    while (value.metaType() == QMetaType::fromType<QDBusVariant>())
        value = value.value<QDBusVariant>().variant();
    return value;
}

} // namespace

// A portal starts when it is asked for, as every other program on the desktop does.
PortalAccessibilitySettings::PortalAccessibilitySettings(BusConnection &sessionBus)
    : m_service(sessionBus, QStringLiteral("org.freedesktop.portal.Desktop"),
          BusService::WhenAbsent::askTheBusToStartIt)
{
    connect(&m_service, &BusService::appeared, this, &PortalAccessibilitySettings::begin);
    connect(&m_service, &BusService::vanished, this, &PortalAccessibilitySettings::end);
    m_service.follow();
}

PortalAccessibilitySettings::~PortalAccessibilitySettings() = default;

void PortalAccessibilitySettings::begin(const QString &owner)
{
    m_owner = owner;
    m_session = std::make_unique<QObject>();
    QDBusConnection connection = m_service.connection();
    connection.connect(
        m_owner, portalPath, settingsInterface, settingChangedName, this, SLOT(settingChanged(QDBusMessage)));
    readAll();
}

void PortalAccessibilitySettings::end()
{
    QDBusConnection connection = m_service.connection();
    connection.disconnect(
        m_owner, portalPath, settingsInterface, settingChangedName, this, SLOT(settingChanged(QDBusMessage)));
    m_session.reset();
}

void PortalAccessibilitySettings::readAll()
{
    QDBusMessage question =
        QDBusMessage::createMethodCall(m_owner, portalPath, settingsInterface, QStringLiteral("ReadAll"));
    question << QStringList{appearance, gnomeInterface, kdeGlobals};
    bus::call(m_service.connection(), question, m_session.get(), [this](const QDBusMessage &reply) {
        const auto settings = bus::argument(reply, QLatin1StringView("a{sa{sv}}"));
        if (!settings)
            return;
        m_settings = qdbus_cast<bus::Interfaces>(*settings);
        evaluate();
    });
}

void PortalAccessibilitySettings::settingChanged(const QDBusMessage &signal)
{
    if (signal.signature() != QLatin1StringView("ssv"))
        return;
    const QVariantList arguments = signal.arguments();
    if (!isWatched(arguments.at(0).toString()))
        return;
    m_settings[arguments.at(0).toString()][arguments.at(1).toString()] = arguments.at(2);
    evaluate();
}

void PortalAccessibilitySettings::evaluate()
{
    const auto setting = [this](const QString &group, const QString &key) {
        return unwrapped(m_settings.value(group).value(key));
    };
    const bool isAskedFor =
        bus::typed<uint>(setting(appearance, QStringLiteral("reduced-motion"))).value_or(0) == 1;
    const bool gnomeAnimates =
        bus::typed<bool>(setting(gnomeInterface, QStringLiteral("enable-animations"))).value_or(true);
    // A factor on the length of animations, as text.
    const auto kdeFactor =
        bus::typed<QString>(setting(kdeGlobals, QStringLiteral("AnimationDurationFactor")));
    bool isNumber = false;
    const bool kdeAnimates = !kdeFactor || kdeFactor->toDouble(&isNumber) > 0 || !isNumber;

    const bool reduceMotion = isAskedFor || !gnomeAnimates || !kdeAnimates;
    if (std::exchange(m_reduceMotion, reduceMotion) != reduceMotion)
        Q_EMIT reduceMotionChanged();
}

} // namespace brindle
