#include "platform/linux/x11/X11MediaKeys.h"

#include "platform/linux/x11/X11InputMonitoring.h"
#include "platform/linux/x11/XcbConnection.h"
#include "support/EventLoop.h"
#include "support/x11/OtherProgram.h"

#include <array>
#include <gtest/gtest.h>
#include <linux/input-event-codes.h>

namespace brindle::test {

namespace {

constexpr int soundUpKey = KEY_VOLUMEUP + 8;
constexpr int f12Key = KEY_F12 + 8;

class X11MediaKeysTest : public testing::Test
{
protected:
    void listen()
    {
        monitor = keys.addGlobalMonitor([this](long data1) { heard.append(data1); });
        settle(Xcb::connection());
    }
    bool comesDown(long code)
    {
        return eventually([this, code] { return heard.contains(mediaKeyData(code, MediaKeyState::down)); });
    }

    Hand hand;
    OtherProgram other{QRect(0, 0, 400, 300)};
    X11MediaKeys keys;
    QList<long> heard;
    Subscription monitor;
};

/// Puts another symbol on a key for as long as it lives.
class Relabelled
{
public:
    Relabelled(int keycode, xcb_keysym_t symbol) : m_keycode(uint8_t(keycode))
    {
        const XcbReply<xcb_get_keyboard_mapping_reply_t> reply(xcb_get_keyboard_mapping_reply(
            Xcb::connection(), xcb_get_keyboard_mapping(Xcb::connection(), m_keycode, 1), nullptr));
        m_before = *xcb_get_keyboard_mapping_keysyms(reply.get());
        set(symbol);
    }
    ~Relabelled() { set(m_before); }
    Relabelled(const Relabelled &) = delete;
    Relabelled &operator=(const Relabelled &) = delete;

private:
    void set(xcb_keysym_t symbol) const
    {
        xcb_change_keyboard_mapping(Xcb::connection(), 1, m_keycode, 1, &symbol);
        settle(Xcb::connection());
    }

    uint8_t m_keycode;
    xcb_keysym_t m_before = 0;
};

} // namespace

TEST_F(X11MediaKeysTest, AKeyIsHeardWhileAnotherProgramHasTheKeyboardAndGetsItToo)
{
    ASSERT_TRUE(eventually([this] { return other.isMapped; }));
    other.takeFocus();
    listen();
    hand.type(soundUpKey);
    EXPECT_TRUE(comesDown(MediaKeyCode::soundUp));
    EXPECT_TRUE(eventually([this] { return other.keys == QList<int>{soundUpKey}; }));
}

TEST_F(X11MediaKeysTest, AKeyIsHeardWhileAnotherProgramHasGrabbedIt)
{
    xcb_connection_t *desktop = xcb_connect(nullptr, nullptr);
    const xcb_window_t root = xcb_setup_roots_iterator(xcb_get_setup(desktop)).data->root;
    xcb_grab_key(desktop, 0, root, XCB_MOD_MASK_ANY, soundUpKey, XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC);
    settle(desktop);
    listen();
    hand.type(soundUpKey);
    EXPECT_TRUE(comesDown(MediaKeyCode::soundUp));
    xcb_disconnect(desktop);
}

TEST_F(X11MediaKeysTest, AChangeOfTheKeyboardsLayoutIsFollowed)
{
    listen();
    constexpr xcb_keysym_t muteSymbol = 0x1008ff12;
    const Relabelled label(f12Key, muteSymbol);
    EXPECT_TRUE(eventually([this] {
        hand.type(f12Key);
        return heard.contains(mediaKeyData(MediaKeyCode::mute, MediaKeyState::down));
    }));
}

TEST_F(X11MediaKeysTest, WithoutAMonitorThereIsNoConnection)
{
    EXPECT_FALSE(keys.isListening());
    listen();
    EXPECT_TRUE(keys.isListening());
    monitor.reset();
    EXPECT_FALSE(keys.isListening());
}

TEST_F(X11MediaKeysTest, WithoutAServerNoMonitorIsGranted)
{
    const QByteArray display = qgetenv("DISPLAY");
    qputenv("DISPLAY", ":4711");
    listen();
    qputenv("DISPLAY", display);
    EXPECT_FALSE(monitor);
    EXPECT_FALSE(keys.isListening());
}

TEST_F(X11MediaKeysTest, ThePermissionIsThere)
{
    X11InputMonitoring permission;
    permission.requestListenEventAccess();
    EXPECT_TRUE(permission.preflightListenEventAccess());
}

} // namespace brindle::test
