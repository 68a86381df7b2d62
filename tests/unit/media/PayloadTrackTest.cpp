#include "media/PayloadTrack.h"

#include "platform/fake/FakeMedia.h"
#include "unit/media/Pictures.h"

#include <gmock/gmock.h>

namespace brindle {
namespace {

using testing::Optional;

class PayloadTrackTest : public testing::Test
{
protected:
    PayloadTrackTest()
    {
        workspace.install(QStringLiteral("org.example.player"), QStringLiteral("Player"));
        workspace.install(QStringLiteral("org.example.browser"), QStringLiteral("Browser"));
    }

    /// The track of a payload that has these fields.
    std::optional<NowPlayingTrack> trackOf(const QByteArray &fields) const
    {
        MergedPayload merged;
        EXPECT_TRUE(merged.apply("{\"payload\": {" + fields + "}}")) << fields.toStdString();
        return makeTrack(merged.payload(), workspace, now);
    }
    /// The same, with a title besides.
    NowPlayingTrack titled(const QByteArray &fields) const
    {
        return trackOf(R"("title": "Song", )" + fields).value_or(NowPlayingTrack());
    }

    FakeWorkspace workspace;
    const Date now = Date::fromSecondsSince1970(1'763'712'930);
};

/// Values that are none of the types that a text, a number or a flag could have.
const QByteArrayList strangers{"[]", "{}", R"(["A"])", "null"};

TEST_F(PayloadTrackTest, ATitleAloneMakesATrack)
{
    const auto track = trackOf(R"("title": "Song")");
    ASSERT_TRUE(track);
    EXPECT_EQ(track->title, QStringLiteral("Song"));
    EXPECT_FALSE(track->artist);
    EXPECT_FALSE(track->album);
    EXPECT_FALSE(track->duration);
    EXPECT_FALSE(track->elapsed);
    EXPECT_EQ(track->elapsedUpdatedAt, now);
    EXPECT_FALSE(track->isPlaying);
    EXPECT_EQ(track->playbackRate, 0);
    EXPECT_FALSE(track->artwork);
    EXPECT_FALSE(track->artworkFingerprint);
    EXPECT_FALSE(track->artworkURL);
    EXPECT_FALSE(track->sourceName);
    EXPECT_FALSE(track->sourceIcon);
    EXPECT_FALSE(track->sourceBundleIdentifier);
}

TEST_F(PayloadTrackTest, WithoutAUsableTitleThereIsNoTrack)
{
    EXPECT_FALSE(trackOf(R"("artist": "Someone")"));
    for (const QByteArray &title : strangers + QByteArrayList{"12", "true", "\"\""})
        EXPECT_FALSE(trackOf("\"title\": " + title)) << title.toStdString();
}

TEST_F(PayloadTrackTest, ATitleOfBlanksGivesNothing)
{
    EXPECT_FALSE(trackOf(R"("title": " \t\n\r\u00a0\u2003")"));
}

TEST_F(PayloadTrackTest, TheTitleKeepsItsBlanks)
{
    EXPECT_EQ(trackOf(R"("title": "  So\nng ")")->title, QStringLiteral("  So\nng "));
}

TEST_F(PayloadTrackTest, ArtistAndAlbumAreTexts)
{
    const NowPlayingTrack track = titled(R"("artist": "Someone", "album": "")");
    EXPECT_EQ(track.artist, QStringLiteral("Someone"));
    EXPECT_EQ(track.album, QString());
    for (const QByteArray &value : strangers + QByteArrayList{"3", "false"}) {
        EXPECT_FALSE(titled("\"artist\": " + value).artist) << value.toStdString();
        EXPECT_FALSE(titled("\"album\": " + value).album) << value.toStdString();
    }
}

TEST_F(PayloadTrackTest, ADurationIsAboveZero)
{
    EXPECT_THAT(titled(R"("duration": 215.5)").duration, Optional(215.5));
    EXPECT_FALSE(titled(R"("duration": 0)").duration);
    EXPECT_FALSE(titled(R"("duration": -1)").duration);
    for (const QByteArray &value : strangers + QByteArrayList{"true", "\"long\""})
        EXPECT_FALSE(titled("\"duration\": " + value).duration) << value.toStdString();
}

TEST_F(PayloadTrackTest, AnElapsedTimeOfZeroIsKept)
{
    EXPECT_THAT(titled(R"("elapsedTime": 0)").elapsed, Optional(0.0));
    EXPECT_THAT(titled(R"("elapsedTime": 61.25)").elapsed, Optional(61.25));
    EXPECT_FALSE(titled(R"("elapsedTime": -0.5)").elapsed);
    for (const QByteArray &value : strangers + QByteArrayList{"false", "\"\""})
        EXPECT_FALSE(titled("\"elapsedTime\": " + value).elapsed) << value.toStdString();
}

TEST_F(PayloadTrackTest, ATextThatIsANumberThroughoutCountsAsOne)
{
    const auto duration = [this](const QByteArray &text) {
        return titled("\"duration\": \"" + text + '"').duration;
    };
    EXPECT_THAT(duration("215.5"), Optional(215.5));
    EXPECT_THAT(duration("3"), Optional(3.0));
    EXPECT_THAT(duration("+3"), Optional(3.0));
    EXPECT_THAT(duration(".5"), Optional(0.5));
    EXPECT_THAT(duration("2."), Optional(2.0));
    EXPECT_THAT(duration("25e-1"), Optional(2.5));
    EXPECT_THAT(duration("0x1p4"), Optional(16.0));
    for (const char *text : {"", " 3", "\\n3", "\\u00a03", "3 ", "3\\n", "3s", "3,5", "1 000", "--3", "+",
             "e5", "3\\u0000", "\\u0663", "inf", "infinity", "nan", "1e999"})
        EXPECT_FALSE(duration(text)) << text;
}

TEST_F(PayloadTrackTest, PlayingIsABooleanOrANumber)
{
    EXPECT_TRUE(titled(R"("playing": true)").isPlaying);
    EXPECT_FALSE(titled(R"("playing": false)").isPlaying);
    EXPECT_TRUE(titled(R"("playing": 1)").isPlaying);
    EXPECT_TRUE(titled(R"("playing": -0.5)").isPlaying);
    EXPECT_FALSE(titled(R"("playing": 0)").isPlaying);
    EXPECT_TRUE(titled(R"("playing": "1")").isPlaying);
    EXPECT_FALSE(titled(R"("playing": "0", "playbackRate": 1)").isPlaying);
}

TEST_F(PayloadTrackTest, WithoutPlayingTheRateTells)
{
    EXPECT_TRUE(titled(R"("playbackRate": 0.5)").isPlaying);
    EXPECT_TRUE(titled(R"("playbackRate": "2")").isPlaying);
    EXPECT_FALSE(titled(R"("playbackRate": 0)").isPlaying);
    EXPECT_FALSE(titled(R"("playbackRate": -1)").isPlaying);
    for (const QByteArray &value : strangers + QByteArrayList{"\"yes\""}) {
        EXPECT_TRUE(titled("\"playing\": " + value + ", \"playbackRate\": 1").isPlaying)
            << value.toStdString();
        EXPECT_FALSE(titled("\"playing\": " + value).isPlaying) << value.toStdString();
    }
}

TEST_F(PayloadTrackTest, PlayingWinsOverTheRate)
{
    const NowPlayingTrack track = titled(R"("playing": false, "playbackRate": 1)");
    EXPECT_FALSE(track.isPlaying);
    EXPECT_EQ(track.playbackRate, 1);
}

TEST_F(PayloadTrackTest, AMissingRateFollowsFromPlaying)
{
    EXPECT_EQ(titled(R"("playing": true)").playbackRate, 1);
    EXPECT_EQ(titled(R"("playing": false)").playbackRate, 0);
    EXPECT_EQ(titled(R"("playing": true, "playbackRate": "fast")").playbackRate, 1);
    EXPECT_EQ(titled(R"("playing": true, "playbackRate": 0)").playbackRate, 0);
}

TEST_F(PayloadTrackTest, ATimestampIsReadWithAFractionAndWithout)
{
    const auto seconds = [this](const QByteArray &text) {
        return titled("\"timestamp\": \"" + text + '"').elapsedUpdatedAt.secondsSince1970();
    };
    EXPECT_DOUBLE_EQ(seconds("2025-11-21T08:15:30Z"), 1'763'712'930);
    EXPECT_DOUBLE_EQ(seconds("2025-11-21T08:15:30.250Z"), 1'763'712'930.25);
    EXPECT_DOUBLE_EQ(seconds("2025-11-21T08:15:30.5Z"), 1'763'712'930.5);
    EXPECT_NEAR(seconds("2025-11-21T08:15:30.123456789Z"), 1'763'712'930.123456, 1e-6);
    EXPECT_DOUBLE_EQ(seconds("2025-11-21T10:15:30+02:00"), 1'763'712'930);
    EXPECT_DOUBLE_EQ(seconds("2025-11-21T07:15:30.75-01:00"), 1'763'712'930.75);
}

TEST_F(PayloadTrackTest, ATimestampThatIsNoDateGivesThePresentTime)
{
    for (const char *value :
        {"\"yesterday\"", "\"\"", "\"2025-11-21\"", "\"2025-11-21 08:15:30Z\"", "\"2025-13-21T08:15:30Z\"",
            "\"2025-11-21T08:15:30.Z\"", "\"2025-11-21T08:15:30.5\"", "\"2025-11-21T08:15:30,5Z\"",
            "\"2025-11-21T08:15:3.50Z\"", "\"2025-11-21T08:15:30.5Z\\n\"", "1763712000", "true", "[]"})
        EXPECT_EQ(titled(QByteArray("\"timestamp\": ") + value).elapsedUpdatedAt, now) << value;
}

TEST_F(PayloadTrackTest, AnApplicationThatIsInstalledGivesNameAndIcon)
{
    const NowPlayingTrack track = titled(R"("bundleIdentifier": "org.example.player")");
    EXPECT_EQ(track.sourceBundleIdentifier, QStringLiteral("org.example.player"));
    EXPECT_EQ(track.sourceName, QStringLiteral("Player"));
    ASSERT_TRUE(track.sourceIcon);
    EXPECT_EQ(*track.sourceIcon, workspace.installed.value(QStringLiteral("org.example.player")).icon);
}

TEST_F(PayloadTrackTest, AnApplicationWithoutANameKeepsItsIcon)
{
    workspace.installed[QStringLiteral("org.example.player")].name.reset();
    const NowPlayingTrack track = titled(R"("bundleIdentifier": "org.example.player")");
    EXPECT_FALSE(track.sourceName);
    EXPECT_TRUE(track.sourceIcon);
}

TEST_F(PayloadTrackTest, AnUnknownApplicationKeepsItsIdentifierOnly)
{
    const NowPlayingTrack track = titled(R"("bundleIdentifier": "org.example.unknown")");
    EXPECT_EQ(track.sourceBundleIdentifier, QStringLiteral("org.example.unknown"));
    EXPECT_FALSE(track.sourceName);
    EXPECT_FALSE(track.sourceIcon);
}

TEST_F(PayloadTrackTest, TheParentApplicationWins)
{
    const auto source = [this](const QByteArray &parent) {
        return titled("\"parentApplicationBundleIdentifier\": " + parent
            + R"(, "bundleIdentifier": "org.example.player")");
    };
    EXPECT_EQ(
        source(R"("org.example.browser")").sourceBundleIdentifier, QStringLiteral("org.example.browser"));
    EXPECT_EQ(source(R"("org.example.browser")").sourceName, QStringLiteral("Browser"));
    for (const QByteArray &value : strangers + QByteArrayList{"1"})
        EXPECT_EQ(source(value).sourceBundleIdentifier, QStringLiteral("org.example.player"))
            << value.toStdString();
    EXPECT_FALSE(titled(R"("bundleIdentifier": 7)").sourceBundleIdentifier);
}

TEST_F(PayloadTrackTest, ArtworkGoesIntoTheTrackAsFarAsItCouldBeDecoded)
{
    const NowPlayingTrack noPicture = titled(R"("artworkData": "bm8gcGljdHVyZQ==")");
    EXPECT_FALSE(noPicture.artwork);
    EXPECT_TRUE(noPicture.artworkFingerprint);
    const QByteArray text = pictureFile({8, 4}).toBase64();
    const NowPlayingTrack picture = titled("\"artworkData\": \"\\n " + text + "\\n\"");
    ASSERT_TRUE(picture.artwork);
    EXPECT_EQ(picture.artwork->size(), QSize(8, 4));
    EXPECT_EQ(picture.artwork->pixelColor(3, 3), QColor(Qt::red));
    EXPECT_TRUE(picture.artworkFingerprint);
    const NowPlayingTrack neither = titled(R"("artworkData": "?")");
    EXPECT_FALSE(neither.artwork);
    EXPECT_FALSE(neither.artworkFingerprint);
}

} // namespace
} // namespace brindle
