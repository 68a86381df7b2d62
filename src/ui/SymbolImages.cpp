#include "ui/SymbolImages.h"

#include <QCache>
#include <QPainter>
#include <QSvgRenderer>

#include <algorithm>
#include <cmath>

namespace brindle {
namespace {

QImage render(const QString &name, int pixels, const QColor &colour)
{
    QSvgRenderer renderer(QStringLiteral(":/brindle/symbols/%1.svg").arg(name));
    if (!renderer.isValid())
        return {};
    QImage image(pixels, pixels, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    renderer.render(&painter, QRectF(image.rect()));
    painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
    painter.fillRect(image.rect(), colour);
    return image;
}

// The mean over a box around each pixel, along rows; the result is turned on its side, so that twice is a
// blur in both ways.
QImage averagedAndTurned(const QImage &image, int reach)
{
    QImage result(image.height(), image.width(), QImage::Format_Alpha8);
    for (int y = 0; y < image.height(); ++y) {
        const uchar *row = image.constScanLine(y);
        const auto at = [&](int x) { return x < 0 || x >= image.width() ? 0 : int(row[x]); };
        int sum = 0;
        for (int x = -reach; x < reach; ++x)
            sum += at(x);
        for (int x = 0; x < image.width(); ++x) {
            sum += at(x + reach);
            result.scanLine(x)[y] = uchar(sum / (2 * reach + 1));
            sum -= at(x - reach);
        }
    }
    return result;
}

} // namespace

int SymbolImages::glowMargin(double radius)
{
    return int(std::ceil(radius * 1.5));
}

QImage SymbolImages::withGlow(const QImage &image, const QColor &glow, double radius)
{
    if (image.isNull())
        return {};
    const double scale = image.devicePixelRatio();
    const int margin = int(std::lround(glowMargin(radius) * scale));
    QImage framed(image.size() + QSize(2 * margin, 2 * margin), QImage::Format_ARGB32_Premultiplied);
    framed.fill(Qt::transparent);
    QImage bare = image;
    bare.setDevicePixelRatio(1);
    QPainter(&framed).drawImage(margin, margin, bare);

    QImage light = framed.convertToFormat(QImage::Format_Alpha8);
    const int reach = std::max(1, int(std::lround(radius * scale / 2)));
    for (int pass = 0; pass < 6; ++pass)
        light = averagedAndTurned(light, reach);
    QImage result(framed.size(), QImage::Format_ARGB32_Premultiplied);
    result.fill(glow);
    QPainter painter(&result);
    painter.setCompositionMode(QPainter::CompositionMode_DestinationIn);
    painter.drawImage(0, 0, light);
    painter.setCompositionMode(QPainter::CompositionMode_SourceOver);
    painter.drawImage(0, 0, framed);
    painter.end();
    result.setDevicePixelRatio(scale);
    return result;
}

int SymbolImages::extent(double size)
{
    // The drawings leave a margin in their square; this makes a symbol's body match the capitals beside it.
    return int(std::lround(size * 4 / 3));
}

QImage SymbolImages::image(const QString &name, double size, double devicePixelRatio, const QColor &colour)
{
    static QCache<QString, QImage> cache(128);

    const int pixels = int(std::ceil(extent(size) * devicePixelRatio));
    const QString key = name + u'|' + QString::number(pixels) + u'|' + colour.name(QColor::HexArgb);
    if (const QImage *kept = cache.object(key))
        return *kept;
    QImage image = pixels > 0 && !name.isEmpty() ? render(name, pixels, colour) : QImage();
    image.setDevicePixelRatio(devicePixelRatio);
    cache.insert(key, new QImage(image));
    return image;
}

} // namespace brindle
