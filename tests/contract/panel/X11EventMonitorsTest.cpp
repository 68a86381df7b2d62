#include "platform/linux/x11/X11EventMonitors.h"

#include "foundation/ManualScheduler.h"
#include "foundation/SystemScheduler.h"
#include "platform/linux/x11/X11PanelWindow.h"
#include "platform/linux/x11/XcbConnection.h"
#include "support/EventLoop.h"
#include "support/x11/OtherProgram.h"

#include <QQuickWindow>

#include <gtest/gtest.h>
#include <xcb/xinput.h>

namespace brindle {
namespace {

using test::eventually;
using test::Hand;
using test::OtherProgram;
using test::settle;

constexpr int keycodeOfA = 38;
constexpr int keycodeOfSpace = 65;
constexpr int keycodeOfUp = 111;

constexpr EventMask motion = eventMask(EventKind::mouseMoved, EventKind::leftMouseDragged,
    EventKind::rightMouseDragged, EventKind::otherMouseDragged);
constexpr EventMask presses = eventMask(EventKind::leftMouseDown, EventKind::rightMouseDown);

class X11Events : public testing::Test
{
protected:
    SystemScheduler m_time;
    Hand m_hand;
    OtherProgram m_other{QRect(0, 0, 1600, 1000)};
    X11EventMonitors m_monitors{m_time};
    QList<InputEvent> m_seen;

