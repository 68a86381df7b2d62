#include "media/PayloadTrack.h"

#include "foundation/Json.h"

#include <QRegularExpression>

#include <clocale>
#include <cmath>
#include <cstdlib>

namespace brindle {

namespace {

/// Reads the fields of a payload, each as the type that it should have.
class Fields
{
public:
    explicit Fields(const MediaPayload &payload) : m_fields(payload.fields) { }

    std::optional<QString> text(const QString &key) const
    {
        const QJsonValue value = m_fields.value(key);
        return value.isString() ? std::optional(value.toString()) : std::nullopt;
    }

    /// A number, or a text that is one. Always finite.
    std::optional<double> number(const QString &key) const
    {
        const QJsonValue value = m_fields.value(key);
        if (value.isDouble())
            return value.toDouble();
        return value.isString() ? parsed(value.toString()) : std::nullopt;
    }

    std::optional<bool> flag(const QString &key) const
    {
        const QJsonValue value = m_fields.value(key);
        if (value.isBool())
            return value.toBool();
        const auto asNumber = number(key);
        return asNumber ? std::optional(*asNumber != 0) : std::nullopt;
    }

private:
    static std::optional<double> parsed(const QString &text)
    {
        static const locale_t plain = newlocale(LC_NUMERIC_MASK, "C", nullptr);
        const QByteArray bytes = text.toUtf8();
        if (bytes.isEmpty() || text.front().isSpace())
            return std::nullopt;
        char *end = nullptr;
        const double number = strtod_l(bytes.constData(), &end, plain);
        const bool isWhole = end == bytes.constEnd();
        return isWhole && std::isfinite(number) ? std::optional(number) : std::nullopt;
    }

    const QHash<QString, QJsonValue> &m_fields;
};

/// An internet date and time, with a fraction of a second or without.
std::optional<Date> timestamp(const std::optional<QString> &text)
{
    if (!text)
        return std::nullopt;
    static const QRegularExpression withFraction(
        QStringLiteral("^(.{19})([.][0-9]+)(.+)$"), QRegularExpression::DotMatchesEverythingOption);
    const QRegularExpressionMatch match = withFraction.match(*text);
    if (!match.hasMatch())
        return Json::date(*text);
    const auto whole = Json::date(match.captured(1) + match.captured(3));
    return whole ? std::optional(*whole + match.captured(2).toDouble()) : std::nullopt;
}

void fillSource(NowPlayingTrack &track, const Fields &fields, const Workspace &workspace)
{
    track.sourceBundleIdentifier = fields.text(QStringLiteral("parentApplicationBundleIdentifier"));
    if (!track.sourceBundleIdentifier)
        track.sourceBundleIdentifier = fields.text(QStringLiteral("bundleIdentifier"));
    if (!track.sourceBundleIdentifier)
        return;
    const auto url = workspace.urlForApplication(*track.sourceBundleIdentifier);
    if (!url)
        return;
    track.sourceName = workspace.localizedName(*url);
    track.sourceIcon = workspace.icon(url->toLocalFile());
}

} // namespace

std::optional<NowPlayingTrack> makeTrack(const MediaPayload &payload, const Workspace &workspace, Date now)
{
    const Fields fields(payload);
    const auto title = fields.text(QStringLiteral("title"));
    if (!title || title->trimmed().isEmpty())
        return std::nullopt;

    NowPlayingTrack track;
    track.title = *title;
    track.artist = fields.text(QStringLiteral("artist"));
    track.album = fields.text(QStringLiteral("album"));
    if (const auto duration = fields.number(QStringLiteral("duration")); duration && *duration > 0)
        track.duration = duration;
    if (const auto elapsed = fields.number(QStringLiteral("elapsedTime")); elapsed && *elapsed >= 0)
        track.elapsed = elapsed;
    track.elapsedUpdatedAt = timestamp(fields.text(QStringLiteral("timestamp"))).value_or(now);
    const auto rate = fields.number(QStringLiteral("playbackRate"));
    track.isPlaying = fields.flag(QStringLiteral("playing")).value_or(rate.value_or(0) > 0);
    track.playbackRate = rate.value_or(track.isPlaying ? 1 : 0);
    track.artwork = payload.artwork.image;
    track.artworkFingerprint = payload.artwork.fingerprint;
    fillSource(track, fields, workspace);
    return track;
}

} // namespace brindle
