#include "contract/scripts/LinuxScriptWorld.h"

#include "support/EventLoop.h"

#include <QCoreApplication>
#include <QDBusArgument>
#include <QDBusConnectionInterface>
#include <QDBusObjectPath>
#include <QDir>
#include <QFile>

#include <atomic>
#include <thread>

namespace brindle::test {

namespace {

using namespace Qt::StringLiterals;

const QString playerPath = u"/org/mpris/MediaPlayer2"_s;
const QString playerInterface = u"org.mpris.MediaPlayer2.Player"_s;
const QString spotifyService = u"org.mpris.MediaPlayer2.spotify"_s;

} // namespace

ScriptOutcome runOnAThread(ScriptRunner &port, const QString &source)
{
    ScriptOutcome outcome;
    std::atomic<bool> isOver = false;
    std::thread thread([&] {
        outcome = port.run(source);
        isOver = true;
        QMetaObject::invokeMethod(qApp, [] { }, Qt::QueuedConnection); // wakes whoever waits
    });
    eventually([&] { return isOver.load(); });
    thread.join();
    return outcome;
}

LinuxScriptWorld::LinuxScriptWorld() : LinuxScriptWorld(Patience()) { }

LinuxScriptWorld::LinuxScriptWorld(const Patience &patience)
    : m_port(m_connection, m_time,
          {path(u"config"_s), path(u"flatpaks"_s), path(u"proc"_s), patience.withAll, patience.withOne})
{
    m_connection.waitForConnection(10);
}

ScriptOutcome LinuxScriptWorld::run(const QString &source)
{
    return runOnAThread(m_port, source);
}

QString LinuxScriptWorld::textOf(const ScriptOutcome &outcome)
{
    if (outcome.status != ScriptOutcome::Status::executed || !outcome.result || !outcome.result->stringValue)
        return u"failed"_s;
    return *outcome.result->stringValue;
}

std::unique_ptr<DbusMock> LinuxScriptWorld::startPlayer(const QString &service, const QVariantMap &properties)
{
    auto player = std::make_unique<DbusMock>(DbusMock::Bare{bus, service, playerPath, playerInterface});
    player->script(playerPath, u"AddProperties"_s, {playerInterface, properties});
    for (const auto &[method, signature] : {std::pair(u"PlayPause"_s, u""_s), {u"SetPosition"_s, u"ox"_s}})
        player->script(playerPath, u"AddMethod"_s, {playerInterface, method, signature, u""_s, u""_s});
    return player;
}

void LinuxScriptWorld::say(const DbusMock &player, const QVariantMap &properties)
{
    player.script(playerPath, u"UpdateProperties"_s, {playerInterface, properties});
}

QVariantMap LinuxScriptWorld::propertiesOf(const Song &song)
{
    constexpr double microsecondsPerSecond = 1e6;
    const QVariantMap metadata{
        {u"mpris:trackid"_s, QVariant::fromValue(QDBusObjectPath(u"/com/spotify/track/abc"_s))},
        {u"mpris:length"_s, quint64(song.milliseconds * 1000)}, {u"mpris:artUrl"_s, song.artwork},
        {u"xesam:title"_s, song.title}, {u"xesam:artist"_s, QStringList{song.artist}},
        {u"xesam:album"_s, song.album}};
    return {{u"PlaybackStatus"_s, song.state == u"playing" ? u"Playing"_s : u"Paused"_s},
        {u"Metadata"_s, metadata}, {u"Position"_s, qint64(song.position * microsecondsPerSecond)}};
}

void LinuxScriptWorld::spotifyPlays(const Song &song)
{
    if (spotify)
        say(*spotify, propertiesOf(song));
    else
        spotify = startPlayer(spotifyService, propertiesOf(song));
}

void LinuxScriptWorld::spotifyStops()
{
    spotifyPlays({});
    say(*spotify, {{u"PlaybackStatus"_s, u"Stopped"_s}});
}

QStringList LinuxScriptWorld::commands()
{
    QStringList commands;
    const auto reply = spotify->script(playerPath, u"GetCalls"_s).arguments().value(0);
    const auto calls = reply.value<QDBusArgument>();
    calls.beginArray();
    while (!calls.atEnd()) {
        qulonglong time = 0;
        QString method;
        QVariantList arguments;
        calls.beginStructure();
        calls >> time >> method >> arguments;
        calls.endStructure();
        constexpr double microsecondsPerSecond = 1e6;
        if (method == u"SetPosition")
            commands.append(
                u"SetPosition "_s + QString::number(arguments.value(1).toDouble() / microsecondsPerSecond));
        else if (method == u"PlayPause")
            commands.append(method);
    }
    calls.endArray();
    return commands;
}

void LinuxScriptWorld::tabsSay(const QStringList &states)
{
    browser.tabs.clear();
    for (const QString &state : states)
        browser.tabs.append({.text = state});
    writePort(QByteArray::number(browser.port()) + "\n/devtools/browser/abc");
}

void LinuxScriptWorld::writePort(const QByteArray &text, const QString &folder)
{
    QDir().mkpath(path(folder));
    QFile file(path(folder) + u"/DevToolsActivePort"_s);
    if (file.open(QIODevice::WriteOnly))
        file.write(text);
}

void LinuxScriptWorld::pretendToRun(const QString &service, const QString &executable)
{
    const auto process = bus.control().interface()->servicePid(service).value();
    const QString folder = path(u"proc/"_s + QString::number(process));
    QDir().mkpath(folder);
    QFile::remove(folder + u"/exe"_s);
    QFile::link(executable, folder + u"/exe"_s);
}

} // namespace brindle::test
