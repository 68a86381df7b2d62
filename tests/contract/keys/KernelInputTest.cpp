#include "contract/keys/KeyNode.h"
#include "platform/MediaKeys.h"
#include "platform/linux/hardware/KernelInputMonitoring.h"
#include "platform/linux/hardware/KernelMediaKeys.h"
#include "support/EventLoop.h"

#include <QFile>
#include <QFileSystemWatcher>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <linux/input.h>
#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

namespace brindle::test {

using namespace Qt::StringLiterals;

namespace {

class KernelKeys : public testing::Test
{
protected:
    void listen()
    {
        monitor = keys.addGlobalMonitor([this](long data1) { heard.append(data1); });
    }
    bool hears(long code)
    {
        const long down = mediaKeyData(code, MediaKeyState::down);
        return eventually([this, down] { return heard.contains(down); });
    }

    KeyFolder folder;
    std::unique_ptr<KeyNode> keyboard = std::make_unique<KeyNode>(folder.path(u"event3"_s));
    KernelMediaKeys keys{folder.nodes()};
    QList<long> heard;
    Subscription monitor;
};

} // namespace

TEST_F(KernelKeys, AHeldKeyComesDownAgainAndAgain)
{
    listen();
    keyboard->send(KEY_VOLUMEUP, 1);
    keyboard->send(KEY_VOLUMEUP, 2);
    keyboard->send(KEY_VOLUMEUP, 2);
    keyboard->send(KEY_VOLUMEUP, 0);
    const long down = mediaKeyData(MediaKeyCode::soundUp, MediaKeyState::down);
    const long up = mediaKeyData(MediaKeyCode::soundUp, MediaKeyState::up);
    EXPECT_TRUE(eventually([&] { return heard == QList<long>{down, down, down, up}; }));
}

TEST_F(KernelKeys, AKeyboardThatIsPluggedInLaterIsHeard)
{
    listen();
    const KeyNode another(folder.path(u"event17"_s));
    EXPECT_TRUE(eventually([this] { return keys.openNodes() == 2; }));
    another.press(KEY_MUTE);
    EXPECT_TRUE(hears(MediaKeyCode::mute));
    keyboard->press(KEY_VOLUMEDOWN);
    EXPECT_TRUE(hears(MediaKeyCode::soundDown));
}

TEST_F(KernelKeys, AKeyboardThatIsPulledOutIsLetGoAndMayReturn)
{
    listen();
    ASSERT_TRUE(monitor);
    keyboard->unplug();
    EXPECT_TRUE(eventually([this] { return keys.openNodes() == 0; }));
    const KeyNode again(folder.path(u"event3"_s));
    EXPECT_TRUE(eventually([this] { return keys.openNodes() == 1; }));
    again.press(KEY_BRIGHTNESSUP);
    EXPECT_TRUE(hears(MediaKeyCode::brightnessUp));
}

TEST_F(KernelKeys, ANodeThatIsGivenToItsReadersOnlyAfterItAppearedIsHeard)
{
    bool isGiven = false;
    KernelMediaKeys late{InputNodes(folder.folder.path(), [&isGiven, first = -1](int descriptor) mutable {
        // The first one that is asked about is the keyboard that is there.
        if (first < 0)
            first = descriptor;
        return descriptor == first || isGiven;
    })};
    const Subscription listening = late.addGlobalMonitor([this](long data1) { heard.append(data1); });
    ASSERT_EQ(late.openNodes(), 1);
    const KeyNode another(folder.path(u"event17"_s));
    deliverEvents();
    ASSERT_EQ(late.openNodes(), 1);
    isGiven = true;
    chmod(QFile::encodeName(folder.path(u"event17"_s)).constData(), 0660);
    EXPECT_TRUE(eventually([&late] { return late.openNodes() == 2; }));
}

TEST_F(KernelKeys, OnlyNodesOfEventsAreOpened)
{
    const KeyNode mouse(folder.path(u"mouse0"_s));
    const KeyNode stick(folder.path(u"js0"_s));
    listen();
    EXPECT_EQ(keys.openNodes(), 1);
}

TEST_F(KernelKeys, WithoutAKeyboardNoMonitorIsGranted)
{
    keyboard.reset();
    listen();
    EXPECT_FALSE(monitor);
    KernelMediaKeys deaf{InputNodes(folder.folder.path(), [](int) { return false; })};
    const KeyNode mouse(folder.path(u"event1"_s));
    EXPECT_FALSE(deaf.addGlobalMonitor([](long) { }));
    KernelMediaKeys nowhere{InputNodes(u"/nowhere"_s)};
    EXPECT_FALSE(nowhere.addGlobalMonitor([](long) { }));
}

TEST_F(KernelKeys, WithoutAMonitorNoNodeIsOpen)
{
    EXPECT_EQ(keys.openNodes(), 0);
    listen();
    EXPECT_EQ(keys.openNodes(), 1);
    monitor.reset();
    EXPECT_EQ(keys.openNodes(), 0);
}

TEST_F(KernelKeys, EventsOfOtherKindsAndPiecesOfEventsSayNothing)
{
    listen();
    input_event wheel{};
    wheel.type = EV_REL;
    wheel.code = KEY_MUTE;
    wheel.value = 1;
    keyboard->write(QByteArray(reinterpret_cast<const char *>(&wheel), sizeof(wheel)));
    keyboard->send(KEY_ENTER, 1);
    keyboard->press(KEY_MUTE);
    keyboard->write(QByteArray(7, '\xff'));
    ASSERT_TRUE(hears(MediaKeyCode::mute));
    EXPECT_EQ(heard.size(), 2);
}

TEST_F(KernelKeys, AFileThatIsNoInputDeviceHasNoMediaKeys)
{
    const int descriptor = ::open("/dev/null", O_RDONLY);
    EXPECT_FALSE(InputNodes::hasMediaKeys(descriptor));
    ::close(descriptor);
    EXPECT_FALSE(InputNodes(folder.folder.path()).canOpenAny());
}

TEST(KernelInputPermission, IsThereWhenAKeyboardCanBeOpened)
{
    const KeyFolder folder;
    const KernelInputMonitoring permission{folder.nodes()};
    EXPECT_FALSE(permission.preflightListenEventAccess());
    {
        const KeyNode keyboard(folder.path(u"event0"_s));
        EXPECT_TRUE(permission.preflightListenEventAccess());
    }
    EXPECT_FALSE(permission.preflightListenEventAccess());
}

namespace {

/// An authenticator that writes down what it is asked to run.
class NotingAuthenticator
{
public:
    NotingAuthenticator()
    {
        QFile script(program());
        if (script.open(QIODevice::WriteOnly))
            script.write("#!/bin/sh\necho \"$@\" > '" + notes().toUtf8() + ".new'\nmv '" + notes().toUtf8()
                + ".new' '" + notes().toUtf8() + "'\n");
        script.setPermissions(QFile::ReadOwner | QFile::ExeOwner);
    }
    QString program() const { return m_folder.filePath(u"authenticator"_s); }
    QString notes() const { return m_folder.filePath(u"notes"_s); }
    /// What it was asked, once it was.
    QString request() const
    {
        const QFileSystemWatcher watcher({m_folder.path()});
        eventually([this] { return QFile::exists(notes()); });
        QFile file(notes());
        return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()).trimmed() : QString();
    }

private:
    QTemporaryDir m_folder;
};

} // namespace