    void SetUp() override
    {
        ASSERT_TRUE(eventually([&] { return m_other.isMapped; }));
        m_hand.moveTo({800, 700});
        test::deliverEvents();
    }
    /// A monitor that the server knows of already.
    [[nodiscard]] Subscription watchOthers(EventMask mask)
    {
        Subscription monitor =
            m_monitors.addGlobalMonitor(mask, [this](const InputEvent &event) { m_seen.append(event); });
        settle(Xcb::connection());
        return monitor;
    }
    bool eventuallySeen(EventKind kind)
    {
        return eventually([&] {
            return std::ranges::any_of(
                m_seen, [kind](const InputEvent &event) { return event.kind == kind; });
        });
    }
};

TEST_F(X11Events, ThePointerIsToldFromTheBottomLeft)
{
    m_hand.moveTo({300, 10});
    EXPECT_EQ(m_monitors.mouseLocation(), QPointF(300, 990));
}

TEST_F(X11Events, MotionOverOtherProgramsIsSeen)
{
    m_other.takeFocus();
    const auto monitor = watchOthers(motion);
    ASSERT_TRUE(monitor);
    m_hand.moveTo({400, 400});
    EXPECT_TRUE(eventuallySeen(EventKind::mouseMoved));
}

TEST_F(X11Events, AManyStepMotionIsFewEvents)
{
    const auto monitor = watchOthers(motion);
    for (int step = 0; step < 500; ++step)
        m_hand.moveTo({100 + step, 400});
    ASSERT_TRUE(eventuallySeen(EventKind::mouseMoved));
    EXPECT_LT(m_seen.size(), 500);
}

TEST_F(X11Events, MotionIsToldAtOnceAndThenOnceInAnInterval)
{
    ManualScheduler time;
    X11EventMonitors monitors(time);
    const auto monitor =
        monitors.addGlobalMonitor(motion, [this](const InputEvent &event) { m_seen.append(event); });
    settle(Xcb::connection());
    m_hand.moveTo({100, 400});
    ASSERT_TRUE(eventually([&] { return m_seen.size() == 1; }));
    for (int step = 0; step < 10; ++step)
        m_hand.moveTo({200 + step, 400});
    settle(Xcb::connection());
    test::deliverEvents();
    EXPECT_EQ(m_seen.size(), 1);
    time.advance(0.008);
    EXPECT_EQ(m_seen.size(), 2);
    time.advance(1);
    EXPECT_EQ(m_seen.size(), 2) << "nothing has moved since";
}

TEST_F(X11Events, MotionWithAButtonHeldIsADrag)
{
    const auto monitor = watchOthers(motion);
    m_hand.press();
    m_hand.moveTo({420, 400});
    EXPECT_TRUE(eventuallySeen(EventKind::leftMouseDragged));
    EXPECT_EQ(m_monitors.pressedMouseButtons(), 1U);
    m_hand.release();
    EXPECT_EQ(m_monitors.pressedMouseButtons(), 0U);
}

TEST_F(X11Events, APressInAnotherProgramIsSeenAndStillReachesIt)
{
    const auto monitor = watchOthers(presses);
    m_hand.click({800, 700});
    EXPECT_TRUE(eventuallySeen(EventKind::leftMouseDown));
    EXPECT_TRUE(eventually([&] { return m_other.presses.size() == 1; }));
    m_hand.click({800, 700}, 3);
    EXPECT_TRUE(eventuallySeen(EventKind::rightMouseDown));
}

TEST_F(X11Events, APressInThePanelIsNotGlobal)
{
    X11PanelWindow panel(PanelStyle{}, m_time);
    panel.setFrame(QRectF(330, 692, 940, 300), PanelWindow::FrameChange::immediate);
    QPainterPath shape;
    shape.addRect(340, 0, 260, 38);
    panel.setInputShape(shape);
    panel.orderFrontRegardless();
    ASSERT_TRUE(eventually([&] { return Xcb::isViewable(xcb_window_t(panel.contentWindow()->winId())); }));
    const auto monitor = watchOthers(presses);
    m_hand.click({800, 28});
    settle(Xcb::connection());
    test::deliverEvents();
    EXPECT_TRUE(m_seen.isEmpty());
    // Beside the shape, within the panel's frame: that is another program's.
    m_hand.click({400, 28});
    ASSERT_TRUE(eventuallySeen(EventKind::leftMouseDown));
    test::deliverEvents();
    EXPECT_EQ(m_seen.size(), 1);
}

TEST_F(X11Events, APressInThePanelIsNotGlobalHoweverSoonThePointerLeaves)
{
    X11PanelWindow panel(PanelStyle{}, m_time);
    panel.setFrame(QRectF(330, 692, 940, 300), PanelWindow::FrameChange::immediate);
    QPainterPath shape;
    shape.addRect(340, 0, 260, 38);
    panel.setInputShape(shape);
    panel.orderFrontRegardless();
    ASSERT_TRUE(eventually([&] { return Xcb::isViewable(xcb_window_t(panel.contentWindow()->winId())); }));
    const auto monitor = watchOthers(presses);
    // All before the program looks at any of it: pressed in the panel and dragged out, then pressed elsewhere
    // and dragged in.
    m_hand.moveTo({800, 28});
    m_hand.press();
    m_hand.moveTo({800, 700});
    m_hand.release();
    m_hand.press(3);
    m_hand.moveTo({800, 28});
    m_hand.release(3);
    ASSERT_TRUE(eventuallySeen(EventKind::rightMouseDown));
    EXPECT_EQ(m_seen.size(), 1);
}

TEST_F(X11Events, MotionAndPressesAreSeenWhileAnotherProgramHoldsThePointer)
{
    m_other.grabPointer();
    const auto monitor = watchOthers(motion | presses);
    m_hand.press();
    m_hand.moveTo({420, 400});
    EXPECT_TRUE(eventuallySeen(EventKind::leftMouseDragged));
    EXPECT_TRUE(eventuallySeen(EventKind::leftMouseDown));
    EXPECT_EQ(m_monitors.pressedMouseButtons(), 1U);
    EXPECT_EQ(m_monitors.mouseLocation(), QPointF(420, 600));
    m_hand.release();
}

TEST_F(X11Events, EachButtonHasItsBit)
{
    const std::vector<std::pair<int, quint32>> buttons{{1, 1}, {3, 2}, {2, 4}};
    for (const auto &[button, bit] : buttons) {
        m_hand.press(button);
        EXPECT_EQ(m_monitors.pressedMouseButtons(), bit);
        m_hand.release(button);
    }
}

TEST_F(X11Events, TheServerIsAskedForNoMoreThanIsWatched)
{
    const auto asked = [] {
        const XcbReply<xcb_input_xi_get_selected_events_reply_t> reply(xcb_input_xi_get_selected_events_reply(
            Xcb::connection(), xcb_input_xi_get_selected_events(Xcb::connection(), Xcb::root()), nullptr));
        uint32_t events = 0;
        for (auto mask = xcb_input_xi_get_selected_events_masks_iterator(reply.get()); mask.rem;
            xcb_input_event_mask_next(&mask))
            events |= *xcb_input_event_mask_mask(mask.data);
        return events & (XCB_INPUT_XI_EVENT_MASK_RAW_MOTION | XCB_INPUT_XI_EVENT_MASK_RAW_BUTTON_PRESS);
    };
    EXPECT_EQ(asked(), 0U);
    {
        const auto forMotion = watchOthers(motion);
        EXPECT_EQ(asked(), uint32_t(XCB_INPUT_XI_EVENT_MASK_RAW_MOTION));
        const auto forPresses = watchOthers(presses);
        EXPECT_EQ(asked(),
            uint32_t(XCB_INPUT_XI_EVENT_MASK_RAW_MOTION)
                | uint32_t(XCB_INPUT_XI_EVENT_MASK_RAW_BUTTON_PRESS));
    }
    EXPECT_EQ(asked(), 0U);
}

TEST_F(X11Events, WithoutAMonitorNothingIsSeen)
{
    {
        const auto ended = watchOthers(motion);
    }
    m_hand.moveTo({440, 400});
    // Another monitor that does see something shows that the events have passed.
    int others = 0;
    const auto monitor = m_monitors.addGlobalMonitor(motion, [&](const InputEvent &) { ++others; });
    settle(Xcb::connection());
    m_hand.moveTo({460, 400});
    ASSERT_TRUE(eventually([&] { return others > 0; }));
    EXPECT_TRUE(m_seen.isEmpty());
}

TEST_F(X11Events, AHandlerMayEndItsOwnMonitor)
{
    Subscription monitor;
    int seen = 0;
    monitor = m_monitors.addGlobalMonitor(motion, [&](const InputEvent &) {
        ++seen;
        monitor.reset();
    });
    settle(Xcb::connection());
    m_hand.moveTo({480, 400});
    EXPECT_TRUE(eventually([&] { return seen == 1; }));
}

TEST_F(X11Events, AMonitorMayOutliveItsSource)
{
    Subscription monitor;
    {
        X11EventMonitors shortLived(m_time);
        monitor = shortLived.addGlobalMonitor(motion, [](const InputEvent &) { });
    }
    monitor.reset();
    EXPECT_FALSE(monitor);
}

/// The panel with the keyboard, and the local events that come to it.
class X11LocalEvents : public X11Events
{
protected:
    X11PanelWindow m_panel{PanelStyle{}, m_time};

