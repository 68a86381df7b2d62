#include "platform/linux/dbus/BusMessages.h"

#include <QDBusArgument>
#include <QDBusPendingCall>
#include <QDBusPendingCallWatcher>

#include <limits>

namespace brindle::bus {

namespace {

bool isReply(const QDBusMessage &message, QLatin1StringView signature)
{
    return message.type() == QDBusMessage::ReplyMessage && message.signature() == signature;
}

} // namespace

void call(const QDBusConnection &connection, const QDBusMessage &call, QObject *owner,
    std::function<void(const QDBusMessage &)> answer)
{
    constexpr int forever = std::numeric_limits<int>::max();
    auto *pending = new QDBusPendingCallWatcher(connection.asyncCall(call, forever), owner);
    QObject::connect(
        pending, &QDBusPendingCallWatcher::finished, owner, [pending, answer = std::move(answer)] {
            pending->deleteLater();
            answer(pending->reply());
        });
}

std::optional<QVariantMap> properties(const QDBusMessage &reply)
{
    if (!isReply(reply, QLatin1StringView("a{sv}")))
        return std::nullopt;
    return qdbus_cast<QVariantMap>(reply.arguments().constFirst());
}

std::optional<PropertiesChange> propertiesChange(const QDBusMessage &signal)
{
    if (signal.signature() != QLatin1StringView("sa{sv}as"))
        return std::nullopt;
    const QVariantList arguments = signal.arguments();
    return PropertiesChange{arguments.at(0).toString(), qdbus_cast<QVariantMap>(arguments.at(1)),
        qdbus_cast<QStringList>(arguments.at(2))};
}

std::optional<ManagedObjects> managedObjects(const QDBusMessage &reply)
{
    if (!isReply(reply, QLatin1StringView("a{oa{sa{sv}}}")))
        return std::nullopt;
    return qdbus_cast<ManagedObjects>(reply.arguments().constFirst());
}

std::optional<QVariant> argument(const QDBusMessage &message, QLatin1StringView signature)
{
    if (message.type() == QDBusMessage::ErrorMessage || message.signature() != signature)
        return std::nullopt;
    return message.arguments().constFirst();
}

} // namespace brindle::bus
