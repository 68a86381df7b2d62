#pragma once

#include "media/ArtworkDecoder.h"

#include <QByteArray>
#include <QHash>
#include <QJsonObject>
#include <QJsonValue>
#include <QString>

namespace brindle {

/// What plays, in the adapter's words. A plain value; copies are cheap.
struct MediaPayload
{
    /// By key, anything but null. The artwork's text is not among them.
    QHash<QString, QJsonValue> fields;
    Artwork artwork;
};

/// The state that the adapter's lines add up to. One thread at a time; decodes pictures, so not the main one.
class MergedPayload
{
public:
    /// Takes a line {"payload": {…}, "diff": true} in. False, with nothing changed, when it is none.
    bool apply(const QByteArray &line);

    const MediaPayload &payload() const { return m_payload; }

private:
    void set(const QString &key, const QJsonValue &value);

    MediaPayload m_payload;
    ArtworkDecoder m_artworkDecoder;
};

} // namespace brindle
