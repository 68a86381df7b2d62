#include "media/MediaPayload.h"

#include <gtest/gtest.h>

namespace brindle {
namespace {

class MergedPayloadTest : public testing::Test
{
protected:
    /// What is under `key`, null when nothing is.
    QJsonValue field(const char *key) const
    {
        return merged.payload().fields.value(QString::fromLatin1(key));
    }
    qsizetype count() const { return merged.payload().fields.size(); }

    MergedPayload merged;
};

TEST_F(MergedPayloadTest, ALineWithoutDiffReplacesTheState)
{
    EXPECT_TRUE(merged.apply(R"({"payload": {"title": "A", "artist": "B"}})"));
    EXPECT_TRUE(merged.apply(R"({"payload": {"title": "C"}})"));
    EXPECT_EQ(field("title"), QStringLiteral("C"));
    EXPECT_EQ(count(), 1);
    EXPECT_TRUE(merged.apply(R"({"diff": false, "payload": {"album": "D"}})"));
    EXPECT_EQ(count(), 1);
}

TEST_F(MergedPayloadTest, ADiffChangesWhatItNames)
{
    merged.apply(R"({"payload": {"title": "A", "duration": 3, "more": [1, {"x": null}]}})");
    EXPECT_TRUE(merged.apply(R"({"diff": true, "payload": {"title": "B", "artist": "C"}})"));
    EXPECT_EQ(field("title"), QStringLiteral("B"));
    EXPECT_EQ(field("artist"), QStringLiteral("C"));
    EXPECT_EQ(field("duration"), 3);
    EXPECT_EQ(count(), 4);
}

TEST_F(MergedPayloadTest, ANullTakesAFieldAway)
{
    merged.apply(R"({"payload": {"title": "A", "artist": "B", "album": null}})");
    EXPECT_EQ(count(), 2);
    EXPECT_TRUE(merged.apply(R"({"diff": true, "payload": {"artist": null, "never": null}})"));
    EXPECT_EQ(field("title"), QStringLiteral("A"));
    EXPECT_EQ(count(), 1);
}

TEST_F(MergedPayloadTest, AnEmptyPayloadEmptiesTheStateWithDiffAndWithout)
{
    for (const char *line : {R"({"payload": {}})", R"({"diff": true, "payload": {}})"}) {
        merged.apply(R"({"payload": {"title": "A", "artworkData": "AAAA"}})");
        EXPECT_TRUE(merged.apply(line));
        EXPECT_EQ(count(), 0) << line;
        EXPECT_FALSE(merged.payload().artwork.fingerprint) << line;
    }
}

TEST_F(MergedPayloadTest, DiffCountsOnlyAsABoolean)
{
    for (const char *diff : {"1", "\"true\"", "null", "[]"}) {
        merged.apply(R"({"payload": {"title": "A"}})");
        const QByteArray line = QByteArray(R"({"diff": )") + diff + R"(, "payload": {"artist": "B"}})";
        EXPECT_TRUE(merged.apply(line));
        EXPECT_EQ(count(), 1) << diff;
    }
}

TEST_F(MergedPayloadTest, WhatIsNoLineLeavesTheStateAlone)
{
    merged.apply(R"({"payload": {"title": "A"}})");
    for (const char *line : {"", " ", "\r", "no json", "{", R"({"payload": {"title": "B"}} x)", "[]", "null",
             "\"payload\"", "12", "{}", R"({"diff": true})", R"({"payload": null})", R"({"payload": []})",
             R"({"payload": "title"})", R"([{"payload": {"title": "B"}}])", R"({"Payload": {"title": "B"}})",
             "{\"payload\": {\"title\": \"\xff\"}}"}) {
        EXPECT_FALSE(merged.apply(line)) << line;
        EXPECT_EQ(field("title"), QStringLiteral("A")) << line;
    }
}

TEST_F(MergedPayloadTest, ArtworkStaysUntilALineNamesItAgain)
{
    merged.apply(R"({"payload": {"title": "A", "artworkData": "AAAA"}})");
    const auto fingerprint = merged.payload().artwork.fingerprint;
    ASSERT_TRUE(fingerprint);
    merged.apply(R"({"diff": true, "payload": {"elapsedTime": 3}})");
    EXPECT_EQ(merged.payload().artwork.fingerprint, fingerprint);
    merged.apply(R"({"diff": true, "payload": {"artworkData": "BBBB"}})");
    EXPECT_NE(merged.payload().artwork.fingerprint, fingerprint);
    for (const char *gone : {"null", "7", "\"not Base64\""}) {
        merged.apply(R"({"diff": true, "payload": {"artworkData": "AAAA"}})");
        EXPECT_EQ(merged.payload().artwork.fingerprint, fingerprint);
        merged.apply(QByteArray(R"({"diff": true, "payload": {"artworkData": )") + gone + "}}");
        EXPECT_FALSE(merged.payload().artwork.fingerprint) << gone;
    }
}

TEST_F(MergedPayloadTest, ACopyDoesNotSeeALaterLine)
{
    merged.apply(R"({"payload": {"title": "A", "artworkData": "AAAA"}})");
    const MediaPayload copy = merged.payload();
    merged.apply(R"({"diff": true, "payload": {"title": "B", "artworkData": null}})");
    EXPECT_EQ(copy.fields.value(QStringLiteral("title")), QStringLiteral("A"));
    EXPECT_TRUE(copy.artwork.fingerprint);
}

} // namespace
} // namespace brindle
