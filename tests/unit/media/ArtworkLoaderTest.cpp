#include "media/ArtworkLoader.h"

#include "media/ArtworkDecoding.h"
#include "platform/fake/FakePlatform.h"
#include "support/Session.h"

#include <QBuffer>
#include <QPainter>
#include <QSignalSpy>

#include <gmock/gmock.h>

namespace brindle {
namespace {

using testing::ElementsAre;

QImage picture(Qt::GlobalColor colour, QSize size = {8, 8})
{
    QImage image(size, QImage::Format_RGB32);
    image.fill(colour);
    return image;
}

QByteArray file(const QImage &image, const char *format = "PNG")
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, format);
    return bytes;
}

const QUrl first(QStringLiteral("https://example.org/first.png"));
const QUrl second(QStringLiteral("https://example.org/second.png"));

class ArtworkLoaderTest : public testing::Test
{
protected:
    static NowPlayingTrack song(const QString &title, const std::optional<QUrl> &url = {})
    {
        NowPlayingTrack track;
        track.title = title;
        track.artworkURL = url;
        return track;
    }
    void play(const std::optional<NowPlayingTrack> &track)
    {
        media.track = track;
        Q_EMIT media.nowPlayingChanged();
    }
    void turns()
    {
        for (int turn = 0; turn < 5; ++turn)
            platform.time.runPosted();
    }
    QColor shownColour() const { return loader.loadedArtwork().pixelColor(0, 0); }

    FakePlatform platform;
    ScriptedMedia media;
    ArtworkLoader loader{
        media, platform.network, platform.makeSerialQueue(QStringLiteral("Artwork")), platform.time};
    QSignalSpy changes{&loader, &ArtworkLoader::loadedArtworkChanged};
};

TEST_F(ArtworkLoaderTest, ATracksOwnPictureIsThereAtOnceAndNothingIsFetched)
{
    NowPlayingTrack track = song(QStringLiteral("A"), first);
    track.artwork = picture(Qt::red);
    play(track);
    EXPECT_EQ(shownColour(), Qt::red);
    EXPECT_EQ(loader.loadedArtworkID(), track.presentationID());
    turns();
    EXPECT_TRUE(platform.network.asked.isEmpty());
}

TEST_F(ArtworkLoaderTest, APictureAtAnAddressIsFetchedOnceForASong)
{
    platform.network.serve(first, file(picture(Qt::green)));
    NowPlayingTrack track = song(QStringLiteral("A"), first);
    play(track);
    EXPECT_TRUE(loader.loadedArtwork().isNull());
    turns();
    EXPECT_EQ(shownColour(), Qt::green);
    EXPECT_EQ(loader.loadedArtworkID(), track.presentationID());
    for (const bool isPlaying : {true, false}) {
        track.isPlaying = isPlaying;
        play(track);
        turns();
    }
    EXPECT_THAT(platform.network.asked, ElementsAre(first));
    EXPECT_EQ(changes.count(), 1);
}

TEST_F(ArtworkLoaderTest, TheSongThatPlaysAlreadyIsAttendedTo)
{
    media.track = song(QStringLiteral("A"), first);
    platform.network.serve(first, file(picture(Qt::green)));
    const ArtworkLoader late(
        media, platform.network, platform.makeSerialQueue(QStringLiteral("Late")), platform.time);
    turns();
    EXPECT_EQ(late.loadedArtworkID(), media.track->presentationID());
}

TEST_F(ArtworkLoaderTest, ASongChangeDuringTheFetchOfArtworkDiscardsTheOldImage)
{
    platform.network.serve(first, file(picture(Qt::green)));
    platform.network.hold();
    play(song(QStringLiteral("A"), first));
    play(song(QStringLiteral("B")));
    EXPECT_EQ(platform.network.underWay(), 0) << "the fetch is given up";
    platform.network.release();
    turns();
    EXPECT_TRUE(loader.loadedArtwork().isNull());
    EXPECT_FALSE(loader.loadedArtworkID());
}

