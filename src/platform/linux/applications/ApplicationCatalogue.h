#pragma once

#include "foundation/Lifetime.h"
#include "foundation/Scheduler.h"
#include "foundation/ThreadQueue.h"
#include "platform/linux/applications/ApplicationIndex.h"

#include <QFileSystemWatcher>
#include <QObject>
#include <QStringList>

#include <future>
#include <memory>

namespace brindle {

/// The installed applications, kept up to date.
///
/// The entries are read on a thread of their own, a moment after the start or when they are first asked for,
/// and again a moment after one of their folders changed. Until they have been read again, what was read
/// before holds. Main thread.
class ApplicationCatalogue : public QObject
{
    Q_OBJECT

public:
    using Index = std::shared_ptr<const ApplicationIndex>;

    /// Seconds between the start, or a change, and the reading.
    static constexpr double startDelay = 3;
    static constexpr double settlingTime = 0.5;
    /// Seconds that the first question waits for the reading at the longest. If that is not enough, nothing
    /// is installed until the reading has come to its end.
    static constexpr double patience = 1;

    /// The first folder has the last word.
    ApplicationCatalogue(Scheduler &scheduler, const QStringList &folders, const QStringList &languages);

    Index index();

Q_SIGNALS:
    /// Another index holds from now on.
    void changed();

private:
    void read();
    void take();
    void watch();

    Scheduler &m_scheduler;
    const QStringList m_folders;
    const QStringList m_languages;
    Index m_index;
    std::shared_future<Index> m_reading;
    bool m_hasWaited = false;
    Delay m_nextReading;
    QFileSystemWatcher m_watcher;
    ThreadQueue m_queue{QStringLiteral("com.brindle.applications")};
    Lifetime m_lifetime;
};

} // namespace brindle
