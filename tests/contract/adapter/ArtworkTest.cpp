#include "contract/adapter/AdapterStream.h"
#include "contract/adapter/ScriptedPlayer.h"
#include "support/dbus/PrivateBus.h"
#include "support/http/LoopbackServer.h"

#include <QFile>
#include <QTemporaryDir>

#include <gmock/gmock.h>

namespace brindle::test {
namespace {

using namespace Qt::StringLiterals;
using testing::IsEmpty;
using testing::SizeIs;

class AdapterArtwork : public testing::Test
{
protected:
    AdapterArtwork()
    {
        player.appearPlaying(u"Song"_s);
        stream.waitForTitle(u"Song"_s);
    }

    QString file(const QString &name, const QByteArray &bytes) const
    {
        QFile made(m_folder.filePath(name));
        EXPECT_TRUE(made.open(QIODevice::WriteOnly) && made.write(bytes) == bytes.size());
        return u"file://"_s + made.fileName();
    }
    void show(const QString &title, const QString &address)
    {
        QVariantMap metadata = track(title);
        metadata.insert(u"mpris:artUrl"_s, address);
        player.setMetadata(metadata);
    }
    bool hasPicture(const QByteArray &bytes) const
    {
        return stream.state().artwork.fingerprint == fingerprint(bytes);
    }
    bool waitForPicture(const QByteArray &bytes) const
    {
        return stream.waitFor(
            [this, wanted = fingerprint(bytes)] { return stream.state().artwork.fingerprint == wanted; });
    }
    static std::optional<quint64> fingerprint(const QByteArray &bytes)
    {
        return decodeArtwork(bytes.toBase64()).fingerprint;
    }
    /// How many lines told of a picture.
    qsizetype told() const
    {
        return std::count_if(stream.lines.begin(), stream.lines.end(), [](const QJsonObject &line) {
            return line.value(u"payload").toObject().contains(u"artworkData");
        });
    }