TEST(KernelInputPermission, AskingHasTheSystemsOwnToolLetTheUserJoinTheReaders)
{
    const KeyFolder folder;
    const KeyNode keyboard(folder.path(u"event0"_s));
    const QByteArray path = QFile::encodeName(folder.path(u"event0"_s));
    constexpr gid_t games = 60;
    if (chown(path.constData(), getuid(), games) != 0)
        GTEST_SKIP() << "only the administrator may give a file to a group";
    const NotingAuthenticator authenticator;
    KernelInputMonitoring permission{folder.nodes(), authenticator.program()};
    chmod(path.constData(), 0600);
    EXPECT_EQ(permission.joiningCommand(), QStringList()) << "the group may not read it";
    chmod(path.constData(), 0660);
    permission.requestListenEventAccess();
    EXPECT_EQ(authenticator.request(),
        u"--disable-internal-agent /usr/sbin/usermod --append --groups games "_s
            + QString::fromLocal8Bit(getpwuid(getuid())->pw_name));
}

TEST(KernelInputPermission, NobodyIsMadeToJoinTheAdministrators)
{
    const KeyFolder folder;
    const KeyNode keyboard(folder.path(u"event0"_s));
    const QByteArray path = QFile::encodeName(folder.path(u"event0"_s));
    if (chown(path.constData(), getuid(), 0) != 0)
        GTEST_SKIP() << "only the administrator may give a file to a group";
    chmod(path.constData(), 0660);
    EXPECT_EQ(KernelInputMonitoring(folder.nodes()).joiningCommand(), QStringList());
}

TEST(KernelInputPermission, WithoutAnAuthenticatorAskingIsHarmless)
{
    const KeyFolder folder;
    const KeyNode keyboard(folder.path(u"event0"_s));
    KernelInputMonitoring permission{folder.nodes(), u"/nowhere/authenticator"_s};
    permission.requestListenEventAccess();
    EXPECT_TRUE(permission.preflightListenEventAccess());
}

} // namespace brindle::test
