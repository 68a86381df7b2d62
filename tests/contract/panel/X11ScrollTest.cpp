#include "foundation/ManualScheduler.h"
#include "platform/linux/x11/LocalInputEvent.h"
#include "platform/linux/x11/ScrollGesture.h"

#include <QPointingDevice>
#include <QWheelEvent>
#include <QWindow>

#include <gtest/gtest.h>

namespace brindle {
namespace {

/// A turn of a wheel or a scroll of fingers, as Qt tells it on X11.
InputEvent scroll(QPoint pixels, QPoint angle, Qt::ScrollPhase phase = Qt::NoScrollPhase,
    const QPointingDevice *device = QPointingDevice::primaryPointingDevice())
{
    const QWindow window;
    const QWheelEvent event(QPointF(10, 20), QPointF(10, 20), pixels, angle, Qt::NoButton, Qt::NoModifier,
        phase, false, Qt::MouseEventNotSynthesized, device);
    return localInputEvent(window, event).value_or(InputEvent{});
}

TEST(X11Scroll, AWheelWithoutLengthsTurnsByNotches)
{
    const InputEvent event = scroll({}, {0, -240});
    EXPECT_EQ(event.kind, EventKind::scrollWheel);
    EXPECT_FALSE(event.hasPreciseScrollingDeltas);
    EXPECT_EQ(event.scrollingDeltaX, 0);
    EXPECT_EQ(event.scrollingDeltaY, -2);
    EXPECT_EQ(event.locationInPanel, QPointF(10, 20));
}

TEST(X11Scroll, AWheelThatComesWithLengthsStillTurnsByNotches)
{
    const InputEvent event = scroll({0, 15}, {0, 120});
    EXPECT_FALSE(event.hasPreciseScrollingDeltas);
    EXPECT_EQ(event.scrollingDeltaY, 1);
}

TEST(X11Scroll, FractionsOfANotchAreTheLengthsThatComeWithThem)
{
    const InputEvent event = scroll({3, 5}, {24, 40});
    EXPECT_TRUE(event.hasPreciseScrollingDeltas);
    EXPECT_EQ(event.scrollingDeltaX, 3);
    EXPECT_EQ(event.scrollingDeltaY, 5);
}

TEST(X11Scroll, ATouchpadIsTakenByItsWordForWholeNotchesToo)
{
    const QPointingDevice touchpad(QStringLiteral("touchpad"), 7, QInputDevice::DeviceType::TouchPad,
        QPointingDevice::PointerType::Finger, QInputDevice::Capability::Scroll, 2, 1);
    const InputEvent event = scroll({0, 15}, {0, 120}, Qt::NoScrollPhase, &touchpad);
    EXPECT_TRUE(event.hasPreciseScrollingDeltas);
    EXPECT_EQ(event.scrollingDeltaY, 15);
}

TEST(X11Scroll, PhasesThatAreToldAreKept)
{
    EXPECT_EQ(scroll({0, 5}, {0, 40}, Qt::ScrollBegin).phase, ScrollPhase::began);
    EXPECT_EQ(scroll({0, 5}, {0, 40}, Qt::ScrollUpdate).phase, ScrollPhase::changed);
    EXPECT_EQ(scroll({0, 0}, {0, 0}, Qt::ScrollEnd).phase, ScrollPhase::ended);
}

TEST(X11Scroll, MomentumIsNoPhaseOfTheFingers)
{
    const InputEvent event = scroll({0, 5}, {0, 40}, Qt::ScrollMomentum);
    EXPECT_EQ(event.phase, ScrollPhase::none);
    EXPECT_NE(event.momentumPhase, ScrollPhase::none);
}

class X11ScrollGesture : public testing::Test
{
protected:
    ManualScheduler m_time;
    QList<InputEvent> m_ends;
    ScrollGesture m_gesture{m_time, [this](const InputEvent &event) { m_ends.append(event); }};

    quint32 phaseOf(InputEvent event)
    {
        m_gesture.mark(event);
        return event.phase;
    }
};

TEST_F(X11ScrollGesture, BeginsGoesOnAndEndsWhenTheFingersRest)
{
    EXPECT_EQ(phaseOf(scroll({0, 5}, {0, 40})), ScrollPhase::began);
    m_time.advance(0.1);
    EXPECT_EQ(phaseOf(scroll({0, 5}, {0, 40})), ScrollPhase::changed);
    m_time.advance(0.1);
    EXPECT_TRUE(m_ends.isEmpty());
    m_time.advance(0.1);
    ASSERT_EQ(m_ends.size(), 1);
    EXPECT_EQ(m_ends[0].phase, ScrollPhase::ended);
    EXPECT_EQ(m_ends[0].scrollingDeltaY, 0);
    EXPECT_EQ(m_ends[0].locationInPanel, QPointF(10, 20));
    EXPECT_EQ(phaseOf(scroll({0, 5}, {0, 40})), ScrollPhase::began);
}

TEST_F(X11ScrollGesture, AWheelMakesNone)
{
    EXPECT_EQ(phaseOf(scroll({}, {0, 120})), ScrollPhase::none);
    EXPECT_EQ(m_time.pendingCount(), 0);
}

TEST_F(X11ScrollGesture, ADeviceThatTellsItsPhasesIsLeftAlone)
{
    EXPECT_EQ(phaseOf(scroll({0, 5}, {0, 40}, Qt::ScrollUpdate)), ScrollPhase::changed);
    EXPECT_EQ(phaseOf(scroll({0, 5}, {0, 40}, Qt::ScrollMomentum)), ScrollPhase::none);
    EXPECT_EQ(m_time.pendingCount(), 0);
}

} // namespace
} // namespace brindle
