#include "activities/ActivityCoding.h"

#include "foundation/Json.h"

#include <algorithm>
#include <array>

namespace brindle {

namespace {

const QString idKey = QStringLiteral("id");
const QString typeKey = QStringLiteral("type");
const QString priorityKey = QStringLiteral("priority");
const QString createdAtKey = QStringLiteral("createdAt");
const QString durationKey = QStringLiteral("duration");
const QString contentKey = QStringLiteral("content");
const QString titleKey = QStringLiteral("title");
const QString detailKey = QStringLiteral("detail");
const QString symbolKey = QStringLiteral("symbol");
const QString progressKey = QStringLiteral("progress");

constexpr std::array types{ActivityType::critical, ActivityType::peripheral, ActivityType::charging,
    ActivityType::systemControl, ActivityType::media, ActivityType::idle};
constexpr std::array priorities{ActivityPriority::idle, ActivityPriority::media, ActivityPriority::charging,
    ActivityPriority::peripheral, ActivityPriority::systemControl, ActivityPriority::critical};

QJsonObject toJson(const ActivityContent &content)
{
    QJsonObject object{{titleKey, content.title}, {symbolKey, content.symbol}};
    if (content.detail)
        object.insert(detailKey, *content.detail);
    if (content.progress)
        object.insert(progressKey, *content.progress);
    return object;
}

std::optional<ActivityContent> activityContent(const QJsonObject &object)
{
    const QJsonValue title = object.value(titleKey);
    const QJsonValue detail = object.value(detailKey);
    const QJsonValue symbol = object.value(symbolKey);
    const QJsonValue progress = object.value(progressKey);
    const auto isAbsent = [](const QJsonValue &value) { return value.isUndefined() || value.isNull(); };
    if (!title.isString() || !symbol.isString() || !(detail.isString() || isAbsent(detail))
        || !(progress.isDouble() || isAbsent(progress)))
        return std::nullopt;
    ActivityContent content{title.toString(), std::nullopt, symbol.toString(), std::nullopt};
    if (detail.isString())
        content.detail = detail.toString();
    if (progress.isDouble())
        content.progress = progress.toDouble();
    return content;
}

} // namespace

QString nameOf(ActivityType type)
{
    switch (type) {
    case ActivityType::critical:
        return QStringLiteral("critical");
    case ActivityType::peripheral:
        return QStringLiteral("peripheral");
    case ActivityType::charging:
        return QStringLiteral("charging");
    case ActivityType::systemControl:
        return QStringLiteral("systemControl");
    case ActivityType::media:
        return QStringLiteral("media");
    case ActivityType::idle:
        return QStringLiteral("idle");
    }
    Q_UNREACHABLE();
}

QJsonObject toJson(const SystemActivity &activity)
{
    return {
        {idKey, Json::identifierText(activity.id)},
        {typeKey, nameOf(activity.type)},
        {priorityKey, int(activity.priority)},
        {createdAtKey, Json::dateText(activity.createdAt)},
        {durationKey, activity.duration},
        {contentKey, toJson(activity.content)},
    };
}

std::optional<SystemActivity> systemActivity(const QJsonObject &object)
{
    const auto id = Json::identifier(object.value(idKey).toString());
    const auto type = std::ranges::find(types, object.value(typeKey).toString(), nameOf);
    const auto priority = std::ranges::find(priorities, object.value(priorityKey).toDouble(-1),
        [](ActivityPriority rank) { return double(rank); });
    const auto createdAt = Json::date(object.value(createdAtKey).toString());
    const QJsonValue duration = object.value(durationKey);
    const auto content = activityContent(object.value(contentKey).toObject());
    if (!id || type == types.end() || priority == priorities.end() || !createdAt || !duration.isDouble()
        || !content)
        return std::nullopt;
    return SystemActivity{*id, *type, *priority, *createdAt, duration.toDouble(), *content};
}

} // namespace brindle
