#include "adapter/linux/LineComposer.h"

#include <QJsonDocument>

namespace brindle::adapter {

namespace {

using namespace Qt::StringLiterals;

const QString artworkKey = u"artworkData"_s;

void insertPosition(QJsonObject &fields, const std::optional<Payload::Position> &position)
{
    fields.insert(u"elapsedTime"_s, position ? QJsonValue(position->anchor.elapsed) : QJsonValue());
    fields.insert(u"timestamp"_s, position ? QJsonValue(timestampText(position->anchor.at)) : QJsonValue());
}

/// `artwork` goes into the payload as it stands: Base64 needs no escapes.
QByteArrayList line(bool isDiff, const QJsonObject &fields, const QByteArray &artwork)
{
    const QByteArray head = isDiff ? "{\"diff\":true,\"payload\":" : "{\"diff\":false,\"payload\":";
    const QByteArray payload = QJsonDocument(fields).toJson(QJsonDocument::Compact);
    if (artwork.isEmpty())
        return {head + payload + "}\n"};
    const QByteArray comma = fields.isEmpty() ? "" : ",";
    return {head + payload.chopped(1) + comma + '"' + artworkKey.toLatin1() + "\":\"", artwork, "\"}}\n"};
}

QByteArrayList whole(const Payload &payload)
{
    QJsonObject fields = payload.fields;
    if (payload.position)
        insertPosition(fields, payload.position);
    return line(false, fields, payload.artwork);
}

bool hasLeftItsCourse(const Payload &before, const Payload &now)
{
    if (!before.position || !now.position)
        return before.position.has_value() != now.position.has_value();
    return before.position->course != now.position->course;
}

std::optional<QByteArrayList> difference(const Payload &before, const Payload &now)
{
    QJsonObject fields;
    for (auto field = now.fields.begin(); field != now.fields.end(); ++field) {
        if (before.fields.value(field.key()) != field.value())
            fields.insert(field.key(), field.value());
    }
    for (auto field = before.fields.begin(); field != before.fields.end(); ++field) {
        if (!now.fields.contains(field.key()))
            fields.insert(field.key(), QJsonValue::Null);
    }
    if (hasLeftItsCourse(before, now))
        insertPosition(fields, now.position);
    const bool hasNewArtwork = before.artwork != now.artwork;
    if (hasNewArtwork && now.artwork.isEmpty())
        fields.insert(artworkKey, QJsonValue::Null);
    // A difference that tells nothing would mean that all is gone.
    if (fields.isEmpty() && !hasNewArtwork)
        return std::nullopt;
    return line(true, fields, hasNewArtwork ? now.artwork : QByteArray());
}

} // namespace

std::optional<QByteArrayList> LineComposer::compose(const Payload &payload) const
{
    if (!m_told || m_told->player != payload.player)
        return whole(payload);
    return difference(*m_told, payload);
}

} // namespace brindle::adapter
