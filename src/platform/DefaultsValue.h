#pragma once

#include <QStringList>
#include <QVariant>

#include <optional>

namespace brindle {

/// How a stored value reads as each type: every implementation of `UserDefaults` reads alike through these.
namespace DefaultsValue {
bool toBool(const QVariant &value);
double toDouble(const QVariant &value);
qint64 toInteger(const QVariant &value);
std::optional<QString> toString(const QVariant &value);
std::optional<QStringList> toStringList(const QVariant &value);
} // namespace DefaultsValue

} // namespace brindle
