#pragma once

#include "contract/scripts/DevToolsPeer.h"
#include "contract/scripts/ScriptWorld.h"
#include "foundation/SystemScheduler.h"
#include "platform/linux/dbus/BusConnection.h"
#include "platform/linux/scripts/LinuxScriptRunner.h"
#include "support/dbus/DbusMock.h"
#include "support/dbus/PrivateBus.h"

#include <QTemporaryDir>

#include <memory>

namespace brindle::test {

/// A session with a bus, scripted players, and a browser's profile with a debugging port.
class LinuxScriptWorld : public ScriptWorld
{
public:
    /// Seconds: ample, but where a test is about the wait.
    struct Patience
    {
        double withAll = 12;
        double withOne = 6;
    };

    LinuxScriptWorld();
    explicit LinuxScriptWorld(const Patience &patience);

    ScriptOutcome run(const QString &source) override;
    void spotifyPlays(const Song &song) override;
    void spotifyStops() override;
    void tabsSay(const QStringList &states) override;
    QStringList commands() override;

    QString runBrowser() { return textOf(run(BrowserScripts::nowPlaying(chromium))); }
    /// The text that a script gave, "failed" where it gave none.
    static QString textOf(const ScriptOutcome &outcome);

    /// A player comes onto the bus and says this of itself.
    std::unique_ptr<DbusMock> startPlayer(const QString &service, const QVariantMap &properties);
    static void say(const DbusMock &player, const QVariantMap &properties);
    static QVariantMap propertiesOf(const Song &song);
    /// Makes the process of `service` look like one that runs `executable`.
    void pretendToRun(const QString &service, const QString &executable);

    /// What the browser has in its profile folder, below the user's configuration folder.
    void writePort(const QByteArray &text, const QString &folder = QStringLiteral("config/chromium"));
    QString path(const QString &name) const { return m_folder.filePath(name); }

    PrivateBus bus;
    DevToolsPeer browser;
    std::unique_ptr<DbusMock> spotify;

private:
    QTemporaryDir m_folder;
    SystemScheduler m_time;
    BusConnection m_connection{BusConnection::busAt(bus.address()), m_time};
    LinuxScriptRunner m_port;
};

/// Runs a script as the program does: on a thread of its own, without an event loop there.
ScriptOutcome runOnAThread(ScriptRunner &port, const QString &source);

} // namespace brindle::test