TEST_F(ArtworkLoaderTest, ASongChangeWhileThePictureIsUnpackedDiscardsItToo)
{
    platform.network.serve(first, file(picture(Qt::green)));
    platform.network.serve(second, file(picture(Qt::blue)));
    FakeSerialQueue &decoder = *platform.queues.value(QStringLiteral("Artwork"));
    decoder.hold();
    play(song(QStringLiteral("A"), first));
    turns();
    ASSERT_EQ(decoder.waiting(), 1);
    play(song(QStringLiteral("B"), second));
    turns();
    decoder.release();
    turns();
    EXPECT_EQ(shownColour(), Qt::blue);
    EXPECT_EQ(changes.count(), 1) << "the old picture was never shown";
}

TEST_F(ArtworkLoaderTest, APictureGoesWithItsSong)
{
    platform.network.serve(first, file(picture(Qt::green)));
    play(song(QStringLiteral("A"), first));
    turns();
    ASSERT_TRUE(loader.loadedArtworkID());
    play(song(QStringLiteral("B")));
    EXPECT_TRUE(loader.loadedArtwork().isNull());
    EXPECT_FALSE(loader.loadedArtworkID());
}

TEST_F(ArtworkLoaderTest, NothingPlayingHasNoPicture)
{
    NowPlayingTrack track = song(QStringLiteral("A"));
    track.artwork = picture(Qt::red);
    play(track);
    play(std::nullopt);
    EXPECT_TRUE(loader.loadedArtwork().isNull());
    EXPECT_FALSE(loader.loadedArtworkID());
}

TEST_F(ArtworkLoaderTest, ASongThatComesBackIsFetchedAgain)
{
    platform.network.serve(first, file(picture(Qt::green)));
    play(song(QStringLiteral("A"), first));
    turns();
    play(song(QStringLiteral("B")));
    play(song(QStringLiteral("A"), first));
    turns();
    EXPECT_THAT(platform.network.asked, ElementsAre(first, first));
    EXPECT_EQ(shownColour(), Qt::green);
}

TEST_F(ArtworkLoaderTest, AFailedFetchLeavesThePlaceholderAndIsNotTriedAgain)
{
    const NowPlayingTrack track = song(QStringLiteral("A"), first);
    play(track);
    turns();
    play(track);
    turns();
    EXPECT_FALSE(loader.loadedArtworkID());
    EXPECT_EQ(platform.network.asked.size(), 1);
}

TEST_F(ArtworkLoaderTest, BytesThatAreNoPictureLeaveThePlaceholder)
{
    platform.network.serve(first, "<html>sorry</html>");
    play(song(QStringLiteral("A"), first));
    turns();
    EXPECT_FALSE(loader.loadedArtworkID());
    EXPECT_EQ(changes.count(), 0);
}

TEST_F(ArtworkLoaderTest, AnEndlessOrHangingAnswerIsGivenUp)
{
    platform.network.serve(first, QByteArray(ArtworkLoader::limits.size + 1, 'x'));
    play(song(QStringLiteral("A"), first));
    turns();
    EXPECT_FALSE(loader.loadedArtworkID());
    platform.network.hold();
    play(song(QStringLiteral("B"), second));
    platform.time.advance(ArtworkLoader::limits.duration + 1);
    EXPECT_EQ(platform.network.underWay(), 0);
}

TEST_F(ArtworkLoaderTest, APictureThatComesAfterItsSongTakesThePlaceOfTheOneBefore)
{
    // A source carries the last song's picture until the new one is there.
    NowPlayingTrack track = song(QStringLiteral("B"));
    track.artwork = picture(Qt::red);
    track.artworkFingerprint = 1;
    play(track);
    track.artwork = picture(Qt::blue);
    track.artworkFingerprint = 2;
    play(track);
    EXPECT_EQ(shownColour(), Qt::blue);
}

