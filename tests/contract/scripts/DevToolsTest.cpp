#include "platform/linux/scripts/DevTools.h"

#include "contract/scripts/LinuxScriptWorld.h"

#include <QDir>

#include <gmock/gmock.h>
#include <sys/stat.h>

namespace brindle::test {

namespace {

using namespace Qt::StringLiterals;
using testing::ElementsAre;
using testing::IsEmpty;

const QString failed = u"failed"_s;
const QString paused = mediaState(false, u"Paused"_s);
const QString playing = mediaState(true, u"Playing"_s);

QByteArray http(const QByteArray &status, const QByteArray &fields, const QByteArray &body = {})
{
    return "HTTP/1.1 " + status + "\r\n" + fields + "\r\n" + body;
}

class DevToolsTest : public testing::Test
{
protected:
    explicit DevToolsTest(const LinuxScriptWorld::Patience &patience = {}) : world(patience) { }

    /// Opens the browser's port; its tabs come as they are.
    QString ask(const QList<DevToolsPeer::Tab> &tabs)
    {
        world.tabsSay({});
        world.browser.tabs = tabs;
        return world.runBrowser();
    }

    LinuxScriptWorld world;
};

/// Where something never answers, and that is waited for.
class PatienceWithTabsTest : public DevToolsTest
{
protected:
    PatienceWithTabsTest() : DevToolsTest({.withAll = 3, .withOne = 1}) { }
};

class ShortPatienceTest : public DevToolsTest
{
protected:
    ShortPatienceTest() : DevToolsTest({.withAll = 0.2, .withOne = 0.1}) { }
};

} // namespace

TEST_F(DevToolsTest, TheVeryJavaScriptOfTheScriptIsRun)
{
    QStringList lines = BrowserScripts::nowPlaying(chromium).split(u'\n');
    lines[5] = u"                set mediaState to execute browserTab javascript \"f(\\\"\\\\n\\\")\""_s;
    world.tabsSay({u""_s});
    world.run(lines.join(u'\n'));
    world.runBrowser();
    EXPECT_EQ(world.browser.expressions().value(0), u"f(\"\\n\")"_s);
    EXPECT_TRUE(BrowserScripts::nowPlaying(chromium).contains(world.browser.expressions().value(1)));
}

TEST_F(DevToolsTest, TheFirstTabThatPlaysEndsTheWalk)
{
    EXPECT_EQ(ask({{.text = paused}, {.text = playing}, {.text = mediaState(true, u"Late"_s)}}), playing);
    EXPECT_THAT(world.browser.asked(), ElementsAre(0, 1));
}

TEST_F(DevToolsTest, OnlyPagesAreAsked)
{
    EXPECT_EQ(ask({{.text = playing, .type = u"service_worker"_s}, {.text = playing, .type = u"browser_ui"_s},
                  {.text = paused}}),
        paused);
    EXPECT_THAT(world.browser.asked(), ElementsAre(2));
}

TEST_F(DevToolsTest, ATabThatRefusesIsPassedOver)
{
    const QByteArray thrown =
        R"({"id":1,"result":{"result":{"type":"string","value":"1 thrown"},"exceptionDetails":{}}})";
    const QByteArray number = R"({"id":1,"result":{"result":{"type":"number","value":1}}})";
    const QByteArray refused = R"({"id":1,"error":{"code":-32000,"message":"no"}})";
    EXPECT_EQ(ask({{.hangsUp = true}, {.answer = thrown}, {.answer = number}, {.answer = refused},
                  {.answer = "no JSON"}, {.answer = "[]"}, {.text = playing}}),
        playing);
    EXPECT_THAT(world.browser.asked(), ElementsAre(0, 1, 2, 3, 4, 5, 6));
}

TEST_F(PatienceWithTabsTest, ATabThatHangsDoesNotKeepTheOthersFromBeingAsked)
{
    EXPECT_EQ(ask({{.text = std::nullopt}, {.text = playing}}), playing);
}

TEST_F(DevToolsTest, EventsAndSignsOfLifeBeforeTheAnswerArePassedOver)
{
    const QByteArray event = R"({"method":"Inspector.targetReloadedAfterCrash","params":{}})";
    EXPECT_EQ(ask({{.frames = DevToolsPeer::frame("ping", char(0x89)) + DevToolsPeer::frame(event)
                      + DevToolsPeer::frame("", char(0x8a))
                      + DevToolsPeer::frame(DevToolsPeer::evaluation(playing))}}),
        playing);
}

TEST_F(DevToolsTest, AnAnswerInPiecesIsPutTogether)
{
    const QByteArray answer = DevToolsPeer::evaluation(playing);
    EXPECT_EQ(
        ask({{.frames = DevToolsPeer::frame(answer.first(10), char(0x01))
                + DevToolsPeer::frame("", char(0x89)) + DevToolsPeer::frame(answer.mid(10), char(0x80))}}),
        playing);
}

TEST_F(DevToolsTest, WhatBreaksTheRulesOfTheWireIsPassedOver)
{
    const QByteArray answer = DevToolsPeer::evaluation(mediaState(true, u"Wrong"_s));
    QByteArray masked = DevToolsPeer::frame(answer);
    masked[1] = char(masked[1] | char(0x80));
    const QByteArray huge = QByteArray::fromHex("817f7fffffffffffffff") + answer;
    const QByteArray longer = QByteArray::fromHex("817f0000000000100000") + QByteArray(0x100000, ' ');
    const QByteArray negative = QByteArray::fromHex("817fffffffffffffffff") + answer;
    QList<DevToolsPeer::Tab> tabs;
    for (const QByteArray &frames : QList<QByteArray>{masked, huge, longer, negative,
             DevToolsPeer::frame(answer, char(0xc1)), DevToolsPeer::frame(answer, char(0x82)),
             DevToolsPeer::frame(answer, char(0x80)), DevToolsPeer::frame("", char(0x88)),
             DevToolsPeer::frame(answer.first(5), char(0x01)) + DevToolsPeer::frame(answer, char(0x81)),
             QByteArray("garbage, and plenty of it")})
        tabs.append({.frames = frames});
    tabs.append({.text = paused});
    EXPECT_EQ(ask(tabs), paused);
    EXPECT_EQ(world.browser.asked().size(), tabs.size());
}

TEST_F(DevToolsTest, AHandshakeThatProvesNothingIsNone)
{
    const QByteArray fields = "Upgrade: websocket\r\nConnection: Upgrade\r\nSec-WebSocket-Accept: ";
    EXPECT_EQ(ask({{.handshake = http("101 Switching", fields + "d3Jvbmc=\r\n")},
                  {.handshake = http("200 OK", "Content-Length: 0\r\n")},
                  {.handshake = http("302 Found", "Location: http://127.0.0.1/\r\n")},
                  {.handshake = "garbage\r\n\r\n"}, {.text = playing}}),
        playing);
    EXPECT_EQ(world.browser.expressions().size(), 1) << "the others were told nothing";
}

TEST_F(DevToolsTest, ASocketAnywhereElseIsNotVisited)
{
    DevToolsPeer other;
    other.tabs = {{.text = playing}};
    const QString here = QString::number(world.browser.port());
    QList<DevToolsPeer::Tab> tabs;
    for (const QString &url : QStringList{u"ws://192.0.2.1:"_s + here + u"/devtools/page/TAB-0"_s,
             u"ws://127.0.0.1:"_s + QString::number(other.port()) + u"/devtools/page/TAB-0"_s,
             u"wss://127.0.0.1:"_s + here + u"/devtools/page/TAB-0"_s,
             u"ws://127.0.0.1:"_s + here + u"@192.0.2.1/devtools/page/TAB-0"_s,
             u"ws://127.0.0.1:"_s + here + u"/devtools/page/TAB-0 HTTP/1.1\r\nX: y"_s,
             u"ws://127.0.0.1:"_s + here + u"/devtools/page/../browser/x"_s,
             u"ws://127.0.0.1:"_s + here + u"/json/close/TAB-0"_s, u"http://127.0.0.1:"_s + here, u" "_s})
        tabs.append({.text = playing, .socketUrl = url});
    tabs.append({.text = paused, .socketUrl = u"ws://localhost:"_s + here + u"/devtools/page/TAB-9"_s});
    EXPECT_EQ(ask(tabs), paused);
    EXPECT_THAT(world.browser.asked(), ElementsAre(tabs.size() - 1));
    EXPECT_EQ(other.connections(), 0);
}

TEST_F(DevToolsTest, AnswersThatAreNotThePlainListCountAsNone)
{
    DevToolsPeer other;
    const QByteArray elsewhere =
        "Location: http://127.0.0.1:" + QByteArray::number(other.port()) + "/json/list\r\n";
    const QByteArray empty = "Content-Length: 2\r\n";
    for (const QByteArray &answer :
        QList<QByteArray>{http("302 Found", elsewhere + empty, "[]"), http("500 Sorry", empty, "[]"),
            http("200 OK", "Transfer-Encoding: chunked\r\n", "2\r\n[]\r\n0\r\n\r\n"),
            http("200 OK", "Content-Length: -2\r\n", "[]"), http("200 OK", "Content-Length: 2x\r\n", "[]"),
            http("200 OK", "Content-Length: 99999999999\r\n", "[]"),
            http("200 OK", "Content-Length: 99999999999999999999999\r\n", "[]"), http("200 OK", empty, "{}"),
            http("200 OK", "Content-Length: 4\r\n", "\xff\xfe[]"),
            QByteArray("HTTP/1.0 200 OK\r\n" + empty + "\r\n[]"),
            QByteArray("HTTP/1.1 2000 OK\r\n" + empty + "\r\n[]"), QByteArray("SSH-2.0-OpenSSH_9\r\n\r\n")}) {
        world.browser.list = answer;
        EXPECT_EQ(ask({{.text = playing}}), QString())
            << "only the bus is left, and nobody is there: " << answer.toStdString();
    }
    EXPECT_THAT(world.browser.asked(), IsEmpty());
    EXPECT_EQ(other.connections(), 0) << "redirections are not followed";
}

TEST_F(DevToolsTest, AListOfWrongThingsIsAListOfNothing)
{
    const QByteArray body =
        R"([null, 1, "page", [], {}, {"type": 1, "webSocketDebuggerUrl": 2}, {"type": "page"}])";
    world.browser.list = http("200 OK", "Content-Length: " + QByteArray::number(body.size()) + "\r\n", body);
    EXPECT_EQ(ask({{.text = playing}}), QString());
}

TEST_F(DevToolsTest, ABrowserThatRunsAsAFlatpakIsFoundInItsOwnHome)
{
    world.browser.tabs = {{.text = playing}};
    world.writePort(
        QByteArray::number(world.browser.port()), u"flatpaks/org.chromium.Chromium/config/chromium"_s);
    EXPECT_EQ(world.runBrowser(), playing);
}

TEST_F(DevToolsTest, AnotherBrowsersPortIsNotAsked)
{
    world.browser.tabs = {{.text = playing}};
    world.writePort(QByteArray::number(world.browser.port()), u"config/google-chrome"_s);
    EXPECT_EQ(world.runBrowser(), QString());
    EXPECT_EQ(world.browser.connections(), 0);
}

TEST_F(DevToolsTest, APortThatNobodyListensAtAnyMoreDoesNoHarm)
{
    quint16 port = 0;
    {
        const DevToolsPeer gone;
        port = gone.port();
    }
    world.writePort(QByteArray::number(port));
    EXPECT_EQ(world.runBrowser(), QString());
}

TEST_F(DevToolsTest, AHostileFileNamesNoPort)
{
    const QString folder = world.path(u"config/chromium"_s);
    EXPECT_EQ(DevTools::portOfProfile(folder), std::nullopt) << "there is none";
    for (const QByteArray &text : QList<QByteArray>{QByteArray(), QByteArray("0"), QByteArray("65536"),
             QByteArray("-1"), QByteArray("080"), QByteArray(" 80"), QByteArray("80 "), QByteArray("80x"),
             QByteArray("+80"), QByteArray("\n80"),
             QByteArray("8\0"
                        "0",
                 3),
             QByteArray("80\n") + QByteArray(2000, 'x')}) {
        world.writePort(text);
        EXPECT_EQ(DevTools::portOfProfile(folder), std::nullopt) << text.left(20).toStdString();
    }
    world.writePort("65535\n/devtools/browser/abc");
    EXPECT_EQ(DevTools::portOfProfile(folder), 65535);

    const QString file = folder + u"/DevToolsActivePort"_s;
    QFile::remove(file);
    QDir().mkdir(file);
    EXPECT_EQ(DevTools::portOfProfile(folder), std::nullopt) << "a folder";
    QDir().rmdir(file);
    ASSERT_EQ(::mkfifo(QFile::encodeName(file).constData(), 0600), 0);
    EXPECT_EQ(DevTools::portOfProfile(folder), std::nullopt) << "a pipe, at whose other end nobody is";
    QFile::remove(file);
    QFile::link(u"/dev/zero"_s, file);
    EXPECT_EQ(DevTools::portOfProfile(folder), std::nullopt) << "a device without end";
}

TEST_F(ShortPatienceTest, APeerThatNeverAnswersIsGivenUp)
{
    world.browser.list = QByteArray();
    EXPECT_EQ(ask({}), QString());
    world.browser.list = http("200 OK", "Content-Length: 100\r\n", "[");
    EXPECT_EQ(ask({}), QString());
}

TEST_F(ShortPatienceTest, APeerThatSendsWithoutEndIsGivenUp)
{
    world.browser.isEndless = true;
    for (const QByteArray &beginning : QList<QByteArray>{QByteArray("x"),
             QByteArray("HTTP/1.1 200 OK\r\nX: "), http("200 OK", "Content-Length: 8000000\r\n", "[")}) {
        world.browser.list = beginning;
        EXPECT_EQ(ask({}), QString());
    }
}

TEST_F(PatienceWithTabsTest, TabsThatAllHangAreGivenUpAndWhatWasSaidBeforeCounts)
{
    QList<DevToolsPeer::Tab> tabs{{.text = paused}};
    tabs.resize(20);
    EXPECT_EQ(ask(tabs), paused);
    EXPECT_LT(world.browser.asked().size(), 20);
}

TEST_F(ShortPatienceTest, SignsOfLifeWithoutEndAreNoAnswer)
{
    QByteArray pings;
    for (int i = 0; i < 10'000; ++i)
        pings += DevToolsPeer::frame("", char(0x89));
    EXPECT_EQ(ask({{.frames = pings}}), QString());
}

TEST(DevTools, AScriptEndsWithinTwoSeconds)
{
    EXPECT_LT(LinuxScriptRunner::Surroundings{}.patience, 2);
}

} // namespace brindle::test
