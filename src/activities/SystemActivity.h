#pragma once

#include "foundation/Date.h"

#include <QObject>
#include <QString>
#include <QUuid>

#include <optional>

namespace brindle {

/// What kind of event an activity is. Stored as the case's name.
enum class ActivityType { critical, peripheral, charging, systemControl, media, idle };

/// The rank of an activity. The gap between `peripheral` and `critical` is meant for levels.
enum class ActivityPriority {
    idle = 0,
    media = 10,
    charging = 20,
    peripheral = 30,
    systemControl = 35,
    critical = 40,
};

struct ActivityContent
{
    QString title;
    std::optional<QString> detail;
    /// The name of a symbol.
    QString symbol;
    /// 0 to 1, for activities that show a level.
    std::optional<double> progress;

    bool operator==(const ActivityContent &) const = default;
};

/// One brief event with its rank. A plain value.
struct SystemActivity
{
    /// A poster may reuse one id for a family of events.
    QUuid id;
    ActivityType type = ActivityType::idle;
    ActivityPriority priority = ActivityPriority::idle;
    /// When it was posted. Stays as it is when the event is shown later.
    Date createdAt;
    /// Seconds on screen, as asked for; see `effectiveDuration()`.
    double duration = 0;
    ActivityContent content;

    /// Seconds that count: `duration`, but never below a tenth, so that no event is instant or endless.
    double effectiveDuration() const { return duration > 0.1 ? duration : 0.1; }

    bool operator==(const SystemActivity &) const = default;
};

} // namespace brindle
