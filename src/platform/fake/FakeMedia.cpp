#include "platform/fake/FakeMedia.h"

#include <utility>

namespace brindle {

void FakeSerialQueue::post(std::function<void()> work)
{
    m_waiting->push_back(std::move(work));
    if (!m_isHeld)
        scheduleTurn();
}

void FakeSerialQueue::release()
{
    m_isHeld = false;
    for (qsizetype i = 0; i < waiting(); ++i)
        scheduleTurn();
}

void FakeSerialQueue::scheduleTurn()
{
    m_scheduler.post([this, weak = std::weak_ptr(m_waiting)] {
        if (const auto waiting = weak.lock(); waiting && !m_isHeld)
            runNext(*waiting);
    });
}

void FakeSerialQueue::runNext(Waiting &waiting)
{
    if (waiting.empty())
        return;
    const auto work = std::move(waiting.front());
    waiting.erase(waiting.begin());
    work();
}

Subscription FakeAudioOutput::notify(std::function<void()> changed)
{
    return refusesNotification ? Subscription() : m_observers.add(std::move(changed));
}

void FakeAudioOutput::set(std::optional<OutputLevel> level)
{
    m_level = level;
    m_observers.call();
}

std::optional<QUrl> FakeWorkspace::urlForApplication(const QString &bundleIdentifier) const
{
    const auto found = installed.constFind(bundleIdentifier);
    return found == installed.constEnd() ? std::nullopt : std::optional(found->url);
}

std::optional<QString> FakeWorkspace::localizedName(const QUrl &url) const
{
    for (const Application &application : installed) {
        if (application.url == url)
            return application.name;
    }
    return std::nullopt;
}

QImage FakeWorkspace::icon(const QString &path) const
{
    for (const Application &application : installed) {
        if (application.url.toLocalFile() == path)
            return application.icon;
    }
    QImage plain(1, 1, QImage::Format_ARGB32_Premultiplied);
    plain.fill(Qt::gray);
    return plain;
}

bool FakeWorkspace::open(const QUrl &url)
{
    opened.append(url);
    return true;
}

void FakeWorkspace::install(const QString &bundleIdentifier, const QString &name)
{
    QImage picture(16, 16, QImage::Format_ARGB32_Premultiplied);
    picture.fill(QColor::fromHsv(int(qHash(bundleIdentifier) % 360), 200, 200));
    installed.insert(bundleIdentifier,
        {QUrl::fromLocalFile(QStringLiteral("/applications/") + bundleIdentifier), name, picture});
}

ScriptOutcome FakeScriptRunner::run(const QString &source)
{
    sources.append(source);
    return answers.value(source);
}

void FakeChildProcesses::Child::writeOutput(const QByteArray &chunk) const
{
    if (m_isRead && m_launch.standardOutput)
        m_launch.standardOutput(chunk);
}

void FakeChildProcesses::Child::writeError(const QByteArray &chunk) const
{
    if (m_isRead && m_launch.standardError)
        m_launch.standardError(chunk);
}

void FakeChildProcesses::Child::exit()
{
    if (std::exchange(m_isRunning, false) && m_launch.terminated)
        m_launch.terminated();
}

std::shared_ptr<ChildProcess> FakeChildProcesses::launch(Launch launch)
{
    if (refusesLaunch)
        return nullptr;
    return children.emplace_back(std::make_shared<Child>(std::move(launch)));
}

} // namespace brindle
