#include "media/ArtworkDecoder.h"

#include <QBuffer>
#include <QHash>
#include <QImageReader>

#include <array>

namespace brindle {

namespace {

constexpr qint64 mostPixels = 32'000'000;
/// Much more than any view draws, and little enough to keep.
constexpr int longestSide = 1024;

bool isPhotograph(const QByteArray &format)
{
    static constexpr std::array formats{"png", "jpeg", "gif", "bmp", "ico", "webp", "tiff"};
    return std::find(formats.begin(), formats.end(), format) != formats.end();
}

std::optional<QImage> decodeImage(QByteArray bytes)
{
    QBuffer buffer(&bytes);
    QImageReader reader(&buffer);
    if (!isPhotograph(reader.format()))
        return std::nullopt;
    const QSize size = reader.size();
    if (qint64(size.width()) * size.height() > mostPixels)
        return std::nullopt;
    if (std::max(size.width(), size.height()) > longestSide) {
        reader.setScaledSize(
            size.scaled(longestSide, longestSide, Qt::KeepAspectRatio).expandedTo(QSize(1, 1)));
    }
    reader.setAutoTransform(true);
    const QImage image = reader.read();
    return image.isNull() ? std::nullopt : std::optional(image);
}

} // namespace

Artwork decodeArtwork(const QByteArray &base64)
{
    // The decoder takes a text without its padding for a whole one.
    if (base64.size() % 4 != 0)
        return {};
    const auto read = QByteArray::fromBase64Encoding(base64, QByteArray::AbortOnBase64DecodingErrors);
    if (!read)
        return {};
    const QByteArray &bytes = read.decoded;
    return {decodeImage(bytes), qHashBits(bytes.constData(), std::size_t(bytes.size()))};
}

const Artwork &ArtworkDecoder::decode(const QString &text)
{
    QByteArray base64 = QStringView(text).trimmed().toLatin1();
    if (m_text != base64) {
        m_artwork = decodeArtwork(base64);
        m_text = std::move(base64);
    }
    return m_artwork;
}

} // namespace brindle
