#pragma once

#include <QString>
#include <QStringList>
#include <QVariant>
#include <QVariantMap>

#include <optional>

namespace brindle {

/// The user's preferences: a persistent map from keys to booleans, integers, doubles, strings, string lists
/// and dates (`QDateTime` in a `QVariant`).
///
/// A read takes the stored value, else the registered one, else the type's zero; a stored value of the wrong
/// type reads as the type's zero (numbers and booleans convert into each other). Registered values are never
/// persisted. A write is seen by the next read at once and reaches the disk soon after, by itself; a failed
/// write leaves the value in memory. Main thread only. Nothing here fails.
class UserDefaults
{
public:
    virtual ~UserDefaults() = default;

    /// Adds fall-back values; a later registration of the same key replaces the earlier one.
    virtual void registerDefaults(const QVariantMap &values) = 0;

    virtual bool boolForKey(const QString &key) const = 0;
    virtual double doubleForKey(const QString &key) const = 0;
    virtual qint64 integerForKey(const QString &key) const = 0;
    /// Absent when nothing is stored or registered, or it is no string.
    virtual std::optional<QString> stringForKey(const QString &key) const = 0;
    /// Absent unless it is a list of strings only.
    virtual std::optional<QStringList> stringArrayForKey(const QString &key) const = 0;
    /// The stored or registered value as it is; an invalid variant when there is none.
    virtual QVariant objectForKey(const QString &key) const = 0;

    virtual void setBool(const QString &key, bool value) = 0;
    virtual void setDouble(const QString &key, double value) = 0;
    virtual void setInteger(const QString &key, qint64 value) = 0;
    /// A string, a string list or a date.
    virtual void setObject(const QString &key, const QVariant &value) = 0;
};

} // namespace brindle
