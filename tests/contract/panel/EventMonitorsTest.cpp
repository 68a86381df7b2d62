#include "foundation/SystemScheduler.h"
#include "platform/fake/FakeEventMonitors.h"
#include "platform/linux/x11/X11EventMonitors.h"
#include "platform/linux/x11/X11PanelWindow.h"
#include "support/EventLoop.h"
#include "support/x11/OtherProgram.h"

#include <gtest/gtest.h>

namespace brindle {
namespace {

using test::eventually;

/// A pointer and keys, seen through the port, and the hand on them. The pointer is over another program, the
/// keyboard is the panel's.
class FakeWorld
{
public:
    bool start() { return true; }
    EventMonitors &port() { return m_port; }
    void movePointerTo(QPointF location)
    {
        m_port.location = location;
        InputEvent event;
        event.kind = m_port.buttons ? EventKind::leftMouseDragged : EventKind::mouseMoved;
        m_port.sendGlobal(event);
    }
    void pressPrimary()
    {
        m_port.buttons = 1;
        InputEvent event;
        event.kind = EventKind::leftMouseDown;
        m_port.sendGlobal(event);
    }
    void releasePrimary() { m_port.buttons = 0; }
    void typeSpace()
    {
        InputEvent event;
        event.kind = EventKind::keyDown;
        event.keyCode = KeyCode::space;
        event.charactersIgnoringModifiers = QStringLiteral(" ");
        m_port.sendLocal(event);
    }

private:
    FakeEventMonitors m_port;
};

class X11World
{
public:
    bool start()
    {
        m_panel.setFrame(QRectF(330, 692, 940, 300), PanelWindow::FrameChange::immediate);
        m_panel.makeKeyAndOrderFront();
        return eventually([this] { return m_other.isMapped && m_panel.isKeyWindow(); });
    }
    EventMonitors &port() { return m_port; }
    // The display is 1000 points high.
    void movePointerTo(QPointF location) { m_hand.moveTo({int(location.x()), 1000 - int(location.y())}); }
    void pressPrimary() { m_hand.press(); }
    void releasePrimary() { m_hand.release(); }
    void typeSpace()
    {
        constexpr int keycodeOfSpace = 65;
        m_hand.type(keycodeOfSpace);
    }

private:
    SystemScheduler m_time;
    test::Hand m_hand;
    test::OtherProgram m_other{QRect(0, 0, 1600, 1000)};
    X11PanelWindow m_panel{PanelStyle{}, m_time};
    X11EventMonitors m_port{m_time};
};

template <typename World> class EventMonitorsContract : public testing::Test
{
protected:
    World world;
    std::vector<EventKind> seen;

    void SetUp() override { ASSERT_TRUE(world.start()); }
    EventMonitors &port() { return world.port(); }
    [[nodiscard]] Subscription watchOthers(EventMask mask)
    {
        return port().addGlobalMonitor(mask, [this](const InputEvent &event) { seen.push_back(event.kind); });
    }
};

struct WorldNames
{
    template <typename World> static std::string GetName(int)
    {
        return std::is_same_v<World, FakeWorld> ? "Fake" : "X11";
    }
};
using Worlds = testing::Types<FakeWorld, X11World>;
TYPED_TEST_SUITE(EventMonitorsContract, Worlds, WorldNames);

TYPED_TEST(EventMonitorsContract, ThePointerIsWhereItWasMoved)
{
    this->world.movePointerTo({700, 250});
    EXPECT_EQ(this->port().mouseLocation(), QPointF(700, 250));
}

TYPED_TEST(EventMonitorsContract, APressedButtonIsToldUntilItIsReleased)
{
    EXPECT_EQ(this->port().pressedMouseButtons(), 0U);
    this->world.pressPrimary();
    EXPECT_EQ(this->port().pressedMouseButtons(), 1U);
    this->world.releasePrimary();
    EXPECT_EQ(this->port().pressedMouseButtons(), 0U);
}

TYPED_TEST(EventMonitorsContract, AGlobalMonitorSeesOnlyTheKindsThatItAskedFor)
{
    const auto monitor = this->watchOthers(eventMask(EventKind::leftMouseDown, EventKind::rightMouseDown));
    ASSERT_TRUE(monitor);
    this->world.movePointerTo({700, 250});
    this->world.pressPrimary();
    this->world.movePointerTo({710, 250});
    this->world.releasePrimary();
    ASSERT_TRUE(eventually([this] { return !this->seen.empty(); }));
    EXPECT_EQ(this->seen, std::vector{EventKind::leftMouseDown});
}

TYPED_TEST(EventMonitorsContract, MotionOfOthersIsSeen)
{
    const auto monitor = this->watchOthers(eventMask(EventKind::mouseMoved));
    this->world.movePointerTo({700, 250});
    EXPECT_TRUE(eventually([this] { return !this->seen.empty(); }));
}

TYPED_TEST(EventMonitorsContract, AnEndedMonitorSeesNothing)
{
    auto ended = this->watchOthers(eventMask(EventKind::leftMouseDown));
    ended.reset();
    EXPECT_FALSE(ended);
    // Another one that sees the press shows that it has passed.
    int presses = 0;
    const auto other = this->port().addGlobalMonitor(
        eventMask(EventKind::leftMouseDown), [&presses](const InputEvent &) { ++presses; });
    this->world.movePointerTo({700, 250});
    this->world.pressPrimary();
    this->world.releasePrimary();
    ASSERT_TRUE(eventually([&] { return presses == 1; }));
    EXPECT_TRUE(this->seen.empty());
}

TYPED_TEST(EventMonitorsContract, AKeyComesToTheLocalMonitorsInTheirOrderUntilOneSwallowsIt)
{
    std::vector<int> order;
    const auto watch = [&](int number, EventMonitors::Disposition disposition) {
        return this->port().addLocalMonitor(
            eventMask(EventKind::keyDown), [&order, number, disposition](const auto &) {
                order.push_back(number);
                return disposition;
            });
    };
    const auto first = watch(1, EventMonitors::Disposition::pass);
    const auto second = watch(2, EventMonitors::Disposition::swallow);
    const auto third = watch(3, EventMonitors::Disposition::pass);
    this->world.typeSpace();
    ASSERT_TRUE(eventually([&] { return order.size() >= 2; }));
    EXPECT_EQ(order, (std::vector{1, 2}));
}

TYPED_TEST(EventMonitorsContract, AKeyOfThePanelIsNoBusinessOfGlobalMonitors)
{
    std::vector<int> keys;
    const auto others = this->watchOthers(eventMask(EventKind::keyDown));
    const auto own =
        this->port().addLocalMonitor(eventMask(EventKind::keyDown), [&keys](const InputEvent &event) {
            keys.push_back(event.keyCode);
            return EventMonitors::Disposition::pass;
        });
    this->world.typeSpace();
    ASSERT_TRUE(eventually([&] { return !keys.empty(); }));
    EXPECT_EQ(keys, std::vector{KeyCode::space});
    EXPECT_TRUE(this->seen.empty());
}

TYPED_TEST(EventMonitorsContract, AHandlerMayEndItsOwnMonitorAndAddAnother)
{
    Subscription monitor;
    int second = 0;
    monitor = this->port().addLocalMonitor(eventMask(EventKind::keyDown), [&](const InputEvent &) {
        monitor = this->port().addLocalMonitor(eventMask(EventKind::keyDown), [&second](const InputEvent &) {
            ++second;
            return EventMonitors::Disposition::pass;
        });
        return EventMonitors::Disposition::pass;
    });
    this->world.typeSpace();
    this->world.typeSpace();
    EXPECT_TRUE(eventually([&] { return second == 1; }));
}

} // namespace
} // namespace brindle
