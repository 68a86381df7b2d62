#pragma once

#include <QByteArray>
#include <QImage>
#include <QString>

#include <optional>

namespace brindle {

/// What became of a picture that came as text.
struct Artwork
{
    /// Absent when the bytes are no picture, or one that is too large to decode.
    std::optional<QImage> image;
    /// A hash of the picture's bytes; absent when there were none.
    std::optional<quint64> fingerprint;
};

/// Decodes strict Base64, and a picture from its bytes, whatever they hold. Nothing of it is safe to trust: a
/// picture of more than 32 million pixels is left out, and so is a drawing, which could refer to files. What
/// is longer than 1024 pixels is scaled down to that. Any thread; may take long.
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
