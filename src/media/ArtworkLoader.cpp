#include "media/ArtworkLoader.h"

#include "foundation/Scheduler.h"
#include "media/ArtworkDecoding.h"
#include "media/MediaProvider.h"

#include <utility>

namespace brindle {
namespace {

bool hasArtwork(const NowPlayingTrack &track)
{
    return track.artwork && !track.artwork->isNull();
}

} // namespace

ArtworkLoader::ArtworkLoader(MediaProvider &media, UrlSession &session, std::unique_ptr<SerialQueue> decoder,
    Scheduler &scheduler, QObject *parent)
    : QObject(parent)
    , m_media(media)
    , m_session(session)
    , m_scheduler(scheduler)
    , m_decoder(std::move(decoder))
{
    connect(&media, &MediaProvider::nowPlayingChanged, this, &ArtworkLoader::trackChanged);
    trackChanged();
}

QImage ArtworkLoader::artworkOf(const NowPlayingTrack &track) const
{
    if (hasArtwork(track))
        return *track.artwork;
    return m_loadedArtworkID && *m_loadedArtworkID == track.presentationID() ? m_loadedArtwork : QImage();
}

void ArtworkLoader::trackChanged()
{
    const auto &track = m_media.nowPlaying();
    const std::optional<QString> id = track ? std::optional(track->presentationID()) : std::nullopt;
    const bool isSameSong = id == std::exchange(m_song, id);
    if (!isSameSong)
        cancel();
    if (!track) {
        set({}, std::nullopt);
        return;
    }
    // A picture may come after its song, and until then the song may carry the one before it: so the track's
    // own picture is followed also within a song.
    if (hasArtwork(*track)) {
        cancel();
        const bool isKnown =
            isSameSong && m_loadedArtworkID && m_fingerprint && m_fingerprint == track->artworkFingerprint;
        m_fingerprint = track->artworkFingerprint;
        if (!isKnown)
            set(*track->artwork, id);
    } else if (!isSameSong) {
        startFor(*track);
    }
}

void ArtworkLoader::startFor(const NowPlayingTrack &track)
{
    m_fingerprint.reset();
    set({}, std::nullopt);
    if (!track.artworkURL)
        return;
    m_fetch = m_session.fetch(*track.artworkURL, limits, [this](const std::optional<QByteArray> &file) {
        if (file)
            decode(*file);
    });
}

void ArtworkLoader::cancel()
{
    ++m_request;
    m_fetch.reset();
}

void ArtworkLoader::decode(const QByteArray &file)
{
    auto done = m_lifetime.guard([this, request = m_request](const QImage &picture) {
        if (request == m_request && !picture.isNull())
            set(picture, m_song);
    });
    m_decoder->post([file, &scheduler = m_scheduler, done = std::move(done)] {
        scheduler.post([picture = ArtworkDecoding::picture(file), done]() mutable { done(picture); });
    });
}

void ArtworkLoader::set(const QImage &artwork, const std::optional<QString> &id)
{
    if (id == m_loadedArtworkID && artwork.cacheKey() == m_loadedArtwork.cacheKey())
        return;
    m_loadedArtwork = artwork;
    m_loadedArtworkID = id;
    Q_EMIT loadedArtworkChanged();
}

} // namespace brindle
