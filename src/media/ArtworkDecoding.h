#pragma once

#include <QByteArray>
#include <QImage>

namespace brindle {

/// Pictures from the bytes of image files that strangers supply.
class ArtworkDecoding
{
public:
    /// Pixels: larger pictures are made to fit a square of this side, which suits every display.
    static constexpr int largestSide = 1024;

    /// Null for what is no photographic picture, is damaged, or has more than 32 million pixels. Any thread;
    /// may take long.
    static QImage picture(const QByteArray &file);
};

} // namespace brindle
