#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QMap>
#include <QObject>
#include <QStringList>
#include <QVariantMap>

#include <functional>
#include <optional>

/// Reading what other processes send. Nothing that they say is trusted to have the right shape: what has not
/// is absent.
namespace brindle::bus {

inline const QString propertiesInterface = QStringLiteral("org.freedesktop.DBus.Properties");
inline const QString objectManagerInterface = QStringLiteral("org.freedesktop.DBus.ObjectManager");

/// From interface to its properties.
using Interfaces = QMap<QString, QVariantMap>;
using ManagedObjects = QMap<QDBusObjectPath, Interfaces>;

struct PropertiesChange
{
    QString interface;
    QVariantMap changed;
    QStringList invalidated;
};

/// Sends `call` and hands the reply, or the error, to `answer` as long as `owner` lives. Waits for as long as
/// the other side is on the bus: one that hangs answers when it wakes, and for one that dies the bus answers.
void call(const QDBusConnection &connection, const QDBusMessage &call, QObject *owner,
    std::function<void(const QDBusMessage &)> answer);

/// The reply of `GetAll`.
std::optional<QVariantMap> properties(const QDBusMessage &reply);
/// The signal `PropertiesChanged`.
std::optional<PropertiesChange> propertiesChange(const QDBusMessage &signal);
/// The reply of `GetManagedObjects`.
std::optional<ManagedObjects> managedObjects(const QDBusMessage &reply);

/// The first argument, if the message has just this signature.
std::optional<QVariant> argument(const QDBusMessage &message, QLatin1StringView signature);

/// A value of exactly this type; nothing is converted.
template <typename T> std::optional<T> typed(const QVariant &value)
{
    if (value.metaType() != QMetaType::fromType<T>())
        return std::nullopt;
    return value.value<T>();
}

template <typename T> std::optional<T> typed(const QVariantMap &values, const QString &key)
{
    return typed<T>(values.value(key));
}

} // namespace brindle::bus
