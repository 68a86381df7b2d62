#pragma once

#include "platform/UserDefaults.h"

namespace brindle {

/// Preferences in memory. What is stored and what is registered can be looked at apart.
class FakeUserDefaults : public UserDefaults
{
public:
    QVariantMap stored;
    QVariantMap registered;

    void registerDefaults(const QVariantMap &values) override;
    bool boolForKey(const QString &key) const override;
    double doubleForKey(const QString &key) const override;
    qint64 integerForKey(const QString &key) const override;
    std::optional<QString> stringForKey(const QString &key) const override;
    std::optional<QStringList> stringArrayForKey(const QString &key) const override;
    QVariant objectForKey(const QString &key) const override;
    void setBool(const QString &key, bool value) override { stored[key] = value; }
    void setDouble(const QString &key, double value) override { stored[key] = value; }
    void setInteger(const QString &key, qint64 value) override { stored[key] = value; }
    void setObject(const QString &key, const QVariant &value) override { stored[key] = value; }
};

} // namespace brindle
