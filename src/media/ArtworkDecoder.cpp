#include "media/ArtworkDecoder.h"

#include "media/ArtworkDecoding.h"

#include <QHash>

namespace brindle {

Artwork decodeArtwork(const QByteArray &base64)
{
    // The decoder takes a text without its padding for a whole one.
    if (base64.size() % 4 != 0)
        return {};
    const auto read = QByteArray::fromBase64Encoding(base64, QByteArray::AbortOnBase64DecodingErrors);
    if (!read)
        return {};
    const QByteArray &bytes = read.decoded;
    const QImage picture = ArtworkDecoding::picture(bytes);
    return {picture.isNull() ? std::nullopt : std::optional(picture),
        qHashBits(bytes.constData(), std::size_t(bytes.size()))};
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
