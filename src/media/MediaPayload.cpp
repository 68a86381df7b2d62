#include "media/MediaPayload.h"

#include "foundation/Json.h"

namespace brindle {

namespace {

// A text would keep the whole line in memory that it came in, pictures and all.
QJsonValue detached(const QJsonValue &value)
{
    return value.isString() ? QJsonValue(value.toString()) : value;
}

} // namespace

bool MergedPayload::apply(const QByteArray &line)
{
    const auto object = Json::decodeObject(line);
    const QJsonValue payload = object ? object->value(QStringLiteral("payload")) : QJsonValue();
    if (!payload.isObject())
        return false;
    const QJsonObject fields = payload.toObject();
    const bool isDiff = object->value(QStringLiteral("diff")).toBool();
    // A change that names nothing says that nothing is left.
    if (!isDiff || fields.isEmpty())
        m_payload = {};
    for (auto field = fields.begin(); field != fields.end(); ++field)
        set(field.key(), field.value());
    return true;
}

void MergedPayload::set(const QString &key, const QJsonValue &value)
{
    // Decoded here, where a line first names it, and not where tracks are made: that is on the main thread.
    if (key == QStringLiteral("artworkData"))
        m_payload.artwork = value.isString() ? m_artworkDecoder.decode(value.toString()) : Artwork{};
    else if (value.isNull())
        m_payload.fields.remove(key);
    else
        m_payload.fields.insert(key, detached(value));
}

} // namespace brindle