TEST_F(ArtworkLoaderTest, TheSamePictureReadAnewIsNoChange)
{
    NowPlayingTrack track = song(QStringLiteral("A"));
    track.artwork = picture(Qt::red);
    track.artworkFingerprint = 1;
    play(track);
    track.artwork = picture(Qt::red);
    play(track);
    EXPECT_EQ(changes.count(), 1);
}

TEST_F(ArtworkLoaderTest, APictureThatArrivesWithTheTrackEndsTheFetch)
{
    platform.network.hold();
    NowPlayingTrack track = song(QStringLiteral("A"), first);
    play(track);
    track.artwork = picture(Qt::red);
    play(track);
    EXPECT_EQ(platform.network.underWay(), 0);
    EXPECT_EQ(shownColour(), Qt::red);
}

TEST_F(ArtworkLoaderTest, AnEmptyPictureCountsAsNone)
{
    platform.network.serve(first, file(picture(Qt::green)));
    NowPlayingTrack track = song(QStringLiteral("A"), first);
    track.artwork = QImage();
    play(track);
    turns();
    EXPECT_EQ(shownColour(), Qt::green);
}

TEST_F(ArtworkLoaderTest, OnlyTheSongThatAPictureBelongsToIsShownWithIt)
{
    platform.network.serve(first, file(picture(Qt::green)));
    const NowPlayingTrack track = song(QStringLiteral("A"), first);
    play(track);
    turns();
    EXPECT_FALSE(loader.artworkOf(track).isNull());
    EXPECT_TRUE(loader.artworkOf(song(QStringLiteral("B"), first)).isNull());
    NowPlayingTrack own = song(QStringLiteral("C"));
    own.artwork = picture(Qt::red);
    EXPECT_EQ(loader.artworkOf(own).pixelColor(0, 0), Qt::red);
}

TEST(ArtworkDecoding, ReadsTheUsualFormats)
{
    for (const char *format : {"PNG", "JPG", "BMP"})
        EXPECT_EQ(ArtworkDecoding::picture(file(picture(Qt::red, {9, 7}), format)).size(), QSize(9, 7))
            << format;
}

TEST(ArtworkDecoding, MakesLargePicturesFit)
{
    const QImage wide = ArtworkDecoding::picture(file(picture(Qt::red, {3000, 1500}), "JPG"));
    EXPECT_EQ(wide.size(), QSize(1024, 512));
    const QImage line = ArtworkDecoding::picture(file(picture(Qt::red, {1, 5000})));
    EXPECT_EQ(line.size(), QSize(1, 1024));
}

TEST(ArtworkDecoding, MakesAPictureFitThatAnnouncesASmallerOne)
{
    // The canvas is 49153 by 2 pixels, its only frame 2 by 2.
    const QByteArray file = QByteArray::fromBase64("R0lGODlhAcACAIAAAP8AAAAA/ywAAAAAAgACAAACAkQKADs=");
    EXPECT_EQ(ArtworkDecoding::picture(file).size(), QSize(1024, 1));
}

TEST(ArtworkDecoding, RefusesWhatIsDamagedHugeOrADrawing)
{
    EXPECT_TRUE(ArtworkDecoding::picture({}).isNull());
    const QByteArray whole = file(picture(Qt::red, {64, 64}));
    EXPECT_TRUE(ArtworkDecoding::picture(whole.left(whole.size() / 2)).isNull());
    // A head that promises more pixels than a machine wants to hold.
    QByteArray huge = file(picture(Qt::red, {64, 64}), "BMP");
    huge.replace(18, 8, QByteArray::fromHex("0000010000000100"));
    EXPECT_TRUE(ArtworkDecoding::picture(huge).isNull());
    const QByteArray drawing = "<svg xmlns='http://www.w3.org/2000/svg' width='8' height='8'/>";
    EXPECT_TRUE(ArtworkDecoding::picture(drawing).isNull());
}

} // namespace
} // namespace brindle
