#pragma once

#include <QByteArray>
#include <QImage>
#include <QString>

#include <optional>

namespace brindle {

/// What became of a picture that came as text.
struct Artwork
{
    /// Absent when the bytes are no picture that can be shown.
    std::optional<QImage> image;
    /// A hash of the picture's bytes; absent when there were none.
    std::optional<quint64> fingerprint;
};

/// Decodes strict Base64, and the picture in it as `ArtworkDecoding` does. Any thread; may take long.
Artwork decodeArtwork(const QByteArray &base64);

/// Decodes pictures and remembers the last one, since sources repeat theirs. One thread at a time.
class ArtworkDecoder
{
public:
    /// `text` is Base64, with any white space around it.
    const Artwork &decode(const QString &text);

private:
    std::optional<QByteArray> m_text;
    Artwork m_artwork;
};

} // namespace brindle
