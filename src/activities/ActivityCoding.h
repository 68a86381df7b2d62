#pragma once

#include "activities/SystemActivity.h"

#include <QJsonObject>

#include <optional>

namespace brindle {

/// Activities as JSON, under the names of their fields. The type is its name, the priority its rank; what is
/// absent has no key. Reading gives nothing when a key is missing or has a value of the wrong kind.
QJsonObject toJson(const SystemActivity &activity);
std::optional<SystemActivity> systemActivity(const QJsonObject &object);

QString nameOf(ActivityType type);

} // namespace brindle
