#include "platform/linux/applications/ApplicationCatalogue.h"

#include <QFileInfo>

#include <chrono>
#include <utility>

namespace brindle {

namespace {

/// The closest folder that is there.
QString existing(QString folder)
{
    while (!QFileInfo(folder).isDir() && folder != QFileInfo(folder).path())
        folder = QFileInfo(folder).path();
    return folder;
}

} // namespace

ApplicationCatalogue::ApplicationCatalogue(
    Scheduler &scheduler, const QStringList &folders, const QStringList &languages)
    : m_scheduler(scheduler)
    , m_folders(folders)
    , m_languages(languages)
    , m_index(std::make_shared<const ApplicationIndex>(QStringList(), QStringList()))
    , m_nextReading(scheduler.after(startDelay, [this] { read(); }))
{
    connect(&m_watcher, &QFileSystemWatcher::directoryChanged, this,
        [this] { m_nextReading = m_scheduler.after(settlingTime, [this] { read(); }); });
}

ApplicationCatalogue::Index ApplicationCatalogue::index()
{
    if (!m_reading.valid())
        read();
    if (!std::exchange(m_hasWaited, true)) {
        m_reading.wait_for(std::chrono::duration<double>(patience));
        take();
    }
    return m_index;
}

void ApplicationCatalogue::read()
{
    m_nextReading.cancel();
    auto promise = std::make_shared<std::promise<Index>>();
    m_reading = promise->get_future().share();
    m_queue.post([promise, folders = m_folders, languages = m_languages, &scheduler = m_scheduler,
                     announce = m_lifetime.guard([this] { take(); })] {
        promise->set_value(std::make_shared<const ApplicationIndex>(folders, languages));
        scheduler.post(announce);
    });
}

void ApplicationCatalogue::take()
{
    if (m_reading.wait_for(std::chrono::seconds(0)) != std::future_status::ready)
        return; // a later reading has begun, and will announce itself
    m_hasWaited = true;
    const Index read = m_reading.get();
    if (std::exchange(m_index, read) == read)
        return;
    watch();
    Q_EMIT changed();
}

void ApplicationCatalogue::watch()
{
    QStringList wanted = m_index->folders();
    for (const QString &folder : m_folders)
        wanted.append(existing(folder));
    wanted.removeDuplicates();
    const QStringList watched = m_watcher.directories();
    for (const QString &folder : watched) {
        if (!wanted.contains(folder))
            m_watcher.removePath(folder);
    }
    for (const QString &folder : std::as_const(wanted)) {
        if (!watched.contains(folder))
            m_watcher.addPath(folder);
    }
}

} // namespace brindle
