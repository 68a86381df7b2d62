#pragma once

#include "foundation/Scheduler.h"
#include "platform/UserDefaults.h"

#include <QJsonObject>

namespace brindle {

/// Preferences in a JSON file that a person can read and mend.
///
/// A plain number there is a double, `{"integer": 1}` an integer, `{"date": "…"}` a date; what is none of the
/// known types is kept as it stands. A file that cannot be read as JSON is set aside under another name, and
/// where even that fails nothing is ever written. A burst of writes reaches the disk as one, a moment after
/// the first of them.
class JsonUserDefaults : public UserDefaults
{
public:
    /// `configurationFolder` is the user's folder for the configuration of all programs; it need not exist.
    JsonUserDefaults(const QString &configurationFolder, Scheduler &scheduler);
    ~JsonUserDefaults() override;
    JsonUserDefaults(const JsonUserDefaults &) = delete;
    JsonUserDefaults &operator=(const JsonUserDefaults &) = delete;

    void registerDefaults(const QVariantMap &values) override;
    bool boolForKey(const QString &key) const override;
    double doubleForKey(const QString &key) const override;
    qint64 integerForKey(const QString &key) const override;
    std::optional<QString> stringForKey(const QString &key) const override;
    std::optional<QStringList> stringArrayForKey(const QString &key) const override;
    QVariant objectForKey(const QString &key) const override;
    void setBool(const QString &key, bool value) override;
    void setDouble(const QString &key, double value) override;
    void setInteger(const QString &key, qint64 value) override;
    void setObject(const QString &key, const QVariant &value) override;

    QString path() const { return m_path; }

private:
    void load();
    bool setAside() const;
    void store(const QString &key, const QJsonValue &value);
    void flush();

    const QString m_path;
    Scheduler &m_scheduler;
    QVariantMap m_registered;
    QJsonObject m_stored;
    bool m_isWritable = true;
    bool m_hasUnwritten = false;
    Delay m_write;
};

} // namespace brindle
