#pragma once

#include "foundation/Lifetime.h"
#include "foundation/SerialQueue.h"
#include "foundation/Subscription.h"
#include "platform/UrlSession.h"

#include <QImage>
#include <QObject>
#include <QString>

#include <memory>
#include <optional>

namespace brindle {

class MediaProvider;
class Scheduler;
struct NowPlayingTrack;

/// The picture of the song that plays: the one that came with it, else the one at its address, which is
/// fetched once for each song.
///
/// `loadedArtwork` is there exactly while `loadedArtworkID` is, and belongs to the song of that presentation
/// id, which is the one that plays. A fetch ends with its song; one that fails leaves no picture and is not
/// tried again. Main thread.
class ArtworkLoader : public QObject
{
    Q_OBJECT

public:
    /// What a picture may cost.
    static constexpr UrlSession::Limits limits{.size = qint64(8) * 1024 * 1024, .duration = 15};

    /// `decoder` is where pictures are unpacked. All others outlive the loader.
    ArtworkLoader(MediaProvider &media, UrlSession &session, std::unique_ptr<SerialQueue> decoder,
        Scheduler &scheduler, QObject *parent = nullptr);

    const QImage &loadedArtwork() const { return m_loadedArtwork; }
    const std::optional<QString> &loadedArtworkID() const { return m_loadedArtworkID; }
    /// The picture to show of this track, null for none.
    QImage artworkOf(const NowPlayingTrack &track) const;

Q_SIGNALS:
    void loadedArtworkChanged();

private:
    void trackChanged();
    void startFor(const NowPlayingTrack &track);
    void cancel();
    void decode(const QByteArray &file);
    void set(const QImage &artwork, const std::optional<QString> &id);

    MediaProvider &m_media;
    UrlSession &m_session;
    Scheduler &m_scheduler;
    QImage m_loadedArtwork;
    std::optional<QString> m_loadedArtworkID;
    /// Of the loaded artwork, where its track had one.
    std::optional<quint64> m_fingerprint;
    /// The song that was last attended to, whatever came of it.
    std::optional<QString> m_song;
    /// Tells answers to this song's request from those to an earlier one's.
    quint64 m_request = 0;
    Subscription m_fetch;
    std::unique_ptr<SerialQueue> m_decoder;
    Lifetime m_lifetime;
};

} // namespace brindle
