#pragma once

#include "adapter/linux/BackgroundReads.h"
#include "foundation/Lifetime.h"

#include <QByteArray>
#include <QCache>
#include <QObject>

#include <memory>

namespace brindle::adapter {

class ArtworkFetch;

/// Has the picture of the address that is wanted, once it is read or fetched.
///
/// Remote pictures are kept for a while, so that going back a track fetches nothing. Files are read each time
/// that they are wanted, since some players write all their pictures to the same one. Main thread.
class ArtworkLoader : public QObject
{
    Q_OBJECT

public:
    /// `fetchProgram`: what `ArtworkFetch` runs.
    ArtworkLoader(Scheduler &scheduler, const QString &fetchProgram);
    ~ArtworkLoader() override;

    /// From here on the picture is that of `address`. Wanting the same again looks again; until that is done
    /// the former picture stays.
    void want(const QByteArray &address);

    /// In Base64; empty while there is none.
    const QByteArray &picture() const { return m_picture; }
    /// Whether it is being read from this machine, which takes no time to speak of.
    bool isReading() const { return m_isReading; }

Q_SIGNALS:
    /// The picture may be another one, or is not being read any more.
    void changed();

private:
    void wantAgain();
    void wantOther(const QByteArray &address);
    void read();
    void wasRead(const QByteArray &picture);
    void fetch();
    void fetched(const QByteArray &picture);
    void become(const QByteArray &picture);

    Scheduler &m_scheduler;
    const QString m_fetchProgram;
    QByteArray m_address;
    QByteArray m_picture;
    bool m_isReading = false;
    /// The file was wanted again while it was read.
    bool m_isWantedAgain = false;
    /// Counts what was begun; only the last of it matters.
    quint64 m_begun = 0;
    QCache<QByteArray, QByteArray> m_fetched;
    std::unique_ptr<ArtworkFetch> m_fetch;
    BackgroundReads m_reads;
    Lifetime m_lifetime;
};

} // namespace brindle::adapter
