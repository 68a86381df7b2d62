#include "adapter/linux/LineComposer.h"

#include <QJsonDocument>

#include <gmock/gmock.h>

namespace brindle::adapter {
namespace {

using namespace Qt::StringLiterals;

const Date start = Date::fromSecondsSince1970(1795248930.25);

Payload song(quint64 player = 1)
{
    Payload payload;
    payload.player = player;
    payload.fields = {{u"title"_s, u"Song"_s}, {u"artist"_s, u"Ann"_s}, {u"playing"_s, true}};
    payload.position = {{12, start}, 1};
    payload.artwork = "cGljdHVyZQ==";
    return payload;
}

/// Composes lines one after the other, and merges them as their reader does.
class LineComposerTest : public testing::Test
{
protected:
    /// The line for `payload`; empty when there is none.
    QJsonObject tell(const Payload &payload)
    {
        const auto parts = m_composer.compose(payload);
        m_composer.told(payload);
        if (!parts)
            return {};
        const QByteArray line = parts->join();
        EXPECT_TRUE(line.endsWith('\n'));
        EXPECT_EQ(line.count('\n'), 1);
        const auto object = QJsonDocument::fromJson(line).object();
        merge(object);
        return object;
    }

    QJsonObject merged;

private:
    void merge(const QJsonObject &line)
    {
        const auto payload = line.value(u"payload").toObject();
        if (!line.value(u"diff").toBool() || payload.isEmpty())
            merged = {};
        for (auto field = payload.begin(); field != payload.end(); ++field) {
            if (field.value().isNull())
                merged.remove(field.key());
            else
                merged.insert(field.key(), field.value());
        }
    }

    LineComposer m_composer;
};

TEST_F(LineComposerTest, TheFirstLineTellsAll)
{
    const QJsonObject line = tell(song());
    EXPECT_EQ(line.value(u"diff"), false);
    EXPECT_EQ(line.value(u"payload").toObject(),
        (QJsonObject{{u"title"_s, u"Song"_s}, {u"artist"_s, u"Ann"_s}, {u"playing"_s, true},
            {u"elapsedTime"_s, 12}, {u"timestamp"_s, u"2026-11-21T08:15:30.250Z"_s},
            {u"artworkData"_s, u"cGljdHVyZQ=="_s}}));
}

TEST_F(LineComposerTest, WithoutAPlayerTheLineIsEmpty)
{
    tell(song());
    const QJsonObject line = tell({});
    EXPECT_EQ(line.value(u"diff"), false);
    EXPECT_EQ(line.value(u"payload"), QJsonObject());
    EXPECT_EQ(merged, QJsonObject());
}

TEST_F(LineComposerTest, APictureAloneMakesAWholeLineToo)
{
    Payload payload;
    payload.player = 1;
    payload.artwork = "QQ==";
    EXPECT_EQ(tell(payload).value(u"payload").toObject(), (QJsonObject{{u"artworkData"_s, u"QQ=="_s}}));
}

TEST_F(LineComposerTest, AChangeIsToldAlone)
{
    tell(song());
    Payload changed = song();
    changed.fields.insert(u"title"_s, u"Other"_s);
    const QJsonObject line = tell(changed);
    EXPECT_EQ(line.value(u"diff"), true);
    EXPECT_EQ(line.value(u"payload").toObject(), (QJsonObject{{u"title"_s, u"Other"_s}}));
}

TEST_F(LineComposerTest, WhatIsGoneIsToldAsNull)
{
    tell(song());
    Payload changed = song();
    changed.fields.remove(u"artist"_s);
    changed.position.reset();
    changed.artwork.clear();
    EXPECT_EQ(tell(changed).value(u"payload").toObject(),
        (QJsonObject{{u"artist"_s, QJsonValue::Null}, {u"elapsedTime"_s, QJsonValue::Null},
            {u"timestamp"_s, QJsonValue::Null}, {u"artworkData"_s, QJsonValue::Null}}));
    EXPECT_EQ(merged, (QJsonObject{{u"title"_s, u"Song"_s}, {u"playing"_s, true}}));
}

TEST_F(LineComposerTest, WithoutAChangeThereIsNoLine)
{
    tell(song());
    EXPECT_EQ(tell(song()), QJsonObject());
}

TEST_F(LineComposerTest, APositionThatOnlyRunsOnIsNoChange)
{
    tell(song());
    Payload later = song();
    later.position->anchor = {13, start + 1};
    EXPECT_EQ(tell(later), QJsonObject());
    later.position->course = 2;
    EXPECT_EQ(tell(later).value(u"payload").toObject(),
        (QJsonObject{{u"elapsedTime"_s, 13}, {u"timestamp"_s, u"2026-11-21T08:15:31.250Z"_s}}));
}

TEST_F(LineComposerTest, TheSamePictureIsNotToldTwice)
{
    tell(song());
    Payload changed = song();
    changed.fields.insert(u"title"_s, u"Next of the album"_s);
    EXPECT_FALSE(tell(changed).value(u"payload").toObject().contains(u"artworkData"));
    changed.artwork = "b3RoZXI=";
    EXPECT_EQ(tell(changed).value(u"payload").toObject(), (QJsonObject{{u"artworkData"_s, u"b3RoZXI="_s}}));
}

TEST_F(LineComposerTest, AnotherPlayerIsToldWhole)
{
    tell(song(1));
    const QJsonObject line = tell(song(2));
    EXPECT_EQ(line.value(u"diff"), false);
    EXPECT_TRUE(line.value(u"payload").toObject().contains(u"artworkData"));
}

TEST_F(LineComposerTest, AnyTextComesThroughUnharmed)
{
    Payload payload = song();
    const QString title = u"\"quoted\" \\ line\nfeed \t \u2028 😀 \u0001"_s;
    payload.fields.insert(u"title"_s, title);
    tell(payload);
    EXPECT_EQ(merged.value(u"title").toString(), title);
}

TEST_F(LineComposerTest, APictureIsNotCopiedIntoItsLine)
{
    LineComposer composer;
    Payload payload = song();
    payload.artwork = QByteArray(20'000'000, 'A');
    const auto parts = composer.compose(payload);
    ASSERT_TRUE(parts);
    EXPECT_TRUE(std::any_of(parts->cbegin(), parts->cend(),
        [&payload](const QByteArray &part) { return part.constData() == payload.artwork.constData(); }));
}

} // namespace
} // namespace brindle::adapter
