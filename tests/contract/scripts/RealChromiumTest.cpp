#include "contract/scripts/LinuxScriptWorld.h"
#include "platform/linux/scripts/DevTools.h"
#include "support/EventLoop.h"

#include <QDir>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QProcess>
#include <QProcessEnvironment>
#include <QtEndian>

#include <gtest/gtest.h>

namespace brindle::test {

namespace {

using namespace Qt::StringLiterals;

/// Two seconds of silence.
QByteArray sound()
{
    constexpr quint32 rate = 8000;
    constexpr quint32 size = 2 * rate;
    const auto number = [](auto value) {
        QByteArray bytes(sizeof value, '\0');
        qToLittleEndian(value, bytes.data());
        return bytes;
    };
    return "RIFF" + number(quint32(36 + size)) + "WAVEfmt " + number(quint32(16)) + number(quint16(1))
        + number(quint16(1)) + number(rate) + number(rate) + number(quint16(1)) + number(quint16(8)) + "data"
        + number(size) + QByteArray(size, char(0x80));
}

QByteArray page(const QByteArray &title, const QByteArray &attributes)
{
    return "<!DOCTYPE html><title>" + title + "</title><audio src=/sound.wav " + attributes + "></audio>";
}

/// A site with sound on its pages, which tells when a browser has got so far.
class Site : public QTcpServer
{
    Q_OBJECT

public:
    QStringList heard;

    Site()
    {
        connect(this, &QTcpServer::newConnection, this, [this] {
            auto *const socket = nextPendingConnection();
            connect(socket, &QTcpSocket::readyRead, this, [this, socket] { answer(socket); });
        });
        listen(QHostAddress::LocalHost);
    }

    QString url(const QString &path) const { return u"http://127.0.0.1:%1/%2"_s.arg(serverPort()).arg(path); }

private:
    void answer(QTcpSocket *socket)
    {
        const QByteArray path = socket->readAll().split(' ').value(1);
        QByteArray type = "text/html";
        QByteArray body;
        if (path == "/paused") {
            body = page("A paused page", "preload=auto onloadeddata=\"fetch('/heard/paused')\"");
        } else if (path == "/playing") {
            body = page("A playing page - YouTube", "autoplay loop onplaying=\"fetch('/heard/playing')\"");
        } else if (path == "/sound.wav") {
            type = "audio/wav";
            body = sound();
        } else if (path.startsWith("/heard/")) {
            heard.append(QString::fromLatin1(path.mid(7)));
        }
        socket->write("HTTP/1.1 200 OK\r\nContent-Type: " + type + "\r\nConnection: close\r\nContent-Length: "
            + QByteArray::number(body.size()) + "\r\n\r\n" + body);
        socket->disconnectFromHost();
    }
};

/// The browser itself, without a window.
class Browser
{
public:
    Browser(const LinuxScriptWorld &world, const QString &url) : m_profile(world.path(u"config/chromium"_s))
    {
        const QString home = world.path(u"home"_s);
        QDir().mkpath(home);
        auto environment = QProcessEnvironment::systemEnvironment();
        environment.insert(u"HOME"_s, home);
        environment.insert(u"XDG_RUNTIME_DIR"_s, home);
        environment.insert(u"DBUS_SESSION_BUS_ADDRESS"_s, world.bus.address());
        environment.insert(u"DBUS_SYSTEM_BUS_ADDRESS"_s, world.bus.address());
        m_process.setProcessEnvironment(environment);
        m_process.setStandardOutputFile(QProcess::nullDevice());
        m_process.setStandardErrorFile(QProcess::nullDevice());
        endWithUs(m_process);
        m_process.start(u"chromium"_s,
            {u"--headless"_s, u"--no-sandbox"_s, u"--disable-gpu"_s, u"--disable-quic"_s, u"--no-first-run"_s,
                u"--disable-background-networking"_s, u"--disable-component-update"_s, u"--disable-sync"_s,
                u"--password-store=basic"_s, u"--autoplay-policy=no-user-gesture-required"_s,
                u"--remote-debugging-port=0"_s, u"--user-data-dir="_s + m_profile, url});
    }
    ~Browser()
    {
        m_process.terminate();
        m_process.waitForFinished();
    }
    Browser(const Browser &) = delete;
    Browser &operator=(const Browser &) = delete;

    void openTab(const QString &url)
    {
        const quint16 port = DevTools::portOfProfile(m_profile).value_or(0);
        const QString address = u"http://127.0.0.1:%1/json/new?%2"_s.arg(QString::number(port), url);
        QObject::connect(m_network.sendCustomRequest(QNetworkRequest(QUrl(address)), "PUT"),
            &QNetworkReply::finished, &m_network, [] { });
    }

private:
    const QString m_profile;
    QProcess m_process;
    QNetworkAccessManager m_network;
};

std::optional<NowPlayingTrack> ask(LinuxScriptWorld &world)
{
    return BrowserScripts::track(world.runBrowser(), chromium, {}, {});
}

} // namespace

TEST(RealChromium, OfTwoTabsTheSecondIsToldIfItPlaysThoughTheFirstHoldsAPausedElement)
{
    Site site;
    LinuxScriptWorld world;
    Browser browser(world, site.url(u"paused"_s));
    ASSERT_TRUE(eventually([&] { return site.heard.contains(u"paused"_s); }, 60));
    const auto paused = ask(world);
    ASSERT_TRUE(paused);
    EXPECT_EQ(paused->title, u"A paused page"_s);
    EXPECT_FALSE(paused->isPlaying);
    EXPECT_EQ(paused->elapsed, 0);

    browser.openTab(site.url(u"playing"_s));
    ASSERT_TRUE(eventually([&] { return site.heard.contains(u"playing"_s); }, 60));
    const auto playing = ask(world);
    ASSERT_TRUE(playing);
    EXPECT_EQ(playing->title, u"A playing page"_s);
    EXPECT_TRUE(playing->isPlaying);
    EXPECT_EQ(playing->artist, u"127.0.0.1"_s);
    EXPECT_EQ(playing->duration, 2);
    EXPECT_EQ(playing->sourceName, u"Chromium"_s);
}

} // namespace brindle::test

#include "RealChromiumTest.moc"
