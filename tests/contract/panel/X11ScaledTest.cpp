#include "foundation/SystemScheduler.h"
#include "platform/linux/QtScreens.h"
#include "platform/linux/x11/X11EventMonitors.h"
#include "platform/linux/x11/X11PanelWindow.h"
#include "platform/linux/x11/XcbConnection.h"
#include "support/EventLoop.h"
#include "support/x11/Desktop.h"
#include "support/x11/OtherProgram.h"

#include <QGuiApplication>
#include <QPainterPathStroker>
#include <QQuickWindow>
#include <QRegion>

#include <cmath>
#include <gtest/gtest.h>
#include <xcb/shape.h>

namespace brindle {
namespace {

using test::eventually;
using test::soon;

/// The open and the closed island have corners like these.
QPainterPath roundShape()
{
    QPainterPath path;
    path.addRoundedRect(QRectF(340, 0, 260, 38), 15.5, 15.5);
    return path;
}

QRegion inputRegionOf(xcb_window_t window)
{
    const XcbReply<xcb_shape_get_rectangles_reply_t> reply(xcb_shape_get_rectangles_reply(
        Xcb::connection(), xcb_shape_get_rectangles(Xcb::connection(), window, XCB_SHAPE_SK_INPUT), nullptr));
    QRegion region;
    if (!reply)
        return region;
    const xcb_rectangle_t *rectangles = xcb_shape_get_rectangles_rectangles(reply.get());
    for (int i = 0; i < xcb_shape_get_rectangles_rectangles_length(reply.get()); ++i)
        region += QRect(rectangles[i].x, rectangles[i].y, rectangles[i].width, rectangles[i].height);
    return region;
}

/// The panel at whatever scale the surroundings ask for; this suite runs at several.
class X11Scaled : public testing::Test
{
protected:
    SystemScheduler m_time;
    test::Hand m_hand;
    test::Desktop m_desktop;
    test::OtherProgram m_below{QRect(0, 0, 1600, 1000)};
    QtScreens m_screens{m_time};
    X11EventMonitors m_monitors{m_time};
    X11PanelWindow m_panel{PanelStyle{}, m_time};
    const double m_scale = qGuiApp->devicePixelRatio();

    void SetUp() override
    {
        ASSERT_TRUE(eventually([&] { return m_below.isMapped; }));
        const QRectF screen = m_screens.screens().constFirst().frame;
        m_panel.setFrame(QRectF(40, screen.height() - 308, 940, 300), PanelWindow::FrameChange::immediate);
        m_panel.setInputShape(roundShape());
        m_panel.orderFrontRegardless();
        ASSERT_TRUE(soon([this] { return Xcb::isViewable(id()); }));
    }
    xcb_window_t id() { return xcb_window_t(m_panel.contentWindow()->winId()); }
    /// A point of the panel on the root window.
    QPoint at(double x, double y) const
    {
        return {int(std::floor((40 + x) * m_scale)), int(std::floor((8 + y) * m_scale))};
    }
};

TEST_F(X11Scaled, ADisplayHasItsSizeInPointsAndTellsItsScale)
{
    const Screen screen = m_screens.screens().constFirst();
    EXPECT_EQ(screen.scale, m_scale);
    EXPECT_NEAR(screen.frame.width() * m_scale, 1600, m_scale);
    EXPECT_NEAR(screen.frame.height() * m_scale, 1000, m_scale);
    EXPECT_EQ(screen.frame.topLeft(), QPointF(0, 0));
}

TEST_F(X11Scaled, ThePanelHasItsPlaceAndSizeInPoints)
{
    const auto round = [this](double points) { return int(std::lround(points * m_scale)); };
    const QRect expected(round(40), round(8), round(940), round(300));
    EXPECT_TRUE(soon([&] { return m_desktop.geometryOf(id()) == expected; }));
}

TEST_F(X11Scaled, TheInputShapeFollowsTheOutlineToThePixel)
{
    ASSERT_TRUE(soon([this] { return !inputRegionOf(id()).isEmpty(); }));
    const QRegion region = inputRegionOf(id());
    const QPainterPath outline = QTransform::fromScale(m_scale, m_scale).map(roundShape());
    QPainterPathStroker pen;
    pen.setWidth(2); // a pixel to either side may go either way
    const QPainterPath edge = pen.createStroke(outline);
    const QRect area = outline.boundingRect().toAlignedRect().adjusted(-4, -4, 4, 4);
    int wrong = 0;
    for (int y = std::max(area.top(), 0); y <= area.bottom(); ++y) {
        for (int x = area.left(); x <= area.right(); ++x) {
            const QPointF centre(x + 0.5, y + 0.5);
            wrong += !edge.contains(centre) && region.contains(QPoint(x, y)) != outline.contains(centre);
        }
    }
    EXPECT_EQ(wrong, 0);
}

TEST_F(X11Scaled, ClicksFallThroughBesideTheShapeAndInItsCutCorners)
{
    const QList<QPoint> beside{at(338, 20), at(602, 20), at(470, 40), at(342, 36), at(598, 36), at(100, 200)};
    for (const QPoint point : {at(342, 20), at(598, 20), at(470, 36), at(470, 1)})
        m_hand.click(point);
    for (const QPoint point : beside)
        m_hand.click(point);
    ASSERT_TRUE(eventually([&] { return m_below.presses.size() >= beside.size(); }));
    EXPECT_EQ(m_below.presses, beside);
}

TEST_F(X11Scaled, ThePointerIsToldInPoints)
{
    m_hand.moveTo(at(100, 50));
    const double top = m_panel.frame().top() + 300;
    EXPECT_NEAR(m_monitors.mouseLocation().x(), 140, 1);
    EXPECT_NEAR(m_monitors.mouseLocation().y(), top - 50, 1);
}

TEST_F(X11Scaled, MotionInThePanelIsToldInPoints)
{
    m_panel.makeKeyAndOrderFront();
    std::optional<InputEvent> seen;
    const auto monitor =
        m_monitors.addLocalMonitor(eventMask(EventKind::mouseMoved), [&](const InputEvent &event) {
            seen = event;
            return EventMonitors::Disposition::pass;
        });
    m_hand.moveTo(at(470, 20));
    ASSERT_TRUE(eventually([&] { return seen.has_value(); }));
    EXPECT_NEAR(seen->locationInPanel.x(), 470, 1);
    EXPECT_NEAR(seen->locationInPanel.y(), 20, 1);
    EXPECT_TRUE(seen->isInPanel);
}

} // namespace
} // namespace brindle
