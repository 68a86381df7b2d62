#include "media/ArtworkDecoding.h"

#include <QBuffer>
#include <QImageReader>

#include <algorithm>
#include <array>

namespace brindle {
namespace {

/// Formats that are pixels and no programs: a drawing of a few bytes can take any amount of work.
constexpr std::array formats{"png", "jpeg", "gif", "webp", "bmp"};
/// A picture is decoded whole before it is made smaller.
constexpr qint64 mostPixels = qint64(32) * 1024 * 1024;

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
    if (std::max(size.width(), size.height()) > largestSide)
        reader.setScaledSize(size.scaled(largestSide, largestSide, Qt::KeepAspectRatio).expandedTo({1, 1}));
    return reader.read();
}

} // namespace brindle
