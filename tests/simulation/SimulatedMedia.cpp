#include "simulation/SimulatedMedia.h"

#include "media/PlayerScripts.h"

#include <QDateTime>

#include <array>

namespace brindle::simulation {

namespace {

const std::array players{PlayerScripts::spotify, PlayerScripts::music};

const std::array<QString, 4> sources{PlayerScripts::spotify, QStringLiteral("org.videolan.vlc"),
    QStringLiteral("firefox"), QStringLiteral("mpv")};

const std::array<QString, 3> titles{QStringLiteral("Red"), QStringLiteral("Green"), QStringLiteral("Blue")};

/// Lines that an adapter has no business to write.
const std::array<QByteArray, 6> oddLines{
    "\n", "{\n", "[1, 2]\n", "{\"payload\": 3}\n", "{\"payload\": {\"title\": 7}}\n", "\xff\xfe\n"};

} // namespace

SimulatedMedia::SimulatedMedia(FakePlatform &platform) : m_platform(platform), m_adapter(platform)
{
    for (const QString &player : players)
        platform.applications.install(player, QStringLiteral("Player"));
    platform.audio.set(OutputLevel{0.5, false});
}

QStringList SimulatedMedia::scriptedApplications()
{
    return {players.begin(), players.end()};
}

QJsonObject SimulatedMedia::payload(const Event &event) const
{
    const qint64 now = qint64(m_platform.time.now().secondsSince1970() * 1000);
    QJsonObject payload{{QStringLiteral("title"), titles[event.choice % titles.size()]},
        {QStringLiteral("artist"), QStringLiteral("Ann")},
        {QStringLiteral("bundleIdentifier"), sources[event.choice / 4 % sources.size()]},
        {QStringLiteral("playing"), event.x < 0.6}, {QStringLiteral("elapsedTime"), event.y * 200},
        {QStringLiteral("timestamp"),
            QDateTime::fromMSecsSinceEpoch(now, Qt::UTC).toString(Qt::ISODateWithMs)}};
    if (event.choice % 5 != 0)
        payload.insert(QStringLiteral("duration"), 180);
    return payload;
}

void SimulatedMedia::report(const Event &event)
{
    const QByteArray unwritten = std::exchange(m_unwritten, {});
    if (!unwritten.isEmpty())
        m_adapter.write(unwritten);
    switch (event.choice / 16 % 8) {
    case 0: // nothing plays
        return m_adapter.report({});
    case 1: // a change of what was told
        return m_adapter.write(event.x < 0.5 ? "{\"diff\": true, \"payload\": {\"artist\": null}}\n"
                                             : "{\"diff\": true, \"payload\": {\"playing\": false}}\n");
    case 2:
        return m_adapter.write(oddLines[std::size_t(event.x * double(oddLines.size()))]);
    case 3: { // the rest of the line comes later
        const QByteArray line = m_adapter.line(payload(event));
        const auto half = qsizetype(event.y * double(line.size()));
        m_unwritten = line.mid(half);
        return m_adapter.write(line.left(half));
    }
    default:
        return m_adapter.report(payload(event));
    }
}

void SimulatedMedia::endAdapter(const Event &event)
{
    m_unwritten.clear();
    m_platform.processes.refusesLaunch = event.choice % 4 == 0;
    m_adapter.end();
}

void SimulatedMedia::answerScripts(const Event &event)
{
    const QString &player = players[event.choice % players.size()];
    m_platform.scripts.sources.clear();
    if (event.x < 0.2) {
        m_platform.applications.running.remove(player);
        return;
    }
    m_platform.applications.running.insert(player);
    ScriptOutcome outcome;
    if (event.x < 0.8) {
        using Value = ScriptDescriptor;
        outcome.status = ScriptOutcome::Status::executed;
        outcome.result = Value::list(
            {Value::text(titles[event.choice / 4 % titles.size()]), Value::text(QStringLiteral("Ann")),
                Value::missing(), Value::number(180'000), Value::number(event.y * 200),
                Value::text(event.x < 0.6 ? QStringLiteral("playing") : QStringLiteral("paused"))});
    }
    m_platform.scripts.answers.insert(PlayerScripts::nowPlaying(player), outcome);
}

void SimulatedMedia::hangScripts(const Event &event)
{
    FakeSerialQueue *queue = m_platform.queues.value(QStringLiteral("com.brindle.media-fallback"));
    if (event.choice % 4 == 0)
        queue->hold();
    else
        queue->release();
}

void SimulatedMedia::turnVolume(const Event &event)
{
    m_volumeTurnedAt = m_platform.time.uptime();
    m_platform.audio.set(event.choice % 8 == 0
            ? std::nullopt
            : std::optional(OutputLevel{event.x * 1.2 - 0.1, event.choice % 8 == 1}));
}

} // namespace brindle::simulation
