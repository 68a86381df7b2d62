#include "adapter/linux/Payload.h"

#include <QDateTime>

#include <algorithm>
#include <cmath>

namespace brindle::adapter {

namespace {

using namespace Qt::StringLiterals;

void insertText(QJsonObject &fields, const QString &key, const QString &text)
{
    if (!text.isEmpty())
        fields.insert(key, text);
}

std::optional<Payload::Position> positionOf(const PayloadSource &source)
{
    const auto &anchor = source.position.anchor();
    if (!anchor)
        return std::nullopt;
    const double elapsed = std::min(anchor->elapsed, source.state.track.duration.value_or(anchor->elapsed));
    return Payload::Position{{elapsed, anchor->at}, source.position.course()};
}

} // namespace

Payload makePayload(const PayloadSource &source)
{
    Payload payload;
    payload.player = source.player;
    const Track &track = source.state.track;
    insertText(payload.fields, u"title"_s, track.title);
    insertText(payload.fields, u"artist"_s, track.artist);
    insertText(payload.fields, u"album"_s, track.album);
    insertText(payload.fields, u"bundleIdentifier"_s, source.bundleIdentifier);
    if (track.duration)
        payload.fields.insert(u"duration"_s, *track.duration);
    payload.fields.insert(u"playing"_s, source.state.isPlaying());
    payload.fields.insert(u"playbackRate"_s, source.state.speed());
    payload.position = positionOf(source);
    payload.artwork = source.artwork;
    return payload;
}

QString timestampText(Date date)
{
    const auto milliseconds = qint64(std::floor(date.secondsSince1970() * 1000));
    return QDateTime::fromMSecsSinceEpoch(milliseconds, Qt::UTC).toString(Qt::ISODateWithMs);
}

} // namespace brindle::adapter
