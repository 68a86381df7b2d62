#include "activities/ActivityCoding.h"

#include <gmock/gmock.h>

namespace brindle {
namespace {

const SystemActivity sound{QUuid::fromString(u"{67c8770b-44f1-410a-ab9a-f9b5446f13ee}"),
    ActivityType::systemControl, ActivityPriority::systemControl, Date::fromReferenceSeconds(60), 1.45,
    {QStringLiteral("Sound"), std::nullopt, QStringLiteral("speaker.wave.3.fill"), 0.5}};

TEST(ActivityCoding, UsesTheNamesOfTheFields)
{
    const QJsonObject expected{
        {QStringLiteral("id"), QStringLiteral("67C8770B-44F1-410A-AB9A-F9B5446F13EE")},
        {QStringLiteral("type"), QStringLiteral("systemControl")},
        {QStringLiteral("priority"), 35},
        {QStringLiteral("createdAt"), QStringLiteral("2001-01-01T00:01:00Z")},
        {QStringLiteral("duration"), 1.45},
        {QStringLiteral("content"),
            QJsonObject{{QStringLiteral("title"), QStringLiteral("Sound")},
                {QStringLiteral("symbol"), QStringLiteral("speaker.wave.3.fill")},
                {QStringLiteral("progress"), 0.5}}},
    };
    EXPECT_EQ(toJson(sound), expected);
}

TEST(ActivityCoding, ReadsBackEveryTypeAndPriority)
{
    const std::pair<ActivityType, ActivityPriority> kinds[]{
        {ActivityType::critical, ActivityPriority::critical},
        {ActivityType::peripheral, ActivityPriority::peripheral},
        {ActivityType::charging, ActivityPriority::charging},
        {ActivityType::systemControl, ActivityPriority::systemControl},
        {ActivityType::media, ActivityPriority::media},
        {ActivityType::idle, ActivityPriority::idle},
    };
    for (const auto &[type, priority] : kinds) {
        SystemActivity activity = sound;
        activity.type = type;
        activity.priority = priority;
        activity.content.detail = QStringLiteral("Connected");
        activity.content.progress = std::nullopt;
        EXPECT_EQ(systemActivity(toJson(activity)), activity);
    }
}

TEST(ActivityCoding, HasTheRanksOfTheTable)
{
    EXPECT_EQ(int(ActivityPriority::idle), 0);
    EXPECT_EQ(int(ActivityPriority::media), 10);
    EXPECT_EQ(int(ActivityPriority::charging), 20);
    EXPECT_EQ(int(ActivityPriority::peripheral), 30);
    EXPECT_EQ(int(ActivityPriority::systemControl), 35);
    EXPECT_EQ(int(ActivityPriority::critical), 40);
}

TEST(ActivityCoding, AMissingOrWrongValueGivesNothing)
{
    const QJsonObject whole = toJson(sound);
    for (const QString &key : whole.keys()) {
        QJsonObject without = whole;
        without.remove(key);
        EXPECT_EQ(systemActivity(without), std::nullopt) << key.toStdString();
        QJsonObject wrong = whole;
        wrong[key] = true;
        EXPECT_EQ(systemActivity(wrong), std::nullopt) << key.toStdString();
    }
    for (const auto &[key, value] : {std::pair(QStringLiteral("type"), QJsonValue(QStringLiteral("other"))),
             std::pair(QStringLiteral("priority"), QJsonValue(31)),
             std::pair(QStringLiteral("createdAt"), QJsonValue(QStringLiteral("2001-01-01T00:01:00.5Z")))}) {
        QJsonObject wrong = whole;
        wrong[key] = value;
        EXPECT_EQ(systemActivity(wrong), std::nullopt) << key.toStdString();
    }
}

TEST(ActivityCoding, AnAbsentValueMayAlsoBeNull)
{
    QJsonObject object = toJson(sound);
    QJsonObject content = object[u"content"].toObject();
    content[u"detail"] = QJsonValue();
    content[u"progress"] = QJsonValue();
    object[u"content"] = content;
    SystemActivity expected = sound;
    expected.content.progress = std::nullopt;
    EXPECT_EQ(systemActivity(object), expected);
}

} // namespace
} // namespace brindle
