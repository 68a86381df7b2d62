#include "media/ArtworkDecoder.h"

#include "unit/media/Pictures.h"

#include <QByteArrayList>

#include <gtest/gtest.h>

namespace brindle {
namespace {

Artwork decodeFile(const QByteArray &bytes)
{
    return decodeArtwork(bytes.toBase64());
}

TEST(Artwork, IsDecodedFromBase64)
{
    for (const char *format : {"PNG", "JPEG", "BMP"}) {
        const Artwork artwork = decodeFile(pictureFile({8, 4}, format));
        ASSERT_TRUE(artwork.image) << format;
        EXPECT_EQ(artwork.image->size(), QSize(8, 4)) << format;
        EXPECT_TRUE(artwork.fingerprint) << format;
    }
}

TEST(Artwork, TheFingerprintFollowsTheBytes)
{
    const QByteArray file = pictureFile({8, 4});
    EXPECT_EQ(decodeFile(file).fingerprint, decodeFile(file).fingerprint);
    EXPECT_NE(decodeFile(file).fingerprint, decodeFile(pictureFile({8, 5})).fingerprint);
}

TEST(Artwork, UndecodableTextGivesNeitherPictureNorFingerprint)
{
    const QByteArray good = pictureFile({8, 4}).toBase64();
    const QByteArrayList undecodable{"no base64!!!", "AAA", "AAAAA", "AA=A", "====", "A===", "AA_-",
        good.first(8) + '\n' + good.sliced(8), good + '\0', QByteArray(4, char(0))};
    for (const QByteArray &bad : undecodable) {
        const Artwork artwork = decodeArtwork(bad);
        EXPECT_FALSE(artwork.image) << bad.toStdString();
        EXPECT_FALSE(artwork.fingerprint) << bad.toStdString();
    }
}

TEST(Artwork, BytesThatAreNoPictureKeepTheirFingerprint)
{
    for (const QByteArray &bytes : {QByteArray("no picture"), QByteArray(),
             QByteArray("\x89PNG\r\n\x1a\n", 8), pictureFile({8, 4}).first(30)}) {
        const Artwork artwork = decodeFile(bytes);
        EXPECT_FALSE(artwork.image);
        EXPECT_TRUE(artwork.fingerprint);
    }
}

TEST(Artwork, ADrawingIsNoPicture)
{
    const Artwork artwork = decodeFile(R"(<svg xmlns="http://www.w3.org/2000/svg" width="8" height="8">
        <image href="file:///etc/hostname" width="8" height="8"/></svg>)");
    EXPECT_FALSE(artwork.image);
    EXPECT_TRUE(artwork.fingerprint);
}

TEST(Artwork, APictureTooLargeToDecodeIsLeftOut)
{
    // A few kilobytes that want to be 33 million pixels.
    QImage image(6600, 5000, QImage::Format_Mono);
    image.fill(0);
    const Artwork artwork = decodeFile(pictureFile(image));
    EXPECT_FALSE(artwork.image);
    EXPECT_TRUE(artwork.fingerprint);
}

TEST(Artwork, APictureLargerThanAnyViewIsScaledDown)
{
    const auto sizeOf = [](QSize size) {
        return decodeFile(pictureFile(size)).image.value_or(QImage()).size();
    };
    EXPECT_EQ(sizeOf({1024, 1024}), QSize(1024, 1024));
    EXPECT_EQ(sizeOf({4096, 1024}), QSize(1024, 256));
    EXPECT_EQ(sizeOf({1, 8192}), QSize(1, 1024));
}

TEST(ArtworkDecoder, WhiteSpaceAroundTheTextIsTrimmed)
{
    ArtworkDecoder decoder;
    const QString text = QString::fromLatin1(pictureFile({8, 4}).toBase64());
    EXPECT_TRUE(decoder.decode(QStringLiteral(" \n\t") + text + QStringLiteral("\r\n ")).image);
}

TEST(ArtworkDecoder, TheSameTextIsDecodedOnce)
{
    ArtworkDecoder decoder;
    const QString text = QString::fromLatin1(pictureFile({8, 4}).toBase64());
    const QImage first = decoder.decode(text).image.value_or(QImage());
    const QImage second = decoder.decode(text + u'\n').image.value_or(QImage());
    ASSERT_FALSE(first.isNull());
    EXPECT_EQ(first.cacheKey(), second.cacheKey());
}

TEST(ArtworkDecoder, AnotherTextIsAnotherPicture)
{
    ArtworkDecoder decoder;
    const auto decode = [&decoder](QSize size) {
        return decoder.decode(QString::fromLatin1(pictureFile(size).toBase64()))
            .image.value_or(QImage())
            .size();
    };
    EXPECT_EQ(decode({8, 4}), QSize(8, 4));
    EXPECT_EQ(decode({9, 4}), QSize(9, 4));
    EXPECT_FALSE(decoder.decode(QStringLiteral("not one")).image);
    EXPECT_FALSE(decoder.decode(QStringLiteral("not one")).fingerprint);
}

} // namespace
} // namespace brindle