    void SetUp() override
    {
        X11Events::SetUp();
        m_panel.setFrame(QRectF(330, 692, 940, 300), PanelWindow::FrameChange::immediate);
        QPainterPath shape;
        shape.addRect(0, 0, 940, 300);
        m_panel.setInputShape(shape);
        m_panel.makeKeyAndOrderFront();
        ASSERT_TRUE(eventually([&] { return m_panel.isKeyWindow(); }));
    }
    [[nodiscard]] Subscription watch(EventMask mask)
    {
        return m_monitors.addLocalMonitor(mask, [this](const InputEvent &event) {
            m_seen.append(event);
            return EventMonitors::Disposition::pass;
        });
    }
};

TEST_F(X11LocalEvents, KeysComeWithTheirCodesAndCharacters)
{
    const auto monitor = watch(eventMask(EventKind::keyDown));
    m_hand.type(keycodeOfSpace);
    m_hand.type(keycodeOfUp);
    m_hand.type(keycodeOfA);
    ASSERT_TRUE(eventually([&] { return m_seen.size() == 3; }));
    EXPECT_EQ(m_seen[0].keyCode, KeyCode::space);
    EXPECT_EQ(m_seen[0].charactersIgnoringModifiers, QStringLiteral(" "));
    EXPECT_EQ(m_seen[1].keyCode, KeyCode::upArrow);
    EXPECT_EQ(m_seen[2].keyCode, KeyCode::other);
    EXPECT_TRUE(m_seen[0].isInPanel);
    EXPECT_EQ(m_seen[0].modifierFlags, 0U);
}

TEST_F(X11LocalEvents, ASwallowedKeyReachesNobody)
{
    int contentKeys = 0;
    class Counter : public QObject
    {
    public:
        explicit Counter(int &count) : m_count(count) { }

    protected:
        bool eventFilter(QObject *, QEvent *event) override
        {
            m_count += event->type() == QEvent::KeyPress;
            return false;
        }

    private:
        int &m_count;
    } counter(contentKeys);
    m_panel.contentWindow()->installEventFilter(&counter);
    int seen = 0;
    const auto monitor = m_monitors.addLocalMonitor(eventMask(EventKind::keyDown), [&](const InputEvent &) {
        ++seen;
        return EventMonitors::Disposition::swallow;
    });
    m_hand.type(keycodeOfSpace);
    ASSERT_TRUE(eventually([&] { return seen == 1; }));
    test::deliverEvents();
    EXPECT_EQ(contentKeys, 0);
}

TEST_F(X11LocalEvents, AHeldKeyRepeats)
{
    constexpr int keycodeOfDown = 116;
    const auto monitor = watch(eventMask(EventKind::keyDown));
    m_hand.holdKey(keycodeOfDown);
    ASSERT_TRUE(eventually([&] { return m_seen.size() >= 3; }));
    m_hand.releaseKey(keycodeOfDown);
    EXPECT_FALSE(m_seen[0].isARepeat);
    EXPECT_TRUE(m_seen[1].isARepeat);
    EXPECT_TRUE(m_seen[2].isARepeat);
    EXPECT_EQ(m_seen[2].keyCode, KeyCode::downArrow);
}

TEST_F(X11LocalEvents, HeldModifiersAreTold)
{
    // Shift, control and alt of the left hand.
    const std::vector<std::pair<int, quint32>> modifiers{
        {50, ModifierFlag::shift}, {37, ModifierFlag::control}, {64, ModifierFlag::option}};
    for (const auto &[keycode, flag] : modifiers) {
        const auto monitor = watch(eventMask(EventKind::keyDown));
        m_seen.clear();
        m_hand.holdKey(keycode);
        m_hand.type(keycodeOfUp);
        m_hand.releaseKey(keycode);
        ASSERT_TRUE(
            eventually([&] { return !m_seen.isEmpty() && m_seen.constLast().keyCode == KeyCode::upArrow; }));
        EXPECT_EQ(m_seen.constLast().modifierFlags & ModifierFlag::any, flag);
    }
}

TEST_F(X11LocalEvents, MotionInThePanelTellsWhere)
{
    const auto monitor = watch(motion);
    m_hand.moveTo({430, 108});
    ASSERT_TRUE(eventuallySeen(EventKind::mouseMoved));
    EXPECT_EQ(m_seen.constLast().locationInPanel, QPointF(100, 100));
}

TEST_F(X11LocalEvents, AWheelNotchIsOneStep)
{
    const auto monitor = watch(eventMask(EventKind::scrollWheel));
    m_hand.moveTo({430, 108});
    constexpr int wheelDown = 5;
    m_hand.press(wheelDown);
    m_hand.release(wheelDown);
    ASSERT_TRUE(eventuallySeen(EventKind::scrollWheel));
    const InputEvent &wheel = m_seen.constLast();
    EXPECT_FALSE(wheel.hasPreciseScrollingDeltas);
    EXPECT_EQ(wheel.scrollingDeltaY, -1);
    EXPECT_EQ(wheel.locationInPanel, QPointF(100, 100));
}

} // namespace
} // namespace brindle
