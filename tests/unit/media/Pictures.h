#pragma once

#include <QBuffer>
#include <QImage>

namespace brindle {

inline QByteArray pictureFile(const QImage &image, const char *format = "PNG")
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    return image.save(&buffer, format) ? bytes : QByteArray();
}

/// A picture that is red all over.
inline QByteArray pictureFile(QSize size, const char *format = "PNG")
{
    QImage image(size, QImage::Format_RGB32);
    image.fill(Qt::red);
    return pictureFile(image, format);
}

} // namespace brindle
