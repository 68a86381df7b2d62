#include "contract/keys/KeyNode.h"
#include "platform/fake/FakeLevels.h"
#include "platform/linux/hardware/KernelMediaKeys.h"
#include "platform/linux/x11/X11MediaKeys.h"
#include "platform/linux/x11/XcbConnection.h"
#include "support/EventLoop.h"
#include "support/x11/OtherProgram.h"

#include <gmock/gmock.h>
#include <linux/input-event-codes.h>

namespace brindle::test {

namespace {

struct Key
{
    long code;
    int ofKernel;
    // The X server's own numbers are the kernel's and 8 more.
    int ofServer() const { return ofKernel + 8; }
};

constexpr Key soundUp{MediaKeyCode::soundUp, KEY_VOLUMEUP};
constexpr Key soundDown{MediaKeyCode::soundDown, KEY_VOLUMEDOWN};
constexpr Key brightnessUp{MediaKeyCode::brightnessUp, KEY_BRIGHTNESSUP};
constexpr Key brightnessDown{MediaKeyCode::brightnessDown, KEY_BRIGHTNESSDOWN};
constexpr Key mute{MediaKeyCode::mute, KEY_MUTE};

/// A keyboard, seen through the port, and the hand on it.
class FakeKeysWorld
{
public:
    MediaKeys &port() { return m_port; }
    void press(const Key &key) { m_port.press(key.code); }
    void typeA() { }
    void settle() { }

private:
    FakeMediaKeys m_port;
};

class KernelKeysWorld
{
public:
    MediaKeys &port() { return m_port; }
    void press(const Key &key) { m_node.press(key.ofKernel); }
    void typeA() { m_node.press(KEY_A); }
    void settle() { }

private:
    KeyFolder m_folder;
    KeyNode m_node{m_folder.path(QStringLiteral("event0"))};
    KernelMediaKeys m_port{m_folder.nodes()};
};

class X11KeysWorld
{
public:
    MediaKeys &port() { return m_port; }
    void press(const Key &key) { m_hand.type(key.ofServer()); }
    void typeA() { m_hand.type(KEY_A + 8); }
    // The port has asked by the time that the server answers somebody else.
    void settle() { test::settle(Xcb::connection()); }

private:
    Hand m_hand;
    X11MediaKeys m_port;
};

} // namespace

/// What the port promises, whoever keeps it.
template <typename World> class MediaKeysContract : public testing::Test
{
protected:
    void listen()
    {
        monitor = world.port().addGlobalMonitor([this](long data1) { heard.append(data1); });
        world.settle();
    }
    bool hears(const Key &key)
    {
        const long down = mediaKeyData(key.code, MediaKeyState::down);
        const long up = mediaKeyData(key.code, MediaKeyState::up);
        const bool came = eventually([this, up] { return heard.contains(up); });
        return came && std::exchange(heard, {}) == QList<long>{down, up};
    }

    World world;
    QList<long> heard;
    Subscription monitor;
};

using Worlds = testing::Types<FakeKeysWorld, KernelKeysWorld, X11KeysWorld>;
TYPED_TEST_SUITE(MediaKeysContract, Worlds);

TYPED_TEST(MediaKeysContract, EachOfTheFiveKeysIsToldAsItComesDownAndUp)
{
    this->listen();
    ASSERT_TRUE(this->monitor);
    for (const Key &key : {soundUp, soundDown, brightnessUp, brightnessDown, mute}) {
        this->world.press(key);
        EXPECT_TRUE(this->hears(key)) << key.code;
    }
}

TYPED_TEST(MediaKeysContract, WhatAPersonTypesIsNotTold)
{
    this->listen();
    this->world.typeA();
    this->world.press(mute);
    EXPECT_TRUE(this->hears(mute));
}

TYPED_TEST(MediaKeysContract, AnEndedMonitorHearsNothing)
{
    this->listen();
    int others = 0;
    const Subscription other = this->world.port().addGlobalMonitor([&others](long) { ++others; });
    this->monitor.reset();
    this->world.press(soundUp);
    EXPECT_TRUE(eventually([&others] { return others == 2; }));
    EXPECT_TRUE(this->heard.isEmpty());
}

TYPED_TEST(MediaKeysContract, AMonitorMayEndItselfAndAnotherCanBeAdded)
{
    int told = 0;
    this->monitor = this->world.port().addGlobalMonitor([&](long) {
        ++told;
        this->monitor.reset();
    });
    this->world.settle();
    this->world.press(soundUp);
    EXPECT_TRUE(eventually([&told] { return told == 1; }));
    this->listen();
    this->world.press(mute);
    EXPECT_TRUE(this->hears(mute));
    EXPECT_EQ(told, 1);
}

TYPED_TEST(MediaKeysContract, AMonitorMayOutliveItsSource)
{
    {
        const auto shortLived = std::make_unique<TypeParam>();
        this->monitor = shortLived->port().addGlobalMonitor([](long) { });
    }
    this->monitor.reset();
    EXPECT_FALSE(this->monitor);
}

} // namespace brindle::test
