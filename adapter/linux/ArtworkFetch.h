#pragma once

#include "foundation/Scheduler.h"

#include <QByteArray>
#include <QObject>
#include <QProcess>

#include <functional>

namespace brindle::adapter {

/// Fetches one picture over the network, in a process of its own: what comes from there is not let into this
/// one, and neither is all that it takes to fetch it.
///
/// Ends with the object.
class ArtworkFetch : public QObject
{
    Q_OBJECT

public:
    /// Seconds that a fetch may take.
    static constexpr double patience = 10;

    /// `program` fetches the address that it reads, and writes the picture in Base64. `done` gets that, or
    /// nothing when there is no picture to be had; never before this returns.
    ArtworkFetch(Scheduler &scheduler, const QString &program, const QByteArray &address,
        std::function<void(QByteArray)> done);
    ~ArtworkFetch() override;

private:
    void take();
    void end(const QByteArray &result);

    std::function<void(QByteArray)> m_done;
    QProcess m_process;
    QByteArray m_text;
    Delay m_deadline;
};

} // namespace brindle::adapter
