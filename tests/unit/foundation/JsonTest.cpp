#include "foundation/Json.h"

#include <QJsonArray>

#include <gmock/gmock.h>

namespace brindle {
namespace {

std::optional<double> seconds(const char *text)
{
    const auto date = Json::date(QString::fromLatin1(text));
    return date ? std::optional(date->secondsSince1970()) : std::nullopt;
}

TEST(Json, IsPrettyPrintedWithSortedKeys)
{
    const QJsonObject object{
        {QStringLiteral("b"), 1}, {QStringLiteral("a"), QJsonArray{QStringLiteral("x")}}};
    EXPECT_EQ(Json::encode(object), "{\n    \"a\": [\n        \"x\"\n    ],\n    \"b\": 1\n}\n");
    EXPECT_EQ(Json::encode(QJsonArray{1}), "[\n    1\n]\n");
}

TEST(Json, IsReadBackAsItWas)
{
    const QJsonObject object{{QStringLiteral("n"), 0.1}, {QStringLiteral("t"), QStringLiteral("ü\"\n")}};
    EXPECT_EQ(Json::decodeObject(Json::encode(object)), object);
    EXPECT_EQ(Json::decodeArray(Json::encode(QJsonArray{object})), QJsonArray{object});
}

TEST(Json, ThatIsDamagedOrOfAnotherKindIsAbsent)
{
    for (const QByteArray text : {"", "{", "{\"a\":}", "[1]", "1", "{} x"})
        EXPECT_EQ(Json::decodeObject(text), std::nullopt) << text.toStdString();
    for (const QByteArray text : {"", "[", "{}", "[1,]"})
        EXPECT_EQ(Json::decodeArray(text), std::nullopt) << text.toStdString();
}

TEST(JsonDate, IsWrittenInWholeSecondsOfUniversalTime)
{
    EXPECT_EQ(Json::dateText(Date::fromSecondsSince1970(0)), u"1970-01-01T00:00:00Z");
    EXPECT_EQ(Json::dateText(Date::fromReferenceSeconds(0)), u"2001-01-01T00:00:00Z");
    EXPECT_EQ(Json::dateText(Date::fromSecondsSince1970(1795249530.999)), u"2026-11-21T08:25:30Z");
    EXPECT_EQ(Json::dateText(Date::fromSecondsSince1970(-0.5)), u"1969-12-31T23:59:59Z");
}

TEST(JsonDate, BeyondTheCalendarIsWrittenAsItsEnd)
{
    EXPECT_EQ(Json::dateText(Date::distantPast()), u"0001-01-01T00:00:00Z");
    EXPECT_EQ(Json::dateText(Date::fromSecondsSince1970(1e15)), u"9999-12-31T23:59:59Z");
}

TEST(JsonDate, IsReadBackToTheSecond)
{
    for (const double moment : {0.0, 1795249530.0, -62135596800.0, 253402300799.0})
        EXPECT_EQ(Json::date(Json::dateText(Date::fromSecondsSince1970(moment))),
            Date::fromSecondsSince1970(moment));
}

TEST(JsonDate, MayHaveAnOffset)
{
    EXPECT_EQ(seconds("1970-01-01T02:00:00+02:00"), 0);
    EXPECT_EQ(seconds("1969-12-31T18:30:00-05:30"), 0);
}

TEST(JsonDate, WithAFractionIsRefused)
{
    EXPECT_EQ(seconds("2026-11-21T08:25:30.5Z"), std::nullopt);
    EXPECT_EQ(seconds("2026-11-21T08:25:30.000Z"), std::nullopt);
    EXPECT_EQ(seconds("2026-11-21T08:25:30,5Z"), std::nullopt);
}

TEST(JsonDate, ThatIsNoneIsRefused)
{
    for (const char *text : {"", "2026-11-21", "2026-11-21T08:25:30", "2026-11-21 08:25:30Z",
             "2026-02-30T08:25:30Z", "2026-11-21T08:25Z", "2026-11-21T25:25:30Z", "2026-11-21T08:25:30Zx",
             " 2026-11-21T08:25:30Z", "2026-11-21T08:25:30Z\n", "20261121T082530Z"})
        EXPECT_EQ(seconds(text), std::nullopt) << text;
}

TEST(JsonIdentifier, IsUpperCaseTextWithoutBraces)
{
    const QUuid identifier = QUuid::fromString(u"{67c8770b-44f1-410a-ab9a-f9b5446f13ee}");
    EXPECT_EQ(Json::identifierText(identifier), u"67C8770B-44F1-410A-AB9A-F9B5446F13EE");
    EXPECT_EQ(Json::identifier(Json::identifierText(identifier)), identifier);
    EXPECT_EQ(Json::identifier(QStringLiteral("67c8770b-44f1-410a-ab9a-f9b5446f13ee")), identifier);
}

TEST(JsonIdentifier, ThatIsNoneIsAbsent)
{
    for (const auto &text :
        {QString(), QStringLiteral("x"), QStringLiteral("{67C8770B-44F1-410A-AB9A-F9B5446F13EE}"),
            QStringLiteral("67C8770B-44F1-410A-AB9A-F9B5446F13EE0"),
            QStringLiteral("67C8770B44F1410AAB9AF9B5446F13EE")})
        EXPECT_EQ(Json::identifier(text), std::nullopt) << text.toStdString();
}

} // namespace
} // namespace brindle
