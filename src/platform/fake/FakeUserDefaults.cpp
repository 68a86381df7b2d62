#include "platform/fake/FakeUserDefaults.h"

#include "platform/DefaultsValue.h"

namespace brindle {

void FakeUserDefaults::registerDefaults(const QVariantMap &values)
{
    registered.insert(values);
}

bool FakeUserDefaults::boolForKey(const QString &key) const
{
    return DefaultsValue::toBool(objectForKey(key));
}

double FakeUserDefaults::doubleForKey(const QString &key) const
{
    return DefaultsValue::toDouble(objectForKey(key));
}

qint64 FakeUserDefaults::integerForKey(const QString &key) const
{
    return DefaultsValue::toInteger(objectForKey(key));
}

std::optional<QString> FakeUserDefaults::stringForKey(const QString &key) const
{
    return DefaultsValue::toString(objectForKey(key));
}

std::optional<QStringList> FakeUserDefaults::stringArrayForKey(const QString &key) const
{
    return DefaultsValue::toStringList(objectForKey(key));
}

QVariant FakeUserDefaults::objectForKey(const QString &key) const
{
    return stored.value(key, registered.value(key));
}

} // namespace brindle