    PrivateBus bus;
    LoopbackServer server;
    ScriptedPlayer player{bus, u"music"_s};
    AdapterStream stream{bus};

private:
    QTemporaryDir m_folder;
};

TEST_F(AdapterArtwork, OfAFileComesWithItsTrack)
{
    show(u"Painted"_s, file(u"cover.png"_s, "picture"));
    ASSERT_TRUE(stream.waitForTitle(u"Painted"_s));
    EXPECT_TRUE(hasPicture("picture"));
}

TEST_F(AdapterArtwork, IsInTheFirstLine)
{
    show(u"Painted"_s, file(u"cover.png"_s, "picture"));
    AdapterStream late(bus);
    ASSERT_TRUE(late.waitForFirstLine());
    EXPECT_EQ(late.lines.front().value(u"payload").toObject().value(u"artworkData"),
        QString::fromLatin1(QByteArray("picture").toBase64()));
}

TEST_F(AdapterArtwork, InADataAddressComesWithItsTrack)
{
    show(u"Painted"_s, u"data:image/png;base64,cGljdHVyZQ=="_s);
    ASSERT_TRUE(stream.waitForTitle(u"Painted"_s));
    EXPECT_TRUE(hasPicture("picture"));
}

TEST_F(AdapterArtwork, OfARemoteAddressIsFetched)
{
    server.serve(u"/cover.png"_s, {"picture"});
    show(u"Painted"_s, server.url(u"/cover.png"_s).toString());
    EXPECT_TRUE(waitForPicture("picture"));
    EXPECT_EQ(stream.title(), u"Painted");
}

TEST_F(AdapterArtwork, BehindARedirectionIsFetched)
{
    server.serve(u"/cover.png"_s, {"", "302 Found", {"Location: /other.png"}});
    server.serve(u"/other.png"_s, {"picture"});
    show(u"Painted"_s, server.url(u"/cover.png"_s).toString());
    EXPECT_TRUE(waitForPicture("picture"));
}

TEST_F(AdapterArtwork, IsNotToldTwiceWhileItStaysTheSame)
{
    show(u"One"_s, file(u"one.png"_s, "picture"));
    ASSERT_TRUE(waitForPicture("picture"));
    show(u"Two"_s, file(u"two.png"_s, "picture"));
    ASSERT_TRUE(stream.waitForTitle(u"Two"_s));
    EXPECT_TRUE(hasPicture("picture"));
    player.setStatus(u"Paused"_s);
    ASSERT_TRUE(stream.waitFor([this] { return !stream.isPlaying(); }));
    EXPECT_EQ(told(), 1);
}

TEST_F(AdapterArtwork, AnotherPictureInTheSameFileIsTold)
{
    show(u"One"_s, file(u"cover.png"_s, "picture"));
    ASSERT_TRUE(waitForPicture("picture"));
    show(u"Two"_s, file(u"cover.png"_s, "another"));
    EXPECT_TRUE(waitForPicture("another"));
}

TEST_F(AdapterArtwork, IsGoneWhenTheNextTrackHasNone)
{
    show(u"One"_s, file(u"cover.png"_s, "picture"));
    ASSERT_TRUE(waitForPicture("picture"));
    player.play(u"Two"_s);
    ASSERT_TRUE(stream.waitForTitle(u"Two"_s));
    EXPECT_EQ(stream.state().artwork.fingerprint, std::nullopt);
}

TEST_F(AdapterArtwork, AnAddressIsNotFetchedTwice)
{
    server.serve(u"/one.png"_s, {"one"});
    server.serve(u"/two.png"_s, {"two"});
    for (const auto &name : {u"one"_s, u"two"_s, u"one"_s}) {
        show(name, server.url(u"/%1.png"_s.arg(name)).toString());
        ASSERT_TRUE(waitForPicture(name.toLatin1()));
    }
    EXPECT_THAT(server.requests, SizeIs(2));
}

TEST_F(AdapterArtwork, AServerThatFailsLeavesTheTrackWithoutOne)
{
    server.serve(u"/there.png"_s, {"picture"});
    show(u"Nowhere"_s, server.url(u"/missing.png"_s).toString());
    ASSERT_TRUE(stream.waitFor([this] { return server.closed == 1; }));
    show(u"Painted"_s, server.url(u"/there.png"_s).toString());
    ASSERT_TRUE(waitForPicture("picture"));
    EXPECT_EQ(told(), 1);
}

TEST_F(AdapterArtwork, AServerThatHangsHoldsUpNeitherTheTrackNorTheNextPicture)
{
    server.serve(u"/slow.png"_s, {.body = "pict", .hangs = true});
    server.serve(u"/there.png"_s, {"picture"});
    show(u"Slow"_s, server.url(u"/slow.png"_s).toString());
    ASSERT_TRUE(stream.waitForTitle(u"Slow"_s));
    ASSERT_TRUE(stream.waitFor([this] { return server.requests.size() == 1; }));
    EXPECT_EQ(stream.state().artwork.fingerprint, std::nullopt);
    show(u"Painted"_s, server.url(u"/there.png"_s).toString());
    EXPECT_TRUE(waitForPicture("picture"));
    // The one that nobody wants any more was given up.
    EXPECT_TRUE(stream.waitFor([this] { return server.closed == 2; }));
}

TEST_F(AdapterArtwork, WhatIsTooLargeIsGivenUp)
{
    server.serve(u"/large.png"_s, {.body = QByteArray(qsizetype(17) * 1024 * 1024, 'x'), .hangs = true});
    show(u"Large"_s, server.url(u"/large.png"_s).toString());
    EXPECT_TRUE(stream.waitFor([this] { return server.closed == 1; }));
    EXPECT_EQ(stream.state().artwork.fingerprint, std::nullopt);
}

TEST_F(AdapterArtwork, ALargePictureComesWhole)
{
    const QByteArray picture(qsizetype(15) * 1024 * 1024, 'x');
    show(u"Large"_s, file(u"large.png"_s, picture));
    ASSERT_TRUE(waitForPicture(picture));
    EXPECT_EQ(stream.title(), u"Large");
}

TEST_F(AdapterArtwork, OfASchemeThatIsNotKnownIsNone)
{
    for (const auto &address : {u"ftp://127.0.0.1/a.png"_s, u"file://elsewhere/a.png"_s,
             u"file:///dev/zero"_s, u"javascript:1"_s, u"\u0001"_s}) {
        show(address, address);
        ASSERT_TRUE(stream.waitForTitle(address));
    }
    EXPECT_EQ(told(), 0);
}

TEST_F(AdapterArtwork, OfAPlayerThatIsNotFollowedIsNotFetched)
{
    server.serve(u"/cover.png"_s, {"picture"});
    ScriptedPlayer idle(bus, u"idle"_s);
    QVariantMap metadata = track(u"Idle"_s);
    metadata.insert(u"mpris:artUrl"_s, server.url(u"/cover.png"_s).toString());
    idle.properties.insert(u"Metadata"_s, metadata);
    idle.appear();
    player.play(u"Other"_s);
    ASSERT_TRUE(stream.waitForTitle(u"Other"_s));
    EXPECT_THAT(server.requests, IsEmpty());
    player.quit();
    EXPECT_TRUE(waitForPicture("picture"));
}

} // namespace
} // namespace brindle::test
