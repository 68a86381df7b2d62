#include "platform/linux/applications/ApplicationIcons.h"

#include "foundation/Files.h"

#include <QBuffer>
#include <QDir>
#include <QFileInfo>
#include <QIcon>
#include <QImageReader>
#include <QPainter>

#include <algorithm>

namespace brindle {

namespace {

/// The picture in the middle of a square.
QImage squared(const QImage &image)
{
    if (image.isNull() || image.width() == image.height())
        return image;
    const int side = std::max(image.width(), image.height());
    QImage square(side, side, QImage::Format_ARGB32_Premultiplied);
    square.fill(Qt::transparent);
    QPainter(&square).drawImage((side - image.width()) / 2, (side - image.height()) / 2, image);
    return square;
}

QImage readImage(const QString &path)
{
    constexpr qsizetype longest = 8LL * 1024 * 1024;
    QByteArray bytes = Files::readAtMost(longest, path).value_or(QByteArray());
    QBuffer buffer(&bytes);
    QImageReader reader(&buffer);
    const QSize whole = reader.size();
    if (whole.isValid())
        reader.setScaledSize(
            whole.scaled(ApplicationIcons::size, ApplicationIcons::size, Qt::KeepAspectRatio));
    return squared(reader.read());
}

QImage fromTheme(const QString &name)
{
    const QSize wanted(ApplicationIcons::size, ApplicationIcons::size);
    const QIcon icon = QIcon::fromTheme(name);
    return icon.isNull() ? QImage() : squared(icon.pixmap(wanted, 1).toImage());
}

/// A plain window.
QImage drawn()
{
    QImage image(ApplicationIcons::size, ApplicationIcons::size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    constexpr double margin = 12;
    constexpr double bar = 24;
    constexpr double corner = 14;
    const QRectF window = QRectF(image.rect()).adjusted(margin, margin, -margin, -margin);
    painter.setBrush(QColor(0x8e, 0x8e, 0x93));
    painter.drawRoundedRect(window, corner, corner);
    painter.setBrush(QColor(0xe5, 0xe5, 0xea));
    painter.drawRoundedRect(window.adjusted(4, bar, -4, -4), corner - 4, corner - 4);
    return image;
}

} // namespace

QImage ApplicationIcons::find(const QString &icon) const
{
    if (QDir::isAbsolutePath(icon))
        return readImage(icon);
    // A name that leads elsewhere is none.
    if (icon.isEmpty() || icon.contains(u'/'))
        return {};
    const QImage themed = fromTheme(icon);
    return themed.isNull() ? readImage(fileOf(icon)) : themed;
}

QImage ApplicationIcons::plain()
{
    const QImage themed = fromTheme(QStringLiteral("application-x-executable"));
    return themed.isNull() ? drawn() : themed;
}

QString ApplicationIcons::fileOf(const QString &name) const
{
    QStringList folders;
    for (const QString &data : m_dataFolders) {
        for (const char *const place : {"scalable", "256x256", "128x128", "64x64", "48x48"})
            folders.append(data + QStringLiteral("/icons/hicolor/") + QLatin1StringView(place)
                + QStringLiteral("/apps/"));
        folders.append(data + QStringLiteral("/pixmaps/"));
    }
    for (const QString &folder : std::as_const(folders)) {
        for (const char *const suffix : {".svg", ".png", ".xpm", ""}) {
            const QString path = folder + name + QLatin1StringView(suffix);
            if (QFileInfo(path).isFile())
                return path;
        }
    }
    return {};
}

} // namespace brindle
