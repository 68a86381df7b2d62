#include "platform/linux/files/JsonUserDefaults.h"

#include "foundation/Files.h"
#include "foundation/Json.h"
#include "platform/DefaultsValue.h"

#include <QDateTime>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>

namespace brindle {

namespace {

/// Seconds in which writes are gathered; what is lost when the machine dies.
constexpr double writeDelay = 0.05;

const QString integerTag = QStringLiteral("integer");
const QString dateTag = QStringLiteral("date");

QVariant fromArray(const QJsonArray &array)
{
    const QVariantList values = array.toVariantList();
    const auto strings = DefaultsValue::toStringList(values);
    return strings ? QVariant(*strings) : QVariant(values);
}

QVariant fromObject(const QJsonObject &object)
{
    const QJsonValue integer = object.value(integerTag);
    if (object.size() == 1 && integer.isDouble())
        return integer.toInteger();
    const QString date = object.value(dateTag).toString();
    const QDateTime moment = QDateTime::fromString(date, Qt::ISODateWithMs);
    if (object.size() == 1 && moment.isValid())
        return moment;
    return object.toVariantMap();
}

QVariant fromJson(const QJsonValue &value)
{
    switch (value.type()) {
    case QJsonValue::Double:
        return value.toDouble();
    case QJsonValue::Array:
        return fromArray(value.toArray());
    case QJsonValue::Object:
        return fromObject(value.toObject());
    default:
        return value.toVariant();
    }
}

QJsonValue toJson(const QVariant &value)
{
    switch (value.typeId()) {
    case QMetaType::QDateTime:
        return QJsonObject{{dateTag, value.toDateTime().toUTC().toString(Qt::ISODateWithMs)}};
    case QMetaType::Int:
    case QMetaType::LongLong:
        return QJsonObject{{integerTag, value.toLongLong()}};
    default:
        return QJsonValue::fromVariant(value);
    }
}

} // namespace

JsonUserDefaults::JsonUserDefaults(const QString &configurationFolder, Scheduler &scheduler)
    : m_path(configurationFolder + QStringLiteral("/com.brindle.app/defaults.json"))
    , m_scheduler(scheduler)
{
    load();
}

JsonUserDefaults::~JsonUserDefaults()
{
    flush();
}

void JsonUserDefaults::load()
{
    if (!QFileInfo::exists(m_path))
        return;
    const auto text = Files::read(m_path);
    const auto stored = text ? Json::decodeObject(*text) : std::nullopt;
    if (stored)
        m_stored = *stored;
    else
        m_isWritable = setAside();
}

// Out of the way of what will be written, but where its owner can find it.
bool JsonUserDefaults::setAside() const
{
    constexpr int mostKept = 1000;
    for (int number = 1; number <= mostKept; ++number) {
        const QString name = QStringLiteral("%1.damaged-%2").arg(m_path).arg(number);
        // Renaming refuses a name that is taken.
        if (QFile::rename(m_path, name))
            return true;
        if (!QFileInfo::exists(name))
            return false;
    }
    return false;
}

void JsonUserDefaults::registerDefaults(const QVariantMap &values)
{
    m_registered.insert(values);
}

bool JsonUserDefaults::boolForKey(const QString &key) const
{
    return DefaultsValue::toBool(objectForKey(key));
}

double JsonUserDefaults::doubleForKey(const QString &key) const
{
    return DefaultsValue::toDouble(objectForKey(key));
}

qint64 JsonUserDefaults::integerForKey(const QString &key) const
{
    return DefaultsValue::toInteger(objectForKey(key));
}

std::optional<QString> JsonUserDefaults::stringForKey(const QString &key) const
{
    return DefaultsValue::toString(objectForKey(key));
}

std::optional<QStringList> JsonUserDefaults::stringArrayForKey(const QString &key) const
{
    return DefaultsValue::toStringList(objectForKey(key));
}

QVariant JsonUserDefaults::objectForKey(const QString &key) const
{
    const auto stored = m_stored.constFind(key);
    return stored != m_stored.constEnd() ? fromJson(*stored) : m_registered.value(key);
}

void JsonUserDefaults::setBool(const QString &key, bool value)
{
    store(key, value);
}

void JsonUserDefaults::setDouble(const QString &key, double value)
{
    store(key, value);
}

void JsonUserDefaults::setInteger(const QString &key, qint64 value)
{
    store(key, toJson(value));
}

void JsonUserDefaults::setObject(const QString &key, const QVariant &value)
{
    store(key, toJson(value));
}

void JsonUserDefaults::store(const QString &key, const QJsonValue &value)
{
    m_stored.insert(key, value);
    m_hasUnwritten = true;
    // A write that failed is tried again with the next change, and at the end.
    if (!m_write.isPending())
        m_write = m_scheduler.after(writeDelay, [this] { flush(); });
}

void JsonUserDefaults::flush()
{
    if (m_isWritable && m_hasUnwritten)
        m_hasUnwritten = Files::writeAtomically(m_path, Json::encode(m_stored)).has_value();
}

} // namespace brindle
