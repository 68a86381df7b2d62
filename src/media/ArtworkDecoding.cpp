#include "media/ArtworkDecoding.h"

#include <QBuffer>
#include <QImageReader>

#include <algorithm>
#include <array>

namespace brindle {
namespace {

/// Formats that are pixels and no programs: a drawing of a few bytes can take any amount of work, and could
/// refer to files.
constexpr std::array formats{"png", "jpeg", "gif", "webp", "bmp", "ico", "tiff"};
/// A picture is decoded whole before it is made smaller.
constexpr qint64 mostPixels = 32'000'000;

bool isTooLarge(QSize size)
{
    return std::max(size.width(), size.height()) > ArtworkDecoding::largestSide;
}

QSize fitted(QSize size)
{
    constexpr int side = ArtworkDecoding::largestSide;
    return size.scaled(side, side, Qt::KeepAspectRatio).expandedTo({1, 1});
}

} // namespace

QImage ArtworkDecoding::picture(const QByteArray &file)
{
    QBuffer buffer;
    buffer.setData(file);
    buffer.open(QIODevice::ReadOnly);
    QImageReader reader(&buffer);
    reader.setDecideFormatFromContent(true);
    reader.setAutoTransform(true);
    const QByteArray format = reader.format();
    const QSize size = reader.size();
    if (std::find(formats.begin(), formats.end(), format) == formats.end() || size.isEmpty()
        || qint64(size.width()) * size.height() > mostPixels)
        return {};
    if (isTooLarge(size))
        reader.setScaledSize(fitted(size));
    const QImage image = reader.read();
    // A file may announce another size than it has: a GIF tells that of its first frame.
    return isTooLarge(image.size())
        ? image.scaled(fitted(image.size()), Qt::IgnoreAspectRatio, Qt::SmoothTransformation)
        : image;
}

} // namespace brindle
